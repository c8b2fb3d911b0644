// Permissions, positioning modes, newline reads and block counts, natively.
#include "files/transfer_rules.h"

#include <gtest/gtest.h>

namespace {

using namespace kwe::files;

TEST(FilesPortableTransfer, PermissionsBecomeOpenFileModes) {
  struct Case {
    int permission;
    uint16_t mode;
  } cases[] = {{0, 2}, {1, 0}, {2, 1}, {3, 0x22}, {4, 2}};
  for (const Case& c : cases) {
    uint16_t mode = 0xFFFF;
    EXPECT_TRUE(OpenModeForPermission(c.permission, &mode));
    EXPECT_EQ(mode, c.mode) << c.permission;
  }
  uint16_t mode = 0xABCD;
  EXPECT_FALSE(OpenModeForPermission(5, &mode));
  EXPECT_FALSE(OpenModeForPermission(-1, &mode));
  EXPECT_EQ(mode, 0xABCD);
}

TEST(FilesPortableTransfer, PositionModes) {
  PositionMode p = DecodePositionMode(int16_t((13 << 8) | 0x80 | 1));
  EXPECT_TRUE(p.newline);
  EXPECT_EQ(p.newlineChar, 13);
  EXPECT_EQ(p.mode, 1);
  p = DecodePositionMode(3 | 0x40);
  EXPECT_FALSE(p.newline);
  EXPECT_EQ(p.mode, 3);
}

TEST(FilesPortableTransfer, NewlineCut) {
  const char text[] = {'a', 'b', 13, 'c', 'd'};
  EXPECT_EQ(NewlineCut(text, 5, 13), 3u);
  EXPECT_EQ(NewlineCut(text, 2, 13), 0u);
  EXPECT_EQ(NewlineCut(text, 3, 13), 3u);
  EXPECT_EQ(NewlineCut(text, 5, 'a'), 1u);
}

TEST(FilesPortableTransfer, BlockCountsFitFifteenBits) {
  uint32_t blocks = 1000000, freeBlocks = 250000, size = 4096;
  FitBlockCounts(&blocks, &freeBlocks, &size);
  EXPECT_LE(blocks, 0x7FFFu);
  EXPECT_GT(blocks, 0x3FFFu);
  EXPECT_EQ(uint64_t(blocks) * size, 1000000ull * 4096);
  EXPECT_EQ(size, 4096u * 32);
  blocks = 100, freeBlocks = 0x8000, size = 512;
  FitBlockCounts(&blocks, &freeBlocks, &size);
  EXPECT_EQ(blocks, 50u);
  EXPECT_EQ(freeBlocks, 0x4000u);
  EXPECT_EQ(size, 1024u);
}

}  // namespace
