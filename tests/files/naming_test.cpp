// The file naming model through the DLL: volumes, directory IDs, working
// directories, full paths and FSSpecs, checked against what Windows says
// about the same drives and directories.
#include <gtest/gtest.h>
#include <windows.h>

#include <cctype>
#include <cstring>
#include <string>

#include "Files.h"
#include "Folders.h"
#include "StandardFile.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::ExpectedDriveVolume;
using kwe_test::Keep;
using kwe_test::P;
using kwe_test::Text;
using kwe_test::WriteRaw;

constexpr SInt16 kNoVolume = SInt16(0xEEEE);

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

char AbsentDriveLetter() {
  DWORD present = GetLogicalDrives();
  for (char c = 'Y'; c > 'C'; --c)
    if (!(present & (1u << (c - 'A')))) return c;
  return 0;
}

using FilesNaming = kwe_test::FilesTest;

TEST_F(FilesNaming, VolumesAreTheDrivesInLetterOrderWithAAndBAlwaysCounted) {
  OSErr err;
  EXPECT_EQ(HFSpec(2, -3, "FILE.TXT", &err), "C:\\FILE.TXT");
  EXPECT_EQ(err, noErr);
  EXPECT_EQ(HFSpec(2, -1, "", &err), "A:\\");
  EXPECT_EQ(err, noErr);
  DWORD present = GetLogicalDrives();
  for (char letter = 'C'; letter <= 'Z'; ++letter) {
    if (!(present & (1u << (letter - 'A')))) continue;
    SInt16 expected = ExpectedDriveVolume(letter);
    std::string root = std::string(1, letter) + ":\\";
    EXPECT_EQ(HFSpec(2, expected, "", &err), root) << letter;
    SInt16 vRefNum = 0, wd = 0;
    EXPECT_EQ(KWE_DirIDFromPath(root.c_str(), &vRefNum, &wd), 2) << letter;
    EXPECT_EQ(vRefNum, expected);
    EXPECT_EQ(wd, 0);
  }
}

TEST_F(FilesNaming, WorkingDirectoriesAreNumberedFrom0x8001AndFoundWithoutRegardToCase) {
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SInt16 v1 = 0, wd1 = 0, v2 = 0, wd2 = 0, v3 = 0, wd3 = 0;
  SInt32 first = KWE_DirIDFromPath(Dir().c_str(), &v1, &wd1);
  SInt32 second = KWE_DirIDFromPath(At("Sub").c_str(), &v2, &wd2);
  std::string shouted = At("SUB\\");
  for (char& c : shouted) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  SInt32 again = KWE_DirIDFromPath(shouted.c_str(), &v3, &wd3);
  EXPECT_EQ(wd1, SInt16(0x8001));
  EXPECT_EQ(wd2, SInt16(0x8002));
  EXPECT_EQ(again, second);
  EXPECT_EQ(wd3, wd2);
  EXPECT_NE(first, 0);
  EXPECT_NE(first, 2);
  EXPECT_NE(first, second);
  EXPECT_EQ(v1, ExpectedDriveVolume(Dir()[0]));
  EXPECT_EQ(v2, v1);
}

