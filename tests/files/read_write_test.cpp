// Reading, writing, the mark and the end of file, checked byte for byte
// against what Windows reads back from disk.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::P;
using kwe_test::ReadRaw;
using kwe_test::WriteRaw;

class FilesReadWrite : public kwe_test::FilesTest {
 protected:
  SInt16 Open(const std::string& name, const std::string& contents, SInt8 permission = fsCurPerm) {
    WriteRaw(At(name), contents);
    SInt16 ref = 0;
    EXPECT_EQ(HOpen(0, 0, P(name), permission, &ref), noErr);
    return ref;
  }
};

TEST_F(FilesReadWrite, ReadingPastTheEndDeliversWhatWasThere) {
  std::string contents;
  for (int i = 0; i < 200; ++i) contents += char('A' + i % 26);
  SInt16 ref = Open("r.bin", contents, fsRdPerm);
  ASSERT_EQ(SetFPos(ref, fsFromLEOF, -10), noErr);
  char buffer[100];
  std::memset(buffer, '#', sizeof buffer);
  SInt32 count = 100;
  EXPECT_EQ(FSRead(ref, &count, buffer), eofErr);
  EXPECT_EQ(count, 10);
  EXPECT_EQ(std::string(buffer, 10), contents.substr(190));
  EXPECT_EQ(buffer[10], '#');
  count = 5;
  EXPECT_EQ(FSRead(ref, &count, buffer), eofErr);
  EXPECT_EQ(count, 0);
  SInt32 mark = -1;
  EXPECT_EQ(GetFPos(ref, &mark), noErr);
  EXPECT_EQ(mark, 200);
  EXPECT_EQ(ReadRaw(At("r.bin")), contents);
}

TEST_F(FilesReadWrite, WritesLandOnDiskAtTheMark) {
  SInt16 ref = Open("w.txt", "0123456789");
  SInt32 count = 3;
  ASSERT_EQ(SetFPos(ref, fsFromStart, 4), noErr);
  EXPECT_EQ(FSWrite(ref, &count, "abc"), noErr);
  EXPECT_EQ(count, 3);
  EXPECT_EQ(ReadRaw(At("w.txt")), "0123abc789");
  count = 0;
  EXPECT_EQ(FSWrite(ref, &count, "zzz"), noErr);  // nothing written, nothing cut
  count = -4;
  EXPECT_EQ(FSWrite(ref, &count, "zzz"), noErr);
  EXPECT_EQ(ReadRaw(At("w.txt")), "0123abc789");
  ASSERT_EQ(SetFPos(ref, fsFromLEOF, 0), noErr);
  count = 2;
  EXPECT_EQ(FSWrite(ref, &count, "!!"), noErr);
  EXPECT_EQ(ReadRaw(At("w.txt")), "0123abc789!!");
  EXPECT_EQ(FSWrite(ref, nullptr, "x"), paramErr);
  EXPECT_EQ(FSClose(ref), noErr);
}

TEST_F(FilesReadWrite, PositioningModes) {
  SInt16 ref = Open("pos.txt", "0123456789");
  struct Case {
    SInt16 mode;
    SInt32 offset;
    OSErr err;
    SInt32 mark;
  } cases[] = {
      {fsFromStart, 6, noErr, 6},     {fsAtMark, 99, noErr, 6},   {fsFromMark, -2, noErr, 4},
      {fsFromMark, 3, noErr, 7},      {fsFromLEOF, -1, noErr, 9}, {fsFromLEOF, 0, noErr, 10},
      {fsFromLEOF, 2, eofErr, 12},    {fsFromStart, 0, noErr, 0}, {fsFromMark, -1, ioErr, 0},
      {fsFromStart | 4, 3, noErr, 3},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SetFPos(ref, c.mode, c.offset), c.err) << c.mode << " " << c.offset;
    SInt32 mark = -1;
    EXPECT_EQ(GetFPos(ref, &mark), noErr);
    EXPECT_EQ(mark, c.mark) << c.mode << " " << c.offset;
  }
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  pb.ioParam.ioPosMode = fsFromMark;
  pb.ioParam.ioPosOffset = 2;
  EXPECT_EQ(PBSetFPos(&pb, false), noErr);
  EXPECT_EQ(pb.ioParam.ioPosOffset, 5);
  EXPECT_EQ(PBGetFPos(&pb, false), noErr);
  EXPECT_EQ(pb.ioParam.ioPosOffset, 5);
  EXPECT_EQ(ReadRaw(At("pos.txt")), "0123456789");
}

