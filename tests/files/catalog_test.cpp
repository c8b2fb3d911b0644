// Creating, deleting, renaming and exchanging files and making directories:
// each checked on disk, and each refusal checked to leave the disk as it was.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::Exists;
using kwe_test::IsDirectoryOnDisk;
using kwe_test::Keep;
using kwe_test::Listing;
using kwe_test::P;
using kwe_test::ReadRaw;
using kwe_test::WriteRaw;

using FilesCatalog = kwe_test::FilesTest;

TEST_F(FilesCatalog, CreateMakesAnEmptyFileOnceAndRefusalsMakeNothing) {
  EXPECT_EQ(Create(P("one.txt"), 0, 0x3F3F3F3F, 0x54455854), noErr);
  EXPECT_EQ(ReadRaw(At("one.txt")), "");
  WriteRaw(At("one.txt"), "kept");
  EXPECT_EQ(Create(P("one.txt"), 0, 0, 0), dupFNErr);
  EXPECT_EQ(HCreate(0, DirID(), P("ONE.TXT"), 0, 0), dupFNErr);
  EXPECT_EQ(ReadRaw(At("one.txt")), "kept");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("two.txt"), &spec), fnfErr);
  EXPECT_EQ(FSpCreate(&spec, 0, 0, 0), noErr);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("three.txt");
  pb.fileParam.ioDirID = DirID();
  EXPECT_EQ(PBHCreate(&pb, false), noErr);
  ParamBlockRec plain{};
  plain.ioParam.ioNamePtr = Keep("four.txt");
  EXPECT_EQ(PBCreate(&plain, false), noErr);
  EXPECT_EQ(Listing(Dir()), "four.txt one.txt three.txt two.txt");

  // Refusals make nothing.
  struct Case {
    std::string name;
    OSErr err;
  } cases[] = {
      {"bad?.txt", dirFulErr},
      {"nodir\\x.txt", dirFulErr},
      {"a|b", dirFulErr},
  };
  for (const Case& c : cases) EXPECT_EQ(Create(P(c.name), 0, 0, 0), c.err) << c.name;
  EXPECT_EQ(HCreate(0, 0x12345, P("x.txt"), 0, 0), fnfErr);
  EXPECT_EQ(Create(P("x.txt"), -26, 0, 0), nsvErr);
  EXPECT_EQ(FSpCreate(nullptr, 0, 0, 0), paramErr);
  EXPECT_EQ(Listing(Dir()), "four.txt one.txt three.txt two.txt");
}

