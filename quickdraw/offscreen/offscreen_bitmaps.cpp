// The offscreen bitmap table behind SetPortBits and SetPortPix.
//
// An entry holds a DIB section in the DIB form of the bitmap's depth (1 bit
// for 1, 8 bits through the colour table for 2, 4 and 8, 24 bits for 16 and
// 32) selected into a memory DC of its own, which becomes the port's DC. A
// DIB section, not a DDB: its bits are in memory, so the copy in and the
// write back are the Macintosh-to-DIB conversion and its inverse (what
// KWE_FoldPixMap and KWE_UnfoldPixMap run) without GetDIBits, and under Wine
// selecting it asks the window server nothing.
//
// Keeping in step with the program's memory. While the entry's port is the
// current port, drawing goes into the section and the section is what
// counts; whenever the port is not current the memory is what counts:
// - leaving the port (SetPort, SetGWorld, ClosePort, new bits) writes the
//   section back into the memory;
// - entering it again reads the memory in when the program changed it
//   meanwhile (a 64-bit hash of the memory, taken at each write back, says
//   so without keeping a second copy);
// - CopyBits from or to memory overlapping an entry whose port is current
//   writes the section back first, and reads the memory in again after
//   writing it; CopyBits from or to the port's bits themselves (the entry's
//   tag) reads the memory in first when it changed and, for a port that is
//   not current, writes back after drawing into it.
// So the ported idiom OpenPort; SetPortBits(&offBits); draw; SetPort(win);
// CopyBits(&offBits, &win->portBits, ...) finds the drawing in offBits'
// memory, and CopyBits(&offPort.portBits, ...) blits from the section.
//
// The copy-in switch (0x0100 of KWE_SetFlags' drawing switches) decides
// what the port starts with: on, the memory's pixels; off (the default,
// as for a new port), white, and the memory's old pixels are replaced at
// the first write back.
#include "quickdraw/offscreen/offscreen_bitmaps.h"

#include <algorithm>
#include <cstring>

#include "KWEPorts.h"
#include "frame/session.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/copybits/copy_sides.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

constexpr UInt16 kCopyInSwitch = 0x0100;
constexpr int16_t kNoPixels = -1;  // PortAttr.bitsEntry: the port draws nowhere

struct Entry {
  bool inUse = false;
  GrafPtr port = nullptr;
  Ptr previousTag = nullptr;  // the port's baseAddr before it took the entry
  MacPixels memory{};
  HDC dc = nullptr;
  HBITMAP section = nullptr;
  HGDIOBJ replaced = nullptr;
  DibPixels pixels{};
  uint64_t memoryHash = 0;  // of the memory when it last matched the section
  // The memory is a library DIB pixel map's packed DIB, laid out as the
  // section is: copied as it stands, both ways.
  bool mirrorsDib = false;
};

Entry g_table[kOffscreenEntries];

// The DC (and its depth) a port held before it took an entry or lost its
// pixels.
HDC g_savedDC[kPortSlotCount];
uint8_t g_savedDepth[kPortSlotCount];

struct SectionInfo {
  BITMAPINFOHEADER header;
  RGBQUAD colours[256];
};

size_t BytesOf(const MacPixels& m) {
  return static_cast<size_t>(m.rowBytes) * static_cast<size_t>(m.height);
}

// Eight bytes a step: CopyBits from a port's bits asks at every copy
// whether the memory changed, and that must cost little beside the blit.
uint64_t HashOf(const MacPixels& m) {
  uint64_t h = 0xCBF29CE484222325ull;
  const size_t size = BytesOf(m);
  size_t i = 0;
  for (; i + 8 <= size; i += 8) {
    uint64_t word;
    std::memcpy(&word, m.base + i, 8);
    h = (h ^ word) * 0x100000001B3ull;
    h ^= h >> 29;
  }
  for (; i < size; ++i) h = (h ^ m.base[i]) * 0x100000001B3ull;
  return h;
}

void CopyIn(Entry& e) {
  if (e.mirrorsDib)
    std::memcpy(e.pixels.bits, e.memory.base, BytesOf(e.memory));
  else
    MacToDib(e.memory, 0, 0, nullptr, false, e.pixels);
  e.memoryHash = HashOf(e.memory);
}

void WriteBack(Entry& e) {
  GdiFlush();
  if (e.mirrorsDib)
    std::memcpy(e.memory.base, e.pixels.bits, BytesOf(e.memory));
  else
    DibToMac(e.pixels, nullptr, false, e.memory, 0, 0);
  e.memoryHash = HashOf(e.memory);
}

bool Current(const Entry& e) { return e.port == CurrentPort(); }

