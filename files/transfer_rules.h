// The byte-level rules of the File Manager's transfers and volume figures:
// permissions, positioning modes, newline reads, block counts.
#pragma once
#include <cstddef>
#include <cstdint>

namespace kwe::files {

// ioPermssn as OpenFile mode bits: fsCurPerm and fsRdWrShPerm read and write
// (2), fsRdPerm read (0), fsWrPerm write (1), fsRdWrPerm read and write
// denying others the right to write (0x22). False for anything else.
bool OpenModeForPermission(int permission, uint16_t* mode);

// ioPosMode: the positioning mode in bits 0-1; with bit 0x80 the high byte is
// the newline character of a newline-mode read.
struct PositionMode {
  int mode = 0;
  bool newline = false;
  uint8_t newlineChar = 0;
};
PositionMode DecodePositionMode(int16_t ioPosMode);

// The count just past the first newline character; 0 when there is none.
size_t NewlineCut(const void* data, size_t count, uint8_t newlineChar);

// Halves both cluster counts and doubles the block size until the counts fit
// the 15 bits of the old volume fields.
void FitBlockCounts(uint32_t* clusters, uint32_t* freeClusters, uint32_t* blockSize);

}  // namespace kwe::files
