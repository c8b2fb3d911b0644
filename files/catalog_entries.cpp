#include "files/catalog_entries.h"

#include <cstring>

#include "files/call_support.h"
#include "files/dos_dates.h"
#include "files/dos_path.h"
#include "files/file_slots.h"
#include "files/finder_info.h"
#include "files/name_conversion.h"

namespace kwe::files {

bool HasWildcards(const std::string& name) { return name.find_first_of("*?") != std::string::npos; }

bool IsFoundBySearch(const WIN32_FIND_DATAA& data) {
  return !(data.dwFileAttributes & FILE_ATTRIBUTE_SYSTEM);
}

UInt32 MacSecondsOfFileTime(const FILETIME& time) {
  FILETIME local;
  WORD date = 0, clock = 0;
  if (!FileTimeToLocalFileTime(&time, &local) || !FileTimeToDosDateTime(&local, &date, &clock))
    return 0;
  return MacSecondsFromDosDateTime(date, clock);
}

bool FileTimeOfMacSeconds(UInt32 seconds, FILETIME* time) {
  uint16_t date, clock;
  FILETIME local;
  return DosDateTimeFromMacSeconds(seconds, &date, &clock) &&
         DosDateTimeToFileTime(date, clock, &local) && LocalFileTimeToFileTime(&local, time);
}

void EntryFromFindData(const std::string& directory, const WIN32_FIND_DATAA& data,
                       EntryInfo* info) {
  *info = EntryInfo{};
  info->path = directory + data.cFileName;
  info->directory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  info->readOnly = (data.dwFileAttributes & FILE_ATTRIBUTE_READONLY) != 0;
  if (!info->directory) {
    info->length = data.nFileSizeHigh || data.nFileSizeLow > 0x7FFFFFFF
                       ? 0x7FFFFFFF
                       : static_cast<SInt32>(data.nFileSizeLow);
    info->openSlot = SlotOfPath(info->path);
    info->finder = FinderInfoFor(data.cFileName);
  }
  info->modified = MacSecondsOfFileTime(data.ftLastWriteTime);
}

OSErr LookUpEntry(const std::string& path, EntryInfo* info) {
  *info = EntryInfo{};
  if (IsVolumeRoot(WithTrailingBackslash(path))) {
    info->path = path;
    info->directory = true;
    return noErr;
  }
  SplitPath parts = SplitAtLastSeparator(path);
  if (parts.name.empty() || HasWildcards(path)) return fnfErr;
  WIN32_FIND_DATAA data;
  UINT previous = SetErrorMode(SEM_FAILCRITICALERRORS);
  HANDLE find = FindFirstFileA(path.c_str(), &data);
  SetErrorMode(previous);
  if (find == INVALID_HANDLE_VALUE) return fnfErr;
  FindClose(find);
  if (!IsFoundBySearch(data)) return fnfErr;
  // Windows answers with the name as stored; the path keeps the caller's
  // directory.
  EntryFromFindData(parts.directory, data, info);
  return noErr;
}

OSErr GetEntryInfo(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name, EntryInfo* info,
                   DirectoryRef* resolved) {
  DirectoryRef directory{dirID, vRefNum};
  if (dirID == 0 && !ResolveVRefNum(vRefNum, &directory)) return nsvErr;
  *resolved = directory;
  std::string path;
  OSErr err = FullPath(directory.dirID, directory.vRefNum, MacNameToAnsi(name), &path);
  if (err != noErr) return err;
  return LookUpEntry(path, info);
}

}  // namespace kwe::files