// Unknown directories and volumes give an empty path and their error.
TEST_F(FilesNaming, FullPathsComeFromEveryWayOfNamingADirectory) {
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SInt16 subWD = 0;
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD);
  SInt16 volume = ExpectedDriveVolume(Dir()[0]);
  std::string absent = std::string(1, AbsentDriveLetter()) + ":\\F.TXT";
  struct Case {
    SInt32 dirID;
    SInt16 vRefNum;
    std::string name;
    std::string path;
    OSErr err;
  } cases[] = {
      {sub, 0, "F.TXT", At("Sub\\F.TXT"), noErr},
      {sub, volume, "", At("Sub"), noErr},
      {0, subWD, "F.TXT", At("Sub\\F.TXT"), noErr},
      {0, 0, "F.TXT", At("F.TXT"), noErr},
      {0, 0, "", Dir().substr(0, Dir().size() - 1), noErr},
      {2, volume, "", Dir().substr(0, 3), noErr},
      {sub, 0, "C:\\DIR\\F.TXT", "C:\\DIR\\F.TXT", noErr},
      {0, 0, "C:\\\\DIR\\\\\\F", "C:\\DIR\\F", noErr},
      {0, 0, "C:\\", "C:\\", noErr},
      {0x12345, 0, "F", "", fnfErr},                // a made-up directory ID
      {0, SInt16(0x8000 | 4000), "F", "", fnfErr},  // a working directory never made
      {2, -26, "F", "", nsvErr},                    // a volume position past the table
      {0, 0, absent, "", nsvErr},                   // a drive Windows does not have
  };
  for (const Case& c : cases) {
    OSErr err;
    EXPECT_EQ(HFSpec(c.dirID, c.vRefNum, c.name, &err), c.path) << c.name;
    EXPECT_EQ(err, c.err) << c.name;
  }
  EXPECT_EQ(KWE_HFSpec(0, 0, P("F"), nullptr), paramErr);
  char path[MAX_PATH];
  EXPECT_EQ(KWE_FSpec(subWD, P("G"), path), noErr);
  EXPECT_EQ(std::string(path), At("Sub\\G"));
  // The full name made a record for its directory; one too long makes none.
  SInt16 wd = 0;
  EXPECT_NE(KWE_DirIDFromPath("c:\\dir", nullptr, &wd), 0);
  EXPECT_LT(wd, 0);
  std::string tooLong = "C:\\" + std::string(300, 'd') + "\\";
  EXPECT_EQ(KWE_DirIDFromPath(tooLong.c_str(), nullptr, &wd), 0);
  EXPECT_EQ(wd, kNoVolume);
}

TEST_F(FilesNaming, StartupGlobalsAndCurDirvRefNumMovingCurDirStore) {
  SInt16 expected = ExpectedDriveVolume(StartDirectory()[0]);
  EXPECT_EQ(vars.CurrentVolume, expected);
  EXPECT_EQ(vars.SFSaveDisk, -expected);
  SInt16 number = KWE_CurDirvRefNum(nullptr);
  EXPECT_EQ(number, WDRefNum());
  EXPECT_EQ(vars.CurDirStore, DirID());
  EXPECT_EQ(KWE_CurDirvRefNum("C:\\"), -3);
  EXPECT_EQ(vars.CurDirStore, 2);
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SInt16 sub = KWE_CurDirvRefNum(At("Sub").c_str());
  EXPECT_EQ(vars.CurDirStore, KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr));
  EXPECT_EQ(sub, SInt16(WDRefNum() + 1));
  // Only CurDirStore moved: Windows' own current directory is the same.
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", Dir());
}

TEST_F(FilesNaming, ALongCurrentDirectoryIsStillADirectory) {
  std::string deep = Dir();
  for (int i = 0; deep.size() < 160; ++i) {
    deep += "level_" + std::to_string(i) + "_with_a_long_name\\";
    ASSERT_TRUE(CreateDirectoryA(deep.c_str(), nullptr));
  }
  ASSERT_TRUE(SetCurrentDirectoryA(deep.c_str()));
  WriteRaw(deep + "f.txt", "deep");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("f.txt"), &spec), noErr);
  EXPECT_EQ(spec.parID, KWE_DirIDFromPath(deep.c_str(), nullptr, nullptr));
  SInt16 ref = 0;
  char text[4];
  SInt32 count = 4;
  ASSERT_EQ(FSpOpenDF(&spec, fsRdPerm, &ref), noErr);
  EXPECT_EQ(FSRead(ref, &count, text), noErr);
  EXPECT_EQ(std::string(text, 4), "deep");
  FSClose(ref);
  SetCurrentDirectoryA(Dir().c_str());
}

