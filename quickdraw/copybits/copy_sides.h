// The two sides of a CopyBits: where each one's pixels live (application
// memory or behind a port's DC), its bounds, depth and colour table.
#pragma once
#include <windows.h>

#include "QuickdrawColour.h"
#include "quickdraw/copybits/pixel_pipeline.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

// A colour port's portBits (rowBytes' top bits 0xC000, baseAddr its pixel
// map handle) stands for that pixel map; other bits are themselves. Null when
// the handle is empty.
const BitMap* PixelsOfBits(const BitMap* bits);

// Dib: a library pixel map whose pixels are in its packed DIB.
enum class SideKind { None, Memory, Device, Dib };

struct CopySide {
  SideKind kind = SideKind::None;
  const BitMap* bits = nullptr;
  Rect bounds{};
  // Memory sides: the pixels from bounds' top left, and their colours.
  PipelineSide pipeline{};
  CTabHandle table = nullptr;  // null for a bitmap (the standard 1-bit table)
  // Device sides: the port whose DC holds the pixels.
  PortAttr* attr = nullptr;
  // A 1-bit bitmap (not a pixel map) of the offscreen bitmap table.
  bool tableBitmap = false;
  bool missingTable = false;
  // Dib sides: the packed DIB (header, colours, bits) and its bits.
  const BITMAPINFO* dib = nullptr;
  const void* dibBits = nullptr;  // an indexed pixel map whose pmTable is null
};

// What src or dst stands for. An indexed pixel map without a colour table
// (missingTable) and memory pixels CheckMacPixels refuses come back as None
// with *err set; a side without pixels as None with noErr.
CopySide ClassifySide(const BitMap* bits, OSErr* err);

// The published pixel map behind a BitMap argument: bit 15 of rowBytes.
inline bool IsPixMap(const BitMap* bits) { return (bits->rowBytes & 0x8000) != 0; }

// r in pixels of a side whose bounds are bounds, (0, 0) its top left.
inline Rect Relative(const Rect& r, const Rect& bounds) {
  return Rect{static_cast<SInt16>(r.top - bounds.top), static_cast<SInt16>(r.left - bounds.left),
              static_cast<SInt16>(r.bottom - bounds.top),
              static_cast<SInt16>(r.right - bounds.left)};
}

// The standard 1-bit table of bitmaps: white, black.
const ColourEntry* OneBitEntries();

// The op colour blend and the pin modes read: a colour port's rgbOpColor,
// black for any other port.
RGBColor OpColourOf(GrafPtr port);

}  // namespace kwe::quickdraw
