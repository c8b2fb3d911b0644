// Full-colour pixel patterns as DIB pattern brushes.
#include "quickdraw/patterns/colour_pattern.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "Memory.h"
#include "quickdraw/pixmaps/pixel_conversion.h"

namespace kwe::quickdraw {
namespace {

#pragma pack(push, 2)
struct ColorSpec {
  SInt16 value;
  RGBColor rgb;
};
struct ColorTableHeader {
  SInt32 ctSeed;
  SInt16 ctFlags;
  SInt16 ctSize;  // entries - 1
};
#pragma pack(pop)

// The table's entries, as many as its handle really holds.
std::vector<RGBColor> ColoursOf(CTabHandle table) {
  std::vector<RGBColor> colours;
  Handle h = reinterpret_cast<Handle>(table);
  if (!h || !*h || GetHandleSize(h) < static_cast<Size>(sizeof(ColorTableHeader))) return colours;
  const auto* header = reinterpret_cast<const ColorTableHeader*>(*h);
  Size room = (GetHandleSize(h) - static_cast<Size>(sizeof(ColorTableHeader))) /
              static_cast<Size>(sizeof(ColorSpec));
  Size count = std::min<Size>(header->ctSize + 1, room);
  const auto* specs = reinterpret_cast<const ColorSpec*>(*h + sizeof(ColorTableHeader));
  for (Size i = 0; i < count; ++i) colours.push_back(specs[i].rgb);
  return colours;
}

RGBQUAD QuadOf(const RGBColor& c) {
  return RGBQUAD{static_cast<BYTE>(c.blue >> 8), static_cast<BYTE>(c.green >> 8),
                 static_cast<BYTE>(c.red >> 8), 0};
}

}  // namespace

// Indexed pixels of 1, 4 and 8 bits and direct pixels of 16 and 32 bits
// are the DIB's own layouts (the Macintosh's direct pixels are held in the
// machine's byte order); 2-bit pixels are widened to 4. Rows go bottom-up,
// padded to 4 bytes.
HBRUSH MakeColourPatternBrush(PixPatHandle pp, Pattern* pat, RGBColor* fg, RGBColor* bk) {
  if (!pp || !*pp || !(*pp)->patMap || !*(*pp)->patMap || !(*pp)->patData) return nullptr;
  const PixMap& map = **(*pp)->patMap;
  Handle data = (*pp)->patData;
  int width = map.bounds.right - map.bounds.left, height = map.bounds.bottom - map.bounds.top;
  int depth = map.pixelSize, rowBytes = map.rowBytes & 0x3FFF;
  std::vector<RGBColor> colours = ColoursOf(map.pmTable);
  *fg = colours.empty() ? RGBColor{0, 0, 0} : colours.back();
  *bk = colours.empty() ? RGBColor{0xFFFF, 0xFFFF, 0xFFFF} : colours.front();
  std::memset(pat, 0, sizeof *pat);
  std::memcpy(pat->pat, *data, std::min<Size>(8, GetHandleSize(data)));
  bool known = depth == 1 || depth == 2 || depth == 4 || depth == 8 || depth == 16 || depth == 32;
  if (!known || width <= 0 || height <= 0 || rowBytes * 8 < width * depth ||
      GetHandleSize(data) < static_cast<Size>(rowBytes) * height ||
      (depth == 1 && width == 8 && height == 8))
    return nullptr;

  int dibDepth = depth == 2 ? 4 : depth;
  int dibRow = DibRowBytes(width, dibDepth);
  int paletteSize = dibDepth <= 8 ? 1 << dibDepth : 0;
  std::vector<BYTE> dib(sizeof(BITMAPINFOHEADER) + paletteSize * sizeof(RGBQUAD) +
                        size_t(dibRow) * height);
  auto* header = reinterpret_cast<BITMAPINFOHEADER*>(dib.data());
  *header = BITMAPINFOHEADER{sizeof(BITMAPINFOHEADER),
                             width,
                             height,
                             1,
                             static_cast<WORD>(dibDepth),
                             BI_RGB,
                             0,
                             0,
                             0,
                             0,
                             0};
  auto* palette = reinterpret_cast<RGBQUAD*>(dib.data() + sizeof(BITMAPINFOHEADER));
  for (int i = 0; i < paletteSize && i < static_cast<int>(colours.size()); ++i)
    palette[i] = QuadOf(colours[i]);
  BYTE* bits = dib.data() + sizeof(BITMAPINFOHEADER) + paletteSize * sizeof(RGBQUAD);
  const auto* src = reinterpret_cast<const BYTE*>(*data);
  for (int y = 0; y < height; ++y) {
    const BYTE* from = src + size_t(y) * rowBytes;
    BYTE* to = bits + size_t(height - 1 - y) * dibRow;
    if (depth != 2) {
      std::memcpy(to, from, size_t(width * depth + 7) / 8);
      continue;
    }
    for (int x = 0; x < width; ++x) {
      int index = (from[x / 4] >> (6 - 2 * (x % 4))) & 3;
      to[x / 2] = static_cast<BYTE>(to[x / 2] | (x % 2 ? index : index << 4));
    }
  }
  return CreateDIBPatternBrushPt(dib.data(), DIB_RGB_COLORS);
}

}  // namespace kwe::quickdraw
