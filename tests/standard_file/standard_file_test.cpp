// The open and save dialogs as an application meets them: the filter list
// from the host's file-type table, the reply records, the current directory
// and SFSaveDisk afterwards, refusals, cancel, parked files, and no leaks.
#include <windows.h>

#include <cstring>
#include <functional>

#include "KWEStandardFile.h"
#include "files/files_fixture.h"
#include "support/dialog_user.h"

namespace kwe_test {
namespace {

constexpr OSType kText = 0x54455854;     // 'TEXT'
constexpr OSType kPicture = 0x50494354;  // 'PICT'

const KWEFileTypeEntry kHostTypes[] = {{kText, {'T', 'X', 'T'}, "Text documents"},
                                       {kPicture, {'P', 'I', 'C'}, "Pictures"},
                                       {0, {}, ""}};

std::vector<std::string> g_filtered;  // names the application's filter saw

Boolean KWE_CALL NoSecrets(CInfoPBRec* pb) {
  std::string name = Text(pb->hFileInfo.ioNamePtr);
  g_filtered.push_back(name + "/" + std::to_string(pb->hFileInfo.ioFlFndrInfo.fdType == kText));
  return name.rfind("secret", 0) == 0;
}

SInt16 KWE_CALL AnyHook(SInt16 item, DialogPtr) { return item; }

// The file-name field: an edit (edt1) or the edit inside a combo (cmb13).
HWND NameField(HWND dialog) {
  HWND field = GetDlgItem(dialog, edt1);
  HWND combo = GetDlgItem(dialog, cmb13);
  return field ? field : combo ? FindWindowExA(combo, nullptr, "Edit", nullptr) : nullptr;
}

struct DialogSeen {
  std::string title, typedName;      // the name field as the dialog opened
  std::vector<std::string> filters;  // the file-type list's entries
  int refusals = 0;                  // names after which the dialog stayed open
};

// The user of the open and save dialogs: notes what the dialog shows, runs
// during, then types each name into the name field and presses Open/Save
// (an empty name presses Cancel).
class FileDialogDriver {
 public:
  explicit FileDialogDriver(std::vector<std::string> names, std::function<void()> during = nullptr)
      : user_([this, names, during](HWND dialog) { Play(dialog, names, during); }) {}
  const DialogSeen& Seen() {
    seen_.title = user_.Title();
    return seen_;
  }

 private:
  void Play(HWND dialog, const std::vector<std::string>& names,
            const std::function<void()>& during) {
    seen_.typedName = TextOf(NameField(dialog));
    HWND types = GetDlgItem(dialog, cmb1);
    LRESULT count = types ? SendMessageA(types, CB_GETCOUNT, 0, 0) : 0;
    for (LRESULT i = 0; i < count; ++i) {
      char entry[256] = "";
      SendMessageA(types, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry));
      seen_.filters.push_back(entry);
    }
    if (during) during();
    for (const std::string& name : names) {
      if (name.empty()) break;
      SendMessageA(NameField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
      PostMessageA(dialog, WM_COMMAND, IDOK, 0);
      Pause();
      if (!IsWindow(dialog)) return;
      ++seen_.refusals;
    }
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
  }
  DialogSeen seen_;
  DialogUser user_;
};

class StandardFileTest : public FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    KWE_Set_Tovel(kHostTypes, nullptr);
    KWE_CurDirvRefNum(Dir().c_str());
    for (const char* name : {"notes.txt", "secret.txt", "photo.pic"}) WriteRaw(At(name), "x");
    g_filtered.clear();
  }
  SInt16 SaveDisk() { return vars.SFSaveDisk; }
};

TEST_F(StandardFileTest, OpenDialogListsTheAskedTypesAndNamesTheChosenFile) {
  const OSType onlyText[] = {kText};
  StandardFileReply reply;
  FileDialogDriver driver({"notes.txt"});
  StandardGetFile(nullptr, 1, onlyText, &reply);
  EXPECT_EQ(driver.Seen().filters, std::vector<std::string>{"Text documents (*.TXT)"});
  ASSERT_TRUE(reply.sfGood);
  EXPECT_EQ(Text(reply.sfFile.name), "notes.txt");
  EXPECT_EQ(reply.sfFile.parID, DirID());
  EXPECT_EQ(reply.sfType, kText);
  EXPECT_FALSE(reply.sfReplacing);
  EXPECT_TRUE(capture.Reports().empty());

  SFReply old;
  FileDialogDriver every({"photo.pic"});
  SFGetFile(Point{}, nullptr, nullptr, -1, nullptr, nullptr, &old);
  EXPECT_EQ(
      every.Seen().filters,
      (std::vector<std::string>{"Text documents (*.TXT)", "Pictures (*.PIC)", "All Files (*.*)"}));
  ASSERT_TRUE(old.good);
  EXPECT_EQ(Text(old.fName), "photo.pic");
  EXPECT_EQ(old.fType, kPicture);
  EXPECT_EQ(old.vRefNum, WDRefNum());
  EXPECT_EQ(SaveDisk(), -reply.sfFile.vRefNum);
}

