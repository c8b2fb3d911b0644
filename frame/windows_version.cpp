#include "frame/windows_version.h"

namespace kwe {

WindowsVersion ClassifyWindowsVersion(uint32_t getVersionResult) {
  WindowsVersion v;
  v.versionWord = static_cast<uint16_t>(getVersionResult & 0xFFFF);
  v.major = static_cast<uint8_t>(getVersionResult & 0xFF);
  if ((getVersionResult & 0x80000000u) == 0)
    v.windowsNT = true;
  else if (v.major > 3)
    v.windows95 = true;
  else
    v.win32s = true;
  return v;
}

int16_t InitGlobalsResult(const WindowsVersion& version, uint16_t windowsFlags) {
  if (version.major < 3) return 1;
  if (windowsFlags & 0x00C2) return 2;
  if (!(windowsFlags & 0x0001)) return 3;
  return 0;
}

}  // namespace kwe
