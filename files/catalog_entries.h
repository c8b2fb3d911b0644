// What the Finder and catalog calls report about one file or directory, and
// how it lands in their parameter blocks (FileParam, HFileParam and
// HFileInfo share the fields from ioFRefNum to ioFlMdDat).
#pragma once
#include <windows.h>

#include <string>

#include "Files.h"
#include "files/working_directories.h"

namespace kwe::files {

struct EntryInfo {
  bool directory = false;
  bool readOnly = false;
  SInt16 openSlot = 0;  // the table's slot holding the file, 0 when none
  SInt32 length = 0;
  UInt32 modified = 0;  // Macintosh seconds of the last-write time
  FInfo finder{};
  std::string path;
};

// Names holding wildcards name nothing: FindFirstFileA would match them.
bool HasWildcards(const std::string& name);

// Finds a path as DOS's find-first with the hidden and directory attributes
// does (system files are not found). A volume root is a directory without
// length or dates. fnfErr when there is nothing.
OSErr LookUpEntry(const std::string& path, EntryInfo* info);
// The same from a find result of the directory path ends in.
void EntryFromFindData(const std::string& directory, const WIN32_FIND_DATAA& data, EntryInfo* info);
bool IsFoundBySearch(const WIN32_FIND_DATAA& data);

UInt32 MacSecondsOfFileTime(const FILETIME& time);
bool FileTimeOfMacSeconds(UInt32 seconds, FILETIME* time);

// Files get their Finder information; directories report none.
template <class Fields>
void FillFileFields(Fields& f, const EntryInfo& e) {
  f.ioFRefNum = e.openSlot;
  f.ioFlAttrib = static_cast<SInt8>((e.directory ? kioFlAttribDirMask : 0) |
                                    (e.readOnly ? kioFlAttribLockedMask : 0) |
                                    (e.openSlot ? kioFlAttribFileOpenMask : 0));
  if (e.directory)
    f.ioFlFndrInfo = FInfo{};
  else
    f.ioFlFndrInfo = e.finder;
  f.ioFlStBlk = 0;
  f.ioFlLgLen = e.length;
  f.ioFlPyLen = e.length;
  f.ioFlRStBlk = 0;
  f.ioFlRLgLen = 0;
  f.ioFlRPyLen = 0;
  f.ioFlCrDat = e.modified;
  f.ioFlMdDat = e.modified;
}

// The info of (dirID, vRefNum, name) as PBHGetFInfo finds it. dirID 0 is
// resolved from vRefNum (nsvErr when it names nothing) and *resolved gets the
// directory looked in.
OSErr GetEntryInfo(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, EntryInfo* info,
                   DirectoryRef* resolved);

}  // namespace kwe::files

namespace kwe::files {
// Closes the one catalog enumeration (session end).
void EndCatalogEnumeration();
}  // namespace kwe::files
