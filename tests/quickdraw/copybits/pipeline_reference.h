// A small reference model of CopyBits' pixel pipeline, written from the
// Toolbox's description of the transfer modes rather than from the
// library's code, and the seeded cases both the native sweep and the sweep
// through the DLL draw. Portable: included by native and Wine tests.
#pragma once
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <random>
#include <vector>

#include "MacTypes.h"

namespace reference {

struct Colour {
  int r, g, b;  // 16-bit components
};

struct Image {
  int depth, width, height, rowBytes;
  std::vector<uint8_t> bytes;
  std::vector<Colour> table;  // indexed depths only

  uint32_t Get(int x, int y) const {
    const uint8_t* row = bytes.data() + static_cast<size_t>(y) * rowBytes;
    if (depth == 32)
      return uint32_t{row[4 * x]} | uint32_t{row[4 * x + 1]} << 8 | uint32_t{row[4 * x + 2]} << 16 |
             uint32_t{row[4 * x + 3]} << 24;
    if (depth == 16) return uint32_t{row[2 * x]} | uint32_t{row[2 * x + 1]} << 8;
    int perByte = 8 / depth;
    int shift = (perByte - 1 - x % perByte) * depth;
    return (row[x / perByte] >> shift) & ((1u << depth) - 1);
  }
  void Put(int x, int y, uint32_t v) {
    uint8_t* row = bytes.data() + static_cast<size_t>(y) * rowBytes;
    if (depth == 32) {
      for (int k = 0; k < 4; ++k) row[4 * x + k] = static_cast<uint8_t>(v >> (8 * k));
    } else if (depth == 16) {
      row[2 * x] = static_cast<uint8_t>(v);
      row[2 * x + 1] = static_cast<uint8_t>(v >> 8);
    } else {
      int perByte = 8 / depth;
      int shift = (perByte - 1 - x % perByte) * depth;
      uint8_t bits = static_cast<uint8_t>(((1u << depth) - 1) << shift);
      row[x / perByte] = static_cast<uint8_t>((row[x / perByte] & ~bits) | ((v << shift) & bits));
    }
  }
};

// What a pixel value shows.
inline Colour Shown(const Image& im, uint32_t v) {
  if (im.depth == 32)
    return Colour{static_cast<int>((v >> 16 & 255) * 257), static_cast<int>((v >> 8 & 255) * 257),
                  static_cast<int>((v & 255) * 257)};
  if (im.depth == 16) {
    auto five = [](uint32_t c) { return static_cast<int>(((c & 31) * 65535 + 15) / 31); };
    return Colour{five(v >> 10), five(v >> 5), five(v)};
  }
  return v < im.table.size() ? im.table[v] : Colour{0, 0, 0};
}

// The first of the nearest entries to the middle of c's 5-bit cell.
inline uint32_t Nearest(const Image& im, Colour c) {
  auto middle = [](int v) {
    int cell = std::min((v >> 8) + 4, 255) / 8;
    return cell == 31 ? 65535 : cell * 8 * 257;
  };
  Colour m{middle(c.r), middle(c.g), middle(c.b)};
  uint32_t best = 0;
  long bestD = -1;
  for (uint32_t i = 0; i < im.table.size(); ++i) {
    const Colour& e = im.table[i];
    long d = std::labs(long{e.r} - m.r) + std::labs(long{e.g} - m.g) + std::labs(long{e.b} - m.b);
    if (bestD < 0 || d < bestD) best = i, bestD = d;
  }
  return best;
}

inline uint32_t Stored(const Image& im, Colour c) {
  if (im.depth == 32)
    return static_cast<uint32_t>(c.r / 256) << 16 | static_cast<uint32_t>(c.g / 256) << 8 |
           static_cast<uint32_t>(c.b / 256);
  if (im.depth == 16)
    return static_cast<uint32_t>(c.r / 2048) << 10 | static_cast<uint32_t>(c.g / 2048) << 5 |
           static_cast<uint32_t>(c.b / 2048);
  return Nearest(im, c);
}

struct Case {
  int mode;  // with the dither bit
  int sl, st, sr, sb, dl, dt, dr, db;
  bool masked, sameTable;
  std::vector<uint8_t> mask;  // 1 bits change, rows of maskRowBytes
  int maskRowBytes;
  Colour op, bk, fg;
};

// Colorizing: a 1-bit source put on deeper pixels while the port's colours
// are not black on white stands for the foreground colour with its 1 bits
// and the background colour with its 0 bits. The Xor modes only invert and
// are left alone, and so are the arithmetic modes.
inline bool Colorizes(const Image& src, const Image& dst, const Case& c) {
  int mode = c.mode & 63;
  bool plain = c.fg.r == 0 && c.fg.g == 0 && c.fg.b == 0 && c.bk.r == 65535 && c.bk.g == 65535 &&
               c.bk.b == 65535;
  return src.depth == 1 && dst.depth > 1 && mode < 32 && (mode & 3) != 2 && !plain;
}

// What a colorized source bit makes of the destination pixel d.
inline uint32_t Colorized(int mode, bool ink, uint32_t d, uint32_t fg, uint32_t bk) {
  switch (mode) {
    case 0: return ink ? fg : bk;
    case 1: return ink ? fg : d;  // srcOr paints the 1 bits
    case 3: return ink ? bk : d;  // srcBic clears them to the background
    case 4: return ink ? bk : fg;
    case 5: return ink ? d : fg;
    default: return ink ? d : bk;  // notSrcBic
  }
}

// A Toolbox transfer mode on one pixel. Pixel values for the Boolean modes
// (complemented on direct pixels, where white is all ones), components for
// the arithmetic ones.
inline uint32_t Boolean(int mode, uint32_t d, uint32_t s, uint32_t all) {
  switch (mode) {
    case 0: return s;
    case 1: return d | s;
    case 2: return d ^ s;
    case 3: return d & ~s & all;
    case 4: return ~s & all;
    case 5: return (d | ~s) & all;
    case 6: return (d ^ ~s) & all;
    default: return d & s;
  }
}

inline int Arithmetic(int mode, int s, int d, int op) {
  switch (mode) {
    case 32:
      return static_cast<int>(
          (static_cast<int64_t>(s) * op + static_cast<int64_t>(d) * (65535 - op)) / 65535);
    case 33: return std::min(s + d, op);
    case 34: return (s + d) & 0xFFFF;
    case 35: return std::max(d - s, op);
    case 37: return std::max(s, d);
    case 38: return (d - s) & 0xFFFF;
    default: return std::min(s, d);
  }
}

// The destination after the copy.
inline void Copy(const Image& src, Image& dst, const Case& c) {
  int mode = c.mode & 63;
  if (mode < 32) mode &= 7;
  static const int kOneBit[8] = {0, 3, 2, 1, 1, 3, 2, 1};
  if (dst.depth == 1 && mode >= 32) mode = kOneBit[mode - 32];
  bool dither = (c.mode & 64) && dst.depth <= 8 && mode == 0;
  const bool colorize = Colorizes(src, dst, c);
  int w = c.dr - c.dl, h = c.db - c.dt;
  uint32_t all = dst.depth == 32 ? 0xFFFFFF : dst.depth == 16 ? 0x7FFF : (1u << dst.depth) - 1;
  std::vector<std::vector<long>> err(2, std::vector<long>(static_cast<size_t>(w + 2) * 3, 0));
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      int sx = c.sl + x * (c.sr - c.sl) / w, sy = c.st + y * (c.sb - c.st) / h;
      uint32_t sv = src.Get(sx, sy), dv = dst.Get(c.dl + x, c.dt + y) & all;
      Colour s = Shown(src, sv);
      uint32_t out;
      if (colorize) {
        out = Colorized(mode, sv != 0, dv, Stored(dst, c.fg), Stored(dst, c.bk));
      } else if (mode >= 32) {
        Colour d = Shown(dst, dv), r = s;
        if (mode == 36) {
          if (s.r == c.bk.r && s.g == c.bk.g && s.b == c.bk.b) r = d;
        } else {
          r = Colour{Arithmetic(mode, s.r, d.r, c.op.r), Arithmetic(mode, s.g, d.g, c.op.g),
                     Arithmetic(mode, s.b, d.b, c.op.b)};
        }
        out = Stored(dst, r);
      } else {
        uint32_t v;
        if (src.depth == dst.depth && (src.depth > 8 || c.sameTable)) {
          v = sv & all;
        } else if (dither) {
          long* here = err[y & 1].data() + static_cast<size_t>(x + 1) * 3;
          auto pin = [](long v) { return static_cast<int>(std::clamp(v, 0L, 65535L)); };
          Colour want{pin(s.r + here[0] / 16), pin(s.g + here[1] / 16), pin(s.b + here[2] / 16)};
          v = Stored(dst, want);
          Colour got = Shown(dst, v);
          long e[3] = {want.r - got.r, want.g - got.g, want.b - got.b};
          long* next = err[(y + 1) & 1].data() + static_cast<size_t>(x) * 3;
          for (int k = 0; k < 3; ++k) {
            here[3 + k] += 7 * e[k];
            next[k] += 3 * e[k];
            next[3 + k] += 5 * e[k];
            next[6 + k] += e[k];
          }
        } else {
          v = Stored(dst, s);
        }
        if (dst.depth > 8) {
          out = ~Boolean(mode, ~dv & all, ~v & all, all) & all;
        } else {
          out = Boolean(mode, dv, v, all);
        }
      }
      bool change =
          !c.masked || (c.mask[static_cast<size_t>(y) * c.maskRowBytes + x / 8] >> (7 - x % 8) & 1);
      if (change) dst.Put(c.dl + x, c.dt + y, out);
    }
    std::fill(err[y & 1].begin(), err[y & 1].end(), 0);
  }
}

