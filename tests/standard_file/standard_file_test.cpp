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

constexpr OSType kOther = 0x4F544852;  // 'OTHR', in no record

// Two records for text: an open dialog for text lists both.
const KWEFileTypeEntry kHostTypes[] = {{kText, {'T', 'X', 'T'}, "Text documents"},
                                       {kPicture, {'P', 'I', 'C'}, "Pictures"},
                                       {kText, {'A', 'S', 'C'}, "ASCII"},
                                       {0, {}, ""}};

std::vector<std::string> g_filtered;  // names the application's filter saw

Boolean KWE_CALL NoSecrets(CInfoPBRec* pb) {
  std::string name = Text(pb->hFileInfo.ioNamePtr);
  g_filtered.push_back(name + "/" + std::to_string(pb->hFileInfo.ioFlFndrInfo.fdType == kText));
  return name.rfind("secret", 0) == 0;
}

SInt16 KWE_CALL AnyHook(SInt16 item, DialogPtr) { return item; }

int ThreadWindows() {
  int count = 0;
  EnumThreadWindows(
      GetCurrentThreadId(), [](HWND, LPARAM n) -> BOOL { return ++*reinterpret_cast<int*>(n) > 0; },
      reinterpret_cast<LPARAM>(&count));
  return count;
}

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

// The user of the open and save dialogs: notes what the dialog shows (and
// does what else is asked meanwhile), then types each name into the name
// field and presses Open/Save (an empty name presses Cancel).
class FileDialogDriver {
 public:
  explicit FileDialogDriver(std::vector<std::string> names, std::function<void()> meanwhile = {})
      : user_([this, names, meanwhile](HWND dialog) {
          if (meanwhile) meanwhile();
          Play(dialog, names);
        }) {}
  const DialogSeen& Seen() {
    seen_.title = user_.Title();
    return seen_;
  }

 private:
  void Play(HWND dialog, const std::vector<std::string>& names) {
    seen_.typedName = TextOf(NameField(dialog));
    HWND types = GetDlgItem(dialog, cmb1);
    LRESULT count = types ? SendMessageA(types, CB_GETCOUNT, 0, 0) : 0;
    for (LRESULT i = 0; i < count; ++i) {
      char entry[256] = "";
      SendMessageA(types, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry));
      seen_.filters.push_back(entry);
    }
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

// The filter list holds the records of the asked types (every record and
// "All Files" when none is asked, "All Files" alone when no record has the
// type); the filter procedure and overlong names are refused until a good
// choice, whose reply names the file. The dialog closes every open file
// while it runs (another program may take them), and they read on
// afterwards from where they were.
TEST_F(StandardFileTest, OpenDialogListsTheAskedTypesAndNamesTheChosenFile) {
  const OSType onlyText[] = {kText}, unknown[] = {kOther};
  WriteRaw(At("data.bin"), "0123456789");
  SInt16 refNum = 0;
  ASSERT_EQ(FSOpen(P("data.bin"), 0, &refNum), noErr);
  char bytes[4] = {};
  SInt32 count = 3;
  ASSERT_EQ(FSRead(refNum, &count, bytes), noErr);
  bool exclusive = false;
  StandardFileReply reply;
  FileDialogDriver driver({"notes.txt"}, [&, path = At("data.bin")] {
    HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    exclusive = h != INVALID_HANDLE_VALUE;
    if (exclusive) CloseHandle(h);
  });
  StandardGetFile(nullptr, 1, onlyText, &reply);
  EXPECT_TRUE(exclusive) << "the open file was parked";
  ASSERT_EQ(FSRead(refNum, &count, bytes), noErr);
  EXPECT_EQ(std::string(bytes, 3), "345");
  FSClose(refNum);
  EXPECT_EQ(driver.Seen().filters,
            (std::vector<std::string>{"Text documents (*.TXT)", "ASCII (*.ASC)"}));
  ASSERT_TRUE(reply.sfGood);
  EXPECT_EQ(Text(reply.sfFile.name), "notes.txt");
  EXPECT_EQ(reply.sfFile.parID, DirID());
  EXPECT_EQ(reply.sfType, kText);
  EXPECT_TRUE(capture.Reports().empty());

  StandardFileReply cancelled;
  FileDialogDriver none({""});
  StandardGetFile(nullptr, 1, unknown, &cancelled);
  EXPECT_EQ(none.Seen().filters, std::vector<std::string>{"All Files (*.*)"});

  std::string tooLong(64, 'n');
  WriteRaw(At(tooLong), "x");
  SFReply old;
  FileDialogDriver every({"secret.txt", tooLong, "photo.pic"});
  SFGetFile(Point{}, nullptr, NoSecrets, -1, nullptr, nullptr, &old);
  EXPECT_EQ(every.Seen().filters,
            (std::vector<std::string>{"Text documents (*.TXT)", "Pictures (*.PIC)", "ASCII (*.ASC)",
                                      "All Files (*.*)"}));
  EXPECT_EQ(every.Seen().refusals, 2);
  EXPECT_EQ(g_filtered, (std::vector<std::string>{"secret.txt/1", "photo.pic/0"}));
  ASSERT_TRUE(old.good);
  EXPECT_EQ(Text(old.fName), "photo.pic");
  EXPECT_EQ(old.fType, kPicture);
  EXPECT_EQ(old.vRefNum, WDRefNum());
  EXPECT_EQ(SaveDisk(), -reply.sfFile.vRefNum);
}

// The prompt and the default name show in Windows' characters; the chosen
// name gets the filter's extension. Cancel clears the reply; the custom
// parts report themselves and run the plain dialog. Over a dozen cancelled
// dialogs USER's windows and GDI's objects stay flat (the shell fills its
// icon caches a few objects at a time, late; a leak of one object a dialog
// would show twelve).
TEST_F(StandardFileTest, SaveNamesTheFileAndCancelLeavesAClearedReplyAndNothingBehind) {
  StandardFileReply reply;
  FileDialogDriver driver({"report"});
  StandardPutFile(P("Save \x8E"
                    "t\x8E:"),
                  P("Untitled"), &reply);
  EXPECT_EQ(driver.Seen().title, "Save \xE9t\xE9:");
  EXPECT_EQ(driver.Seen().typedName, "Untitled");
  ASSERT_TRUE(reply.sfGood);
  EXPECT_EQ(Text(reply.sfFile.name), "report.TXT");
  EXPECT_FALSE(reply.sfReplacing);
  EXPECT_EQ(reply.sfFile.parID, DirID());
  SFReply old;
  std::memset(&old, 0x55, sizeof old);
  FileDialogDriver cancel({""});
  SFPPutFile(Point{}, P("Save:"), P("a"), AnyHook, &old, -3999, nullptr);
  cancel.Seen();
  EXPECT_FALSE(old.good);
  EXPECT_EQ(old.fName[0], 0);
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"SFPPutFile"});
  int gdi = LiveGdiObjects(), windows = ThreadWindows();
  for (int i = 0; i < 12; ++i) {
    std::memset(&reply, 0x55, sizeof reply);
    FileDialogDriver again({""});
    CustomGetFile(nullptr, -1, nullptr, &reply, 0, Point{}, nullptr, nullptr, nullptr, nullptr,
                  nullptr);
    again.Seen();
    ASSERT_FALSE(reply.sfGood);
    ASSERT_EQ(reply.sfFile.name[0], 0);
  }
  EXPECT_EQ(capture.Reports().back(), "CustomGetFile");
  EXPECT_LE(LiveGdiObjects(), gdi + 8);
  EXPECT_EQ(ThreadWindows(), windows);
}

}  // namespace
}  // namespace kwe_test
