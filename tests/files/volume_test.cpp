// Volume information against what Windows reports for the same drives, and
// the session flag that decides which drives are asked.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::ExpectedDriveVolume;
using kwe_test::Keep;
using kwe_test::P;
using kwe_test::Text;

// Windows' figures after the library's rule: counts halved and the block
// doubled until both fit 15 bits.
void WindowsFigures(const char* root, UInt32* blocks, UInt32* blockSize, UInt32* freeBlocks) {
  DWORD spc, bps, freeClusters, clusters;
  ASSERT_TRUE(GetDiskFreeSpaceA(root, &spc, &bps, &freeClusters, &clusters));
  *blocks = clusters;
  *freeBlocks = freeClusters;
  *blockSize = spc * bps;
  while (*blocks > 0x7FFF || *freeBlocks > 0x7FFF) {
    *blocks /= 2;
    *freeBlocks /= 2;
    *blockSize *= 2;
  }
}

using FilesVolume = kwe_test::FilesTest;

TEST_F(FilesVolume, FixedDrivesReportWindowsFreeSpace) {
  UInt32 blocks = 0, blockSize = 0, freeBlocks = 0;
  WindowsFigures("C:\\", &blocks, &blockSize, &freeBlocks);
  Str255 name;
  ParamBlockRec pb{};
  VolumeParam& v = pb.volumeParam;
  v.ioNamePtr = name;
  v.ioVolIndex = 3;  // C: is the third volume
  v.ioResult = 1;
  ASSERT_EQ(PBGetVInfo(&pb, false), noErr);
  EXPECT_EQ(v.ioResult, noErr);
  EXPECT_EQ(v.ioVRefNum, -3);
  EXPECT_EQ(Text(name), "C:\\");
  EXPECT_EQ(v.ioVNmAlBlks, blocks);
  EXPECT_EQ(UInt32(v.ioVAlBlkSiz), blockSize);
  // Free space moves as other programs write; allow a little.
  EXPECT_NEAR(double(v.ioVFrBlk), double(freeBlocks), 64.0);
  HParamBlockRec hpb{};
  hpb.volumeParam.ioVRefNum = -3;
  ASSERT_EQ(PBHGetVInfo(&hpb, false), noErr);
  EXPECT_EQ(hpb.volumeParam.ioVNmAlBlks, blocks);
  EXPECT_EQ(hpb.volumeParam.ioVSigWord, 0x4244);
  SInt16 vRefNum = 0;
  SInt32 freeBytes = 0;
  ASSERT_EQ(GetVInfo(3, name, &vRefNum, &freeBytes), noErr);
  EXPECT_EQ(vRefNum, -3);
  // Free bytes stop at 0x7FFFFFFF.
  double expected = double(freeBlocks) * blockSize;
  if (expected > 2147483647.0) expected = 2147483647.0;
  EXPECT_NEAR(double(freeBytes), expected, 64.0 * blockSize);
}

// A volume named by working directory, by the current directory or by a
// path in it is the drive's; unknown ones answer nsvErr.
TEST_F(FilesVolume, VolumesNamedByWorkingDirectoryPathOrIndex) {
  SInt16 volume = ExpectedDriveVolume(Dir()[0]);
  struct Case {
    SInt16 index, vRefNum;
    StringPtr name;
    OSErr err;
  } const cases[] = {
      {0, WDRefNum(), nullptr, noErr},
      {0, 0, nullptr, noErr},
      {-1, 0, Keep(At("anything.txt")), noErr},
      {27, 0, nullptr, nsvErr},
      {0, SInt16(0x8000 | 3000), nullptr, nsvErr},
      {-1, 0, Keep("no volume here"), nsvErr},
  };
  for (const Case& c : cases) {
    ParamBlockRec pb{};
    VolumeParam& v = pb.volumeParam;
    v.ioVolIndex = c.index;
    v.ioVRefNum = c.vRefNum;
    v.ioNamePtr = c.name;
    EXPECT_EQ(PBGetVInfo(&pb, false), c.err) << c.index << " " << c.vRefNum;
    EXPECT_EQ(v.ioResult, c.err);
    if (c.err == noErr) {
      EXPECT_EQ(v.ioVRefNum, volume);
    }
  }
  SInt16 vRefNum = 99;
  EXPECT_EQ(GetVInfo(0, nullptr, &vRefNum, nullptr), noErr);
  EXPECT_EQ(vRefNum, volume);
  EXPECT_EQ(GetVInfo(27, nullptr, &vRefNum, nullptr), nsvErr);
}

TEST_F(FilesVolume, FloppyDrivesAreNotAskedUnlessTheHostWantsIt) {
  ParamBlockRec pb{};
  VolumeParam& v = pb.volumeParam;
  v.ioVolIndex = 1;  // A:, never asked without flag 0x00004000
  ASSERT_EQ(PBGetVInfo(&pb, false), noErr);
  EXPECT_EQ(v.ioVRefNum, -1);
  EXPECT_EQ(v.ioVNmAlBlks, 256);
  EXPECT_EQ(v.ioVAlBlkSiz, 8192);
  EXPECT_EQ(v.ioVFrBlk, 0);
}

class FilesVolumeAllDrives : public kwe_test::FilesTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagAllDrivesInfo; }
};

TEST_F(FilesVolumeAllDrives, EveryDriveIsAskedAndOneNotReadyAnswersNsvErr) {
  char root[] = "A:\\";
  DWORD spc, bps, freeClusters, clusters;
  bool ready = GetDiskFreeSpaceA(root, &spc, &bps, &freeClusters, &clusters);
  ParamBlockRec pb{};
  pb.volumeParam.ioVolIndex = 1;
  EXPECT_EQ(PBGetVInfo(&pb, false), ready ? OSErr(noErr) : OSErr(nsvErr));
  pb.volumeParam.ioVolIndex = 3;
  EXPECT_EQ(PBGetVInfo(&pb, false), noErr);
}

TEST_F(FilesVolume, VolumeParametersAreVersionOneWithNothingSet) {
  unsigned char buffer[32];
  std::memset(buffer, 0xEE, sizeof buffer);
  HParamBlockRec pb{};
  pb.ioParam.ioBuffer = reinterpret_cast<Ptr>(buffer);
  pb.ioParam.ioReqCount = sizeof buffer;
  ASSERT_EQ(PBHGetVolParms(&pb, false), noErr);
  const SInt32 filled = SInt32(sizeof(GetVolParmsInfoBuffer));
  EXPECT_EQ(pb.ioParam.ioActCount, filled);
  SInt16 version;
  std::memcpy(&version, buffer, 2);
  EXPECT_EQ(version, 1);
  for (SInt32 i = 2; i < filled; ++i) EXPECT_EQ(buffer[i], 0) << i;
  EXPECT_EQ(buffer[filled], 0xEE);
  pb.ioParam.ioReqCount = 5;
  EXPECT_EQ(PBHGetVolParms(&pb, false), -1);
  EXPECT_EQ(DIBadMount(Point{0, 0}, 0), 0);
}

}  // namespace
