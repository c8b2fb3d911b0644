// KWE_OpenScrapPict: a picture whose handle holds a packed DIB, for the
// scrap to hand Windows as a bitmap. The drawing between it and
// ClosePicture is recorded as any picture is (the pen hidden), into an
// opcode stream of its own; ClosePicture plays that stream into a DIB
// section of the picture's size and copies the pixels into the handle.
// DrawPicture draws such a handle as its DIB.
#include <windows.h>

#include <cstring>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/pictures/picture_state.h"
#include "quickdraw/pixmaps/pixel_conversion.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::pictures {
namespace {

constexpr Size kPictureHeader = 10;
constexpr LONG kPixelsPerMetre = 2800;

struct DibShape {
  int width = 0, height = 0, bits = 24, colours = 0;
  size_t rowBytes = 0;
  size_t HeaderBytes() const { return sizeof(BITMAPINFOHEADER) + sizeof(RGBQUAD) * colours; }
  size_t ImageBytes() const { return rowBytes * static_cast<size_t>(height); }
};

// 8 bits with the system palette's 256 colours on a palette screen, else
// 24 bits; rows padded to 4 bytes.
DibShape ShapeOf(const Rect& r) {
  DibShape s;
  s.width = r.right - r.left;
  s.height = r.bottom - r.top;
  if (quickdraw::Screen().paletteSize > 0) {
    s.bits = 8;
    s.colours = 256;
  }
  s.rowBytes = static_cast<size_t>(quickdraw::DibRowBytes(s.width, s.bits));
  return s;
}

BITMAPINFO* InfoOf(Handle pic) { return reinterpret_cast<BITMAPINFO*>(*pic + kPictureHeader); }

}  // namespace

bool IsScrapDib(Handle pic) {
  if (!pic || !*pic || GetHandleSize(pic) < kPictureHeader + Size(sizeof(BITMAPINFOHEADER)))
    return false;
  const BITMAPINFOHEADER& h = InfoOf(pic)->bmiHeader;
  if (h.biSize != sizeof(BITMAPINFOHEADER) || h.biWidth <= 0 || h.biHeight <= 0 ||
      h.biCompression != BI_RGB || (h.biBitCount != 8 && h.biBitCount != 24))
    return false;
  size_t colours = h.biBitCount == 8 ? 256 : 0;
  size_t rowBytes = static_cast<size_t>(quickdraw::DibRowBytes(h.biWidth, h.biBitCount));
  size_t need = kPictureHeader + sizeof(BITMAPINFOHEADER) + colours * sizeof(RGBQUAD) +
                rowBytes * static_cast<size_t>(h.biHeight);
  return static_cast<size_t>(GetHandleSize(pic)) >= need;
}

// The DIB stretched onto dst through the port's DC, in copy mode.
void DrawScrapDib(Handle pic, const Rect& dst) {
  quickdraw::PortAttr* a = quickdraw::CurrentAttr();
  if (!a || !a->hdc || !IsScrapDib(pic)) return;
  const BITMAPINFO* info = InfoOf(pic);
  const BITMAPINFOHEADER& h = info->bmiHeader;
  const BYTE* bits = reinterpret_cast<const BYTE*>(info) + sizeof(BITMAPINFOHEADER) +
                     (h.biBitCount == 8 ? 256 * sizeof(RGBQUAD) : 0);
  int l = dst.left, t = dst.top, r = dst.right, b = dst.bottom;
  quickdraw::LocalToDevice(*a, &l, &t);
  quickdraw::LocalToDevice(*a, &r, &b);
  SetStretchBltMode(a->hdc, COLORONCOLOR);
  StretchDIBits(a->hdc, l, t, r - l, b - t, 0, 0, h.biWidth, h.biHeight, bits, info, DIB_RGB_COLORS,
                SRCCOPY);
}

