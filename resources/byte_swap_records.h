// The QuickDraw and Dialog Manager records that several resource types
// share: colour tables, pixel maps and bit maps, the alert stage word, and
// the hot spot of a cursor.
#pragma once
#include <cstdint>

#include "resources/resource_bytes.h"

namespace kwe::byteswap {

constexpr uint64_t kPixMapSize = 50;  // the published PixMap record
constexpr uint64_t kBitMapSize = 14;

// ctSeed, ctFlags, ctSize and ctSize + 1 ColorSpecs (none for a negative
// ctSize) of the table at offset at.
void SwapColourTable(ResourceBytes& bytes, uint64_t at);

void SwapPixMap(ResourceBytes& bytes, uint64_t at);
void SwapBitMap(ResourceBytes& bytes, uint64_t at);

// The alert's four stages (bold item, box drawn, 2-bit sound) move to where
// a host declaration of them as bit fields, allocated from the least
// significant bit, finds them; converting back restores the Macintosh word.
uint16_t AlertStagesToNative(uint16_t loadedMacWord);
uint16_t AlertStagesToMac(uint16_t nativeStages);
void SwapAlertStages(ResourceBytes& bytes, uint64_t at);

// Cursor.hotSpot (offset 64) or, for a colour cursor, CCrsr.crsrHotSpot
// (offset 84): both words reversed when they lie inside size bytes.
void SwapCursorHotSpot(bool isColour, uint8_t* data, int32_t size);

}  // namespace kwe::byteswap