TEST_F(FilesReadWrite, ClosedAndMadeUpReferenceNumbersMoveNothing) {
  SInt16 ref = Open("c.txt", "keep");
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  EXPECT_EQ(PBClose(&pb, false), noErr);
  EXPECT_EQ(PBClose(&pb, false), ioErr);
  EXPECT_EQ(pb.ioParam.ioResult, ioErr);
  pb.ioParam.ioRefNum = 0;
  EXPECT_EQ(PBClose(&pb, false), fnOpnErr);
  for (SInt16 bad : {ref, SInt16(0), SInt16(1), SInt16(64), SInt16(-7), SInt16(500)}) {
    if (bad) {
      EXPECT_EQ(FSClose(bad), ioErr) << bad;
    }
    char buffer[4] = {'#', '#', '#', '#'};
    SInt32 count = 4, mark = 77;
    EXPECT_EQ(FSRead(bad, &count, buffer), ioErr) << bad;
    EXPECT_EQ(count, 0);
    EXPECT_EQ(buffer[0], '#');
    count = 4;
    EXPECT_EQ(FSWrite(bad, &count, "ZZZZ"), ioErr) << bad;
    EXPECT_EQ(GetFPos(bad, &mark), ioErr);
    EXPECT_EQ(mark, 77);
    EXPECT_EQ(SetFPos(bad, fsFromStart, 0), ioErr);
    EXPECT_EQ(SetFPos(bad, fsAtMark, 0), ioErr);
    EXPECT_EQ(GetEOF(bad, &mark), ioErr);
    EXPECT_EQ(SetEOF(bad, 0), ioErr);
    count = 10;
    EXPECT_EQ(Allocate(bad, &count), rfNumErr);
  }
  EXPECT_EQ(ReadRaw(At("c.txt")), "keep");
}

TEST_F(FilesReadWrite, ReadOnlyOpensRefuseEveryChange) {
  SInt16 ref = Open("ro.txt", "original", fsRdPerm);
  SInt32 count = 3;
  EXPECT_EQ(FSWrite(ref, &count, "new"), wrPermErr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(SetEOF(ref, 2), wrPermErr);
  EXPECT_EQ(SetEOF(ref, 0), wrPermErr);
  count = 100;
  EXPECT_EQ(Allocate(ref, &count), wrPermErr);
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  pb.ioParam.ioBuffer = const_cast<Ptr>("xyz");
  pb.ioParam.ioReqCount = 3;
  pb.ioParam.ioPosMode = fsFromStart;
  EXPECT_EQ(PBWrite(&pb, false), wrPermErr);
  EXPECT_EQ(pb.ioParam.ioActCount, 0);
  EXPECT_EQ(ReadRaw(At("ro.txt")), "original");
}

TEST_F(FilesReadWrite, EndOfFileGrowsWithZerosAndShrinks) {
  SInt16 ref = Open("eof.bin", "abcdef");
  SInt32 length = 0;
  ASSERT_EQ(SetFPos(ref, fsFromStart, 4), noErr);
  EXPECT_EQ(SetEOF(ref, 9), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), std::string("abcdef\0\0\0", 9));
  EXPECT_EQ(GetEOF(ref, &length), noErr);
  EXPECT_EQ(length, 9);
  SInt32 mark = 0;
  GetFPos(ref, &mark);
  EXPECT_EQ(mark, 4);  // the mark stays
  EXPECT_EQ(SetEOF(ref, 2), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), "ab");
  GetFPos(ref, &mark);
  EXPECT_EQ(mark, 2);  // never past the end
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  pb.ioParam.ioMisc = reinterpret_cast<Ptr>(static_cast<intptr_t>(5));
  EXPECT_EQ(PBSetEOF(&pb, false), noErr);
  pb.ioParam.ioMisc = nullptr;
  EXPECT_EQ(PBGetEOF(&pb, false), noErr);
  EXPECT_EQ(reinterpret_cast<intptr_t>(pb.ioParam.ioMisc), 5);
  EXPECT_EQ(SetEOF(ref, 0), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), "");
  EXPECT_EQ(SetEOF(ref, -1), paramErr);
  SInt32 count = 16;
  EXPECT_EQ(Allocate(ref, &count), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), std::string(16, '\0'));
  FSClose(ref);
}

