// The open-file table: slots 2 to 63 as reference numbers, the open modes
// and their conflicts, parking, and what a failed open leaves behind.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::Exists;
using kwe_test::Keep;
using kwe_test::P;
using kwe_test::ReadRaw;
using kwe_test::WriteRaw;

using FilesTable = kwe_test::FilesTest;

TEST_F(FilesTable, ReferenceNumbersAreSlotsTwoToSixtyThree) {
  WriteRaw(At("a.txt"), "abc");
  std::vector<SInt16> refs;
  for (int i = 0; i < 62; ++i) {
    SInt16 ref = 0;
    ASSERT_EQ(HOpen(0, 0, P("a.txt"), fsRdPerm, &ref), noErr) << i;
    refs.push_back(ref);
  }
  EXPECT_EQ(refs.front(), 2);
  EXPECT_EQ(refs.back(), 63);
  SInt16 ref = 99;
  EXPECT_EQ(HOpen(0, 0, P("a.txt"), fsRdPerm, &ref), tmfoErr);
  EXPECT_EQ(ref, 0);
  OSErr err = noErr;
  EXPECT_EQ(KWE_FHOpen(At("a.txt").c_str(), 0, &err), -1);
  EXPECT_EQ(err, tmfoErr);
  // Freeing one slot makes exactly that one available again.
  EXPECT_EQ(FSClose(refs[10]), noErr);
  EXPECT_EQ(HOpen(0, 0, P("a.txt"), fsRdPerm, &ref), noErr);
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

TEST_F(FilesTable, EveryOpenFormReachesTheSameFile) {
  WriteRaw(At("same.txt"), "0123456789");
  FSSpec spec;
  ASSERT_EQ(FSMakeFSSpec(0, 0, P("same.txt"), &spec), noErr);
  std::vector<SInt16> refs(6, 0);
  EXPECT_EQ(FSpOpenDF(&spec, fsRdPerm, &refs[0]), noErr);
  EXPECT_EQ(HOpenDF(0, DirID(), P("same.txt"), fsRdPerm, &refs[1]), noErr);
  EXPECT_EQ(HOpen(WDRefNum(), 0, P("same.txt"), fsRdPerm, &refs[2]), noErr);
  ParamBlockRec pb{};
  pb.ioParam.ioNamePtr = Keep("same.txt");
  pb.ioParam.ioPermssn = fsRdPerm;
  pb.ioParam.ioResult = 1;
  EXPECT_EQ(PBOpen(&pb, false), noErr);
  EXPECT_EQ(pb.ioParam.ioResult, noErr);
  refs[3] = pb.ioParam.ioRefNum;
  HParamBlockRec hpb{};
  hpb.ioParam.ioNamePtr = Keep("same.txt");
  hpb.ioParam.ioPermssn = fsRdPerm;
  hpb.fileParam.ioDirID = DirID();
  EXPECT_EQ(PBHOpen(&hpb, true), noErr);
  refs[4] = hpb.ioParam.ioRefNum;
  EXPECT_EQ(HOpen(0, 0, P(At("same.txt")), fsRdPerm, &refs[5]), noErr);
  for (size_t i = 0; i < refs.size(); ++i) {
    char byte = 0;
    SInt32 count = 1;
    ASSERT_EQ(SetFPos(refs[i], fsFromStart, SInt32(i)), noErr);
    EXPECT_EQ(FSRead(refs[i], &count, &byte), noErr);
    EXPECT_EQ(byte, char('0' + i));
  }
}

// A parked file has no Windows handle (others may write it) and reopens by
// itself at its mark; one whose file went away loses its slot. KWE_FHCreate
// makes a file, read-only when asked; a write of nothing cuts at the mark.
TEST_F(FilesTable, ParkedFilesReopenAtTheirPlaceAndCreatedFilesKeepTheirMode) {
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

  slot = KWE_FHCreate(At("new.txt").c_str(), 0);
  EXPECT_EQ(KWE_FHWrite(slot, "hello", 5), 5);
  EXPECT_EQ(KWE_FHSetEOF0(slot), noErr);
  EXPECT_EQ(ReadRaw(At("new.txt")), "");
  EXPECT_EQ(KWE_FHWrite(slot, "ab", 2), 2);
  EXPECT_EQ(KWE_FHLSeek(slot, 1, 0), 1);
  EXPECT_EQ(KWE_FHWrite(slot, nullptr, 0), 0);
  EXPECT_EQ(KWE_FHClose(slot), 0);
  EXPECT_EQ(ReadRaw(At("new.txt")), "a");
  SInt16 ro = KWE_FHCreate(At("ro.txt").c_str(), 1);
  EXPECT_EQ(KWE_FHGetAttr(ro) & 1, 1);
  EXPECT_EQ(KWE_FHWrite(ro, "x", 1), -1);
  EXPECT_EQ(KWE_FHSetEOF0(ro), wrPermErr);
  KWE_FHClose(ro);
  EXPECT_EQ(KWE_FHGetAttr(ro), -1);
  EXPECT_EQ(KWE_FHCreate(At("bad?.txt").c_str(), 0), -1);
  EXPECT_EQ(KWE_FHCreate(At("nodir\\x.txt").c_str(), 0), -1);
  EXPECT_FALSE(Exists(At("nodir")));
}

}  // namespace
