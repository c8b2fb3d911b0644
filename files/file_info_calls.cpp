// Finder information and file information by name. Nothing of the Finder
// information lives on disk: it is derived from the name each time, and the
// only thing the Set calls can change is the modification date.
#include <windows.h>

#include "Files.h"
#include "KWESession.h"
#include "files/call_support.h"
#include "files/catalog_entries.h"
#include "files/dos_path.h"
#include "files/finder_info.h"
#include "frame/session.h"

using namespace kwe::files;

namespace {

OSErr FinderInfoNamed(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, FInfo* info) {
  if (!info) return paramErr;
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, name, &path);
  if (err != noErr) return err;
  if (!PathExists(path)) return fnfErr;
  *info = FinderInfoFor(SplitAtLastSeparator(path).name);
  return noErr;
}

// The shared part of PBHGetFInfo and PBGetFInfo; dirID is null for the
// latter, whose record has no directory ID.
template <class Fields>
OSErr GetFileInformation(Fields& f, SInt32* dirID) {
  EntryInfo entry;
  DirectoryRef directory;
  OSErr err = GetEntryInfo(dirID ? *dirID : 0, f.ioVRefNum, f.ioNamePtr, &entry, &directory);
  if (dirID && *dirID == 0 && err != nsvErr) *dirID = directory.dirID;
  if (err != noErr) return err;
  if (f.ioNamePtr && f.ioFDirIndex != 0) LeafNameToMac(entry.path, f.ioNamePtr, 63);
  FillFileFields(f, entry);
  if (dirID && entry.directory && kwe::SessionFlag(kweFlagDirectoryIDs))
    *dirID = DirectoryIDForPath(entry.path, nullptr, nullptr);
  return noErr;
}

OSErr SetModificationDate(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, UInt32 date) {
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, name, &path);
  if (err != noErr) return err;
  HANDLE h = CreateFileA(path.c_str(), FILE_WRITE_ATTRIBUTES,
                         FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
  if (h == INVALID_HANDLE_VALUE) return fnfErr;
  FILETIME time;
  bool set = FileTimeOfMacSeconds(date, &time) && SetFileTime(h, nullptr, nullptr, &time);
  CloseHandle(h);
  return set ? OSErr(noErr) : OSErr(fLckdErr);
}

}  // namespace

KWE_API OSErr KWE_CALL GetFInfo(ConstStr255Param fileName, SInt16 vRefNum, FInfo* fndrInfo) {
  return FinderInfoNamed(0, vRefNum, fileName, fndrInfo);
}

KWE_API OSErr KWE_CALL HGetFInfo(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                 FInfo* fndrInfo) {
  return FinderInfoNamed(dirID, vRefNum, fileName, fndrInfo);
}

KWE_API OSErr KWE_CALL FSpGetFInfo(const FSSpec* spec, FInfo* fndrInfo) {
  if (!spec) return paramErr;
  return FinderInfoNamed(spec->parID, spec->vRefNum, spec->name, fndrInfo);
}

// ioFDirIndex does not index: a non-zero one only asks for the name back.
KWE_API OSErr KWE_CALL PBHGetFInfo(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  return Finish(&f, GetFileInformation(f, &f.ioDirID));
}

KWE_API OSErr KWE_CALL PBGetFInfo(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  FileParam& f = pb->fileParam;
  OSErr err = GetFileInformation(f, nullptr);
  if (err == noErr) f.ioFlNum = 0;
  return Finish(&f, err);
}

KWE_API OSErr KWE_CALL PBHSetFInfo(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  return Finish(&f, SetModificationDate(f.ioDirID, f.ioVRefNum, f.ioNamePtr, f.ioFlMdDat));
}

KWE_API OSErr KWE_CALL PBSetFInfo(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  FileParam& f = pb->fileParam;
  return Finish(&f, SetModificationDate(0, f.ioVRefNum, f.ioNamePtr, f.ioFlMdDat));
}

KWE_API OSErr KWE_CALL HSetFInfo(SInt16, SInt32, ConstStr255Param, const FInfo*) { return noErr; }
