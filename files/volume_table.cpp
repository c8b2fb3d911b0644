#include "files/volume_table.h"

#include "files/dos_path.h"

namespace kwe::files {
namespace {

constexpr int kShareCodeBase = 30;

// Entry 0 stands for "no volume" (removable, code 0xFF) so positions count
// from 1 as volume reference numbers do.
Volume g_volumes[kMaxVolumes + 1];
int g_count = 0;
bool g_built = false;

// Share names in the order met, folded for comparison; a share's code is
// kShareCodeBase + its index here. A Toolbox caller never sees this list.
std::string g_shares[kMaxVolumes];
int g_shareCount = 0;

SInt16 PositionOfCode(int code) {
  for (int i = 1; i <= g_count; ++i)
    if (g_volumes[i].code == code) return static_cast<SInt16>(-i);
  return kNoVolume;
}

SInt16 ShareVolume(const PathVolume& v) {
  std::string folded = FoldedForCompare(v.share);
  for (int i = 0; i < g_shareCount; ++i)
    if (g_shares[i] == folded) return PositionOfCode(kShareCodeBase + i);
  // More shares than the table holds are refused: the volume is unknown.
  if (g_count >= kMaxVolumes) return kNoVolume;
  g_shares[g_shareCount] = folded;
  Volume& entry = g_volumes[++g_count];
  entry.driveType = DRIVE_REMOTE;
  entry.code = kShareCodeBase + g_shareCount++;
  entry.root = v.root;
  return static_cast<SInt16>(-g_count);
}

}  // namespace

void BuildVolumeTable() {
  g_count = 0;
  g_shareCount = 0;
  g_volumes[0] = Volume{};
  DWORD present = GetLogicalDrives();
  for (int letter = 0; letter < 26 && g_count < kMaxVolumes; ++letter) {
    char root[4] = {static_cast<char>('A' + letter), ':', '\\', 0};
    UINT type = DRIVE_NO_ROOT_DIR;
    // A: and B: are always floppy drives, present or not, so that C: is -3
    // on every machine as Macintosh-era code expects.
    if (letter < 2)
      type = DRIVE_REMOVABLE;
    else if (present & (1u << letter))
      type = GetDriveTypeA(root);
    if (type <= DRIVE_NO_ROOT_DIR) continue;
    Volume& entry = g_volumes[++g_count];
    entry.driveType = type;
    entry.code = letter;
    entry.root = root;
  }
  g_built = true;
}

void EnsureVolumeTable() {
  if (!g_built) BuildVolumeTable();
}

int VolumeCount() {
  EnsureVolumeTable();
  return g_count;
}

const Volume* VolumeAt(int position) {
  EnsureVolumeTable();
  return position >= 1 && position <= g_count ? &g_volumes[position] : nullptr;
}

SInt16 VolumeRefNumOfPath(const std::string& path) {
  EnsureVolumeTable();
  PathVolume v = VolumeOfDosPath(path);
  if (v.kind == PathVolume::kDrive) return PositionOfCode(v.drive);
  if (v.kind == PathVolume::kShare) return ShareVolume(v);
  return kNoVolume;
}

bool VolumeRoot(SInt16 vRefNum, std::string* root) {
  if (!IsVolumeRefNum(vRefNum)) return false;
  const Volume* v = VolumeAt(-vRefNum);
  if (!v) return false;
  *root = v->root;
  return true;
}

}  // namespace kwe::files
