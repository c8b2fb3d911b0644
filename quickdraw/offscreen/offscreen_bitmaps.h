// The offscreen bitmap table: ports whose bits are application memory
// (SetPortBits, SetPortPix) draw into a DIB section in a memory DC of
// their own, whose pixels are copied to and from that memory.
#pragma once
#include <windows.h>

#include <cstdint>

#include "Quickdraw.h"
#include "quickdraw/pixmaps/pixel_conversion.h"

namespace kwe::quickdraw {

struct PortAttr;

constexpr int kOffscreenEntries = 32;

// A port's portBits.baseAddr while it holds entry n (0 to 31) is n + 1: a
// null baseAddr is never taken for an entry.
inline bool IsEntryTag(uintptr_t base) { return base >= 1 && base <= kOffscreenEntries; }

// SetPortBits and SetPortPix: the port gives up the entry it holds (its
// pixels written back) and, for application memory, takes a new one. False
// when the bits cannot be drawn into: bad pixels (QDError paramErr) or no
// free entry (QDError memFullErr); the port then draws nowhere.
bool GiveBits(GrafPtr port, const BitMap& bits, bool colour);
// ClosePort: the entry's pixels are written back and the entry freed.
void ReleaseBitsOf(GrafPtr port);
// InitGraf and the end of QuickDraw: every entry freed, nothing written
// (the memory may be gone).
void ClearOffscreenTable();

// The current port changes: the port left writes its pixels back, the
// port entered reads what the program changed in its memory meanwhile.
void PortLeft(GrafPtr port);
void PortEntered(GrafPtr port);

// CopyBits: the record of the port holding entry tag, its pixels brought
// up to date from memory; null for a free entry.
PortAttr* EntrySide(uintptr_t tag);
// Before a copy, memory overlapping an entry whose port is current gets
// the entry's pixels; after it, an entry whose memory the copy wrote reads
// it again, and an entry the copy drew into writes it back.
void SyncBeforeCopy(const BitMap* src, const BitMap* dst);
void SyncAfterCopy(const BitMap* dst);

// While the current port draws into its own pixel map's DC, a bitmap of
// the table (rowBytes positive, tag below the port tags) is copied as the
// memory it stands for: the pipeline copies between that memory and the
// pixel map exactly, where a blit between the pixel map's DC and the
// entry's 1-bit section would match colours through GDI. False otherwise.
bool EntryAsMemory(const BitMap* bits, MacPixels* memory);

// Local coordinates of a port holding an entry map onto its pixels from
// the bits' top left; false for any other port.
bool EntryOrigin(GrafPtr port, int32_t* h, int32_t* v);

}  // namespace kwe::quickdraw
