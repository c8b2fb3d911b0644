// The file naming model through the DLL: volumes, directory IDs, working
// directories, full paths and FSSpecs, checked against what Windows says
// about the same drives and directories.
#include <gtest/gtest.h>
#include <windows.h>

#include <cctype>
#include <cstring>
#include <string>

#include "Files.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::ExpectedDriveVolume;
using kwe_test::Keep;
using kwe_test::P;
using kwe_test::Text;
using kwe_test::WriteRaw;

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

class FilesNaming : public kwe_test::FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    DirID();  // the test directory is the first working directory, Sub the second
    CreateDirectoryA(At("Sub").c_str(), nullptr);
    sub = KWE_DirIDFromPath(At("Sub").c_str(), nullptr, &subWD);
    volume = ExpectedDriveVolume(Dir()[0]);
  }
  SInt32 sub = 0;
  SInt16 subWD = 0, volume = 0;
};

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
      {0, 0, "C:\\", "C:\\", noErr},
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
  WDPBRec wd{};
  wd.ioNamePtr = name;
  EXPECT_EQ(PBHGetVol(&wd, false), noErr);
  EXPECT_EQ(wd.ioWDDirID, DirID());
  EXPECT_EQ(wd.ioWDVRefNum, volume);

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
  EXPECT_TRUE(kwe_test::Exists(At("caf\xE9.txt")));
  WriteRaw(At("r\xE9sum\xE9.txt"), "x");
  FSSpec spec;
  EXPECT_EQ(FSMakeFSSpec(0, 0, P("r\x8Esum\x8E.txt"), &spec), noErr);
  EXPECT_EQ(Text(spec.name), "r\x8Esum\x8E.txt");
}

}  // namespace
