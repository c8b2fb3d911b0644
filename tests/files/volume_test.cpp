// Volume information against what Windows reports for the same drives, and
// the session flag that decides which drives are asked.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::Keep;

using FilesVolume = kwe_test::FilesTest;

// C: as Windows counts it, after the library's rule: clusters halved and
// the block doubled until both counts fit 15 bits; free bytes stop at
// 0x7FFFFFFF. Free space moves as other programs write; a little is allowed.
TEST_F(FilesVolume, FixedDrivesReportWindowsFreeSpace) {
  DWORD spc, bps, freeClusters, clusters;
  ASSERT_TRUE(GetDiskFreeSpaceA("C:\\", &spc, &bps, &freeClusters, &clusters));
  UInt32 blocks = clusters, freeBlocks = freeClusters, blockSize = spc * bps;
  while (blocks > 0x7FFF || freeBlocks > 0x7FFF) {
    blocks /= 2;
    freeBlocks /= 2;
    blockSize *= 2;
  }
  Str255 name;
  ParamBlockRec pb{};
  VolumeParam& v = pb.volumeParam;
  v.ioNamePtr = name;
  v.ioVolIndex = 3;  // C: is the third volume
  ASSERT_EQ(PBGetVInfo(&pb, false), noErr);
  EXPECT_EQ(v.ioVRefNum, -3);
  EXPECT_EQ(kwe_test::Text(name), "C:\\");
  EXPECT_EQ(v.ioVNmAlBlks, blocks);
  EXPECT_EQ(UInt32(v.ioVAlBlkSiz), blockSize);
  EXPECT_NEAR(double(v.ioVFrBlk), double(freeBlocks), 64.0);
  HParamBlockRec hpb{};
  hpb.volumeParam.ioVRefNum = -3;
  ASSERT_EQ(PBHGetVInfo(&hpb, false), noErr);
  EXPECT_EQ(hpb.volumeParam.ioVNmAlBlks, blocks);
  EXPECT_EQ(hpb.volumeParam.ioVSigWord, 0x4244);  // 'BD': an HFS volume
  SInt16 vRefNum = 0;
  SInt32 freeBytes = 0;
  ASSERT_EQ(GetVInfo(3, name, &vRefNum, &freeBytes), noErr);
  EXPECT_EQ(vRefNum, -3);
  EXPECT_NEAR(double(freeBytes), std::min(double(freeBlocks) * blockSize, 2147483647.0),
              64.0 * blockSize);
  // A: is never asked without session flag 0x00004000: a fixed answer.
  v.ioVolIndex = 1;
  ASSERT_EQ(PBGetVInfo(&pb, false), noErr);
  EXPECT_EQ(v.ioVRefNum, -1);
  EXPECT_EQ(v.ioVNmAlBlks, 256);
  EXPECT_EQ(v.ioVFrBlk, 0);
}

// A volume named by working directory, by the current directory or by a
// path in it is the drive's; unknown ones answer nsvErr.
TEST_F(FilesVolume, VolumesNamedByWorkingDirectoryPathOrIndex) {
  const SInt16 volume = kwe_test::ExpectedDriveVolume(Dir()[0]);
  const struct {
    SInt16 index, vRefNum;
    StringPtr name;
    OSErr err;
  } cases[] = {
      {0, WDRefNum(), nullptr, noErr},
      {0, 0, nullptr, noErr},
      {-1, 0, Keep(At("anything.txt")), noErr},
      {27, 0, nullptr, nsvErr},
      {0, SInt16(0x8000 | 3000), nullptr, nsvErr},
      {-1, 0, Keep("no volume here"), nsvErr},
  };
  for (const auto& c : cases) {
    ParamBlockRec pb{};
    VolumeParam& v = pb.volumeParam;
    v.ioVolIndex = c.index;
    v.ioVRefNum = c.vRefNum;
    v.ioNamePtr = c.name;
    v.ioResult = 1;
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

  // PBHGetVolParms: version 1 with nothing set, never past the buffer.
  unsigned char buffer[32];
  std::memset(buffer, 0xEE, sizeof buffer);
  HParamBlockRec pb{};
  pb.ioParam.ioBuffer = reinterpret_cast<Ptr>(buffer);
  pb.ioParam.ioReqCount = sizeof buffer;
  ASSERT_EQ(PBHGetVolParms(&pb, false), noErr);
  const SInt32 filled = SInt32(sizeof(GetVolParmsInfoBuffer));
  EXPECT_EQ(pb.ioParam.ioActCount, filled);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(buffer), size_t(filled + 1)),
            std::string("\1", 1) + std::string(size_t(filled - 1), '\0') + "\xEE");
  pb.ioParam.ioReqCount = 5;
  EXPECT_EQ(PBHGetVolParms(&pb, false), -1);
}

class FilesVolumeAllDrives : public kwe_test::FilesTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagAllDrivesInfo; }
};

TEST_F(FilesVolumeAllDrives, EveryDriveIsAskedAndOneNotReadyAnswersNsvErr) {
  DWORD spc, bps, freeClusters, clusters;
  const bool ready = GetDiskFreeSpaceA("A:\\", &spc, &bps, &freeClusters, &clusters);
  ParamBlockRec pb{};
  pb.volumeParam.ioVolIndex = 1;
  EXPECT_EQ(PBGetVInfo(&pb, false), ready ? OSErr(noErr) : OSErr(nsvErr));
  pb.volumeParam.ioVolIndex = 3;
  EXPECT_EQ(PBGetVInfo(&pb, false), noErr);
}

}  // namespace