// The recorded opcodes drawn into a white DIB section over the picture's
// rectangle, through the current port with its DC swapped for the
// section's; the pixels then go into the scrap handle.
void FinishScrapPicture(Handle scrap, Handle opcodes, const Rect& rect) {
  if (opcodes && *opcodes && scrap && *scrap && IsScrapDib(scrap)) {
    BITMAPINFO* info = InfoOf(scrap);
    void* bits = nullptr;
    HDC dc = CreateCompatibleDC(nullptr);
    HBITMAP section = dc ? CreateDIBSection(dc, info, DIB_RGB_COLORS, &bits, nullptr, 0) : nullptr;
    if (section) {
      HGDIOBJ old = SelectObject(dc, section);
      DibShape shape = ShapeOf(rect);
      std::memset(bits, 0xFF, shape.ImageBytes());
      Rect at{0, 0, static_cast<SInt16>(shape.height), static_cast<SInt16>(shape.width)};
      RgnHandle clip = NewRgn();
      if (clip) {
        GetClip(clip);
        ClipRect(&at);
        HDC previous = KWE_SwaphDC(dc, true);
        DrawPicture(reinterpret_cast<PicHandle>(opcodes), &at);
        KWE_SwaphDC(previous, false);
        SetClip(clip);
        DisposeRgn(clip);
      }
      GdiFlush();
      std::memcpy(reinterpret_cast<BYTE*>(InfoOf(scrap)) + shape.HeaderBytes(), bits,
                  shape.ImageBytes());
      SelectObject(dc, old);
      DeleteObject(section);
    }
    if (dc) DeleteDC(dc);
  }
  if (opcodes) DisposeHandle(opcodes);
}

}  // namespace kwe::pictures

using namespace kwe::pictures;

// A picture header (size, frame (0, 0, height, width)) and a packed DIB of
// the rectangle's size, white; recorded drawing reaches the DIB when the
// picture is closed. Null for an empty rectangle, when memory runs out, or
// when the port records another picture.
KWE_API PicHandle KWE_CALL KWE_OpenScrapPict(const Rect* rect) {
  GrafPtr port = kwe::quickdraw::CurrentPort();
  if (!rect || rect->bottom <= rect->top || rect->right <= rect->left || !port ||
      !kwe::quickdraw::CurrentAttr() || port->picSave)
    return nullptr;
  DibShape shape = ShapeOf(*rect);
  Size total = static_cast<Size>(kPictureHeader + shape.HeaderBytes() + shape.ImageBytes());
  Handle scrap = NewHandleClear(total);
  Handle opcodes = scrap ? NewHandle(kPictureHeader) : nullptr;
  if (!opcodes) {
    if (scrap) DisposeHandle(scrap);
    return nullptr;
  }
  Picture& head = *reinterpret_cast<Picture*>(*scrap);
  head.picSize = static_cast<SInt16>(total);
  head.picFrame = Rect{0, 0, static_cast<SInt16>(shape.height), static_cast<SInt16>(shape.width)};
  BITMAPINFO* info = InfoOf(scrap);
  info->bmiHeader = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER),
                                     shape.width,
                                     shape.height,
                                     1,
                                     static_cast<WORD>(shape.bits),
                                     BI_RGB,
                                     static_cast<DWORD>(shape.ImageBytes()),
                                     kPixelsPerMetre,
                                     kPixelsPerMetre,
                                     0,
                                     0};
  if (shape.colours) {
    PALETTEENTRY entries[256] = {};
    HDC screen = GetDC(nullptr);
    GetSystemPaletteEntries(screen, 0, 256, entries);
    ReleaseDC(nullptr, screen);
    for (int i = 0; i < 256; ++i)
      info->bmiColors[i] = RGBQUAD{entries[i].peBlue, entries[i].peGreen, entries[i].peRed, 0};
  }
  std::memset(reinterpret_cast<BYTE*>(info) + shape.HeaderBytes(), 0xFF, shape.ImageBytes());
  // The opcodes' own picture, framed by the rectangle, as OpenPicture
  // starts one (big-endian until ClosePicture).
  UInt8* p = reinterpret_cast<UInt8*>(*opcodes);
  const SInt16 fields[5] = {10, rect->top, rect->left, rect->bottom, rect->right};
  for (int i = 0; i < 5; ++i) {
    p[2 * i] = static_cast<UInt8>(fields[i] >> 8);
    p[2 * i + 1] = static_cast<UInt8>(fields[i]);
  }
  RecordState& s = StartRecording(port, scrap);
  s.opcodes = opcodes;
  s.scrapRect = *rect;
  PutOpenPictureHeader(*rect);
  return reinterpret_cast<PicHandle>(scrap);
}