// The colour tables of the sweep, one per indexed depth.
inline std::vector<Colour> TableFor(int depth) {
  std::vector<Colour> t;
  if (depth == 1) return {{65535, 65535, 65535}, {0, 0, 0}};
  if (depth == 2)
    return {{65535, 65535, 65535}, {0xAAAA, 0xAAAA, 0xAAAA}, {0x5555, 0x5555, 0x5555}, {0, 0, 0}};
  if (depth == 4) {
    const uint32_t sixteen[16] = {0xFFFFFF, 0xFCF305, 0xFF6402, 0xDD0806, 0xF20884, 0x4600A5,
                                  0x0000D4, 0x02ABEA, 0x1FB714, 0x006411, 0x562C05, 0x90713A,
                                  0xC0C0C0, 0x808080, 0x404040, 0x000000};
    for (uint32_t c : sixteen)
      t.push_back(Colour{static_cast<int>((c >> 16) * 257), static_cast<int>((c >> 8 & 255) * 257),
                         static_cast<int>((c & 255) * 257)});
    return t;
  }
  if (depth == 8) {
    // A table of its own rather than the standard one: a grey ramp and a
    // coarse cube, both with ties for the search.
    for (int i = 0; i < 64; ++i) t.push_back(Colour{i * 1040, i * 1040, i * 1040});
    for (int r = 0; r < 6; ++r)
      for (int g = 0; g < 6; ++g)
        for (int b = 0; b < 5; ++b) t.push_back(Colour{r * 13107, g * 13107, b * 16383});
    while (t.size() < 256) t.push_back(Colour{0, 0, 0});
  }
  return t;
}

