// Creating, deleting, renaming and exchanging files and making directories,
// each checked on disk and each refusal checked to leave the disk as it
// was; Finder and catalog information: types from names, attributes, dates,
// and the enumeration of a directory by index; the file naming model:
// volumes, directory IDs, working directories, full paths and FSSpecs,
// checked against what Windows says about the same drives and directories.
#include <gtest/gtest.h>
#include <windows.h>

#include <cctype>
#include <cstring>
#include <set>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using namespace kwe_test;

using FilesCatalog = FilesTest;

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

std::string HFSpec(SInt32 dirID, SInt16 vRefNum, const std::string& name, OSErr* err) {
  char path[MAX_PATH];
  std::memset(path, 'x', sizeof path);
  *err = KWE_HFSpec(dirID, vRefNum, P(name), path);
  return path;
}

std::string WindowsCurrentDirectory() {
  char path[MAX_PATH] = "";
  GetCurrentDirectoryA(sizeof path, path);
  return path;
}

constexpr OSType kText = 0x54455854, kUnknown = 0x3F3F3F3F;

// A directory "Sub" holding "Inner", "a.txt" and "b.bin"; the test
// directory is the first working directory, Sub the second; the host's type
// table knows TXT.
class FilesNaming : public FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    static const KWEFileTypeEntry types[] = {{kText, {'T', 'X', 'T'}, "Text"}, {0, {}, ""}};
    KWE_Set_Tovel(types, nullptr);
    DirID();
    CreateDirectoryA(At("Sub").c_str(), nullptr);
    CreateDirectoryA(At("Sub\\Inner").c_str(), nullptr);
    WriteRaw(At("Sub\\a.txt"), "aa");
    WriteRaw(At("Sub\\b.bin"), "bbbb");
    sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD);
    volume = ExpectedDriveVolume(Dir()[0]);
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
  SInt16 subWD = 0, volume = 0;
  bool directoryIDs = false;
};
using FilesInfo = FilesNaming;

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

// Volumes are the drives in letter order with A: and B: always counted;
// working directories are numbered from 0x8001 in the order they are first
// named, found again without regard to case.
TEST_F(FilesNaming, VolumesAreDrivesAndWorkingDirectoriesAreNumberedInOrder) {
  DWORD present = GetLogicalDrives();
  for (char letter = 'C'; letter <= 'Z'; ++letter) {
    if (!(present & (1u << (letter - 'A')))) continue;
    const std::string root = std::string(1, letter) + ":\\";
    OSErr err;
    EXPECT_EQ(HFSpec(2, ExpectedDriveVolume(letter), "", &err), root);
    SInt16 vRefNum = 0, wd = 0;
    EXPECT_EQ(KWE_DirIDFromPath(root.c_str(), &vRefNum, &wd), 2) << letter;
    EXPECT_EQ(vRefNum, ExpectedDriveVolume(letter));
    EXPECT_EQ(wd, 0);
  }
  EXPECT_EQ(WDRefNum(), SInt16(0x8001));
  EXPECT_EQ(subWD, SInt16(0x8002));
  std::string shouted = At("SUB\\");
  for (char& c : shouted) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  SInt16 v = 0, wd = 0;
  EXPECT_EQ(KWE_DirIDFromPath(shouted.c_str(), &v, &wd), sub);
  EXPECT_EQ(wd, subWD);
  EXPECT_EQ(v, volume);
  // A full name makes a record for its directory; one too long makes none.
  EXPECT_NE(KWE_DirIDFromPath("c:\\dir", nullptr, &wd), 0);
  EXPECT_LT(wd, 0);
  std::string tooLong = "C:\\" + std::string(300, 'd') + "\\";
  EXPECT_EQ(KWE_DirIDFromPath(tooLong.c_str(), nullptr, &wd), 0);
  EXPECT_EQ(wd, SInt16(0xEEEE));
}

