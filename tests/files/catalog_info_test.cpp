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
using kwe_test::Text;
using kwe_test::WriteRaw;

constexpr OSType kText = 0x54455854, kUnknown = 0x3F3F3F3F;

class FilesInfo : public kwe_test::FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    static const KWEFileTypeEntry types[] = {{kText, {'T', 'X', 'T'}, "Text"}, {0, {}, ""}};
    KWE_Set_Tovel(types, nullptr);
    CreateDirectoryA(At("Sub").c_str(), nullptr);
    CreateDirectoryA(At("Sub\\Inner").c_str(), nullptr);
    WriteRaw(At("Sub\\a.txt"), "aa");
    WriteRaw(At("Sub\\b.bin"), "bbbb");
    sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  }
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
};

// The type comes from the extension through the host's table, in any case;
// everything else of the Finder information is empty.
TEST_F(FilesInfo, FinderTypesComeFromTheExtension) {
  const std::pair<const char*, OSType> cases[] = {
      {"README.TXT", kText}, {"notes.txt", kText}, {"data.bin", kUnknown}, {"noext", kUnknown}};
  for (const auto& [name, type] : cases) {
    WriteRaw(At(name), "x");
    FInfo info;
    std::memset(&info, 0x5A, sizeof info);
    ASSERT_EQ(GetFInfo(P(name), 0, &info), noErr) << name;
    EXPECT_EQ(info.fdType, type) << name;
    EXPECT_EQ(info.fdCreator, kUnknown);
    EXPECT_EQ(info.fdFlags, 0);
    EXPECT_EQ(info.fdFldr, 0);
  }
  FInfo info;
  EXPECT_EQ(HGetFInfo(0, DirID(), P("notes.txt"), &info), noErr);
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
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(f.ioDirID, DirID());
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x81);  // open, read-only
  EXPECT_EQ(f.ioFRefNum, ref);
  EXPECT_EQ(f.ioFlLgLen, 5);
  EXPECT_EQ(f.ioFlRLgLen, 0);
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

  // A volume's root and a directory (named back with index 1) are directories.
  f.ioVRefNum = -3;
  f.ioDirID = 2;
  f.ioNamePtr = nullptr;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x10);
  EXPECT_EQ(f.ioFlMdDat, 0u);
  Str63 name;
  std::memcpy(name, "\x03Sub", 4);
  f.ioNamePtr = name;
  f.ioDirID = DirID();
  f.ioFDirIndex = 1;
  ASSERT_EQ(PBHGetFInfo(&pb, false), noErr);
  EXPECT_EQ(UInt8(f.ioFlAttrib), 0x10);
  EXPECT_EQ(Text(name), "Sub");
  EXPECT_EQ(f.ioDirID, DirID());  // without flag 0x00010000 no ID of its own
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
}

class FilesInfoWithDirectoryIDs : public FilesInfo {
 protected:
  UInt32 SessionFlags() const override { return kweFlagDirectoryIDs; }
};

TEST_F(FilesInfoWithDirectoryIDs, DirectoryEntriesCarryTheirOwnID) {
  const SInt32 inner = KWE_DirIDFromPath(At("Sub\\Inner").c_str(), nullptr, nullptr);
  CInfoPBRec pb;
  Str63 name;
  std::memcpy(name, "\x05Inner", 6);
  ASSERT_EQ(CatInfo(sub, 0, pb, name), noErr);
  EXPECT_EQ(pb.dirInfo.ioDrDirID, inner);
  EXPECT_EQ(pb.dirInfo.ioDrParID, sub);
  HParamBlockRec hpb{};
  hpb.fileParam.ioNamePtr = Keep("Inner");
  hpb.fileParam.ioDirID = sub;
  ASSERT_EQ(PBHGetFInfo(&hpb, false), noErr);
  EXPECT_EQ(hpb.fileParam.ioDirID, inner);
}

}  // namespace
