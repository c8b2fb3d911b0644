// The standard colour tables, nearest-entry search and inverse tables.
#include "quickdraw/colour/colour_tables.h"

#include <cstdlib>

namespace kwe::quickdraw {

namespace {

RGBColor Grey(UInt16 level) { return RGBColor{level, level, level}; }

// n greys from white down to black in equal steps (0xFFFF / (n - 1)).
int GreyRamp(int n, RGBColor* out) {
  const int step = 0xFFFF / (n - 1);
  for (int i = 0; i < n; ++i) out[i] = Grey(static_cast<UInt16>(0xFFFF - i * step));
  return n;
}

RGBColor FromBytes(uint32_t rgb) {
  auto wide = [](uint32_t byte) { return static_cast<UInt16>((byte & 0xFF) * 0x101); };
  return RGBColor{wide(rgb >> 16), wide(rgb >> 8), wide(rgb)};
}

// The Toolbox's 2-bit table: white, light grey, dark grey, black.
constexpr uint32_t kFour[4] = {0xFFFFFF, 0xACACAC, 0x555555, 0x000000};

// The Toolbox's 16 colours, white first and black last.
constexpr uint32_t kSixteen[16] = {0xFFFFFF, 0xFCF305, 0xFF6402, 0xDD0806, 0xF20884, 0x4600A5,
                                   0x0000D4, 0x02ABEA, 0x1FB714, 0x006411, 0x562C05, 0x90713A,
                                   0xC0C0C0, 0x808080, 0x404040, 0x000000};

// The 256 colours: the 6 x 6 x 6 cube from white, then ramps of red, green,
// blue and grey at the levels of 0x1111 the cube leaves out, then black.
int Standard256(RGBColor* out) {
  int n = 0;
  for (int r = 5; r >= 0; --r)
    for (int g = 5; g >= 0; --g)
      for (int b = 5; b >= 0; --b)
        out[n++] = RGBColor{static_cast<UInt16>(r * 0x3333), static_cast<UInt16>(g * 0x3333),
                            static_cast<UInt16>(b * 0x3333)};
  --n;  // the cube's last entry is black, which comes at the very end
  for (int ramp = 0; ramp < 4; ++ramp) {
    for (int k = 14; k >= 1; --k) {
      if (k % 3 == 0) continue;
      UInt16 level = static_cast<UInt16>(k * 0x1111);
      RGBColor c{0, 0, 0};
      if (ramp == 0 || ramp == 3) c.red = level;
      if (ramp == 1 || ramp == 3) c.green = level;
      if (ramp == 2 || ramp == 3) c.blue = level;
      out[n++] = c;
    }
  }
  out[n++] = RGBColor{0, 0, 0};
  return n;
}

}  // namespace

int StandardTableColours(int id, RGBColor* out) {
  switch (id) {
    case 1: return GreyRamp(2, out);
    case 2:
      for (int i = 0; i < 4; ++i) out[i] = FromBytes(kFour[i]);
      return 4;
    case 4:
      for (int i = 0; i < 16; ++i) out[i] = FromBytes(kSixteen[i]);
      return 16;
    case 8: return Standard256(out);
    case 20: return GreyRamp(16, out);
    // The grey tables: 32 + the depth.
    case 33:
    case 34:
    case 36:
    case 40: return GreyRamp(1 << (id - 32), out);
    default: return 0;
  }
}

int NearestEntry(const ColourEntry* entries, int count, RGBColor c) {
  int best = -1;
  long bestDistance = 0;
  for (int i = 0; i < count; ++i) {
    if (entries[i].value & kSkipEntry) continue;
    const RGBColor& e = entries[i].rgb;
    long d = std::labs(static_cast<long>(e.red) - c.red) +
             std::labs(static_cast<long>(e.green) - c.green) +
             std::labs(static_cast<long>(e.blue) - c.blue);
    if (best < 0 || d < bestDistance) {
      best = i;
      bestDistance = d;
      if (d == 0) break;
    }
  }
  return best;
}

UInt16 CellComponent(int k) {
  // Cell k holds the high bytes 8k - 4 to 8k + 3; the top cell runs to 255.
  return k >= 31 ? 0xFFFF : static_cast<UInt16>(k * 8 * 0x101);
}

void BuildInverseTable(const ColourEntry* entries, int count, uint8_t* table) {
  for (size_t cell = 0; cell < kInverseTableSize; ++cell) {
    RGBColor c{CellComponent(static_cast<int>(cell >> 10) & 31),
               CellComponent(static_cast<int>(cell >> 5) & 31),
               CellComponent(static_cast<int>(cell) & 31)};
    int nearest = NearestEntry(entries, count, c);
    table[cell] = static_cast<uint8_t>(nearest < 0 ? 0 : nearest);
  }
}

int InverseCell(RGBColor c, int resolution) {
  auto top = [](UInt16 v, int bits) { return static_cast<int>(v >> (16 - bits)); };
  if (resolution == 3) return top(c.red, 3) << 6 | top(c.green, 3) << 3 | top(c.blue, 3);
  if (resolution == 4) return top(c.red, 4) << 8 | top(c.green, 4) << 4 | top(c.blue, 4);
  auto five = [](UInt16 v) {
    int high = (v >> 8) + 4;
    return (high > 255 ? 255 : high) >> 3;
  };
  return five(c.red) << 10 | five(c.green) << 5 | five(c.blue);
}

}  // namespace kwe::quickdraw
