// The open-file table (slots 2 to 63 as reference numbers, the open modes
// and their conflicts, parking), reading, writing, the mark and the end of
// file checked byte for byte against what Windows reads back from disk, and
// volume information against what Windows reports for the same drives.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using namespace kwe_test;

class FilesReadWrite : public FilesTest {
 protected:
  SInt16 Open(const std::string& name, const std::string& contents, SInt8 permission = fsCurPerm) {
    WriteRaw(At(name), contents);
    SInt16 ref = 0;
    EXPECT_EQ(HOpen(0, 0, P(name), permission, &ref), noErr);
    return ref;
  }
};

// Seeded runs of transfers on one file, each through the plain call or its
// parameter block, against a model of the file's bytes and mark, the disk
// compared after every step; a failure names its seed and step. A read past
// the end delivers what was there (eofErr) and leaves the rest of the
// buffer; in newline mode it stops just past the newline character. A write
// lands at the mark (past the end after zeros); one of nothing writes
// nothing. Positioning from the end past it moves but answers eofErr, a mark
// before the start is refused (ioErr), fsAtMark ignores its offset and the
// high bits of a mode are not the mode's. SetEOF grows with zeros, shrinks
// pulling the mark back, and refuses a negative length; Allocate adds zeros.
// A block's ioPosOffset grows by what it moved (PBSetFPos: the new mark).
TEST_F(FilesReadWrite, SeededTransfersMatchAModelOfTheFile) {
  for (unsigned seed = 1; seed <= 16; ++seed) {
    std::mt19937 rng(seed);
    std::string model = "0123456789";
    SInt32 mark = 0;
    const std::string name = "model" + std::to_string(seed) + ".bin";
    const SInt16 ref = Open(name, model);
    for (int step = 0; step < 60; ++step) {
      SCOPED_TRACE("seed " + std::to_string(seed) + " step " + std::to_string(step));
      const SInt32 size = SInt32(model.size());
      SInt32 count = SInt32(rng() % 22) - 2;
      const bool block = rng() % 2, newline = block && rng() % 3 == 0;
      ParamBlockRec pb{};
      IOParam& io = pb.ioParam;
      io.ioRefNum = ref;
      io.ioReqCount = count;
      io.ioPosMode = SInt16(newline ? (13 << 8) | newLineBit : 0);
      io.ioPosOffset = SInt32(rng() % 5);  // ignored at the mark
      io.ioResult = 1;
      const unsigned op = rng() % 5;  // write, read, position, SetEOF, Allocate
      if (block && op < 2 && rng() % 2) {
        io.ioPosMode |= fsFromStart;
        io.ioPosOffset = mark = SInt32(rng() % (size + 4));
      }
      char buffer[24];
      std::memset(buffer, '#', sizeof buffer);
      OSErr got, want = noErr;
      SInt32 posOffset = io.ioPosOffset;  // what a block's ioPosOffset should come back as
      switch (op) {
        case 0: {
          const std::string bytes(size_t(std::max(count, 0)), "ab\r"[rng() % 3]);
          io.ioBuffer = const_cast<char*>(bytes.data());
          got = block ? PBWrite(&pb, false) : FSWrite(ref, &count, bytes.data());
          EXPECT_EQ(block ? io.ioActCount : std::max(count, 0), SInt32(bytes.size()));
          if (!bytes.empty()) {  // past the end, after zeros
            model.resize(std::max(model.size(), size_t(mark)), '\0');
            model.replace(size_t(mark), bytes.size(), bytes);
          }
          mark += SInt32(bytes.size());
          posOffset += SInt32(bytes.size());
          break;
        }
        case 1: {
          std::string there =
              count > 0 && mark < size ? model.substr(size_t(mark), size_t(count)) : "";
          const size_t cut = newline ? there.find('\r') : std::string::npos;
          if (cut != std::string::npos) there.resize(cut + 1);
          want = count < 0                                                  ? OSErr(paramErr)
                 : cut == std::string::npos && SInt32(there.size()) < count ? OSErr(eofErr)
                                                                            : OSErr(noErr);
          io.ioBuffer = buffer;
          got = block ? PBRead(&pb, false) : FSRead(ref, &count, buffer);
          EXPECT_EQ(std::string(buffer, size_t(block ? io.ioActCount : count)), there);
          // The rest of the buffer is left (a newline-mode read may fill it first).
          EXPECT_TRUE(newline || buffer[there.size()] == '#');
          mark += SInt32(there.size());
          posOffset += SInt32(there.size());
          break;
        }
        case 2: {
          const SInt16 mode = SInt16(rng() % 4 | (rng() % 2 ? 4 : 0));
          const SInt32 by = SInt32(rng() % 30) - 15, from[] = {0, 0, size, mark};
          const SInt32 to = (mode & 3) == fsAtMark ? mark : by + from[mode & 3];
          want = to < 0                               ? OSErr(ioErr)
                 : (mode & 3) == fsFromLEOF && by > 0 ? OSErr(eofErr)
                                                      : OSErr(noErr);
          io.ioPosMode = mode;
          io.ioPosOffset = by;
          got = block ? PBSetFPos(&pb, false) : SetFPos(ref, mode, by);
          posOffset = mark = to < 0 ? mark : to;
          break;
        }
        case 3:
          io.ioMisc = reinterpret_cast<Ptr>(static_cast<intptr_t>(count));
          got = block ? PBSetEOF(&pb, false) : SetEOF(ref, count);
          want = count < 0 ? OSErr(paramErr) : OSErr(noErr);
          if (count >= 0) {
            model.resize(size_t(count), '\0');
            mark = std::min(mark, count);
          }
          break;
        default:
          got = io.ioResult = Allocate(ref, &count);
          model.append(size_t(std::max(count, 0)), '\0');
      }
      EXPECT_EQ(got, want);
      SInt32 at = -1, length = -1;
      if (block) {
        EXPECT_EQ(io.ioResult, got);
        EXPECT_EQ(io.ioPosOffset, posOffset);
        EXPECT_EQ(PBGetFPos(&pb, false), noErr);
        EXPECT_EQ(PBGetEOF(&pb, false), noErr);
        at = io.ioPosOffset;
        length = SInt32(reinterpret_cast<intptr_t>(io.ioMisc));
      } else {
        EXPECT_EQ(GetFPos(ref, &at), noErr);
        EXPECT_EQ(GetEOF(ref, &length), noErr);
      }
      EXPECT_EQ(at, mark);
      EXPECT_EQ(length, SInt32(model.size()));
      ASSERT_EQ(ReadRaw(At(name)), model);
    }
  }
}

