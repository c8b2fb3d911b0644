// Macintosh pixels to DIB rows and back over fuzzed bounds, rowBytes, depths
// and areas. Pixels CheckMacPixels refuses are never converted; those it
// accepts convert within their exact blocks (the sanitizer sees any byte
// past them) and come back unchanged.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "quickdraw/pixmaps/pixel_conversion.h"

using namespace kwe::quickdraw;

namespace {

int Take(const uint8_t*& p, size_t& n) {
  if (n == 0) return 0;
  --n;
  return *p++;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const uint8_t* p = data;
  size_t n = size;
  int depth = Take(p, n) % 40;
  int width = Take(p, n) % 80, height = Take(p, n) % 24;
  int32_t rowBytes = static_cast<int32_t>(static_cast<int8_t>(Take(p, n))) * 2 + Take(p, n) % 2;
  int left = Take(p, n), top = Take(p, n);
  int w = Take(p, n), h = Take(p, n);
  bool fourBit = Take(p, n) & 1;

  size_t bytes = rowBytes > 0 ? static_cast<size_t>(rowBytes) * height : 1;
  std::vector<uint8_t> pixels(bytes);
  for (size_t i = 0; i < bytes; ++i) pixels[i] = n ? data[i % size] : 0;
  MacPixels mac{pixels.data(), rowBytes, depth, width, height};
  if (CheckMacPixels(mac) != noErr) return 0;
  if (width == 0 || height == 0) return 0;
  left %= width;
  top %= height;
  w = 1 + w % (width - left);
  h = 1 + h % (height - top);

  int dibDepth = DibDepthFor(depth, fourBit);
  std::vector<uint8_t> dib(static_cast<size_t>(DibRowBytes(w, dibDepth)) * h);
  DibPixels out{dib.data(), dibDepth, w, h};
  MacToDib(mac, left, top, nullptr, fourBit, out);
  std::vector<uint8_t> back(pixels);
  MacPixels again{back.data(), rowBytes, depth, width, height};
  DibToMac(out, nullptr, fourBit, again, left, top);
  // The unused bits of direct pixels are not pixel content.
  for (int y = top; y < top + h; ++y)
    for (int x = left; x < left + w; ++x) {
      uint32_t keep = depth == 16 ? 0x7FFF : depth == 32 ? 0xFFFFFF : 0xFFFFFFFF;
      if ((MacPixel(mac, x, y) & keep) != (MacPixel(again, x, y) & keep)) std::abort();
    }
  return 0;
}
