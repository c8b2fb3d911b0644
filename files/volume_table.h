// The volumes of the session: the Windows drives in letter order, then each
// network share as it is first met. A volume reference number is minus the
// volume's position (A: -1, B: -2, C: -3, ...).
#pragma once
#include <windows.h>

#include <string>

#include "Files.h"

namespace kwe::files {

constexpr int kMaxVolumes = 27;
constexpr SInt16 kNoVolume = SInt16(0xEEEE);

void BuildVolumeTable();
void EnsureVolumeTable();
int VolumeCount();

struct Volume {
  UINT driveType = DRIVE_REMOVABLE;  // GetDriveTypeA's answer
  int code = 0xFF;                   // 0-25 the drive letters, 30 + n share n
  std::string root;                  // "X:\" or "\\SERVER\SHARE\"
};

// Position 1 to VolumeCount(); null beyond.
const Volume* VolumeAt(int position);

// Numbers in the volume range, known or not; working-directory numbers and
// 0 are outside it.
inline bool IsVolumeRefNum(SInt16 vRefNum) { return vRefNum < 0 && vRefNum >= -kMaxVolumes; }

// The volume that holds a path (a share seen for the first time is added);
// kNoVolume when the table has none for it.
SInt16 VolumeRefNumOfPath(const std::string& path);

// Root path of a volume reference number; false when it names no volume.
bool VolumeRoot(SInt16 vRefNum, std::string* root);

}  // namespace kwe::files
