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

Bytes Packed(const Bytes& in) {
  Bytes out(kwe::packbits::MaxPackedSize(in.size()) + 1);
  Ptr src = reinterpret_cast<Ptr>(const_cast<uint8_t*>(in.data()));
  Ptr dst = reinterpret_cast<Ptr>(out.data());
  PackBits(&src, &dst, static_cast<SInt16>(in.size()));
  EXPECT_EQ(src, reinterpret_cast<Ptr>(const_cast<uint8_t*>(in.data())) + in.size());
  out.resize(static_cast<size_t>(dst - reinterpret_cast<Ptr>(out.data())));
  return out;
}

// Image-like data: runs of a few lengths broken by stretches of noise.
Bytes RunsAndNoise(std::mt19937& rng, size_t size) {
  Bytes data;
  std::uniform_int_distribution<int> byte(0, 255), kind(0, 3), length(1, 300);
  while (data.size() < size) {
    int n = length(rng);
    if (kind(rng) == 0) {
      for (int i = 0; i < n; ++i) data.push_back(static_cast<uint8_t>(byte(rng)));
    } else {
      data.insert(data.end(), static_cast<size_t>(n), static_cast<uint8_t>(byte(rng) & 0x81));
    }
  }
  data.resize(size);
  return data;
}

TEST(PackBits, KnownEncodings) {
  EXPECT_EQ(Packed(Bytes(200, 7)), (Bytes{0x82, 7, 0xB8, 7}));  // pieces of 127 and 73
  EXPECT_EQ(Packed(Bytes{1, 2, 3}), (Bytes{0x02, 1, 2, 3}));
  EXPECT_EQ(Packed(Bytes(128, 9)), (Bytes{0x82, 9, 0x00, 9}));  // a last piece of 1: literal
  EXPECT_EQ(Packed(Bytes(129, 9)), (Bytes{0x82, 9, 0xFF, 9}));
  EXPECT_EQ(Packed(Bytes{1, 1, 2}), (Bytes{0x02, 1, 1, 2}));  // two equal bytes stay literal
  EXPECT_EQ(Packed(Bytes{1, 2, 2, 2, 3}), (Bytes{0x00, 1, 0xFE, 2, 0x00, 3}));
  EXPECT_EQ(Packed(Bytes{}), Bytes{});
  // The classic sample of Apple's technical note packs byte for byte alike.
  Bytes sample{0xAA, 0xAA, 0xAA, 0x80, 0x00, 0x2A, 0xAA, 0xAA, 0xAA, 0xAA, 0x80, 0x00,
               0x2A, 0x22, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA, 0xAA};
  EXPECT_EQ(Packed(sample), (Bytes{0xFE, 0xAA, 0x02, 0x80, 0x00, 0x2A, 0xFD, 0xAA, 0x03, 0x80, 0x00,
                                   0x2A, 0x22, 0xF7, 0xAA}));
  // 300 bytes without a triple: literal pieces of 127, 127 and 46.
  Bytes distinct(300);
  for (size_t i = 0; i < distinct.size(); ++i) distinct[i] = static_cast<uint8_t>(i % 251);
  Bytes p = Packed(distinct);
  ASSERT_EQ(p.size(), 303u);
  EXPECT_EQ(p[0], 0x7E);
  EXPECT_EQ(p[128], 0x7E);
  EXPECT_EQ(p[256], 0x2D);
}

TEST(PackBits, NothingHappensForEmptyOrNegativeCounts) {
  uint8_t in[4] = {1, 2, 3, 4}, out[8] = {};
  for (SInt16 count : {SInt16(0), SInt16(-1), SInt16(-32768)}) {
    Ptr src = reinterpret_cast<Ptr>(in), dst = reinterpret_cast<Ptr>(out);
    PackBits(&src, &dst, count);
    UnpackBits(&src, &dst, count);
    EXPECT_EQ(src, reinterpret_cast<Ptr>(in));
    EXPECT_EQ(dst, reinterpret_cast<Ptr>(out));
  }
  EXPECT_EQ(out[0], 0);
}

TEST(PackBits, SeededRoundTripsAdvanceBothPointers) {
  std::mt19937 rng(20240611);
  std::uniform_int_distribution<int> sizes(0, 4000);
  for (int round = 0; round < 400; ++round) {
    Bytes original = RunsAndNoise(rng, static_cast<size_t>(sizes(rng)));
    Bytes packed = Packed(original);
    ASSERT_LE(packed.size(), kwe::packbits::MaxPackedSize(original.size())) << round;

    Bytes unpacked(original.size() + 16, 0xEE);
    Ptr src = reinterpret_cast<Ptr>(packed.data()), dst = reinterpret_cast<Ptr>(unpacked.data());
    UnpackBits(&src, &dst, static_cast<SInt16>(original.size()));
    EXPECT_EQ(src, reinterpret_cast<Ptr>(packed.data()) + packed.size()) << round;
    EXPECT_EQ(dst, reinterpret_cast<Ptr>(unpacked.data()) + original.size()) << round;
    ASSERT_TRUE(std::equal(original.begin(), original.end(), unpacked.begin())) << round;
    EXPECT_EQ(unpacked[original.size()], 0xEE) << round;
  }
}