// Every way of naming a directory gives its full path; unknown directories
// and volumes give an empty path and their error.
TEST_F(FilesNaming, FullPathsComeFromEveryWayOfNamingADirectory) {
  DWORD present = GetLogicalDrives();
  char absent = 'Y';
  while (absent > 'C' && (present & (1u << (absent - 'A')))) --absent;
  const struct {
    SInt32 dirID;
    SInt16 vRefNum;
    std::string name, path;
    OSErr err;
  } cases[] = {
      {2, -3, "FILE.TXT", "C:\\FILE.TXT", noErr},
      {2, -1, "", "A:\\", noErr},
      {sub, 0, "F.TXT", At("Sub\\F.TXT"), noErr},
      {sub, volume, "", At("Sub"), noErr},
      {0, subWD, "F.TXT", At("Sub\\F.TXT"), noErr},
      {0, 0, "F.TXT", At("F.TXT"), noErr},
      {0, 0, "", Dir().substr(0, Dir().size() - 1), noErr},
      {sub, 0, "C:\\DIR\\F.TXT", "C:\\DIR\\F.TXT", noErr},
      {0, 0, "C:\\\\DIR\\\\\\F", "C:\\DIR\\F", noErr},
      {0x12345, 0, "F", "", fnfErr},                            // a made-up directory ID
      {0, SInt16(0x8000 | 4000), "F", "", fnfErr},              // a working directory never made
      {2, -26, "F", "", nsvErr},                                // a volume position past the table
      {0, 0, std::string(1, absent) + ":\\F.TXT", "", nsvErr},  // a drive Windows lacks
  };
  for (const auto& c : cases) {
    OSErr err;
    EXPECT_EQ(HFSpec(c.dirID, c.vRefNum, c.name, &err), c.path) << c.name;
    EXPECT_EQ(err, c.err) << c.name;
  }
  EXPECT_EQ(KWE_HFSpec(0, 0, P("F"), nullptr), paramErr);
  char path[MAX_PATH];
  EXPECT_EQ(KWE_FSpec(subWD, P("G"), path), noErr);
  EXPECT_EQ(std::string(path), At("Sub\\G"));
}

// FSMakeFSSpec splits a name into its parent directory and leaf, and fills
// the record for a missing file in an existing directory too.
TEST_F(FilesNaming, FSMakeFSSpecSplitsIntoParentAndName) {
  WriteRaw(At("here.txt"), "x");
  const struct {
    SInt16 vRefNum;
    SInt32 dirID;
    std::string name;
    OSErr err;
    SInt32 parID;
    const char* leaf;
  } cases[] = {
      {0, 0, "here.txt", noErr, DirID(), "here.txt"},
      {0, 0, "gone.txt", fnfErr, DirID(), "gone.txt"},
      {0, 0, "", noErr, DirID(), ""},
      {0, 0, At("here.txt"), noErr, DirID(), "here.txt"},
      {subWD, 0, "gone.txt", fnfErr, sub, "gone.txt"},
      {-3, 2, "C:\\", noErr, 2, ""},
      {0, 0, std::string(64, 'n'), bdNamErr, 0, nullptr},
      {0, 0x12345, "x", fnfErr, 0, nullptr},
      {0, 0, "missing\\x", fnfErr, 0, nullptr},
  };
  for (const auto& c : cases) {
    FSSpec spec;
    std::memset(&spec, 0x5A, sizeof spec);
    EXPECT_EQ(FSMakeFSSpec(c.vRefNum, c.dirID, P(c.name), &spec), c.err) << c.name;
    if (!c.leaf) continue;
    EXPECT_EQ(spec.vRefNum, c.vRefNum == -3 ? -3 : volume) << c.name;
    EXPECT_EQ(spec.parID, c.parID) << c.name;
    EXPECT_EQ(Text(spec.name), c.leaf) << c.name;
  }
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("x"), nullptr), paramErr);
}

// OpenWD answers the working directory of a volume and directory (the
// volume itself for a root), which PBGetWDInfo describes, closed or not;
// PBOpenWD joins a name that must be an existing directory.
TEST_F(FilesNaming, WorkingDirectoriesAreOpenedAndDescribed) {
  const struct {
    SInt16 vRefNum;
    SInt32 dirID;
    OSErr err;
    SInt16 wd, volume;
    SInt32 wdDirID;
    std::string name;
  } opens[] = {
      {-3, DirID(), noErr, WDRefNum(), volume, DirID(), Dir()},
      {-3, 2, noErr, -3, -3, 2, "C:\\"},
      {WDRefNum(), 0, noErr, WDRefNum(), volume, DirID(), Dir()},
      {0, 0x12345, dirNFErr, 0, 0, 0, ""},
      {SInt16(0x8000 | 3000), 0, dirNFErr, 0, 0, 0, ""},
  };
  for (const auto& o : opens) {
    SCOPED_TRACE(std::to_string(o.vRefNum) + " " + std::to_string(o.dirID));
    SInt16 wd = 1;
    EXPECT_EQ(OpenWD(o.vRefNum, o.dirID, 0, &wd), o.err);
    EXPECT_EQ(wd, o.wd);
    EXPECT_EQ(CloseWD(wd), noErr);  // closing never forgets one
    Str255 name = {0};
    WDPBRec pb{};
    pb.ioResult = 1;
    pb.ioNamePtr = name;
    pb.ioVRefNum = o.err ? SInt16(0x8000 | 3000) : wd;
    EXPECT_EQ(PBGetWDInfo(&pb, false), o.err);
    EXPECT_EQ(pb.ioResult, o.err);
    EXPECT_EQ(pb.ioWDVRefNum, o.volume);
    EXPECT_EQ(pb.ioWDDirID, o.wdDirID);
    EXPECT_EQ(Text(name), o.name);
  }

  WriteRaw(At("plain.txt"), "x");
  for (const char* name : {"Sub", "Missing", "plain.txt"}) {
    WDPBRec open{};
    open.ioVRefNum = WDRefNum();
    open.ioNamePtr = Keep(name);
    open.ioResult = 1;
    const OSErr expected = name == std::string("Sub") ? OSErr(noErr) : OSErr(dirNFErr);
    EXPECT_EQ(PBOpenWD(&open, false), expected) << name;
    EXPECT_EQ(open.ioResult, expected) << name;
    if (expected == noErr) {
      EXPECT_EQ(open.ioWDDirID, sub);
      EXPECT_EQ(open.ioVRefNum, subWD);
    }
  }
}

