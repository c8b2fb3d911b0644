// The pixel pipeline against the reference model, natively under the
// sanitizers: thousands of seeded cases of source and destination depth,
// transfer mode, scaling, clipping and mask, each compared byte for byte and
// folded into one checksum. A failing case prints its number; Make(number)
// draws it again.
#include <gtest/gtest.h>

#include <cstdio>
#include <map>

#include "pipeline_reference.h"
#include "quickdraw/copybits/pixel_pipeline.h"

namespace {

using namespace kwe::quickdraw;

struct Tables {
  std::vector<ColourEntry> entries;
  std::vector<uint8_t> inverse;
};

const Tables& TablesFor(int depth) {
  static std::map<int, Tables> made;
  Tables& t = made[depth];
  if (t.entries.empty()) {
    for (const auto& c : reference::TableFor(depth))
      t.entries.push_back(ColourEntry{
          static_cast<SInt16>(t.entries.size()),
          RGBColor{static_cast<UInt16>(c.r), static_cast<UInt16>(c.g), static_cast<UInt16>(c.b)}});
    t.inverse.resize(kInverseTableSize);
    BuildInverseTable(t.entries.data(), static_cast<int>(t.entries.size()), t.inverse.data());
  }
  return t;
}

PipelineSide SideOf(reference::Image& im) {
  PipelineSide side{MacPixels{im.bytes.data(), im.rowBytes, im.depth, im.width, im.height}, nullptr,
                    0};
  if (im.depth <= 8) {
    side.table = TablesFor(im.depth).entries.data();
    side.count = static_cast<int>(TablesFor(im.depth).entries.size());
  }
  return side;
}

RGBColor Rgb(const reference::Colour& c) {
  return RGBColor{static_cast<UInt16>(c.r), static_cast<UInt16>(c.g), static_cast<UInt16>(c.b)};
}

uint64_t Sweep(uint32_t first, uint32_t count) {
  uint64_t sum = reference::kFoldStart;
  for (uint32_t n = first; n < first + count; ++n) {
    reference::Drawn want = reference::Make(n);
    reference::Drawn got = reference::Make(n);
    reference::Copy(want.src, want.dst, want.c);
    const reference::Case& c = got.c;
    PipelineCopy copy{};
    copy.src = Rect{static_cast<SInt16>(c.st), static_cast<SInt16>(c.sl), static_cast<SInt16>(c.sb),
                    static_cast<SInt16>(c.sr)};
    copy.dst = Rect{static_cast<SInt16>(c.dt), static_cast<SInt16>(c.dl), static_cast<SInt16>(c.db),
                    static_cast<SInt16>(c.dr)};
    copy.mode = c.mode;
    copy.mask = c.masked ? c.mask.data() : nullptr;
    copy.maskRowBytes = c.maskRowBytes;
    copy.opColor = Rgb(c.op);
    copy.bkColor = Rgb(c.bk);
    copy.fgColor = Rgb(c.fg);
    copy.colorize = reference::Colorizes(got.src, got.dst, c);
    copy.inverse = got.dst.depth <= 8 ? TablesFor(got.dst.depth).inverse.data() : nullptr;
    copy.sameTable = c.sameTable;
    EXPECT_EQ(RunPipeline(SideOf(got.src), SideOf(got.dst), copy), noErr) << "case " << n;
    if (got.dst.bytes != want.dst.bytes) {
      ADD_FAILURE() << "case " << n << ": source depth " << got.src.depth << ", destination depth "
                    << got.dst.depth << ", mode " << c.mode << (c.masked ? ", masked" : "");
      break;
    }
    sum = reference::Fold(sum, got.dst.bytes);
  }
  return sum;
}

TEST(PixelPipeline, SeededSweepMatchesTheReferenceModel) {
  uint64_t sum = Sweep(1, 4000);
  std::printf("pixel pipeline sweep 1-4000: checksum %016llx\n",
              static_cast<unsigned long long>(sum));
  EXPECT_EQ(sum, 0x2d54df9b10789efeull);
}

}  // namespace
