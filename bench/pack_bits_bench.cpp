// PackBits and UnpackBits throughput on a 1,024 x 768 screen image, row by
// row as pictures and MacPaint documents pack it, beside memcpy of the same
// rows. Throughput counts unpacked bytes per second.
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

#include "ToolUtils.h"
#include "bench_support.h"

namespace {

constexpr int kWidth = 1024, kHeight = 768;

struct Image {
  const char* name;
  int rowBytes;
  std::vector<char> pixels;
};

// An 8-bit screen: flat areas, gradients and patches of photographic noise.
Image EightBitImage(std::mt19937& rng) {
  Image image{"8-bit", kWidth, std::vector<char>(size_t(kWidth) * kHeight)};
  std::uniform_int_distribution<int> kind(0, 9), length(8, 320), byte(0, 255);
  for (int y = 0; y < kHeight; ++y) {
    char* row = &image.pixels[size_t(y) * kWidth];
    for (int x = 0; x < kWidth;) {
      int n = std::min(length(rng), kWidth - x), k = kind(rng);
      int base = byte(rng);
      for (int i = 0; i < n; ++i) {
        int value = k < 5 ? base : (k < 7 ? base + i : base + byte(rng) % 24);
        row[x + i] = static_cast<char>(value);
      }
      x += n;
    }
  }
  return image;
}

// A 1-bit screen: white paper, black rules and boxes, lines of text, and a
// dithered grey area.
Image OneBitImage(std::mt19937& rng) {
  int rowBytes = kWidth / 8;
  Image image{"1-bit", rowBytes, std::vector<char>(size_t(rowBytes) * kHeight)};
  std::uniform_int_distribution<int> kind(0, 9), length(2, 40), byte(0, 255);
  for (int y = 0; y < kHeight; ++y) {
    char* row = &image.pixels[size_t(y) * rowBytes];
    bool blankLine = (y % 16) >= 12;  // leading between text lines
    for (int x = 0; x < rowBytes;) {
      int n = std::min(length(rng), rowBytes - x), k = kind(rng);
      for (int i = 0; i < n; ++i) {
        int value = blankLine || k < 4 ? 0x00
                    : k < 5            ? 0xFF
                    : k < 7            ? ((y & 1) ? 0xAA : 0x55)
                                       : byte(rng) & byte(rng);
        row[x + i] = static_cast<char>(value);
      }
      x += n;
    }
  }
  return image;
}

// Runs pass (one whole image) until a quarter second has gone by and
// answers megabytes of image per second.
template <class Pass>
double Throughput(size_t imageBytes, Pass pass) {
  pass();  // warm the caches
  int passes = 0;
  double start = kwe_bench::Now(), elapsed = 0;
  do {
    pass();
    ++passes;
    elapsed = kwe_bench::Now() - start;
  } while (elapsed < 0.25);
  return double(imageBytes) * passes / elapsed / 1e6;
}

void Report(const char* what, double library, double raw) {
  std::printf("%-22s library %8.1f MB/s, raw memcpy %8.1f MB/s, ratio %.3f\n", what, library, raw,
              library / raw);
}

bool Measure(const Image& image) {
  const int rows = kHeight, rowBytes = image.rowBytes;
  const size_t imageBytes = image.pixels.size();
  const size_t packedRowMax = size_t(rowBytes) + (rowBytes + 126) / 127;
  std::vector<char> packed(packedRowMax * rows), copy(imageBytes), unpacked(imageBytes);
  std::vector<size_t> packedStart(rows + 1);

  double pack = Throughput(imageBytes, [&] {
    Ptr dst = packed.data();
    for (int y = 0; y < rows; ++y) {
      Ptr src = const_cast<char*>(&image.pixels[size_t(y) * rowBytes]);
      packedStart[y] = size_t(dst - packed.data());
      PackBits(&src, &dst, static_cast<SInt16>(rowBytes));
    }
    packedStart[rows] = size_t(dst - packed.data());
  });
  double unpack = Throughput(imageBytes, [&] {
    Ptr src = packed.data(), dst = unpacked.data();
    for (int y = 0; y < rows; ++y) UnpackBits(&src, &dst, static_cast<SInt16>(rowBytes));
  });
  double raw = Throughput(imageBytes, [&] {
    for (int y = 0; y < rows; ++y)
      std::memcpy(&copy[size_t(y) * rowBytes], &image.pixels[size_t(y) * rowBytes],
                  size_t(rowBytes));
  });

  bool same = unpacked == image.pixels && copy == image.pixels;
  std::printf("%s image %dx%d: %zu bytes packed to %zu (%.1f%%)%s\n", image.name, kWidth, kHeight,
              imageBytes, packedStart[rows], 100.0 * double(packedStart[rows]) / double(imageBytes),
              same ? "" : "  ROUND TRIP DIFFERS");
  char label[64];
  std::snprintf(label, sizeof label, "PackBits %s", image.name);
  Report(label, pack, raw);
  std::snprintf(label, sizeof label, "UnpackBits %s", image.name);
  Report(label, unpack, raw);
  bool fastEnough = unpack >= raw / 4;
  if (!fastEnough) std::printf("UnpackBits %s is below a quarter of memcpy\n", image.name);
  return same && fastEnough;
}

}  // namespace

int main() {
  std::mt19937 rng(1984);
  bool ok = Measure(OneBitImage(rng));
  ok = Measure(EightBitImage(rng)) && ok;
  return ok ? 0 : 1;
}