TEST(PackBits, UnpackStopsAtTheRequestedCountInsideARun) {
  uint8_t repeat[] = {0x80, 5};  // 129 copies
  Bytes out(200, 0);
  Ptr src = reinterpret_cast<Ptr>(repeat), dst = reinterpret_cast<Ptr>(out.data());
  UnpackBits(&src, &dst, 129);
  EXPECT_EQ(dst - reinterpret_cast<Ptr>(out.data()), 129);
  EXPECT_EQ(out[128], 5);
  EXPECT_EQ(out[129], 0);

  src = reinterpret_cast<Ptr>(repeat), dst = reinterpret_cast<Ptr>(out.data());
  UnpackBits(&src, &dst, 10);  // the run is cut; the source still moves past it
  EXPECT_EQ(src, reinterpret_cast<Ptr>(repeat) + 2);
  EXPECT_EQ(dst, reinterpret_cast<Ptr>(out.data()) + 10);

  uint8_t literal[] = {0x04, 'a', 'b', 'c', 'd', 'e'};
  Bytes text(8, 0);
  src = reinterpret_cast<Ptr>(literal), dst = reinterpret_cast<Ptr>(text.data());
  UnpackBits(&src, &dst, 2);  // a cut literal moves the source only past what it copied
  EXPECT_EQ(src, reinterpret_cast<Ptr>(literal) + 3);
  EXPECT_EQ(text, (Bytes{'a', 'b', 0, 0, 0, 0, 0, 0}));
}

// Hostile packed data never makes UnpackBits write past dstBytes. The
// destination has a guard zone after it; under AddressSanitizer the source
// is an exact-size heap block too.
TEST(PackBits, HostileRunsNeverWritePastTheDestination) {
  std::mt19937 rng(7);
  std::uniform_int_distribution<int> byte(0, 255), wantedSizes(1, 700);
  constexpr size_t kGuard = 160;
  for (int round = 0; round < 2000; ++round) {
    size_t wanted = static_cast<size_t>(wantedSizes(rng));
    // Every header produces at least one byte from at most two, so twice
    // the wanted count is all the unbounded export can read.
    auto garbage = std::make_unique<uint8_t[]>(2 * wanted);
    for (size_t i = 0; i < 2 * wanted; ++i) garbage[i] = static_cast<uint8_t>(byte(rng));
    Bytes out(wanted + kGuard, 0xC3);
    Ptr src = reinterpret_cast<Ptr>(garbage.get()), dst = reinterpret_cast<Ptr>(out.data());
    UnpackBits(&src, &dst, static_cast<SInt16>(wanted));
    ASSERT_EQ(dst, reinterpret_cast<Ptr>(out.data()) + wanted) << round;
    ASSERT_LE(src, reinterpret_cast<Ptr>(garbage.get()) + 2 * wanted) << round;
    for (size_t i = wanted; i < out.size(); ++i) ASSERT_EQ(out[i], 0xC3) << round << " " << i;
    // Again into a block of exactly the wanted size, where AddressSanitizer
    // sees the first byte written past it.
    auto exact = std::make_unique<uint8_t[]>(wanted);
    auto done = kwe::packbits::Unpack(garbage.get(), 2 * wanted, exact.get(), wanted);
    ASSERT_EQ(done.written, wanted) << round;
    ASSERT_EQ(0, std::memcmp(exact.get(), out.data(), wanted)) << round;
  }
}

TEST(PackBits, TruncatedDataYieldsAPrefixAndStaysInBounds) {
  std::mt19937 rng(99);
  Bytes original = RunsAndNoise(rng, 1500);
  Bytes packed = Packed(original);
  for (size_t cut = 0; cut <= packed.size(); cut += 7) {
    auto source = std::make_unique<uint8_t[]>(cut + 1);  // exact size for ASan
    if (cut) std::memcpy(source.get(), packed.data(), cut);
    auto dst = std::make_unique<uint8_t[]>(original.size());
    std::memset(dst.get(), 0, original.size());
    auto done = kwe::packbits::Unpack(source.get(), cut, dst.get(), original.size());
    ASSERT_LE(done.read, cut);
    ASSERT_LE(done.written, original.size());
    if (cut < packed.size()) {
      EXPECT_LT(done.written, original.size()) << cut;
    }
    EXPECT_TRUE(std::equal(dst.get(), dst.get() + done.written, original.begin())) << cut;
  }
  // A repeat header whose value byte is missing produces nothing.
  uint8_t lone[] = {0xF0};
  uint8_t out[4] = {};
  auto done = kwe::packbits::Unpack(lone, 1, out, sizeof out);
  EXPECT_EQ(done.written, 0u);
  EXPECT_EQ(done.read, 1u);
}

}  // namespace