Entry* EntryOf(GrafPtr port) {
  PortAttr* a = AttrOf(port);
  if (!a || a->bitsEntry <= 0) return nullptr;
  Entry& e = g_table[a->bitsEntry - 1];
  return e.inUse && e.port == port ? &e : nullptr;
}

// The section's colours: the depth's colour table for indexed pixels (the
// standard 1-bit table for a bitmap), as the DIB form holds them. Only the
// depth's values are listed, so that GDI's nearest colour is always one.
void FillColours(SectionInfo& info, int depth, CTabHandle table) {
  if (depth == 1) {
    info.colours[1] = RGBQUAD{0xFF, 0xFF, 0xFF, 0};  // DIB 0 is black
    info.header.biClrUsed = 2;
    return;
  }
  if (depth > 8) return;
  int count = std::min(table && *table ? TableEntryCount(table) : 0, 1 << depth);
  const ColourEntry* entries = count ? TableEntries(table) : nullptr;
  for (int i = 0; i < count; ++i) {
    const RGBColor& c = entries[i].rgb;
    info.colours[i] = RGBQUAD{static_cast<BYTE>(c.blue >> 8), static_cast<BYTE>(c.green >> 8),
                              static_cast<BYTE>(c.red >> 8), 0};
  }
  info.header.biClrUsed = static_cast<DWORD>(std::max(count, 1));
}

void FreeEntry(Entry& e) {
  if (e.replaced) SelectObject(e.dc, e.replaced);
  if (e.section) DeleteObject(e.section);
  if (e.dc) DeleteDC(e.dc);
  e = Entry{};
}

// The DIB form of Macintosh pixels of the entry's depth and colours.
SectionInfo InfoFor(const MacPixels& memory, CTabHandle table) {
  SectionInfo info{};
  info.header = {sizeof info.header,
                 memory.width,
                 memory.height,
                 1,
                 static_cast<WORD>(DibDepthFor(memory.depth, false)),
                 BI_RGB,
                 0,
                 0,
                 0,
                 0,
                 0};
  FillColours(info, memory.depth, table);
  return info;
}