TEST_F(FilesNaming, FSMakeFSSpecSplitsIntoParentAndName) {
  WriteRaw(At("here.txt"), "x");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("here.txt"), &spec), noErr);
  EXPECT_EQ(spec.vRefNum, ExpectedDriveVolume(Dir()[0]));
  EXPECT_EQ(spec.parID, DirID());
  EXPECT_EQ(Text(spec.name), "here.txt");

  std::memset(&spec, 0x5A, sizeof spec);
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("gone.txt"), &spec), fnfErr);
  EXPECT_EQ(spec.parID, DirID());  // filled all the same
  EXPECT_EQ(Text(spec.name), "gone.txt");

  EXPECT_EQ(FSMakeFSSpec(0, 0, P(""), &spec), noErr);
  EXPECT_EQ(spec.parID, DirID());
  EXPECT_EQ(spec.name[0], 0);

  EXPECT_EQ(FSMakeFSSpec(0, 0, P(At("here.txt")), &spec), noErr);
  EXPECT_EQ(spec.parID, DirID());
  EXPECT_EQ(FSMakeFSSpec(-3, 2, P("C:\\"), &spec), noErr);
  EXPECT_EQ(spec.parID, 2);
  EXPECT_EQ(spec.vRefNum, -3);

  EXPECT_EQ(FSMakeFSSpec(0, 0, P(std::string(64, 'n')), &spec), bdNamErr);
  EXPECT_EQ(FSMakeFSSpec(0, 0x12345, P("x"), &spec), fnfErr);
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("x"), nullptr), paramErr);
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("missing\\x"), &spec), fnfErr);
}

TEST_F(FilesNaming, OpenWDAndGetWDInfoDescribeWorkingDirectories) {
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SInt16 wd = 1;
  EXPECT_EQ(OpenWD(-3, DirID(), 0, &wd), noErr);
  EXPECT_EQ(wd, WDRefNum());
  EXPECT_EQ(OpenWD(-3, 2, 0, &wd), noErr);
  EXPECT_EQ(wd, -3);
  EXPECT_EQ(OpenWD(WDRefNum(), 0, 0, &wd), noErr);
  EXPECT_EQ(wd, WDRefNum());
  EXPECT_EQ(OpenWD(0, 0x12345, 0, &wd), dirNFErr);
  EXPECT_EQ(wd, 0);
  EXPECT_EQ(OpenWD(SInt16(0x8000 | 3000), 0, 0, &wd), dirNFErr);

  Str255 name;
  WDPBRec pb{};
  pb.ioResult = 1;
  pb.ioNamePtr = name;
  pb.ioVRefNum = WDRefNum();
  EXPECT_EQ(CloseWD(WDRefNum()), noErr);  // closing never forgets one
  EXPECT_EQ(PBGetWDInfo(&pb, false), noErr);
  EXPECT_EQ(pb.ioResult, noErr);
  EXPECT_EQ(pb.ioVRefNum, WDRefNum());
  EXPECT_EQ(pb.ioWDVRefNum, ExpectedDriveVolume(Dir()[0]));
  EXPECT_EQ(pb.ioWDDirID, DirID());
  EXPECT_EQ(pb.ioWDProcID, 0x4B574520);  // 'KWE '
  EXPECT_EQ(Text(name), Dir());

  pb.ioVRefNum = -3;
  EXPECT_EQ(PBGetWDInfo(&pb, false), noErr);
  EXPECT_EQ(pb.ioWDVRefNum, -3);
  EXPECT_EQ(pb.ioWDDirID, 2);
  EXPECT_EQ(Text(name), "C:\\");

  pb.ioVRefNum = SInt16(0x8000 | 3000);
  pb.ioResult = 1;
  EXPECT_EQ(PBGetWDInfo(&pb, false), dirNFErr);
  EXPECT_EQ(pb.ioResult, dirNFErr);

  SInt16 vRefNum = 0;
  SInt32 dirID = 0, procID = 0;
  EXPECT_EQ(GetWDInfo(WDRefNum(), &vRefNum, &dirID, &procID), noErr);
  EXPECT_EQ(dirID, DirID());
  EXPECT_EQ(vRefNum, ExpectedDriveVolume(Dir()[0]));

  // PBOpenWD joins a name that must be an existing directory.
  WriteRaw(At("plain.txt"), "x");
  for (const char* name : {"Sub", "Missing", "plain.txt"}) {
    WDPBRec open{};
    open.ioVRefNum = WDRefNum();
    open.ioNamePtr = Keep(name);
    open.ioResult = 1;
    const OSErr expected = name == std::string("Sub") ? OSErr(noErr) : OSErr(dirNFErr);
    EXPECT_EQ(PBOpenWD(&open, false), expected) << name;
    EXPECT_EQ(open.ioResult, expected) << name;
  }
  SInt16 subWD = 0;
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD);
  WDPBRec open{};
  open.ioVRefNum = WDRefNum();
  open.ioNamePtr = Keep("Sub");
  EXPECT_EQ(PBOpenWD(&open, false), noErr);
  EXPECT_EQ(open.ioWDDirID, sub);
  EXPECT_EQ(open.ioVRefNum, subWD);
}

