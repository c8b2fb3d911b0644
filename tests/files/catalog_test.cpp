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
  const struct {
    std::string name;
    SInt32 dirID;
    SInt16 vRefNum;
    OSErr err;
  } refusals[] = {
      {"one.txt", 0, 0, dupFNErr},   {"ONE.TXT", DirID(), 0, dupFNErr},
      {"bad?.txt", 0, 0, dirFulErr}, {"nodir\\x.txt", 0, 0, dirFulErr},
      {"a|b", 0, 0, dirFulErr},      {"x.txt", 0x12345, 0, fnfErr},
      {"x.txt", 0, -26, nsvErr},
  };
  for (const auto& r : refusals)
    EXPECT_EQ(HCreate(r.vRefNum, r.dirID, P(r.name), 0, 0), r.err) << r.name;
  EXPECT_EQ(FSpCreate(nullptr, 0, 0, 0), paramErr);
  EXPECT_EQ(Listing(Dir()), "four.txt one.txt three.txt two.txt");
  EXPECT_EQ(ReadRaw(At("one.txt")), "kept");
}

// Open (also parked) and locked files are not deleted; renaming stays in
// the directory and never overwrites.
TEST_F(FilesCatalog, DeleteAndRenameRefuseWhatTheyMustNotTouch) {
  WriteRaw(At("open.txt"), "in use");
  WriteRaw(At("locked.txt"), "locked");
  WriteRaw(At("a.txt"), "A");
  SetFileAttributesA(At("locked.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  SInt16 ref = 0;
  ASSERT_EQ(HOpen(0, 0, P("open.txt"), fsRdPerm, &ref), noErr);
  EXPECT_EQ(FSDelete(P("OPEN.TXT"), 0), fBsyErr);
  KWE_FHReOpen(false, ref);
  EXPECT_EQ(HDelete(0, DirID(), P("open.txt")), fBsyErr);
  EXPECT_EQ(FSDelete(P("locked.txt"), 0), fLckdErr);
  EXPECT_EQ(FSDelete(P("missing.txt"), 0), fnfErr);
  EXPECT_EQ(FSDelete(P("nodir\\missing.txt"), 0), fnfErr);
  EXPECT_EQ(Rename(P("a.txt"), 0, P("open.txt")), dupFNErr);
  EXPECT_EQ(Rename(P("missing.txt"), 0, P("c.txt")), bdNamErr);
  EXPECT_EQ(Rename(P("a.txt"), 0, P("")), bdNamErr);
  EXPECT_EQ(Listing(Dir()), "a.txt locked.txt open.txt");
  EXPECT_EQ(ReadRaw(At("open.txt")), "in use");

  EXPECT_EQ(HRename(0, DirID(), P("a.txt"), P("c.txt")), noErr);
  FSSpec spec;
  FSMakeFSSpec(0, 0, P("c.txt"), &spec);
  EXPECT_EQ(FSpRename(&spec, P("d.txt")), noErr);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("d.txt");
  pb.ioParam.ioMisc = reinterpret_cast<Ptr>(Keep("e.txt"));
  EXPECT_EQ(PBHRename(&pb, false), noErr);
  EXPECT_EQ(ReadRaw(At("e.txt")), "A");
  FSMakeFSSpec(0, 0, P("e.txt"), &spec);
  EXPECT_EQ(FSpDelete(&spec), noErr);
  FSClose(ref);
  pb.fileParam.ioNamePtr = Keep("open.txt");
  EXPECT_EQ(PBHDelete(&pb, false), noErr);
  EXPECT_EQ(Listing(Dir()), "locked.txt");
}

TEST_F(FilesCatalog, DirCreateGivesTheNewDirectoryItsID) {
  SInt32 created = 0;
  EXPECT_EQ(DirCreate(0, DirID(), P("New"), &created), noErr);
  EXPECT_TRUE(kwe_test::IsDirectoryOnDisk(At("New")));
  EXPECT_EQ(created, KWE_DirIDFromPath(At("New").c_str(), nullptr, nullptr));
  EXPECT_EQ(DirCreate(0, 0, P("new"), &created), dupFNErr);
  EXPECT_EQ(DirCreate(0, 0, P("nodir\\deeper"), &created), dirNFErr);
  EXPECT_EQ(DirCreate(0, 0, P("bad*"), &created), bdNamErr);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("Inner");
  pb.fileParam.ioDirID = created;
  EXPECT_EQ(PBDirCreate(&pb, false), noErr);
  // The new ID names the directory everywhere.
  EXPECT_EQ(HCreate(0, pb.fileParam.ioDirID, P("f.txt"), 0, 0), noErr);
  EXPECT_TRUE(Exists(At("New\\Inner\\f.txt")));
  EXPECT_EQ(Listing(Dir()), "New");
}

// The contents change places, a file open on one follows its data, the
// temporary name steps past one that is taken; with a missing file nothing
// changes.
TEST_F(FilesCatalog, ExchangeSwapsContentsAndOpenFilesFollow) {
  WriteRaw(At("A.txt"), "first");
  WriteRaw(At("B.txt"), "second");
  WriteRaw(At("A.aaa"), "squatter");
  FSSpec a, b, missing;
  FSMakeFSSpec(0, 0, P("A.txt"), &a);
  FSMakeFSSpec(0, 0, P("B.txt"), &b);
  FSMakeFSSpec(0, 0, P("none.txt"), &missing);
  SInt16 ref = 0;
  ASSERT_EQ(FSpOpenDF(&a, fsRdPerm, &ref), noErr);
  char c[4];
  SInt32 count = 1;
  FSRead(ref, &count, c);
  EXPECT_EQ(FSpExchangeFiles(&a, &b), noErr);
  EXPECT_EQ(ReadRaw(At("A.txt")), "second");
  EXPECT_EQ(ReadRaw(At("B.txt")), "first");
  EXPECT_EQ(ReadRaw(At("A.aaa")), "squatter");
  count = 4;
  EXPECT_EQ(FSRead(ref, &count, c), noErr);
  EXPECT_EQ(std::string(c, 4), "irst");
  FSSpec bad = a;
  bad.parID = 0x12345;
  EXPECT_EQ(FSpExchangeFiles(&missing, &a), fnfErr);
  EXPECT_EQ(FSpExchangeFiles(&a, &missing), paramErr);
  EXPECT_EQ(FSpExchangeFiles(&a, &bad), fnfErr);
  EXPECT_EQ(Listing(Dir()), "A.aaa A.txt B.txt");
  EXPECT_EQ(ReadRaw(At("A.txt")), "second");
}

}  // namespace