TEST_F(StandardFileTest, FilterProcedureAndOverlongNamesAreRefusedUntilAGoodChoice) {
  std::string tooLong(64, 'n');
  WriteRaw(At(tooLong), "x");
  SFReply reply;
  FileDialogDriver driver({"secret.txt", tooLong, "notes.txt"});
  SFGetFile(Point{}, nullptr, NoSecrets, -1, nullptr, nullptr, &reply);
  EXPECT_EQ(driver.Seen().refusals, 2);
  ASSERT_TRUE(reply.good);
  EXPECT_EQ(Text(reply.fName), "notes.txt");
  EXPECT_EQ(g_filtered, (std::vector<std::string>{"secret.txt/1", "notes.txt/1"}));
}

TEST_F(StandardFileTest, SaveDialogShowsPromptAndNameAndAddsTheFilterExtension) {
  StandardFileReply reply;
  FileDialogDriver driver({"report"});
  StandardPutFile(P("Save \x8E"
                    "t\x8E:"),
                  P("Untitled"), &reply);
  EXPECT_EQ(driver.Seen().title, "Save \xE9t\xE9:");
  EXPECT_EQ(driver.Seen().typedName, "Untitled");
  ASSERT_TRUE(reply.sfGood);
  EXPECT_EQ(Text(reply.sfFile.name), "report.TXT");
  EXPECT_EQ(reply.sfType, kText);
  EXPECT_FALSE(reply.sfReplacing);
  EXPECT_EQ(reply.sfFile.parID, DirID());
}

TEST_F(StandardFileTest, CancelLeavesAClearedReplyAndCustomPartsAreReported) {
  SFReply reply;
  std::memset(&reply, 0x55, sizeof reply);
  FileDialogDriver cancel({""});
  SFPPutFile(Point{}, P("Save:"), P("a"), AnyHook, &reply, -3999, nullptr);
  cancel.Seen();
  EXPECT_FALSE(reply.good);
  EXPECT_EQ(reply.fName[0], 0);
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"SFPPutFile"});

  // The System 7 custom dialog reports itself and runs the plain one.
  StandardFileReply standard;
  std::memset(&standard, 0x55, sizeof standard);
  FileDialogDriver again({""});
  CustomGetFile(nullptr, -1, nullptr, &standard, 0, Point{}, nullptr, nullptr, nullptr, nullptr,
                nullptr);
  again.Seen();
  EXPECT_FALSE(standard.sfGood);
  EXPECT_EQ(standard.sfFile.name[0], 0);
  EXPECT_EQ(capture.Reports(), (std::vector<std::string>{"SFPPutFile", "CustomGetFile"}));
}

// The open dialog closes every open file while it runs (another program may
// take them), and they read on afterwards from where they were.
TEST_F(StandardFileTest, OpenFilesAreParkedWhileTheOpenDialogRuns) {
  WriteRaw(At("data.bin"), "0123456789");
  SInt16 refNum = 0;
  ASSERT_EQ(FSOpen(P("data.bin"), 0, &refNum), noErr);
  char bytes[4] = {};
  SInt32 count = 3;
  ASSERT_EQ(FSRead(refNum, &count, bytes), noErr);
  bool exclusiveDuringDialog = false;
  SFReply reply;
  FileDialogDriver driver({""}, [&] {
    HANDLE h =
        CreateFileA(At("data.bin").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    exclusiveDuringDialog = h != INVALID_HANDLE_VALUE;
    if (h != INVALID_HANDLE_VALUE) CloseHandle(h);
  });
  SFGetFile(Point{}, nullptr, nullptr, -1, nullptr, nullptr, &reply);
  driver.Seen();
  EXPECT_TRUE(exclusiveDuringDialog);
  count = 3;
  ASSERT_EQ(FSRead(refNum, &count, bytes), noErr);
  EXPECT_EQ(std::string(bytes, 3), "345");
  FSClose(refNum);
}

TEST_F(StandardFileTest, WindowsAndGdiObjectsStayFlatOverDialogCycles) {
  auto cycle = [] {
    SFReply reply;
    FileDialogDriver driver({""});
    SFPutFile(Point{}, nullptr, nullptr, nullptr, &reply);
    driver.Seen();
  };
  cycle();
  auto windows = [] {
    int count = 0;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND, LPARAM n) -> BOOL { return ++*reinterpret_cast<int*>(n) > 0; },
        reinterpret_cast<LPARAM>(&count));
    return count;
  };
  int gdi = LiveGdiObjects(), before = windows();
  for (int i = 0; i < 12; ++i) cycle();
  // The shell fills its icon caches a few objects at a time, late; a leak of
  // one object a dialog would show twelve.
  EXPECT_LE(LiveGdiObjects(), gdi + 8);
  EXPECT_EQ(windows(), before);
}

}  // namespace
}  // namespace kwe_test
