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
  static SInt32 Mark(SInt16 ref) {
    SInt32 mark = -1;
    EXPECT_EQ(GetFPos(ref, &mark), noErr);
    return mark;
  }
};

// A read past the end delivers what was there (eofErr) and leaves the rest
// of the buffer; writes land at the mark, and nothing or less than nothing
// writes nothing.
TEST_F(FilesReadWrite, ReadsStopAtTheEndAndWritesLandAtTheMark) {
  SInt16 ref = Open("w.txt", "0123456789");
  char buffer[16];
  std::memset(buffer, '#', sizeof buffer);
  ASSERT_EQ(SetFPos(ref, fsFromLEOF, -3), noErr);
  SInt32 count = 16;
  EXPECT_EQ(FSRead(ref, &count, buffer), eofErr);
  EXPECT_EQ(std::string(buffer, 4), "789#");
  EXPECT_EQ(count, 3);
  count = 5;
  EXPECT_EQ(FSRead(ref, &count, buffer), eofErr);
  EXPECT_EQ(count, 0);
  EXPECT_EQ(Mark(ref), 10);

  ASSERT_EQ(SetFPos(ref, fsFromStart, 4), noErr);
  count = 3;
  EXPECT_EQ(FSWrite(ref, &count, "abc"), noErr);
  EXPECT_EQ(count, 3);
  for (SInt32 none : {0, -4}) EXPECT_EQ(FSWrite(ref, &none, "zzz"), noErr);
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
  const struct {
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
  for (const auto& c : cases) {
    EXPECT_EQ(SetFPos(ref, c.mode, c.offset), c.err) << c.mode << " " << c.offset;
    EXPECT_EQ(Mark(ref), c.mark) << c.mode << " " << c.offset;
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

// Reference numbers that were closed or never opened, and a file opened for
// reading only: every call answers its error and moves nothing.
TEST_F(FilesReadWrite, ClosedMadeUpAndReadOnlyReferencesChangeNothing) {
  SInt16 ref = Open("c.txt", "keep");
  ParamBlockRec pb{};
  pb.ioParam.ioRefNum = ref;
  EXPECT_EQ(PBClose(&pb, false), noErr);
  EXPECT_EQ(PBClose(&pb, false), ioErr);
  EXPECT_EQ(pb.ioParam.ioResult, ioErr);
  pb.ioParam.ioRefNum = 0;
  EXPECT_EQ(PBClose(&pb, false), fnOpnErr);
  const SInt16 readOnly = Open("ro.txt", "original", fsRdPerm);
  for (SInt16 bad : {ref, SInt16(0), SInt16(1), SInt16(64), SInt16(-7), SInt16(500), readOnly}) {
    const OSErr err = bad == readOnly ? wrPermErr : ioErr;
    char buffer[4] = {'#', '#', '#', '#'};
    SInt32 count = 4, mark = 77;
    if (bad != readOnly) {
      EXPECT_EQ(FSClose(bad), bad ? ioErr : fnOpnErr) << bad;
      EXPECT_EQ(FSRead(bad, &count, buffer), ioErr) << bad;
      EXPECT_EQ(buffer[0], '#');
      EXPECT_EQ(GetFPos(bad, &mark), ioErr);
      EXPECT_EQ(mark, 77);
      EXPECT_EQ(SetFPos(bad, fsAtMark, 0), ioErr);
      EXPECT_EQ(GetEOF(bad, &mark), ioErr);
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
  EXPECT_EQ(ReadRaw(At("c.txt")), "keep");
  EXPECT_EQ(ReadRaw(At("ro.txt")), "original");
}

// SetEOF grows the file with zeros and shrinks it, leaving the mark but
// never past the end; Allocate grows it too.
TEST_F(FilesReadWrite, EndOfFileGrowsWithZerosAndShrinks) {
  SInt16 ref = Open("eof.bin", "abcdef");
  SInt32 length = 0;
  ASSERT_EQ(SetFPos(ref, fsFromStart, 4), noErr);
  EXPECT_EQ(SetEOF(ref, 9), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), std::string("abcdef\0\0\0", 9));
  EXPECT_EQ(GetEOF(ref, &length), noErr);
  EXPECT_EQ(length, 9);
  EXPECT_EQ(Mark(ref), 4);
  EXPECT_EQ(SetEOF(ref, 2), noErr);
  EXPECT_EQ(ReadRaw(At("eof.bin")), "ab");
  EXPECT_EQ(Mark(ref), 2);
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
}

// Parameter-block reads and writes move the mark, and ioPosOffset grows by
// what they moved (the new mark when they position from the start); in
// newline mode a read stops just past the newline character.
TEST_F(FilesReadWrite, ParameterBlockTransfersAndNewlineMode) {
  SInt16 ref = Open("pb.txt", "0123\r56789");
  char buffer[16] = {};
  ParamBlockRec pb{};
  IOParam& io = pb.ioParam;
  io.ioRefNum = ref;
  io.ioBuffer = buffer;
  io.ioResult = 1;
  const struct {
    SInt16 mode;
    SInt32 offset, request;
    OSErr err;
    const char* read;
    SInt32 mark;
  } reads[] = {
      {fsFromStart, 3, 4, noErr, "3\r56", 7},
      {fsAtMark, 0, 8, eofErr, "789", 10},
      {SInt16((13 << 8) | newLineBit | fsFromStart), 0, 16, noErr, "0123\r", 5},
      {SInt16((13 << 8) | newLineBit | fsAtMark), 0, 16, eofErr, "56789", 10},
  };
  for (const auto& r : reads) {
    io.ioPosMode = r.mode;
    io.ioPosOffset = r.offset;
    io.ioReqCount = r.request;
    EXPECT_EQ(PBRead(&pb, false), r.err) << r.read;
    EXPECT_EQ(io.ioResult, r.err);
    EXPECT_EQ(std::string(buffer, size_t(io.ioActCount)), r.read);
    EXPECT_EQ(io.ioPosOffset, r.offset + io.ioActCount) << r.read;
    EXPECT_EQ(Mark(ref), r.mark);
  }
  io.ioBuffer = const_cast<Ptr>("XY");
  io.ioReqCount = 2;
  io.ioPosMode = fsFromStart;
  io.ioPosOffset = 1;
  EXPECT_EQ(PBWrite(&pb, false), noErr);
  EXPECT_EQ(io.ioActCount, 2);
  EXPECT_EQ(io.ioPosOffset, 3);
  EXPECT_EQ(ReadRaw(At("pb.txt")), "0XY3\r56789");
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
