// Creating, deleting, renaming and exchanging files and making directories,
// each checked on disk and each refusal checked to leave the disk as it
// was; Finder and catalog information: types from names, attributes, dates,
// and the enumeration of a directory by index.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <set>
#include <string>

#include "Files.h"
#include "StandardFile.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::Exists;
using kwe_test::Keep;
using kwe_test::Listing;
using kwe_test::P;
using kwe_test::ReadRaw;
using kwe_test::Text;
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

constexpr OSType kText = 0x54455854, kPict = 0x50494354, kUnknown = 0x3F3F3F3F;

class FilesInfo : public kwe_test::FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    static const KWEFileTypeEntry types[] = {
        {kText, {'T', 'X', 'T'}, "Text"}, {kPict, {'P', 'C', 'T'}, "Picture"}, {0, {}, ""}};
    KWE_Set_Tovel(types, nullptr);
    CreateDirectoryA(At("Sub").c_str(), nullptr);
    CreateDirectoryA(At("Sub\\Inner").c_str(), nullptr);
    WriteRaw(At("Sub\\a.txt"), "aa");
    WriteRaw(At("Sub\\b.bin"), "bbbb");
    sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  }
  UInt32 SessionFlags() const override { return directoryIDs ? kweFlagDirectoryIDs : 0; }
  // PBGetCatInfo of an index (0: by name, negative: the directory itself).
  OSErr CatInfo(SInt32 dirID, SInt16 index, CInfoPBRec& pb, Str63 name) {
    pb = CInfoPBRec{};
    pb.hFileInfo.ioNamePtr = name;
    pb.hFileInfo.ioDirID = dirID;
    pb.hFileInfo.ioFDirIndex = index;
    pb.hFileInfo.ioResult = 1;
    OSErr err = PBGetCatInfo(&pb, false);
    EXPECT_EQ(pb.hFileInfo.ioResult, err);
    return err;
  }
  SInt32 sub = 0;
  bool directoryIDs = false;
};

// The type comes from the extension through the host's table, in any case,
// by every form of the call; the creator is unknown.
TEST_F(FilesInfo, FinderTypesComeFromTheExtension) {
  const std::pair<const char*, OSType> cases[] = {{"README.TXT", kText},
                                                  {"notes.txt", kText},
                                                  {"long.txts", kText},  // three at most
                                                  {"data.bin", kUnknown},
                                                  {"noext", kUnknown}};
  for (const auto& [name, type] : cases) {
    WriteRaw(At(name), "x");
    FSSpec spec;
    FSMakeFSSpec(0, 0, P(name), &spec);
    for (int form = 0; form < 3; ++form) {
      FInfo info;
      std::memset(&info, 0x5A, sizeof info);
      ASSERT_EQ(form == 0   ? GetFInfo(P(name), 0, &info)
                : form == 1 ? HGetFInfo(0, DirID(), P(name), &info)
                            : FSpGetFInfo(&spec, &info),
                noErr)
          << name << " " << form;
      EXPECT_EQ(info.fdType, type) << name;
      EXPECT_EQ(info.fdCreator, kUnknown);
    }
  }
  FInfo info;
  EXPECT_EQ(GetFInfo(P("missing.txt"), 0, &info), fnfErr);
  EXPECT_EQ(HSetFInfo(0, 0, P("notes.txt"), &info), noErr);
}

