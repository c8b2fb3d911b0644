// Classification of the Windows platform from GetVersion's answer.
#pragma once
#include <cstdint>

namespace kwe {

struct WindowsVersion {
  uint16_t versionWord = 0;  // low byte major, high byte minor
  uint8_t major = 0;
  bool windowsNT = false;
  bool windows95 = false;
  bool win32s = false;

  // The new shell's look (dialog frames, list boxes) is there on 95 and NT 4+.
  bool NewShell() const { return windows95 || (windowsNT && major >= 4); }
};

WindowsVersion ClassifyWindowsVersion(uint32_t getVersionResult);

// What KWE_InitGlobals answers for a platform and Windows-flags word.
int16_t InitGlobalsResult(const WindowsVersion& version, uint16_t windowsFlags);

}  // namespace kwe
