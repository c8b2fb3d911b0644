// PBGetCatInfo: information on a directory, on a name, or on the n-th entry
// of a directory. One enumeration is kept for all callers, so stepping
// through a directory index by index costs one FindNextFileA a step; asking
// for an earlier index, or another directory, starts it again.
#include <windows.h>

#include <cstring>

#include "Files.h"
#include "KWESession.h"
#include "files/call_support.h"
#include "files/catalog_entries.h"
#include "files/dos_path.h"
#include "files/name_conversion.h"
#include "files/volume_table.h"
#include "files/working_directories.h"
#include "frame/session.h"

using namespace kwe::files;

namespace {

struct Enumeration {
  std::string directory;  // the path enumerated, ending in a backslash
  HANDLE find = INVALID_HANDLE_VALUE;
  bool firstPending = false;  // FindFirstFileA's entry not yet handed out
  WIN32_FIND_DATAA first{};
  long reached = 0;  // index of the entry in current
  WIN32_FIND_DATAA current{};
} g_enumeration;

void End() {
  Enumeration& e = g_enumeration;
  if (e.find != INVALID_HANDLE_VALUE) FindClose(e.find);
  e.find = INVALID_HANDLE_VALUE;
  e.directory.clear();
  e.reached = 0;
  e.firstPending = false;
}

void Restart(const std::string& directory) {
  Enumeration& e = g_enumeration;
  End();
  e.directory = directory;
  e.reached = 0;
  UINT previous = SetErrorMode(SEM_FAILCRITICALERRORS);
  e.find = FindFirstFileA((directory + "*.*").c_str(), &e.first);
  SetErrorMode(previous);
  e.firstPending = e.find != INVALID_HANDLE_VALUE;
}

// The next entry a DOS search with the hidden and directory attributes
// gives, "." and ".." left out.
bool Next(WIN32_FIND_DATAA* data) {
  Enumeration& e = g_enumeration;
  for (;;) {
    if (e.firstPending) {
      *data = e.first;
      e.firstPending = false;
    } else if (e.find == INVALID_HANDLE_VALUE || !FindNextFileA(e.find, data)) {
      return false;
    }
    if (std::strcmp(data->cFileName, ".") == 0 || std::strcmp(data->cFileName, "..") == 0) continue;
    if (IsFoundBySearch(*data)) return true;
  }
}

OSErr EntryAt(const std::string& directory, long index, WIN32_FIND_DATAA* data) {
  Enumeration& e = g_enumeration;
  if (index == 1 || index < e.reached ||
      FoldedForCompare(directory) != FoldedForCompare(e.directory))
    Restart(directory);
  while (e.reached < index) {
    if (!Next(&e.current)) {
      // Past the end: the next call starts over.
      End();
      return fnfErr;
    }
    ++e.reached;
  }
  *data = e.current;
  return noErr;
}

OSErr EnumerateDirectory(CInfoPBRec* pb) {
  HFileInfo& f = pb->hFileInfo;
  DirectoryRef directory{f.ioDirID, f.ioVRefNum};
  if (f.ioDirID == 0) {
    if (!ResolveVRefNum(f.ioVRefNum, &directory)) return nsvErr;
    f.ioDirID = directory.dirID;
  }
  std::string path;
  OSErr err = DirectoryPath(directory, &path);
  if (err != noErr) return err;
  WIN32_FIND_DATAA data;
  err = EntryAt(path, f.ioFDirIndex, &data);
  if (err != noErr) return err;
  EntryInfo entry;
  EntryFromFindData(path, data, &entry);
  SInt32 enumerated = f.ioDirID;
  if (f.ioNamePtr) AnsiNameToMac(data.cFileName, f.ioNamePtr, 63);
  FillFileFields(f, entry);
  f.ioFlAttrib = entry.directory ? kioFlAttribDirMask : 0;
  f.ioFRefNum = 0;
  if (entry.directory && kwe::SessionFlag(kweFlagDirectoryIDs)) {
    pb->dirInfo.ioDrDirID = DirectoryIDForPath(entry.path, nullptr, nullptr);
    pb->dirInfo.ioDrParID = IsVolumeRoot(path) ? kRootDirID : enumerated;
  } else {
    f.ioFlParID = enumerated;
  }
  return noErr;
}

// ioFDirIndex < 0: the directory itself, its name returned and its parent's
// ID in ioDrParID.
OSErr DescribeDirectory(CInfoPBRec* pb) {
  HFileInfo& f = pb->hFileInfo;
  if (f.ioNamePtr) f.ioNamePtr[0] = 0;
  EntryInfo entry;
  DirectoryRef directory;
  OSErr err = GetEntryInfo(f.ioDirID, f.ioVRefNum, nullptr, &entry, &directory);
  if (f.ioDirID == 0 && err != nsvErr) f.ioDirID = directory.dirID;
  if (err != noErr) return err;
  if (f.ioNamePtr) LeafNameToMac(entry.path, f.ioNamePtr, 63);
  FillFileFields(f, entry);
  if (kwe::SessionFlag(kweFlagDirectoryIDs))
    f.ioDirID = DirectoryIDForPath(entry.path, nullptr, nullptr);
  std::string directoryPath = WithTrailingBackslash(entry.path);
  if (IsVolumeRoot(directoryPath)) {
    pb->dirInfo.ioDrParID = fsRtParID;
  } else {
    std::string trimmed = directoryPath.substr(0, directoryPath.size() - 1);
    pb->dirInfo.ioDrParID =
        DirectoryIDForPath(SplitAtLastSeparator(trimmed).directory, nullptr, nullptr);
  }
  return noErr;
}

// ioFDirIndex 0: by name, as PBHGetFInfo, with the directory looked in as
// the parent.
OSErr DescribeName(CInfoPBRec* pb) {
  HFileInfo& f = pb->hFileInfo;
  EntryInfo entry;
  DirectoryRef directory;
  OSErr err = GetEntryInfo(f.ioDirID, f.ioVRefNum, f.ioNamePtr, &entry, &directory);
  if (f.ioDirID == 0 && err != nsvErr) f.ioDirID = directory.dirID;
  if (err != noErr) return err;
  SInt32 parent = f.ioDirID;
  FillFileFields(f, entry);
  if (entry.directory && kwe::SessionFlag(kweFlagDirectoryIDs))
    f.ioDirID = DirectoryIDForPath(entry.path, nullptr, nullptr);
  pb->hFileInfo.ioFlParID = parent;
  return noErr;
}

}  // namespace

namespace kwe::files {
void EndCatalogEnumeration() { End(); }
}  // namespace kwe::files

KWE_API OSErr KWE_CALL PBGetCatInfo(CInfoPBPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileInfo& f = pb->hFileInfo;
  OSErr err;
  if (f.ioFDirIndex < 0)
    err = DescribeDirectory(pb);
  else if (f.ioFDirIndex == 0)
    err = DescribeName(pb);
  else
    err = EnumerateDirectory(pb);
  return Finish(&f, err);
}
