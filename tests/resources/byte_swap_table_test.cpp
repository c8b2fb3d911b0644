// KWE_ByteSwap's table natively under the sanitizers, every buffer a heap
// block of exactly the data's size so that any byte touched past it is seen.
#include "resources/byte_swap_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "KWEByteSwap.h"
#include "resources/byte_swap_records.h"
#include "sample_resources.h"

namespace {

using kwe::byteswap::SwapOutcome;
using kwe_samples::Bytes;
using kwe_samples::TypeOf;

std::vector<std::string> g_reports;

const kwe::byteswap::ByteSwapHost kHost = {
    [](bool isColour, void* data, SInt32 size, UInt32) {
      kwe::byteswap::SwapCursorHotSpot(isColour, static_cast<uint8_t*>(data), size);
    },
    nullptr,
    [](const char* text) { g_reports.emplace_back(text); },
};

// Converts a copy of the data, held in a block of exactly its size.
Bytes Swapped(const Bytes& data, UInt32 direction, const char* type,
              SwapOutcome* outcome = nullptr) {
  std::unique_ptr<uint8_t[]> block(new uint8_t[data.size() + !data.size()]);
  if (!data.empty()) std::memcpy(block.get(), data.data(), data.size());
  SwapOutcome result = kwe::byteswap::SwapResource(direction, TypeOf(type), 128,
                                                   SInt32(data.size()), block.get(), kHost);
  if (outcome) *outcome = result;
  return Bytes(block.get(), block.get() + data.size());
}

struct Case {
  std::string what;
  const char* type;
  Bytes mac, native;  // native empty: damage
};

// Every type against its independently written Macintosh and native forms,
// and counts at their edges, convert to exactly the native form; counts and
// offsets that point past the data or back into a header are damage:
// converted as far as the data goes and reported both ways. Everything,
// also cut at every length, is undone exactly by the opposite direction.
TEST(ByteSwapTable, EveryTypeLoadsToItsNativeFormAndWritesBackWholeOrCut) {
  std::vector<Case> cases;
  for (const auto& sample : kwe_samples::AllSamples())
    cases.push_back({sample.type, sample.type, sample.make(true), sample.make(false)});
  const auto edge = [&](const char* what, const char* type, const std::string& fields) {
    cases.push_back(
        {what, type, kwe_samples::Record(true, fields), kwe_samples::Record(false, fields)});
  };
  const auto damaged = [&](const char* what, const char* type, const Bytes& mac) {
    cases.push_back({what, type, mac, {}});
  };
  const auto mac = [](const std::string& fields) { return kwe_samples::Record(true, fields); };
  edge("count 0: one item, and one the count leaves out", "DITL",
       "w0 l0x01020304 r1,2,3,4 b32,2 w0x0102 f14xEE");
  edge("count 0: only the count", "MBAR", "w0 b1,2,3,4");
  edge("ctSize -1: only the header", "clut", "l0x01020304 w0x0506,0xFFFF b7,8");
  damaged("32,768 items in 20 bytes", "DITL", mac("w0x7FFF l0 r1,2,3,4 b4,0 f4x00"));
  damaged("an icon item cut inside its ID", "DITL", mac("w0 l0 r1,2,3,4 b32,255"));
  damaged("an icon item whose ID is the next item's", "DITL", mac("w0 l0 f8x00 b32,0,9,9"));
  damaged("a DLOG cut before its fixed fields end", "DLOG", mac("r1,2,3,4 w1 b1,0"));
  damaged("32,768 colours", "clut", mac("l1 w0,0x7FFF b1,2,3,4,5,6,7,8,9,10"));
  damaged("32,767 palette entries", "pltt", mac("w0x7FFF f14x00 b1,2,3"));
  damaged("32,767 frames", "acur", mac("w0x7FFF,0,1,2,3"));
  damaged("16,384 menus", "MBAR", mac("w0x4000,1,2 b0"));
  const auto sample = [&](const char* type) {
    return std::find_if(cases.begin(), cases.end(), [&](const Case& c) { return c.what == type; })
        ->mac;
  };
  Bytes ppat = sample("ppat"), cicn = sample("cicn");
  for (int i = 70; i < 74; ++i) ppat[i] = 0;
  damaged("ppat colour table offset 0, inside its header", "ppat", ppat);
  ppat[70] = 0x7F;
  damaged("ppat colour table past the data", "ppat", ppat);
  cicn[10] = 0x80;  // bounds bottom -32768
  damaged("cicn of negative height", "cicn", cicn);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    g_reports.clear();
    SwapOutcome outcome;
    const Bytes loaded = Swapped(c.mac, kweSwapToNative, c.type, &outcome);
    EXPECT_EQ(Swapped(loaded, kweSwapToMac, c.type), c.mac);
    if (!c.native.empty()) {
      EXPECT_EQ(loaded, c.native);
      EXPECT_EQ(Swapped(c.native, kweSwapToMac, c.type), c.mac);
      EXPECT_TRUE(g_reports.empty());
    } else {
      EXPECT_EQ(outcome, SwapOutcome::Damaged);
      EXPECT_EQ(g_reports,
                std::vector<std::string>(2, std::string(c.type) + " damaged byteswap data"));
    }
    for (size_t length = 1; length < c.mac.size(); ++length) {
      const Bytes cut(c.mac.begin(), c.mac.begin() + std::ptrdiff_t(length));
      ASSERT_EQ(Swapped(Swapped(cut, kweSwapToNative, c.type), kweSwapToMac, c.type), cut)
          << "cut to " << length;
    }
  }
}

}  // namespace
