#include "resources/byte_swap_records.h"

#include "KWEByteSwap.h"

namespace kwe::byteswap {
namespace {

constexpr uint64_t kColourTableHeader = 8;
constexpr uint64_t kColorSpecSize = 8;  // value, red, green, blue
constexpr uint64_t kCursorHotSpot = 64;
constexpr uint64_t kColourCursorHotSpot = 84;

// Source bit of the loaded Macintosh word for each bit of the native stage
// word. Stage 1 (the low nibble on the Macintosh) lands in the top nibble,
// stage 4 in the bottom one, and within a stage the bold-item bit comes
// first and the sound's two bits last, as the bit fields are declared.
constexpr int kStageSourceBit[16] = {7, 6, 4, 5, 3, 2, 0, 1, 15, 14, 12, 13, 11, 10, 8, 9};

constexpr uint16_t MoveBits(uint16_t word, bool toNative) {
  uint16_t result = 0;
  for (int bit = 0; bit < 16; ++bit) {
    int from = toNative ? kStageSourceBit[bit] : bit;
    int to = toNative ? bit : kStageSourceBit[bit];
    if (word & (1u << from)) result = uint16_t(result | (1u << to));
  }
  return result;
}

static_assert(MoveBits(0x0300, true) == 0xC000, "stage 1 sound to bits 15, 14");
static_assert(MoveBits(0x0080, true) == 0x0001, "stage 4 bold item to bit 0");
static_assert(MoveBits(MoveBits(0x5A3C, true), false) == 0x5A3C, "exact inverse");

}  // namespace

uint16_t AlertStagesToNative(uint16_t loadedMacWord) { return MoveBits(loadedMacWord, true); }
uint16_t AlertStagesToMac(uint16_t nativeStages) { return MoveBits(nativeStages, false); }

void SwapAlertStages(ResourceBytes& bytes, uint64_t at) {
  if (!bytes.Holds(at, 2)) {
    bytes.MarkDamaged();
    return;
  }
  uint16_t word = NativeWord(bytes.At(at));
  StoreNativeWord(bytes.At(at),
                  bytes.ToNative() ? AlertStagesToNative(word) : AlertStagesToMac(word));
}

void SwapColourTable(ResourceBytes& bytes, uint64_t at) {
  bytes.Long(at);      // ctSeed
  bytes.Word(at + 4);  // ctFlags
  int32_t entries = int32_t(int16_t(bytes.SteeringWord(at + 6, 0xFFFF))) + 1;
  uint64_t entry = at + kColourTableHeader;
  for (int32_t i = 0; i < entries; ++i, entry += kColorSpecSize) {
    if (!bytes.Holds(entry, kColorSpecSize)) {
      bytes.MarkDamaged();  // the count runs past the data: stop at its end
      return;
    }
    ReverseFourWords(bytes.At(entry));
  }
}

void SwapPixMap(ResourceBytes& bytes, uint64_t at) {
  bytes.Long(at);       // baseAddr
  bytes.Word(at + 4);   // rowBytes
  bytes.Rect(at + 6);   // bounds
  bytes.Word(at + 14);  // pmVersion
  bytes.Word(at + 16);  // packType
  bytes.Long(at + 18);  // packSize
  bytes.Long(at + 22);  // hRes
  bytes.Long(at + 26);  // vRes
  bytes.Word(at + 30);  // pixelType
  bytes.Word(at + 32);  // pixelSize
  bytes.Word(at + 34);  // cmpCount
  bytes.Word(at + 36);  // cmpSize
  bytes.Long(at + 38);  // planeBytes
  bytes.Long(at + 42);  // pmTable
  bytes.Long(at + 46);  // pmReserved
}

void SwapBitMap(ResourceBytes& bytes, uint64_t at) {
  bytes.Long(at);      // baseAddr
  bytes.Word(at + 4);  // rowBytes
  bytes.Rect(at + 6);  // bounds
}

void SwapCursorHotSpot(bool isColour, uint8_t* data, int32_t size) {
  if (!data || size <= 0) return;
  ResourceBytes bytes(data, size_t(size), true);
  uint64_t at = isColour ? kColourCursorHotSpot : kCursorHotSpot;
  if (!bytes.Holds(at, 4)) return;
  bytes.Word(at);
  bytes.Word(at + 2);
}

}  // namespace kwe::byteswap

// The table's own counts are trusted: the caller vouches for
// 8 + 8 * (ctSize + 1) bytes. Resource data goes through KWE_ByteSwap,
// which holds every colour table to the resource's size.
KWE_API void KWE_CALL KWE_ByteSwapCLUT(UInt32 direction, void* table) {
  if (!table) return;
  constexpr size_t kLargestTable = 8 + 8 * 32768;
  kwe::byteswap::ResourceBytes bytes(static_cast<uint8_t*>(table), kLargestTable, direction != 0);
  kwe::byteswap::SwapColourTable(bytes, 0);
}