bool MakeSection(Entry& e, const BITMAPINFO* info) {
  void* bits = nullptr;
  e.dc = CreateCompatibleDC(nullptr);
  if (e.dc) e.section = CreateDIBSection(e.dc, info, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (!e.section) return false;
  e.replaced = SelectObject(e.dc, e.section);
  e.pixels = DibPixels{static_cast<uint8_t*>(bits), info->bmiHeader.biBitCount, e.memory.width,
                       e.memory.height};
  return true;
}

// The packed DIB of a library DIB pixel map, or null.
const BITMAPINFO* DibOf(const BitMap& bits, bool colour) {
  PixMap* pm = colour ? const_cast<PixMap*>(reinterpret_cast<const PixMap*>(&bits)) : nullptr;
  LibraryPixMap* lib = pm ? LibraryRecordOf(pm) : nullptr;
  if (!lib || !(lib->flags & kDibPixelsFlag) || !lib->dib || !*lib->dib || !lib->dibBits)
    return nullptr;
  return reinterpret_cast<const BITMAPINFO*>(*lib->dib);
}

// A library pixel map that holds its pixels in a DDB has none behind
// baseAddr (one byte shared by all such maps).
bool PixelsElsewhere(const BitMap& bits, bool colour) {
  PixMap* pm = colour ? const_cast<PixMap*>(reinterpret_cast<const PixMap*>(&bits)) : nullptr;
  LibraryPixMap* lib = pm ? LibraryRecordOf(pm) : nullptr;
  return lib && !(lib->flags & kMacPixelsFlag);
}

// The packed DIB's bits as the memory an entry keeps in step with.
MacPixels DibMemory(const BitMap& bits, const BITMAPINFO& dib) {
  const BITMAPINFOHEADER& h = dib.bmiHeader;
  const LibraryPixMap* lib = reinterpret_cast<const LibraryPixMap*>(&bits);
  return MacPixels{static_cast<uint8_t*>(lib->dibBits), DibRowBytes(h.biWidth, h.biBitCount),
                   h.biBitCount, static_cast<int>(h.biWidth), static_cast<int>(h.biHeight)};
}

// Puts dc under the port, as its drawing DC from now on; the stock objects
// go back into the DC left, which may be deleted next.
void SwapPortDC(PortAttr& a, HDC dc, int depth) {
  FlushGdiState(a);
  a.hdc = dc;
  a.deviceDepth = static_cast<uint8_t>(depth);
  SetTextAlign(dc, TA_BASELINE);
  if (CurrentAttr() == &a) SetCurrentDC(dc);
  TakeOriginFromPortRect(a);
  UpdateDevicePen(a);
  RebuildClip(a.port);
}

// The port gives back its entry (or its drawing nowhere) and its own DC.
void Detach(PortAttr& a, bool writeBack) {
  if (a.bitsEntry == 0) return;
  int slot = a.port->patStretch;
  int held = a.bitsEntry;
  a.bitsEntry = 0;
  a.flags &= static_cast<UInt16>(~kPixMapDcFlag);
  SwapPortDC(a, g_savedDC[slot], g_savedDepth[slot]);
  g_savedDC[slot] = nullptr;
  if (held < 0) return;
  Entry& e = g_table[held - 1];
  if (writeBack) WriteBack(e);
  if (!IsColourPort(a.port) && a.port->portBits.baseAddr == reinterpret_cast<Ptr>(held))
    a.port->portBits.baseAddr = e.previousTag;
  FreeEntry(e);
}

void RememberPortDC(PortAttr& a) {
  g_savedDC[a.port->patStretch] = a.hdc;
  g_savedDepth[a.port->patStretch] = a.deviceDepth;
}

// What the port's depth is as DeviceDepthOf counts it.
int PortDepthOf(int depth) { return depth <= 8 || depth == 16 ? depth : 24; }

// No entry for bits the port cannot draw into: its drawing goes to the
// library's 1 x 1 scratch bitmap until it is given drawable bits.
bool DrawNowhere(PortAttr& a, OSErr err) {
  RememberPortDC(a);
  a.bitsEntry = kNoPixels;
  SwapPortDC(a, SharedMemoryDC(), 1);
  SetQDError(err);
  return false;
}

bool Overlaps(const MacPixels& m, const BitMap* bits) {
  const uint8_t* end = m.base + static_cast<ptrdiff_t>(m.rowBytes) * m.height;
  if (const BITMAPINFO* dib = DibOf(*bits, true)) {
    MacPixels d = DibMemory(*bits, *dib);
    return d.base < end && m.base < d.base + BytesOf(d);
  }
  uintptr_t base = reinterpret_cast<uintptr_t>(bits->baseAddr);
  if (base <= 0xFFFF) return false;
  int rows = bits->bounds.bottom - bits->bounds.top;
  if (rows <= 0) return false;
  const uint8_t* from = reinterpret_cast<const uint8_t*>(base);
  const uint8_t* to = from + static_cast<ptrdiff_t>(bits->rowBytes & 0x3FFF) * rows;
  return from < end && m.base < to;
}

}  // namespace

bool GiveBits(GrafPtr port, const BitMap& bits, bool colour) {
  PortAttr* a = AttrOf(port);
  if (!a) return false;
  Detach(*a, true);
  uintptr_t base = reinterpret_cast<uintptr_t>(bits.baseAddr);
  if (base > 0 && base <= 0xFFFF) return true;  // a port's tag, an entry or no pixels
  const PixMap* pm = colour ? reinterpret_cast<const PixMap*>(&bits) : nullptr;
  const BITMAPINFO* dib = DibOf(bits, colour);
  MacPixels memory{reinterpret_cast<uint8_t*>(bits.baseAddr), bits.rowBytes & 0x3FFF,
                   pm ? pm->pixelSize : 1, bits.bounds.right - bits.bounds.left,
                   bits.bounds.bottom - bits.bounds.top};
  if (dib) {
    memory = DibMemory(bits, *dib);
  } else if ((!colour && (bits.rowBytes & 0xC000)) || memory.width <= 0 || memory.height <= 0 ||
             CheckMacPixels(memory) != noErr || PixelsElsewhere(bits, colour) ||
             (pm && pm->pixelSize <= 8 && (!pm->pmTable || !*pm->pmTable))) {
    // A bitmap's rowBytes has no flag bits: with them it is no bitmap.
    return DrawNowhere(*a, paramErr);
  }
  int index = 0;
  while (index < kOffscreenEntries && g_table[index].inUse) ++index;
  if (index == kOffscreenEntries) return DrawNowhere(*a, memFullErr);
  Entry& e = g_table[index];
  e.memory = memory;
  e.mirrorsDib = dib != nullptr;
  SectionInfo info = dib ? SectionInfo{} : InfoFor(memory, pm ? pm->pmTable : nullptr);
  if (!MakeSection(e, dib ? dib : reinterpret_cast<const BITMAPINFO*>(&info))) {
    FreeEntry(e);
    return DrawNowhere(*a, memFullErr);
  }
  e.inUse = true;
  e.port = port;
  // A DIB pixel map's pixels are what the map shows: the port draws on
  // them, not on white.
  if (dib || (TheSession().drawingSwitches & kCopyInSwitch)) {
    CopyIn(e);
  } else {
    // White: 1 bits in the 1-bit section, the white entry's value or
    // all ones in the deeper ones.
    int white = memory.depth == 1 || memory.depth > 8 ? 0xFF : 0;
    std::memset(e.pixels.bits, white,
                static_cast<size_t>(DibRowBytes(e.pixels.width, e.pixels.depth)) * memory.height);
    e.memoryHash = HashOf(memory);
  }
  if (!colour) {
    e.previousTag = port->portBits.baseAddr;
    port->portBits.baseAddr = reinterpret_cast<Ptr>(static_cast<uintptr_t>(index + 1));
  }
  RememberPortDC(*a);
  a->bitsEntry = static_cast<int16_t>(index + 1);
  if (dib) a->flags |= kPixMapDcFlag;
  SwapPortDC(*a, e.dc, PortDepthOf(memory.depth));
  SetQDError(noErr);
  return true;
}

