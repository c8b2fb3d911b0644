// Turning and mirroring the Windows bitmap of a GWorld's pixel map. The
// bitmap is read as 32-bit pixels, moved in memory and written into a new
// bitmap of the screen's format, which takes the old one's place in the DC.
#include <windows.h>

#include <vector>

#include "QDOffscreen.h"
#include "quickdraw/ports/graphics_records.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

struct Pixels {
  int width = 0, height = 0;
  std::vector<uint32_t> p;
};

BITMAPINFO TopDown32(int width, int height) {
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  return info;
}

LibraryPixMap* DdbPixMap(PixMapHandle pm) {
  if (!pm || !IsLibraryPixMap(pm)) return nullptr;
  auto* lib = reinterpret_cast<LibraryPixMap*>(*pm);
  return lib->ddb && lib->bitmapDC ? lib : nullptr;
}

bool Read(const LibraryPixMap& lib, Pixels* out) {
  BITMAP bm{};
  if (!GetObjectA(lib.ddb, sizeof bm, &bm) || bm.bmWidth <= 0 || bm.bmHeight <= 0) return false;
  out->width = bm.bmWidth;
  out->height = bm.bmHeight;
  out->p.assign(static_cast<size_t>(bm.bmWidth) * bm.bmHeight, 0);
  BITMAPINFO info = TopDown32(bm.bmWidth, bm.bmHeight);
  // GetDIBits wants the bitmap out of every DC.
  HGDIOBJ scratch = CreateCompatibleBitmap(lib.bitmapDC, 1, 1);
  HGDIOBJ held = SelectObject(lib.bitmapDC, scratch);
  int rows = GetDIBits(lib.bitmapDC, lib.ddb, 0, bm.bmHeight, out->p.data(), &info, DIB_RGB_COLORS);
  SelectObject(lib.bitmapDC, held);
  DeleteObject(scratch);
  return rows == bm.bmHeight;
}

// A new bitmap of the pixels replaces the pixel map's in its DC.
bool Replace(LibraryPixMap& lib, const Pixels& px) {
  HBITMAP made = CreateCompatibleBitmap(lib.bitmapDC, px.width, px.height);
  if (!made) return false;
  BITMAPINFO info = TopDown32(px.width, px.height);
  if (SetDIBits(lib.bitmapDC, made, 0, px.height, px.p.data(), &info, DIB_RGB_COLORS) !=
      px.height) {
    DeleteObject(made);
    return false;
  }
  bool selected = GetCurrentObject(lib.bitmapDC, OBJ_BITMAP) == lib.ddb;
  if (selected) SelectObject(lib.bitmapDC, made);
  DeleteObject(lib.ddb);
  lib.ddb = made;
  return true;
}

}  // namespace
}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API Boolean KWE_CALL KWE_OffScreenRotate(PixMapHandle pm, SInt16 angle) {
  LibraryPixMap* lib = DdbPixMap(pm);
  int turn = ((angle % 360) + 360) % 360;
  Pixels in;
  if (!lib || turn % 90 != 0 || !Read(*lib, &in)) return false;
  if (turn == 0) return true;
  bool quarter = turn != 180;
  Pixels out;
  out.width = quarter ? in.height : in.width;
  out.height = quarter ? in.width : in.height;
  out.p.resize(in.p.size());
  for (int y = 0; y < in.height; ++y) {
    for (int x = 0; x < in.width; ++x) {
      int nx = turn == 90 ? in.height - 1 - y : turn == 180 ? in.width - 1 - x : y;
      int ny = turn == 90 ? x : turn == 180 ? in.height - 1 - y : in.width - 1 - x;
      out.p[static_cast<size_t>(ny) * out.width + nx] = in.p[static_cast<size_t>(y) * in.width + x];
    }
  }
  if (!Replace(*lib, out)) return false;
  PixMap& map = lib->published;
  if (quarter) {
    map.bounds = Rect{0, 0, static_cast<SInt16>(out.height), static_cast<SInt16>(out.width)};
    map.rowBytes = static_cast<SInt16>((((map.pixelSize * out.width + 15) / 8) & ~1) | 0x8000);
  }
  return true;
}

KWE_API Boolean KWE_CALL KWE_OffScreenFlip(PixMapHandle pm, SInt16 how) {
  LibraryPixMap* lib = DdbPixMap(pm);
  Pixels px;
  if (!lib || how < 1 || how > 3 || !Read(*lib, &px)) return false;
  std::vector<uint32_t> flipped(px.p.size());
  for (int y = 0; y < px.height; ++y) {
    int sy = (how & 2) ? px.height - 1 - y : y;
    for (int x = 0; x < px.width; ++x) {
      int sx = (how & 1) ? px.width - 1 - x : x;
      flipped[static_cast<size_t>(y) * px.width + x] =
          px.p[static_cast<size_t>(sy) * px.width + sx];
    }
  }
  px.p.swap(flipped);
  return Replace(*lib, px);
}