TEST_F(FilesCatalog, DeleteRefusesOpenAndLockedFiles) {
  WriteRaw(At("open.txt"), "in use");
  WriteRaw(At("locked.txt"), "locked");
  WriteRaw(At("gone.txt"), "bye");
  SetFileAttributesA(At("locked.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  SInt16 ref = 0;
  ASSERT_EQ(HOpen(0, 0, P("open.txt"), fsRdPerm, &ref), noErr);
  EXPECT_EQ(FSDelete(P("OPEN.TXT"), 0), fBsyErr);
  KWE_FHReOpen(false, ref);  // parked is still open to the table
  EXPECT_EQ(HDelete(0, DirID(), P("open.txt")), fBsyErr);
  EXPECT_EQ(FSDelete(P("locked.txt"), 0), fLckdErr);
  EXPECT_EQ(FSDelete(P("missing.txt"), 0), fnfErr);
  EXPECT_EQ(FSDelete(P("nodir\\missing.txt"), 0), fnfErr);
  EXPECT_EQ(ReadRaw(At("open.txt")), "in use");
  EXPECT_EQ(ReadRaw(At("locked.txt")), "locked");
  FSSpec spec;
  FSMakeFSSpec(0, 0, P("gone.txt"), &spec);
  EXPECT_EQ(FSpDelete(&spec), noErr);
  EXPECT_FALSE(Exists(At("gone.txt")));
  FSClose(ref);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("open.txt");
  EXPECT_EQ(PBHDelete(&pb, false), noErr);
  EXPECT_EQ(Listing(Dir()), "locked.txt");
}

TEST_F(FilesCatalog, RenameStaysInTheDirectoryAndNeverOverwrites) {
  WriteRaw(At("a.txt"), "A");
  WriteRaw(At("b.txt"), "B");
  EXPECT_EQ(Rename(P("a.txt"), 0, P("b.txt")), dupFNErr);
  EXPECT_EQ(Rename(P("missing.txt"), 0, P("c.txt")), bdNamErr);
  EXPECT_EQ(Rename(P("a.txt"), 0, P("")), bdNamErr);
  EXPECT_EQ(Listing(Dir()), "a.txt b.txt");
  EXPECT_EQ(ReadRaw(At("b.txt")), "B");
  EXPECT_EQ(HRename(0, DirID(), P("a.txt"), P("c.txt")), noErr);
  EXPECT_EQ(ReadRaw(At("c.txt")), "A");
  FSSpec spec;
  FSMakeFSSpec(0, 0, P("c.txt"), &spec);
  EXPECT_EQ(FSpRename(&spec, P("d.txt")), noErr);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("d.txt");
  Str255 newName;
  std::memcpy(newName,
              "\x05"
              "e.txt",
              6);
  pb.ioParam.ioMisc = reinterpret_cast<Ptr>(newName);
  EXPECT_EQ(PBHRename(&pb, false), noErr);
  EXPECT_EQ(Listing(Dir()), "b.txt e.txt");
  EXPECT_EQ(ReadRaw(At("e.txt")), "A");
}

TEST_F(FilesCatalog, DirCreateGivesTheNewDirectoryItsID) {
  SInt32 created = 0;
  EXPECT_EQ(DirCreate(0, DirID(), P("New"), &created), noErr);
  EXPECT_TRUE(IsDirectoryOnDisk(At("New")));
  EXPECT_EQ(created, KWE_DirIDFromPath(At("New").c_str(), nullptr, nullptr));
  EXPECT_EQ(DirCreate(0, 0, P("new"), &created), dupFNErr);
  EXPECT_EQ(DirCreate(0, 0, P("nodir\\deeper"), &created), dirNFErr);
  EXPECT_EQ(DirCreate(0, 0, P("bad*"), &created), bdNamErr);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("Inner");
  pb.fileParam.ioDirID = created;
  EXPECT_EQ(PBDirCreate(&pb, false), noErr);
  EXPECT_TRUE(IsDirectoryOnDisk(At("New\\Inner")));
  EXPECT_EQ(pb.fileParam.ioDirID, KWE_DirIDFromPath(At("New\\Inner").c_str(), nullptr, nullptr));
  // The new ID names the directory everywhere.
  EXPECT_EQ(HCreate(0, pb.fileParam.ioDirID, P("f.txt"), 0, 0), noErr);
  EXPECT_TRUE(Exists(At("New\\Inner\\f.txt")));
  EXPECT_EQ(Listing(Dir()), "New");
}

TEST_F(FilesCatalog, ExchangeSwapsContentsOpenFilesFollowAndMissingFilesChangeNothing) {
  WriteRaw(At("A.txt"), "first");
  WriteRaw(At("B.txt"), "second");
  WriteRaw(At("A.aaa"), "squatter");
  FSSpec a, b;
  FSMakeFSSpec(0, 0, P("A.txt"), &a);
  FSMakeFSSpec(0, 0, P("B.txt"), &b);
  SInt16 ref = 0;
  ASSERT_EQ(FSpOpenDF(&a, fsRdPerm, &ref), noErr);
  char c = 0;
  SInt32 count = 1;
  FSRead(ref, &count, &c);
  EXPECT_EQ(FSpExchangeFiles(&a, &b), noErr);
  EXPECT_EQ(ReadRaw(At("A.txt")), "second");
  EXPECT_EQ(ReadRaw(At("B.txt")), "first");
  EXPECT_EQ(ReadRaw(At("A.aaa")), "squatter");
  EXPECT_EQ(Listing(Dir()), "A.aaa A.txt B.txt");
  // The open file still reads its own data, from where it was.
  count = 4;
  char rest[4];
  EXPECT_EQ(FSRead(ref, &count, rest), noErr);
  EXPECT_EQ(std::string(rest, 4), "irst");
  FSClose(ref);

  // With a missing file nothing changes.
  FSSpec missing, bad = a;
  FSMakeFSSpec(0, 0, P("none.txt"), &missing);
  bad.parID = 0x12345;
  EXPECT_EQ(FSpExchangeFiles(&missing, &a), fnfErr);
  EXPECT_EQ(FSpExchangeFiles(&a, &missing), paramErr);
  EXPECT_EQ(FSpExchangeFiles(&a, &bad), fnfErr);
  EXPECT_EQ(Listing(Dir()), "A.aaa A.txt B.txt");
  EXPECT_EQ(ReadRaw(At("A.txt")), "second");
}

}  // namespace