// Reference numbers that were closed or never opened, and a file opened for
// reading only: every call answers its error and moves nothing.
TEST_F(FilesReadWrite, ClosedMadeUpAndReadOnlyReferencesChangeNothing) {
  SInt16 ref = Open("c.txt", "keep");
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  EXPECT_EQ(PBClose(&pb, false), noErr);
  EXPECT_EQ(PBClose(&pb, false), ioErr);
  const SInt16 readOnly = Open("ro.txt", "original", fsRdPerm);
  for (SInt16 bad : {ref, SInt16(0), SInt16(1), SInt16(64), SInt16(-7), readOnly}) {
    const OSErr err = bad == readOnly ? wrPermErr : ioErr;
    char buffer[4] = {'#', '#', '#', '#'};
    SInt32 count = 4, mark = 77;
    if (bad != readOnly) {
      EXPECT_EQ(FSClose(bad), bad ? ioErr : fnOpnErr) << bad;
      EXPECT_EQ(FSRead(bad, &count, buffer), ioErr) << bad;
      EXPECT_EQ(buffer[0], '#');
      EXPECT_EQ(GetFPos(bad, &mark), ioErr);
      EXPECT_EQ(mark, 77);
    }
    count = 4;
    EXPECT_EQ(FSWrite(bad, &count, "ZZZZ"), err) << bad;
    EXPECT_EQ(count, 0);
    EXPECT_EQ(SetEOF(bad, 0), err);
    count = 10;
    EXPECT_EQ(Allocate(bad, &count), bad == readOnly ? wrPermErr : rfNumErr);
    pb.ioParam.ioRefNum = bad;
    pb.ioParam.ioBuffer = const_cast<Ptr>("xyz");
    pb.ioParam.ioReqCount = 3;
    EXPECT_EQ(PBWrite(&pb, false), err);
    EXPECT_EQ(pb.ioParam.ioActCount, 0);
  }
  EXPECT_EQ(FSWrite(readOnly, nullptr, "x"), paramErr);
  EXPECT_EQ(ReadRaw(At("c.txt")), "keep");
  EXPECT_EQ(ReadRaw(At("ro.txt")), "original");
}