// GetVol names the drive root of the current directory; SetVol and HSetVol
// move Windows' current directory, and refuse bad names leaving it alone.
TEST_F(FilesNaming, GetVolAndSetVolFollowWindowsCurrentDirectory) {
  Str255 name;
  SInt16 vRefNum = 0;
  SInt32 dirID = 0;
  EXPECT_EQ(HGetVol(name, &vRefNum, &dirID), noErr);
  EXPECT_EQ(vRefNum, WDRefNum());
  EXPECT_EQ(Text(name), Dir().substr(0, 3));
  EXPECT_EQ(dirID, DirID());
  WDPBRec wd{};
  wd.ioNamePtr = name;
  EXPECT_EQ(PBHGetVol(&wd, false), noErr);
  EXPECT_EQ(wd.ioWDDirID, DirID());
  EXPECT_EQ(wd.ioWDVRefNum, ExpectedDriveVolume(Dir()[0]));

  for (const char* bad : {"ABCD", "AB", "C:X", ":"}) EXPECT_EQ(SetVol(P(bad), 0), nsvErr) << bad;
  EXPECT_EQ(SetVol(nullptr, SInt16(0x8000 | 3000)), nsvErr);
  EXPECT_EQ(HSetVol(nullptr, 0, 0x12345), nsvErr);
  EXPECT_EQ(WindowsCurrentDirectory() + "\\", Dir());

  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, nullptr);
  EXPECT_EQ(HSetVol(nullptr, 0, sub), noErr);
  EXPECT_EQ(WindowsCurrentDirectory(), At("Sub"));
  EXPECT_EQ(vars.CurDirStore, sub);
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

TEST_F(FilesNaming, FindFolderMapsSpecialFoldersOnWindowsDirectories) {
  char windows[MAX_PATH], temp[MAX_PATH];
  GetWindowsDirectoryA(windows, sizeof windows);
  GetTempPathA(sizeof temp, temp);
  struct Case {
    OSType type;
    std::string directory;
  } cases[] = {
      {kPreferencesFolderType, windows}, {kSystemFolderType, windows},
      {kStartupFolderType, windows},     {kTemporaryFolderType, temp},
      {kTrashFolderType, Dir()},         {kFontsFolderType, Dir()},
  };
  for (const Case& c : cases) {
    SInt16 wd = 0, expectedWD = 0;
    SInt32 dirID = 0;
    ASSERT_EQ(FindFolder(kOnSystemDisk, c.type, kCreateFolder, &wd, &dirID), noErr);
    EXPECT_EQ(dirID, KWE_DirIDFromPath(c.directory.c_str(), nullptr, &expectedWD)) << c.directory;
    EXPECT_EQ(wd, expectedWD);
  }
}

class FilesReply : public kwe_test::FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    KWE_Set_Tovel(kTypes, nullptr);
  }
  static constexpr OSType kText = 0x54455854, kPict = 0x50494354;
  static const KWEFileTypeEntry kTypes[3];
};
const KWEFileTypeEntry FilesReply::kTypes[3] = {
    {kText, {'T', 'X', 'T'}, "Text"}, {kPict, {'P', 'C', 'T'}, "Picture"}, {0, {}, ""}};

