// Colour tables as byte work: the standard tables GetCTable builds when no
// 'clut' resource is found, the nearest-entry search of Color2Index and the
// 5-bit inverse table a device keeps beside its table. Runs natively too.
#pragma once
#include <cstddef>
#include <cstdint>

#include "QuickdrawColour.h"

namespace kwe::quickdraw {

// One entry of a table.
using ColourEntry = ColorSpec;

// An entry whose value has this bit is skipped by colour matching.
constexpr SInt16 kSkipEntry = 0x4000;

// The colours of standard table id written to out (room for 256): 1, 2, 4
// and 8 for the colour depths, 33, 34, 36 and 40 (32 + depth) and 20 for
// greys; the count, or 0 for an id the library does not build.
int StandardTableColours(int id, RGBColor* out);

// The first entry with the smallest |dr| + |dg| + |db| over the 16-bit
// components, skipping entries marked kSkipEntry; -1 when none is left.
int NearestEntry(const ColourEntry* entries, int count, RGBColor c);

// The inverse table at resolution 5: one index per 15-bit colour (red in the
// top five bits), each the nearest entry to the middle of its cell.
constexpr size_t kInverseTableSize = 32768;
void BuildInverseTable(const ColourEntry* entries, int count, uint8_t* table);

// The cell of c in an inverse table of resolution 3, 4 or 5: each
// component's high byte plus 4 (at most 255) for resolution 5, the top bits
// otherwise.
int InverseCell(RGBColor c, int resolution);

// The 16-bit component at the middle of cell k (0 to 31) of a 5-bit axis.
UInt16 CellComponent(int k);

}  // namespace kwe::quickdraw