using FilesTable = FilesTest;

// Every form of opening reaches the same file, each open taking a reference
// number from 2 to 63; the next one answers tmfoErr, and a freed number is
// the one taken again.
TEST_F(FilesTable, EveryOpenFormTakesASlotFromTwoToSixtyThree) {
  WriteRaw(At("same.txt"), "0123456789");
  FSSpec spec;
  ASSERT_EQ(FSMakeFSSpec(0, 0, P("same.txt"), &spec), noErr);
  ParamBlockRec pb{};
  pb.ioParam.ioNamePtr = Keep("same.txt");
  pb.ioParam.ioPermssn = fsRdPerm;
  HParamBlockRec hpb{};
  hpb.ioParam.ioNamePtr = Keep("same.txt");
  hpb.ioParam.ioPermssn = fsRdPerm;
  hpb.fileParam.ioDirID = DirID();
  std::vector<SInt16> refs;
  for (int i = 0; i < 62; ++i) {
    SInt16 ref = 0;
    const OSErr err = i % 6 == 0   ? HOpen(0, 0, P("same.txt"), fsRdPerm, &ref)
                      : i % 6 == 1 ? HOpenDF(0, DirID(), P("same.txt"), fsRdPerm, &ref)
                      : i % 6 == 2 ? HOpen(WDRefNum(), 0, P(At("same.txt")), fsRdPerm, &ref)
                      : i % 6 == 3 ? FSpOpenDF(&spec, fsRdPerm, &ref)
                      : i % 6 == 4 ? PBOpen(&pb, false)
                                   : PBHOpen(&hpb, true);
    ASSERT_EQ(err, noErr) << i;
    ref = i % 6 == 4 ? pb.ioParam.ioRefNum : i % 6 == 5 ? hpb.ioParam.ioRefNum : ref;
    EXPECT_EQ(ref, 2 + i);
    char byte = 0;
    SInt32 count = 1;
    ASSERT_EQ(SetFPos(ref, fsFromStart, i % 10), noErr);
    EXPECT_EQ(FSRead(ref, &count, &byte), noErr);
    EXPECT_EQ(byte, char('0' + i % 10)) << i;
    refs.push_back(ref);
  }
  EXPECT_EQ(pb.ioParam.ioResult, noErr);
  SInt16 ref = 99;
  EXPECT_EQ(HOpen(0, 0, P("same.txt"), fsRdPerm, &ref), tmfoErr);
  EXPECT_EQ(ref, 0);
  OSErr err = noErr;
  EXPECT_EQ(KWE_FHOpen(At("same.txt").c_str(), 0, &err), -1);
  EXPECT_EQ(err, tmfoErr);
  EXPECT_EQ(FSClose(refs[10]), noErr);
  EXPECT_EQ(HOpen(0, 0, P("same.txt"), fsRdPerm, &ref), noErr);
  EXPECT_EQ(ref, refs[10]);
}

