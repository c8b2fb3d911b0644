#include "files/working_directories.h"

#include <windows.h>

#include <unordered_map>
#include <vector>

#include "files/dos_path.h"
#include "files/volume_table.h"
#include "frame/app_path.h"
#include "frame/low_memory.h"

namespace kwe::files {
namespace {

// A directory ID is this base plus the record's n: never 0 or 2, unique for
// the session, and checkable, so a stale or made-up ID is refused rather
// than followed.
constexpr SInt32 kDirIDBase = 0x4B570000;
// Numbers stay below 0xEEEE (the "no volume" answer) and so also clear of
// the volume reference numbers -1 to -27.
constexpr int kMaxRecords = 0x6EED;
constexpr size_t kMaxDirectoryPath = 255;

std::vector<WorkingDirectory> g_records;               // record n at index n - 1
std::unordered_map<std::string, int> g_recordsByPath;  // folded path -> n

const WorkingDirectory* RecordAt(long n) {
  return n >= 1 && n <= static_cast<long>(g_records.size()) ? &g_records[n - 1] : nullptr;
}

std::string AbsoluteDirectory(const std::string& path) {
  if (IsFullDosName(path) || (path.size() >= 2 && path[1] == ':')) return path;
  return ProcessCurrentDirectory() + path;
}

}  // namespace

void ForgetWorkingDirectories() {
  g_records.clear();
  g_recordsByPath.clear();
}

SInt32 DirectoryIDForPath(const std::string& path, SInt16* vRefNum, SInt16* wdRefNum) {
  std::string directory = CanonicalDirectory(AbsoluteDirectory(path));
  SInt16 volume = VolumeRefNumOfPath(directory);
  if (vRefNum) *vRefNum = volume;
  if (wdRefNum) *wdRefNum = kNoVolume;
  if (VolumeOfDosPath(directory).kind == PathVolume::kNone) return 0;
  if (IsVolumeRoot(directory)) {
    if (wdRefNum) *wdRefNum = 0;
    return kRootDirID;
  }
  if (directory.size() > kMaxDirectoryPath) return 0;
  std::string key = FoldedForCompare(directory);
  auto found = g_recordsByPath.find(key);
  int n;
  if (found != g_recordsByPath.end()) {
    n = found->second;
  } else {
    if (static_cast<int>(g_records.size()) >= kMaxRecords) return 0;
    n = static_cast<int>(g_records.size()) + 1;
    g_records.push_back({static_cast<SInt16>(0x8000 | n), kDirIDBase + n, directory});
    g_recordsByPath.emplace(key, n);
  }
  if (wdRefNum) *wdRefNum = g_records[n - 1].number;
  return g_records[n - 1].dirID;
}

const WorkingDirectory* DirectoryByID(SInt32 dirID) { return RecordAt(long(dirID) - kDirIDBase); }

const WorkingDirectory* DirectoryByNumber(SInt16 wdRefNum) {
  UInt16 bits = static_cast<UInt16>(wdRefNum);
  return (bits & 0x8000) ? RecordAt(bits & 0x7FFF) : nullptr;
}

std::string ProcessCurrentDirectory() {
  // The File and Resource Managers' rule for the current directory. It keeps
  // room for an 8.3 name within 128 bytes; a longer directory is still a
  // directory (working-directory paths go to 255), so it is read whole.
  std::string directory = CurrentDirectoryPathName("");
  if (directory.empty() || directory.back() == '?' ||
      VolumeOfDosPath(directory).kind == PathVolume::kNone) {
    char whole[MAX_PATH + 1] = "";
    DWORD n = GetCurrentDirectoryA(MAX_PATH, whole);
    if (n == 0 || n >= MAX_PATH) return std::string();
    OemToCharA(whole, whole);
    directory = whole;
  }
  if (VolumeOfDosPath(directory).kind == PathVolume::kNone) return std::string();
  return WithTrailingBackslash(directory);
}

SInt16 MakeCurrentDirectory(const std::string& path) {
  std::string directory = path.empty() ? ProcessCurrentDirectory() : path;
  if (directory.empty()) return kNoVolume;
  SInt16 volume, number;
  SInt32 dirID = DirectoryIDForPath(directory, &volume, &number);
  if (dirID == 0) return kNoVolume;
  lowmem::At<SInt32>(lowmem::Slot::CurDirStore) = dirID;
  return dirID == kRootDirID ? volume : number;
}

bool ResolveVRefNum(SInt16 vRefNum, DirectoryRef* ref) {
  if (IsVolumeRefNum(vRefNum)) {
    *ref = {kRootDirID, vRefNum};
    return true;
  }
  if (vRefNum == 0) {
    SInt16 current = MakeCurrentDirectory(std::string());
    if (current == kNoVolume) return false;
    *ref = {lowmem::At<SInt32>(lowmem::Slot::CurDirStore), current};
    return true;
  }
  const WorkingDirectory* wd = DirectoryByNumber(vRefNum);
  if (!wd) return false;
  *ref = {wd->dirID, vRefNum};
  return true;
}

SInt16 VolumeOfDirectory(const DirectoryRef& ref) {
  if (ref.dirID != kRootDirID) {
    const WorkingDirectory* wd = DirectoryByID(ref.dirID);
    return wd ? VolumeRefNumOfPath(wd->path) : kNoVolume;
  }
  if (ref.vRefNum == kNoVolume) return kNoVolume;
  if (IsVolumeRefNum(ref.vRefNum)) return VolumeAt(-ref.vRefNum) ? ref.vRefNum : kNoVolume;
  DirectoryRef named;
  if (!ResolveVRefNum(ref.vRefNum, &named)) return kNoVolume;
  if (named.dirID == kRootDirID) return VolumeAt(-named.vRefNum) ? named.vRefNum : kNoVolume;
  return VolumeOfDirectory(named);
}

SInt16 NumberOfDirectory(const DirectoryRef& ref) {
  if (ref.dirID == kRootDirID) return VolumeOfDirectory(ref);
  const WorkingDirectory* wd = DirectoryByID(ref.dirID);
  return wd ? wd->number : kNoVolume;
}

OSErr DirectoryPath(const DirectoryRef& ref, std::string* path) {
  if (ref.dirID == kRootDirID) {
    SInt16 volume = VolumeOfDirectory(ref);
    return VolumeRoot(volume, path) ? OSErr(noErr) : OSErr(nsvErr);
  }
  const WorkingDirectory* wd = DirectoryByID(ref.dirID);
  if (!wd) return fnfErr;
  *path = wd->path;
  return noErr;
}

OSErr FullPath(SInt32 dirID, SInt16 vRefNum, const std::string& name, std::string* path) {
  path->clear();
  DirectoryRef directory{dirID, vRefNum};
  if (dirID == 0 && !ResolveVRefNum(vRefNum, &directory)) directory.dirID = 0;
  std::string file = name;
  if (IsFullDosName(name)) {
    SplitPath parts = SplitAtLastSeparator(name);
    directory.dirID = DirectoryIDForPath(parts.directory, &directory.vRefNum, nullptr);
    file = parts.name;
  }
  if (directory.dirID == 0) return fnfErr;
  std::string full;
  OSErr err = DirectoryPath(directory, &full);
  if (err != noErr) return err;
  if (!file.empty())
    full += file;
  else if (full.size() > 3)
    full.pop_back();  // the directory itself: no trailing backslash past a drive root
  full = ReduceDoubledBackslashes(full);
  if (full.size() >= MAX_PATH) return bdNamErr;
  *path = full;
  return noErr;
}

}  // namespace kwe::files