// Case number n of a sweep: its images and copy, all from the one seed.
// Depths other than 0 replace the ones the seed draws.
struct Drawn {
  Image src, dst;
  Case c;
};

inline Drawn Make(uint32_t n, int srcDepth = 0, int dstDepth = 0) {
  std::mt19937 rng(n);
  const int depths[] = {1, 2, 4, 8, 16, 32};
  const int modes[] = {0, 1, 2, 3, 4, 5, 6, 7, 32, 33, 34, 35, 36, 37, 38, 39, 64, 64, 64};
  Drawn d;
  auto image = [&](Image& im) {
    im.depth = depths[rng() % 6];
    int forced = &im == &d.src ? srcDepth : dstDepth;
    if (forced) im.depth = forced;
    im.width = 1 + static_cast<int>(rng() % 23);
    im.height = 1 + static_cast<int>(rng() % 17);
    im.rowBytes = ((im.width * im.depth + 7) / 8 + static_cast<int>(rng() % 4) + 1) & ~1;
    im.bytes.resize(static_cast<size_t>(im.rowBytes) * im.height);
    for (auto& b : im.bytes) b = static_cast<uint8_t>(rng());
    if (im.depth <= 8) im.table = TableFor(im.depth);
    uint32_t keep = im.depth == 32 ? 0xFFFFFF : im.depth == 16 ? 0x7FFF : 0xFFFFFFFF;
    for (int y = 0; y < im.height; ++y)
      for (int x = 0; x < im.width; ++x) im.Put(x, y, im.Get(x, y) & keep);
  };
  image(d.src);
  image(d.dst);
  auto span = [&](int size, int& lo, int& hi) {
    lo = static_cast<int>(rng() % size);
    hi = lo + 1 + static_cast<int>(rng() % (size - lo));
  };
  Case& c = d.c;
  c.mode = modes[rng() % (sizeof modes / sizeof *modes)];
  span(d.src.width, c.sl, c.sr);
  span(d.src.height, c.st, c.sb);
  span(d.dst.width, c.dl, c.dr);
  span(d.dst.height, c.dt, c.db);
  if (rng() % 3 == 0) {  // an unscaled copy, where the sizes allow
    int w = std::min(c.sr - c.sl, d.dst.width - c.dl),
        h = std::min(c.sb - c.st, d.dst.height - c.dt);
    c.sr = c.sl + w, c.dr = c.dl + w, c.sb = c.st + h, c.db = c.dt + h;
  }
  c.sameTable = d.src.depth == d.dst.depth && (rng() & 1);
  c.masked = rng() % 3 == 0;
  c.maskRowBytes = ((c.dr - c.dl) + 15) / 16 * 2;
  c.mask.resize(static_cast<size_t>(c.maskRowBytes) * (c.db - c.dt));
  for (auto& b : c.mask) b = static_cast<uint8_t>(rng());
  auto colour = [&] {
    return Colour{static_cast<int>(rng() & 0xFFFF), static_cast<int>(rng() & 0xFFFF),
                  static_cast<int>(rng() & 0xFFFF)};
  };
  c.op = colour();
  c.bk = rng() & 1 ? Colour{65535, 65535, 65535} : Shown(d.src, d.src.Get(c.sl, c.st));
  c.fg = rng() % 3 ? Colour{0, 0, 0} : colour();
  return d;
}

// FNV-1a, folding each case's destination into the sweep's checksum.
inline uint64_t Fold(uint64_t sum, const std::vector<uint8_t>& bytes) {
  for (uint8_t b : bytes) sum = (sum ^ b) * 1099511628211ull;
  return sum;
}
constexpr uint64_t kFoldStart = 14695981039346656037ull;

}  // namespace reference