TEST_F(FilesReply, APathBecomesAReplyInItsDirectory) {
  CreateDirectoryA(At("Sub").c_str(), nullptr);
  SFReply reply;
  KWE_DosFSpec2MacSFReply(false, false, -1, true, false, At("Sub\\doc.txt").c_str(), &reply);
  EXPECT_TRUE(reply.good);
  EXPECT_FALSE(reply.copy);
  EXPECT_EQ(reply.version, 0);
  EXPECT_EQ(Text(reply.fName), "doc.txt");
  EXPECT_EQ(reply.fType, kText);
  SInt16 subWD = 0;
  SInt32 sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD);
  EXPECT_EQ(reply.vRefNum, subWD);
  EXPECT_EQ(vars.CurDirStore, sub);
  EXPECT_EQ(vars.CurrentVolume, ExpectedDriveVolume(Dir()[0]));
  EXPECT_EQ(vars.SFSaveDisk, -vars.CurrentVolume);

  std::memset(&reply, 0x5A, sizeof reply);
  KWE_DosFSpec2MacSFReply(false, false, -1, false, false, At("Sub\\").c_str(), &reply);
  EXPECT_FALSE(reply.good);
  EXPECT_EQ(reply.vRefNum, 0);
  EXPECT_EQ(reply.fName[0], 0);
}

TEST_F(FilesReply, FilterExtensionsAreAddedOrReplaced) {
  struct Case {
    bool add, replace;
    SInt16 filter;
    const char* name;
    const char* result;
  } cases[] = {
      {true, false, 0, "report", "report.TXT"},     {true, false, 0, "report.doc", "report.doc"},
      {true, true, 0, "report.doc", "report.TXT"},  {true, true, 1, "a.b.c", "a.PCT"},
      {true, true, 2, "report.doc", "report.doc"},  // no such filter
      {false, true, 0, "report.doc", "report.doc"},
  };
  for (const Case& c : cases) {
    SFReply reply;
    KWE_DosFSpec2MacSFReply(c.add, c.replace, c.filter, false, false, At(c.name).c_str(), &reply);
    EXPECT_EQ(Text(reply.fName), c.result) << c.name;
  }
}

TEST_F(FilesReply, ARememberedChoiceGivesItsFilterTypeToThatName) {
  WriteRaw(At("drawing.xyz"), "x");
  WriteRaw(At("other.xyz"), "x");
  SFReply reply;
  KWE_DosFSpec2MacSFReply(false, false, 1, false, true, At("drawing.xyz").c_str(), &reply);
  EXPECT_EQ(reply.fType, kPict);
  FInfo info;
  EXPECT_EQ(GetFInfo(P("DRAWING.XYZ"), 0, &info), noErr);
  EXPECT_EQ(info.fdType, kPict);
  EXPECT_EQ(GetFInfo(P("other.xyz"), 0, &info), noErr);
  EXPECT_EQ(info.fdType, 0x3F3F3F3Fu);
  EXPECT_EQ(info.fdCreator, 0x3F3F3F3Fu);
}

// Names cross into Windows through the character tables: Macintosh e acute
// (0x8E) is ANSI 0xE9 on disk, and comes back as 0x8E.
TEST_F(FilesNaming, MacintoshCharactersAreAnsiCharactersOnDisk) {
  EXPECT_EQ(Create(P("caf\x8E.txt"), 0, 0x3F3F3F3F, 0x54455854), noErr);
  EXPECT_TRUE(kwe_test::Exists(At("caf\xE9.txt")));
  WriteRaw(At("r\xE9sum\xE9.txt"), "x");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("r\x8Esum\x8E.txt"), &spec), noErr);
  EXPECT_EQ(Text(spec.name), "r\x8Esum\x8E.txt");
}

}  // namespace