TEST_F(FilesInfo, FileInformationReportsSizeDateAndOpenState) {
  WriteRaw(At("f.txt"), "12345");
  SetFileAttributesA(At("f.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  SInt16 ref = 0;
  ASSERT_EQ(HOpen(0, 0, P("f.txt"), fsRdPerm, &ref), noErr);
  HParamBlockRec pb{};
  HFileParam& f = pb.fileParam;
  f.ioNamePtr = Keep("f.txt");
  f.ioVRefNum = WDRefNum();
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(f.ioDirID, DirID());
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x81);  // open, read-only
  EXPECT_EQ(f.ioFRefNum, ref);
  EXPECT_EQ(f.ioFlLgLen, 5);
  EXPECT_EQ(f.ioFlFndrInfo.fdType, kText);
  EXPECT_GT(f.ioFlMdDat, 0xA0000000u);  // later than 1989
  FSClose(ref);
  ParamBlockRec plain{};
  plain.fileParam.ioNamePtr = Keep("f.txt");
  ASSERT_EQ(PBGetFInfo(&plain, false), noErr);
  EXPECT_EQ(UInt8(plain.fileParam.ioFlAttrib), 0x01);
  EXPECT_EQ(plain.fileParam.ioFRefNum, 0);
  for (const char* name : {"missing", "*.txt"}) {
    f.ioNamePtr = Keep(name);
    EXPECT_EQ(PBHGetFInfo(&pb, false), fnfErr) << name;
  }
  f.ioDirID = 0;
  f.ioVRefNum = SInt16(0x8000 | 3000);
  EXPECT_EQ(PBHGetFInfo(&pb, false), nsvErr);
}

// A modification date is written to the file (in local time) and read
// back; one before 1980, which DOS cannot hold, is refused.
TEST_F(FilesInfo, ModificationDatesAreWrittenToTheFile) {
  WriteRaw(At("d.txt"), "x");
  HParamBlockRec pb{};
  HFileParam& f = pb.fileParam;
  f.ioNamePtr = Keep("d.txt");
  const UInt32 date = 0xB38BF7F2;  // 15 June 1999, 12:30:42
  f.ioFlMdDat = date;
  EXPECT_EQ(PBHSetFInfo(&pb, false), noErr);
  FILETIME written, local;
  HANDLE h = CreateFileA(At("d.txt").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                         0, nullptr);
  GetFileTime(h, nullptr, nullptr, &written);
  CloseHandle(h);
  FileTimeToLocalFileTime(&written, &local);
  SYSTEMTIME st;
  FileTimeToSystemTime(&local, &st);
  EXPECT_EQ(st.wYear * 10000 + st.wMonth * 100 + st.wDay, 19990615);
  EXPECT_EQ(st.wHour * 10000 + st.wMinute * 100 + st.wSecond, 123042);
  f.ioFlMdDat = 0;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(f.ioFlMdDat, date);
  f.ioFlMdDat = 100;  // 1904
  EXPECT_EQ(PBHSetFInfo(&pb, false), fLckdErr);
  ParamBlockRec plain{};
  plain.fileParam.ioNamePtr = Keep("missing.txt");
  plain.fileParam.ioFlMdDat = date;
  EXPECT_EQ(PBSetFInfo(&plain, false), fnfErr);
}

// Indexes walk the directory without "." and ".." (each entry naming its
// parent), files carry their length and type, asking again restarts; by
// name the directory looked in is the parent, negative is the directory
// itself; missing directories and volumes answer their error.
TEST_F(FilesInfo, IndexesWalkTheDirectory) {
  CInfoPBRec pb;
  Str63 name;
  std::set<std::string> seen;
  for (int pass = 0; pass < 2; ++pass) {
    for (SInt16 index = 1; index <= 3; ++index) {
      ASSERT_EQ(CatInfo(sub, index, pb, name), noErr);
      const bool directory = pb.hFileInfo.ioFlAttrib & 0x10;
      seen.insert(Text(name) + (directory ? "/" : ""));
      EXPECT_EQ(directory ? pb.dirInfo.ioDrParID : pb.hFileInfo.ioFlParID, sub);
      if (Text(name) == "a.txt") {
        EXPECT_EQ(pb.hFileInfo.ioFlLgLen, 2);
        EXPECT_EQ(pb.hFileInfo.ioFlFndrInfo.fdType, kText);
      }
      if (directory) {
        EXPECT_EQ(pb.dirInfo.ioDrDirID, sub) << "flag 0x00010000 is off";
      }
    }
    EXPECT_EQ(CatInfo(sub, 4, pb, name), fnfErr);
  }
  EXPECT_EQ(seen, (std::set<std::string>{"Inner/", "a.txt", "b.bin"}));
  std::memcpy(name,
              "\x05"
              "b.bin",
              6);
  ASSERT_EQ(CatInfo(sub, 0, pb, name), noErr);
  EXPECT_EQ(pb.hFileInfo.ioFlLgLen, 4);
  EXPECT_EQ(pb.hFileInfo.ioFlParID, sub);
  ASSERT_EQ(CatInfo(sub, -1, pb, name), noErr);
  EXPECT_EQ(Text(name), "Sub");
  EXPECT_EQ(pb.dirInfo.ioDrParID, DirID());
  EXPECT_EQ(CatInfo(0x12345, 1, pb, name), fnfErr);
  EXPECT_EQ(CatInfo(KWE_DirIDFromPath(At("ghost").c_str(), nullptr, nullptr), 1, pb, name), fnfErr);
  pb.hFileInfo.ioDirID = 0;
  pb.hFileInfo.ioVRefNum = SInt16(0x8000 | 3000);
  EXPECT_EQ(PBGetCatInfo(&pb, false), nsvErr);

  TearDown();  // a new session, where directory entries carry their own ID
  directoryIDs = true;
  SetUp();
  std::memcpy(name, "\x05Inner", 6);
  ASSERT_EQ(CatInfo(sub, 0, pb, name), noErr);
  EXPECT_EQ(pb.dirInfo.ioDrDirID, KWE_DirIDFromPath(At("Sub\\Inner").c_str(), nullptr, nullptr));
  EXPECT_EQ(pb.dirInfo.ioDrParID, sub);
}

// A path a host's file dialog chose becomes a reply in its directory, with
// the type of its extension; filters' extensions are added or replace the
// name's own.
TEST_F(FilesInfo, APathFromAFileDialogBecomesAReplyInItsDirectory) {
  SFReply reply;
  KWE_DosFSpec2MacSFReply(false, false, -1, true, false, At("Sub\\doc.txt").c_str(), &reply);
  EXPECT_TRUE(reply.good);
  EXPECT_FALSE(reply.copy);
  EXPECT_EQ(Text(reply.fName), "doc.txt");
  EXPECT_EQ(reply.fType, kText);
  SInt16 subWD = 0;
  EXPECT_EQ(vars.CurDirStore, KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD));
  EXPECT_EQ(reply.vRefNum, subWD);
  std::memset(&reply, 0x5A, sizeof reply);
  KWE_DosFSpec2MacSFReply(false, false, -1, false, false, At("Sub\\").c_str(), &reply);
  EXPECT_FALSE(reply.good);
  EXPECT_EQ(reply.vRefNum, 0);
  EXPECT_EQ(reply.fName[0], 0);

  const struct {
    bool add, replace;
    SInt16 filter;
    const char *name, *result;
  } cases[] = {
      {true, false, 0, "report", "report.TXT"},     {true, false, 0, "report.doc", "report.doc"},
      {true, true, 0, "report.doc", "report.TXT"},  {true, true, 1, "a.b.c", "a.PCT"},
      {true, true, 2, "report.doc", "report.doc"},  // no such filter
      {false, true, 0, "report.doc", "report.doc"},
  };
  for (const auto& c : cases) {
    KWE_DosFSpec2MacSFReply(c.add, c.replace, c.filter, false, false, At(c.name).c_str(), &reply);
    EXPECT_EQ(Text(reply.fName), c.result) << c.name;
  }
}

}  // namespace