// The session's globals start at the current directory; KWE_CurDirvRefNum
// moves CurDirStore, never Windows' own current directory. GetVol names the
// drive root of the current directory; SetVol and HSetVol move Windows'
// current directory, and refuse bad names leaving it alone.
TEST_F(FilesNaming, GetVolAndSetVolFollowWindowsCurrentDirectory) {
  EXPECT_EQ(vars.CurrentVolume, ExpectedDriveVolume(StartDirectory()[0]));
  EXPECT_EQ(vars.SFSaveDisk, -vars.CurrentVolume);
  EXPECT_EQ(KWE_CurDirvRefNum(nullptr), WDRefNum());
  EXPECT_EQ(vars.CurDirStore, DirID());
  EXPECT_EQ(KWE_CurDirvRefNum("C:\\"), -3);
  EXPECT_EQ(vars.CurDirStore, 2);
  EXPECT_EQ(KWE_CurDirvRefNum(At("Sub").c_str()), subWD);
  EXPECT_EQ(vars.CurDirStore, sub);
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", Dir());
  Str255 name;
  SInt16 vRefNum = 0;
  SInt32 dirID = 0;
  EXPECT_EQ(HGetVol(name, &vRefNum, &dirID), noErr);
  EXPECT_EQ(vRefNum, WDRefNum());
  EXPECT_EQ(Text(name), Dir().substr(0, 3));
  EXPECT_EQ(dirID, DirID());

  for (const char* bad : {"ABCD", "AB", "C:X", ":"}) EXPECT_EQ(SetVol(P(bad), 0), nsvErr) << bad;
  EXPECT_EQ(SetVol(nullptr, SInt16(0x8000 | 3000)), nsvErr);
  EXPECT_EQ(HSetVol(nullptr, 0, 0x12345), nsvErr);
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", Dir());

  // Into a directory deeper than 160 characters, where names still resolve.
  std::string deep = At("Sub\\");
  while (deep.size() < 160) {
    deep += "level_with_a_long_name\\";
    ASSERT_TRUE(CreateDirectoryA(deep.c_str(), nullptr));
  }
  const SInt32 deepID = KWE_DirIDFromPath(deep.c_str(), nullptr, nullptr);
  EXPECT_EQ(HSetVol(nullptr, 0, deepID), noErr);
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", deep);
  EXPECT_EQ(vars.CurDirStore, deepID);
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("f.txt"), &spec), fnfErr);
  EXPECT_EQ(spec.parID, deepID);
  EXPECT_EQ(SetVol(nullptr, WDRefNum()), noErr);
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", Dir());
  ParamBlockRec pb{};
  pb.ioParam.ioNamePtr = Keep("C:");
  pb.ioParam.ioResult = 1;
  EXPECT_EQ(PBSetVol(&pb, false), noErr);
  EXPECT_EQ(pb.ioParam.ioResult, noErr);
  EXPECT_EQ(WindowsCurrentDirectory(), "C:\\");
  EXPECT_EQ(GetVol(name, &vRefNum), noErr);
  EXPECT_EQ(vRefNum, -3);
  EXPECT_EQ(Text(name), "C:\\");
}

// Names cross into Windows through the character tables: Macintosh e acute
// (0x8E) is ANSI 0xE9 on disk, and comes back as 0x8E.
TEST_F(FilesNaming, MacintoshCharactersAreAnsiCharactersOnDisk) {
  EXPECT_EQ(Create(P("caf\x8E.txt"), 0, 0x3F3F3F3F, 0x54455854), noErr);
  EXPECT_TRUE(Exists(At("caf\xE9.txt")));
  WriteRaw(At("r\xE9sum\xE9.txt"), "x");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("r\x8Esum\x8E.txt"), &spec), noErr);
  EXPECT_EQ(Text(spec.name), "r\x8Esum\x8E.txt");
}

}  // namespace