// One writer at a time with readers beside it; fsRdWrPerm (FSOpen) denies
// writing to everyone else through Windows' sharing, not reading. Failed
// opens answer why and hold no slot.
TEST_F(FilesTable, OneWriterAtATimeAndFailedOpensHoldNoSlot) {
  WriteRaw(At("w.txt"), "data");
  WriteRaw(At("ro.txt"), "locked");
  SetFileAttributesA(At("ro.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  SInt16 writer = 0, reader = 0;
  ASSERT_EQ(HOpen(0, 0, P("w.txt"), fsCurPerm, &writer), noErr);
  EXPECT_EQ(HOpen(0, 0, P("w.txt"), fsRdPerm, &reader), noErr);
  FSClose(reader);
  const struct {
    std::string name;
    SInt8 permission;
    OSErr err;
  } cases[] = {
      {"W.TXT", fsWrPerm, opWrErr},
      {"missing.txt", fsRdPerm, fnfErr},
      {"nodir\\x.txt", fsRdPerm, dirNFErr},
      {"ro.txt", fsWrPerm, permErr},
      {"ro.txt", fsRdWrPerm, permErr},
      {"bad<name>.txt", fsRdPerm, fnfErr},
      {"ro.txt", 9, paramErr},
  };
  for (const auto& c : cases) {
    SInt16 ref = 55;
    EXPECT_EQ(HOpen(0, 0, P(c.name), c.permission, &ref), c.err) << c.name;
    EXPECT_EQ(ref, 0) << c.name;
  }
  FSClose(writer);
  SInt16 exclusive = 0, second = 0;
  ASSERT_EQ(FSOpen(P("w.txt"), 0, &exclusive), noErr);
  EXPECT_EQ(FSOpen(P("w.txt"), 0, &second), opWrErr);
  EXPECT_EQ(HOpen(0, 0, P("w.txt"), fsRdPerm, &reader), noErr);
  EXPECT_EQ(reader, 3) << "nothing failed was left open";
  FSClose(reader);
  FSClose(exclusive);
  // fsCurPerm settles for reading a read-only file.
  SInt16 ref = 0;
  ASSERT_EQ(HOpen(0, 0, P("ro.txt"), fsCurPerm, &ref), noErr);
  SInt32 count = 2;
  EXPECT_EQ(FSWrite(ref, &count, "XX"), wrPermErr);
  EXPECT_EQ(ReadRaw(At("ro.txt")), "locked");
  EXPECT_EQ(ReadRaw(At("w.txt")), "data");
  EXPECT_FALSE(Exists(At("missing.txt")));
}

// A parked file has no Windows handle (others may write it) and reopens by
// itself at its mark; one whose file went away loses its slot.
TEST_F(FilesTable, ParkedFilesReopenAtTheirPlace) {
  WriteRaw(At("p.txt"), "abcdefgh");
  OSErr err = 1;
  SInt16 slot = KWE_FHOpen(At("p.txt").c_str(), 2, &err);
  ASSERT_EQ(err, noErr);
  EXPECT_EQ(KWE_FHLSeek(slot, 3, 0), 3);
  EXPECT_EQ(KWE_FHUnMap(KWE_FHMap(slot)), slot);
  EXPECT_TRUE(KWE_FHReOpen(false, slot));
  EXPECT_EQ(KWE_FHMap(slot), -1);
  HANDLE h = CreateFileA(At("p.txt").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_NE(h, INVALID_HANDLE_VALUE);
  CloseHandle(h);
  char c[2] = {};
  EXPECT_EQ(KWE_FHRead(slot, c, 1), 1);
  EXPECT_EQ(c[0], 'd');
  KWE_FHReOpenAll(false);
  KWE_FHReOpenAll(true);
  EXPECT_EQ(KWE_FHLSeek(slot, 0, 1), 4);
  EXPECT_TRUE(KWE_FHReOpen(false, slot));
  DeleteFileA(At("p.txt").c_str());
  EXPECT_FALSE(KWE_FHReOpen(true, slot));
  EXPECT_EQ(KWE_FHRead(slot, c, 1), -1);
}

using FilesVolume = FilesTest;

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
  EXPECT_EQ(Text(name), "C:\\");
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
}

// A volume named by working directory, by the current directory or by a
// path in it is the drive's; unknown ones answer nsvErr.
TEST_F(FilesVolume, VolumesNamedByWorkingDirectoryPathOrIndex) {
  const SInt16 volume = ExpectedDriveVolume(Dir()[0]);
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

  EXPECT_EQ(FlushVol(nullptr, -26), nsvErr);

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

}  // namespace