void ReleaseBitsOf(GrafPtr port) {
  if (PortAttr* a = AttrOf(port)) Detach(*a, true);
}

// The ports' records may be gone already: only their side records are
// given their own DCs back.
void ClearOffscreenTable() {
  for (int slot = 0; slot < kPortSlotCount; ++slot) {
    PortAttr* a = AttrOfSlot(slot);
    if (!a || a->bitsEntry == 0) continue;
    ResetGdiCache(*a);
    a->hdc = g_savedDC[slot];
    a->bitsEntry = 0;
    g_savedDC[slot] = nullptr;
  }
  for (Entry& e : g_table)
    if (e.inUse) FreeEntry(e);
}

void PortLeft(GrafPtr port) {
  if (Entry* e = EntryOf(port)) WriteBack(*e);
}

void PortEntered(GrafPtr port) {
  Entry* e = EntryOf(port);
  if (e && HashOf(e->memory) != e->memoryHash) CopyIn(*e);
}

PortAttr* EntrySide(uintptr_t tag) {
  if (!IsEntryTag(tag)) return nullptr;
  Entry& e = g_table[tag - 1];
  if (!e.inUse) return nullptr;
  if (!Current(e) && HashOf(e.memory) != e.memoryHash) CopyIn(e);
  return AttrOf(e.port);
}

void SyncBeforeCopy(const BitMap* src, const BitMap* dst) {
  src = PixelsOfBits(src);
  dst = PixelsOfBits(dst);
  for (Entry& e : g_table) {
    if (!e.inUse || !Current(e)) continue;
    if ((src && Overlaps(e.memory, src)) || (dst && Overlaps(e.memory, dst))) WriteBack(e);
  }
}

void SyncAfterCopy(const BitMap* dst) {
  dst = PixelsOfBits(dst);
  if (!dst) return;
  uintptr_t base = reinterpret_cast<uintptr_t>(dst->baseAddr);
  for (int i = 0; i < kOffscreenEntries; ++i) {
    Entry& e = g_table[i];
    if (!e.inUse) continue;
    MacPixels copiedAsMemory;
    if (base == static_cast<uintptr_t>(i + 1) && !Current(e)) {
      // Drawn into by the copy: the memory must show it, unless the copy
      // wrote the memory itself (the section reads it when next used).
      if (!EntryAsMemory(dst, &copiedAsMemory)) WriteBack(e);
    } else if (Current(e) && Overlaps(e.memory, dst)) {
      CopyIn(e);
    }
  }
}

bool EntryAsMemory(const BitMap* bits, MacPixels* memory) {
  const PortAttr* current = CurrentAttr();
  uintptr_t base = reinterpret_cast<uintptr_t>(bits->baseAddr);
  if (!current || !(current->flags & kPixMapDcFlag) || bits->rowBytes < 0 || !IsEntryTag(base))
    return false;
  const Entry& e = g_table[base - 1];
  if (!e.inUse || e.mirrorsDib || Current(e)) return false;
  *memory = e.memory;
  return true;
}

bool EntryOrigin(GrafPtr port, int32_t* h, int32_t* v) {
  if (!EntryOf(port)) return false;
  const Rect* bounds = &port->portBits.bounds;
  if (IsColourPort(port)) {
    PixMapHandle pm = AsColour(port)->portPixMap;
    if (!pm || !*pm) return false;
    bounds = &(*pm)->bounds;
  }
  *h = bounds->left;
  *v = bounds->top;
  return true;
}

}  // namespace kwe::quickdraw
