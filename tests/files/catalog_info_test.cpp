// Finder and catalog information: types from names, attributes, dates, and
// the enumeration of a directory by index.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <set>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::Keep;
using kwe_test::P;
using kwe_test::ReadRaw;
using kwe_test::Text;
using kwe_test::WriteRaw;

constexpr OSType kText = 0x54455854, kUnknown = 0x3F3F3F3F;

class FilesInfo : public kwe_test::FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    static const KWEFileTypeEntry types[] = {{kText, {'T', 'X', 'T'}, "Text"}, {0, {}, ""}};
    KWE_Set_Tovel(types, nullptr);
  }
};

TEST_F(FilesInfo, FinderTypesComeFromTheExtension) {
  WriteRaw(At("README.TXT"), "r");
  WriteRaw(At("notes.txt"), "n");
  WriteRaw(At("data.bin"), "d");
  WriteRaw(At("noext"), "x");
  struct Case {
    const char* name;
    OSType type;
  } cases[] = {
      {"README.TXT", kText}, {"notes.txt", kText}, {"data.bin", kUnknown}, {"noext", kUnknown}};
  for (const Case& c : cases) {
    FInfo info;
    std::memset(&info, 0x5A, sizeof info);
    ASSERT_EQ(GetFInfo(P(c.name), 0, &info), noErr) << c.name;
    EXPECT_EQ(info.fdType, c.type) << c.name;
    EXPECT_EQ(info.fdCreator, kUnknown);
    EXPECT_EQ(info.fdFlags, 0);
    EXPECT_EQ(info.fdLocation.h, 0);
    EXPECT_EQ(info.fdFldr, 0);
  }
  FInfo info;
  EXPECT_EQ(HGetFInfo(0, DirID(), P("notes.txt"), &info), noErr);
  FSSpec spec;
  FSMakeFSSpec(0, 0, P("notes.txt"), &spec);
  EXPECT_EQ(FSpGetFInfo(&spec, &info), noErr);
  EXPECT_EQ(info.fdType, kText);
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
  f.ioResult = 1;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(f.ioResult, noErr);
  EXPECT_EQ(f.ioDirID, DirID());
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x81);  // open, read-only
  EXPECT_EQ(f.ioFRefNum, ref);
  EXPECT_EQ(f.ioFlLgLen, 5);
  EXPECT_EQ(f.ioFlPyLen, 5);
  EXPECT_EQ(f.ioFlRLgLen, 0);
  EXPECT_EQ(f.ioFlFndrInfo.fdType, kText);
  EXPECT_EQ(f.ioFlCrDat, f.ioFlMdDat);
  EXPECT_GT(f.ioFlMdDat, 0xA0000000u);  // later than 1989
  FSClose(ref);

  ParamBlockRec plain{};
  plain.fileParam.ioNamePtr = Keep("f.txt");
  ASSERT_EQ(PBGetFInfo(&plain, false), noErr);
  EXPECT_EQ(UInt8(plain.fileParam.ioFlAttrib), 0x01);
  EXPECT_EQ(plain.fileParam.ioFRefNum, 0);

  f.ioNamePtr = Keep("missing");
  EXPECT_EQ(PBHGetFInfo(&pb, false), fnfErr);
  f.ioNamePtr = Keep("*.txt");
  EXPECT_EQ(PBHGetFInfo(&pb, false), fnfErr);
  f.ioDirID = 0;
  f.ioVRefNum = SInt16(0x8000 | 3000);
  EXPECT_EQ(PBHGetFInfo(&pb, false), nsvErr);
}

TEST_F(FilesInfo, RootsAndDirectoriesAreDirectories) {
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  HParamBlockRec pb{};
  HFileParam& f = pb.fileParam;
  f.ioVRefNum = -3;
  f.ioDirID = 2;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x10);
  EXPECT_EQ(f.ioFlLgLen, 0);
  EXPECT_EQ(f.ioFlMdDat, 0u);
  Str63 name;
  f.ioNamePtr = name;
  std::memcpy(name, "\x03Sub", 4);
  f.ioDirID = DirID();
  f.ioFDirIndex = 1;  // asks for the name back
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x10);
  EXPECT_EQ(Text(name), "Sub");
  EXPECT_EQ(f.ioDirID, DirID());  // without flag 0x00010000 no ID of its own
}

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
  EXPECT_EQ(st.wYear, 1999);
  f.ioFlMdDat = 0;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(f.ioFlMdDat, date);
  ParamBlockRec plain{};
  plain.fileParam.ioNamePtr = Keep("missing.txt");
  plain.fileParam.ioFlMdDat = date;
  EXPECT_EQ(PBSetFInfo(&plain, false), fnfErr);
  f.ioFlMdDat = 100;  // 1904: before anything DOS dates can hold
  EXPECT_EQ(PBHSetFInfo(&pb, false), fLckdErr);
  EXPECT_EQ(ReadRaw(At("d.txt")), "x");
}

class FilesCatalogEnumeration : public kwe_test::FilesTest {
 protected:
  void Fill() {
    CreateDirectoryA(At("Sub").c_str(), nullptr);
    CreateDirectoryA(At("Sub\\Inner").c_str(), nullptr);
    WriteRaw(At("Sub\\a.txt"), "aa");
    WriteRaw(At("Sub\\b.bin"), "bbbb");
  }
  // Names by index until fnfErr; attributes after each name.
  std::string Walk(SInt32 dirID) {
    std::string seen;
    for (SInt16 index = 1;; ++index) {
      Str63 name;
      CInfoPBRec pb{};
      pb.hFileInfo.ioNamePtr = name;
      pb.hFileInfo.ioDirID = dirID;
      pb.hFileInfo.ioFDirIndex = index;
      OSErr err = PBGetCatInfo(&pb, false);
      if (err == fnfErr) break;
      EXPECT_EQ(err, noErr);
      if (err != noErr || index > 20) break;
      bool directory = pb.hFileInfo.ioFlAttrib & 0x10;
      seen += Text(name) + (directory ? "/" : "") + " ";
      EXPECT_EQ(directory ? pb.dirInfo.ioDrParID : pb.hFileInfo.ioFlParID, dirID);
    }
    return seen;
  }
};