TEST_F(FilesReadWrite, ParameterBlockReadsAndWritesMoveTheOffset) {
  SInt16 ref = Open("pb.txt", "0123456789");
  char buffer[8] = {};
  ParamBlockRec pb{};
  IOParam& io = pb.ioParam;
  io.ioRefNum = ref;
  io.ioBuffer = buffer;
  io.ioReqCount = 4;
  io.ioPosMode = fsFromStart;
  io.ioPosOffset = 3;
  io.ioResult = 1;
  EXPECT_EQ(PBRead(&pb, false), noErr);
  EXPECT_EQ(io.ioResult, noErr);
  EXPECT_EQ(io.ioActCount, 4);
  EXPECT_EQ(io.ioPosOffset, 7);
  EXPECT_EQ(std::string(buffer, 4), "3456");
  io.ioReqCount = 8;
  io.ioPosMode = fsAtMark;
  io.ioPosOffset = 0;
  EXPECT_EQ(PBRead(&pb, false), eofErr);
  EXPECT_EQ(io.ioActCount, 3);
  io.ioBuffer = const_cast<Ptr>("XY");
  io.ioReqCount = 2;
  io.ioPosMode = fsFromStart;
  io.ioPosOffset = 1;
  EXPECT_EQ(PBWrite(&pb, false), noErr);
  EXPECT_EQ(io.ioActCount, 2);
  EXPECT_EQ(io.ioPosOffset, 3);
  EXPECT_EQ(ReadRaw(At("pb.txt")), "0XY3456789");
}

TEST_F(FilesReadWrite, NewlineModeStopsJustPastTheNewline) {
  SInt16 ref = Open("lines.txt", std::string("ab\rcd\rlast"));
  char buffer[16];
  ParamBlockRec pb{};
  IOParam& io = pb.ioParam;
  io.ioRefNum = ref;
  io.ioBuffer = buffer;
  io.ioReqCount = 16;
  io.ioPosMode = SInt16((13 << 8) | newLineBit | fsFromStart);
  io.ioPosOffset = 0;
  EXPECT_EQ(PBRead(&pb, false), noErr);
  EXPECT_EQ(io.ioActCount, 3);
  EXPECT_EQ(std::string(buffer, 3), "ab\r");
  SInt32 mark = 0;
  GetFPos(ref, &mark);
  EXPECT_EQ(mark, 3);
  io.ioPosMode = SInt16((13 << 8) | newLineBit | fsAtMark);
  EXPECT_EQ(PBRead(&pb, false), noErr);
  EXPECT_EQ(std::string(buffer, io.ioActCount), "cd\r");
  EXPECT_EQ(PBRead(&pb, false), eofErr);  // no newline before the end
  EXPECT_EQ(std::string(buffer, io.ioActCount), "last");
}

TEST_F(FilesReadWrite, FlushAndFileControlBlockInformation) {
  SInt16 ref = Open("fcb.txt", "12345");
  SetFPos(ref, fsFromStart, 2);
  Str63 name;
  FCBPBRec pb{};
  pb.ioRefNum = ref;
  pb.ioNamePtr = name;
  EXPECT_EQ(PBGetFCBInfo(&pb, false), noErr);
  EXPECT_EQ(kwe_test::Text(name), "fcb.txt");
  EXPECT_EQ(pb.ioFCBParID, DirID());
  EXPECT_EQ(pb.ioFCBVRefNum, WDRefNum());
  EXPECT_EQ(pb.ioFCBEOF, 5);
  EXPECT_EQ(pb.ioFCBCrPs, 2);
  SInt16 vRefNum = 0;
  EXPECT_EQ(GetVRefNum(ref, &vRefNum), noErr);
  EXPECT_EQ(vRefNum, kwe_test::ExpectedDriveVolume(Dir()[0]));
  ParamBlockRec flush{};
  flush.ioParam.ioRefNum = ref;
  EXPECT_EQ(PBFlushFile(&flush, false), noErr);
  EXPECT_EQ(FlushVol(nullptr, 0), noErr);
  EXPECT_EQ(FlushVol(nullptr, -26), nsvErr);
  KWE_FHReOpen(false, ref);
  EXPECT_EQ(PBGetFCBInfo(&pb, false), fnOpnErr);  // parked counts as not open
  FSClose(ref);
  EXPECT_EQ(PBGetFCBInfo(&pb, false), fnOpnErr);
  EXPECT_EQ(pb.ioResult, fnOpnErr);
  EXPECT_EQ(GetVRefNum(ref, &vRefNum), rfNumErr);
}

}  // namespace
