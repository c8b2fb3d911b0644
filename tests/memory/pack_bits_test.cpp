// PackBits and UnpackBits: known encodings, seeded round trips, and packed
// data that lies about its runs.
#include "memory/pack_bits.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "ToolUtils.h"

namespace {

using Bytes = std::vector<uint8_t>;

Ptr P(const uint8_t* p) { return reinterpret_cast<Ptr>(const_cast<uint8_t*>(p)); }

Bytes Packed(const Bytes& in) {
  Bytes out(kwe::packbits::MaxPackedSize(in.size()) + 1);
  Ptr src = P(in.data()), dst = P(out.data());
  PackBits(&src, &dst, static_cast<SInt16>(in.size()));
  EXPECT_EQ(src, P(in.data()) + in.size());
  out.resize(static_cast<size_t>(dst - P(out.data())));
  return out;
}

// Image-like data: runs of a few lengths broken by stretches of noise.
Bytes RunsAndNoise(std::mt19937& rng, size_t size) {
  Bytes data;
  while (data.size() < size) {
    size_t n = 1 + rng() % 300;
    bool noise = rng() % 4 == 0;
    auto run = static_cast<uint8_t>(rng() & 0x81);
    for (size_t i = 0; i < n; ++i) data.push_back(noise ? static_cast<uint8_t>(rng()) : run);
  }
  data.resize(size);
  return data;
}

TEST(PackBits, KnownEncodings) {
  EXPECT_EQ(Packed(Bytes(200, 7)), (Bytes{0x82, 7, 0xB8, 7}));  // pieces of 127 and 73
  // The classic sample of Apple's technical note packs byte for byte alike.
  Bytes sample{0xAA, 0xAA, 0xAA, 0x80, 0x00, 0x2A, 0xAA, 0xAA, 0xAA, 0xAA, 0x80, 0x00,
               0x2A, 0x22, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA};
  EXPECT_EQ(Packed(sample), (Bytes{0xFE, 0xAA, 0x02, 0x80, 0x00, 0x2A, 0xFD, 0xAA, 0x03, 0x80, 0x00,
                                   0x2A, 0x22, 0xF7, 0xAA}));
  uint8_t runs[] = {0x80, 5, 0x04, 'a', 'b', 'c', 'd', 'e'};  // 129 fives, "abcde"
  Bytes out(12);
  Ptr src = P(runs), dst = P(out.data());
  UnpackBits(&src, &dst, 10);  // a run cut by the count: the source moves past it whole
  UnpackBits(&src, &dst, 2);   // a cut literal: only past the bytes copied
  EXPECT_EQ(src, P(runs) + 5);
  EXPECT_EQ(out, (Bytes{5, 5, 5, 5, 5, 5, 5, 5, 5, 5, 'a', 'b'}));
}

// Any failing round replays from its seed and number.
TEST(PackBits, SeededRoundTripsAdvanceBothPointers) {
  std::mt19937 rng(20240611);
  for (int round = 0; round < 400; ++round) {
    Bytes original = RunsAndNoise(rng, rng() % 4001);
    Bytes packed = Packed(original);
    ASSERT_LE(packed.size(), kwe::packbits::MaxPackedSize(original.size())) << round;
    Bytes unpacked(original.size() + 16, 0xEE);
    Ptr src = P(packed.data()), dst = P(unpacked.data());
    UnpackBits(&src, &dst, static_cast<SInt16>(original.size()));
    EXPECT_EQ(src, P(packed.data()) + packed.size()) << round;
    EXPECT_EQ(dst, P(unpacked.data()) + original.size()) << round;
    ASSERT_TRUE(std::equal(original.begin(), original.end(), unpacked.begin())) << round;
    EXPECT_EQ(unpacked[original.size()], 0xEE) << round;
  }
}

// Hostile packed data never makes UnpackBits write past dstBytes, nor read
// past what it can use (under AddressSanitizer, an exact-size block);
// truncated data yields a prefix of the original.
TEST(PackBits, HostileAndTruncatedDataStayInBounds) {
  std::mt19937 rng(7);
  for (int round = 0; round < 2000; ++round) {
    size_t wanted = 1 + rng() % 700;
    // Every header produces at least one byte from at most two.
    auto garbage = std::make_unique<uint8_t[]>(2 * wanted);
    for (size_t i = 0; i < 2 * wanted; ++i) garbage[i] = static_cast<uint8_t>(rng());
    Bytes out(wanted + 160, 0xC3);
    Ptr src = P(garbage.get()), dst = P(out.data());
    UnpackBits(&src, &dst, static_cast<SInt16>(wanted));
    ASSERT_EQ(dst, P(out.data()) + wanted) << round;
    ASSERT_TRUE(std::all_of(out.begin() + wanted, out.end(), [](uint8_t b) { return b == 0xC3; }));
  }
  Bytes original = RunsAndNoise(rng, 1500), packed = Packed(original);
  for (size_t cut = 0; cut < packed.size(); cut += 7) {  // truncated: a prefix of the original
    Bytes dst(original.size());
    auto done = kwe::packbits::Unpack(packed.data(), cut, dst.data(), dst.size());
    ASSERT_LE(done.read, cut);
    EXPECT_LT(done.written, original.size()) << cut;
    EXPECT_TRUE(std::equal(dst.begin(), dst.begin() + done.written, original.begin())) << cut;
  }
}

}  // namespace