TEST_F(FilesCatalogEnumeration, IndexesWalkTheDirectoryWithoutDotEntries) {
  Fill();
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  std::string walk = Walk(sub);
  std::set<std::string> names;
  for (size_t start = 0, end; (end = walk.find(' ', start)) != std::string::npos; start = end + 1)
    names.insert(walk.substr(start, end - start));
  EXPECT_EQ(names, (std::set<std::string>{"Inner/", "a.txt", "b.bin"}));
  // Asking again, and going back, restarts the enumeration.
  EXPECT_EQ(Walk(sub), walk);
  CInfoPBRec pb{};
  Str63 name;
  pb.hFileInfo.ioNamePtr = name;
  pb.hFileInfo.ioDirID = sub;
  pb.hFileInfo.ioFDirIndex = 3;
  ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
  std::string third = Text(name);
  pb.hFileInfo.ioFDirIndex = 2;
  pb.hFileInfo.ioDirID = sub;
  ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
  EXPECT_NE(Text(name), third);
  pb.hFileInfo.ioFDirIndex = 4;
  pb.hFileInfo.ioResult = 1;
  EXPECT_EQ(PBGetCatInfo(&pb, false), fnfErr);
  EXPECT_EQ(pb.hFileInfo.ioResult, fnfErr);

  // Missing directories and volumes; a directory that was named but never
  // existed has no entries.
  pb.hFileInfo.ioDirID = 0x12345;
  pb.hFileInfo.ioFDirIndex = 1;
  EXPECT_EQ(PBGetCatInfo(&pb, false), fnfErr);
  pb.hFileInfo.ioDirID = KWE_DirIDFromPath(At("ghost").c_str(), nullptr, nullptr);
  EXPECT_EQ(PBGetCatInfo(&pb, false), fnfErr);
  pb.hFileInfo.ioDirID = 0;
  pb.hFileInfo.ioVRefNum = SInt16(0x8000 | 3000);
  EXPECT_EQ(PBGetCatInfo(&pb, false), nsvErr);
}

TEST_F(FilesCatalogEnumeration, FilesCarryTheirLengthAndType) {
  Fill();
  static const KWEFileTypeEntry types[] = {{kText, {'T', 'X', 'T'}, "Text"}, {0, {}, ""}};
  KWE_Set_Tovel(types, nullptr);
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  for (SInt16 index = 1; index <= 3; ++index) {
    Str63 name;
    CInfoPBRec pb{};
    pb.hFileInfo.ioNamePtr = name;
    pb.hFileInfo.ioDirID = sub;
    pb.hFileInfo.ioFDirIndex = index;
    ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
    if (Text(name) == "a.txt") {
      EXPECT_EQ(pb.hFileInfo.ioFlLgLen, 2);
      EXPECT_EQ(pb.hFileInfo.ioFlFndrInfo.fdType, kText);
    } else if (Text(name) == "Inner") {
      EXPECT_EQ(pb.dirInfo.ioDrDirID, sub);  // flag 0x00010000 is off
    }
  }
  // By name (index 0): the directory looked in is the parent.
  CInfoPBRec pb{};
  pb.hFileInfo.ioNamePtr = Keep("b.bin");
  pb.hFileInfo.ioVRefNum = 0;
  pb.hFileInfo.ioDirID = sub;
  ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
  EXPECT_EQ(pb.hFileInfo.ioFlLgLen, 4);
  EXPECT_EQ(pb.hFileInfo.ioFlParID, sub);
  // Negative: the directory itself.
  Str63 name;
  pb = CInfoPBRec{};
  pb.hFileInfo.ioNamePtr = name;
  pb.hFileInfo.ioDirID = sub;
  pb.hFileInfo.ioFDirIndex = -1;
  ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
  EXPECT_EQ(Text(name), "Sub");
  EXPECT_EQ(pb.hFileInfo.ioFlAttrib & 0x10, 0x10);
  EXPECT_EQ(pb.dirInfo.ioDrParID, DirID());
}

class FilesCatalogWithDirectoryIDs : public FilesCatalogEnumeration {
 protected:
  UInt32 SessionFlags() const override { return kweFlagDirectoryIDs; }
};

TEST_F(FilesCatalogWithDirectoryIDs, DirectoryEntriesCarryTheirOwnID) {
  Fill();
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  SInt32 inner = KWE_DirIDFromPath(At("Sub\\Inner").c_str(), nullptr, nullptr);
  bool sawInner = false;
  for (SInt16 index = 1; index <= 3; ++index) {
    Str63 name;
    CInfoPBRec pb{};
    pb.hFileInfo.ioNamePtr = name;
    pb.hFileInfo.ioDirID = sub;  // set again each time: the entry overwrites it
    pb.hFileInfo.ioFDirIndex = index;
    ASSERT_EQ(PBGetCatInfo(&pb, false), noErr);
    if (Text(name) != "Inner") continue;
    sawInner = true;
    EXPECT_EQ(pb.dirInfo.ioDrDirID, inner);
    EXPECT_EQ(pb.dirInfo.ioDrParID, sub);
  }
  EXPECT_TRUE(sawInner);
  HParamBlockRec pb{};
  pb.fileParam.ioNamePtr = Keep("Inner");
  pb.fileParam.ioDirID = sub;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(pb.fileParam.ioDirID, inner);
}

}  // namespace
