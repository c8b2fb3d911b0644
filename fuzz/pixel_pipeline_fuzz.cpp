// The pixel pipeline over fuzzed depths, bounds, rowBytes, rectangles,
// modes, tables and masks: whatever it is handed, it either refuses the copy
// or writes only inside the destination's block (each side lives in a block
// of its exact size, so the sanitizer sees any stray byte).
#include <cstddef>
#include <cstdint>
#include <vector>

#include "quickdraw/copybits/pixel_pipeline.h"

using namespace kwe::quickdraw;

namespace {

struct Input {
  const uint8_t* p;
  size_t n;
  int Byte() {
    if (n == 0) return 0;
    --n;
    return *p++;
  }
  SInt16 Coordinate() { return static_cast<SInt16>(static_cast<int8_t>(Byte()) / 2); }
};

const int kDepths[] = {1, 2, 4, 8, 16, 32, 3, 0};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Input in{data, size};
  static std::vector<uint8_t> inverse;
  static std::vector<ColourEntry> table;
  if (inverse.empty()) {
    RGBColor colours[256];
    int count = StandardTableColours(8, colours);
    for (int i = 0; i < count; ++i)
      table.push_back(ColourEntry{static_cast<SInt16>(i), colours[i]});
    inverse.resize(kInverseTableSize);
    BuildInverseTable(table.data(), count, inverse.data());
  }
  std::vector<uint8_t> blocks[2];
  PipelineSide sides[2];
  for (int k = 0; k < 2; ++k) {
    int depth = kDepths[in.Byte() % 8];
    int width = in.Byte() % 40, height = in.Byte() % 20;
    int32_t rowBytes =
        in.Byte() % 2 ? MacRowBytesNeeded(width, depth < 1 ? 1 : depth) : in.Byte() - 8;
    rowBytes += rowBytes & 1;
    size_t bytes = rowBytes > 0 ? static_cast<size_t>(rowBytes) * height : 0;
    blocks[k].assign(bytes + 1, 0x5A);
    blocks[k].resize(bytes);
    int count = in.Byte() % 3 == 0 ? 0 : 1 + in.Byte();
    sides[k] = PipelineSide{
        MacPixels{blocks[k].empty() ? nullptr : blocks[k].data(), rowBytes, depth, width, height},
        count ? table.data() : nullptr, count};
  }
  PipelineCopy copy{};
  copy.src = Rect{in.Coordinate(), in.Coordinate(), in.Coordinate(), in.Coordinate()};
  copy.dst = Rect{in.Coordinate(), in.Coordinate(), in.Coordinate(), in.Coordinate()};
  copy.mode = in.Byte() % 80;
  copy.inverse = in.Byte() % 4 ? inverse.data() : nullptr;
  copy.sameTable = in.Byte() & 1;
  copy.opColor = RGBColor{static_cast<UInt16>(in.Byte() * 257), 0x8000, 0};
  std::vector<uint8_t> mask;
  if (in.Byte() & 1) {
    int w = copy.dst.right - copy.dst.left, h = copy.dst.bottom - copy.dst.top;
    if (w > 0 && h > 0) {
      copy.maskRowBytes = (w + 7) / 8;
      mask.assign(static_cast<size_t>(copy.maskRowBytes) * h, static_cast<uint8_t>(in.Byte()));
      copy.mask = mask.data();
    }
  }
  RunPipeline(sides[0], sides[1], copy);
  return 0;
}
