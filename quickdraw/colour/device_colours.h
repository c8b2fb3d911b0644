// Colour tables as handles, and the current device's table and inverse table
// that colour matching and CopyBits read.
#pragma once
#include <cstdint>

#include "QuickdrawColour.h"
#include "quickdraw/colour/colour_tables.h"

namespace kwe::quickdraw {

constexpr size_t kColourTableHeader = 8;  // ctSeed, ctFlags, ctSize
constexpr SInt16 kDeviceTableFlag = static_cast<SInt16>(0x8000);

// A new table of n colours, entry i with value i; null when memory is short.
CTabHandle NewColourTable(const RGBColor* colours, int n, SInt32 seed);
// The entries a table really holds: ctSize + 1, cut to what its handle has
// room for; 0 for null or a table too small for its header.
int TableEntryCount(CTabHandle table);
inline const ColourEntry* TableEntries(CTabHandle table) { return (*table)->ctTable; }

// The GrafVars of a colour port (op and highlight colours, palette
// fields); null for a plain port and for a colour port whose handle is
// missing or too small to hold them.
GrafVars* GrafVarsOf(GrafPtr port);

// The current device's colour table; null before InitGraf.
CTabHandle CurrentDeviceTable();

// The inverse table of table at resolution 5, made on first use and kept
// while the table's seed stays the same; null when memory is short or the
// table is empty.
const uint8_t* InverseTableOf(CTabHandle table);
void ForgetInverseTable(CTabHandle table);
// Forgets the kept inverse tables (at the end of the session).
void ReleaseInverseTables();

// The current device's search procedures asked in turn for colour's index;
// false when none answers.
bool SearchProceduresFind(const RGBColor& colour, SInt32* index);
// The current device's newest complement procedure applied; false when it
// has none.
bool ComplementByProcedure(RGBColor* colour);
// A device's procedure records, before the device goes.
void DisposeDeviceProcedures(GDHandle gdh);

}  // namespace kwe::quickdraw
