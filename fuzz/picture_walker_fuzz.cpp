// The picture opcode walker over arbitrary bytes: any input ends the walk
// without reading past its bytes (the sanitizer sees the buffer's exact
// size), every pixel band it hands over lies within its 64 KB bound and is
// read whole, and the walk's time stays linear in the input.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "quickdraw/pictures/picture_walker.h"

namespace {

using namespace kwe::pictures;

struct Touching : PictureSink {
  uint32_t sum = 0;
  void Pixels(const PixelBand& band) override {
    size_t n = static_cast<size_t>(band.width) * band.rowCount;
    if (band.width <= 0 || band.rowCount <= 0 || (n > 16384 && band.rowCount > 1)) std::abort();
    for (size_t i = 0; i < n; ++i) sum += band.pixels[i];
  }
  void Poly(int, const std::vector<PicPoint>& points) override { sum += points.size(); }
  void Text(PicPoint, bool, int16_t, int16_t, const std::string& s) override {
    if (s.size() > 255) std::abort();
  }
  void Comment(int16_t, const std::vector<uint8_t>& data) override {
    if (data.size() > 32767) std::abort();
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  BufferSource source(data, size);
  Touching sink;
  WalkPicture(source, sink);
  return 0;
}
