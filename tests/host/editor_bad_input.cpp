// The document editor given what it cannot use: files that are not text
// (a picture, Notepad's UTF-16, a word processor's text behind a binary
// header), empty or longer than a TextEdit record holds, and a file
// deleted, mapped by another program or made read-only between Open and
// Save. Each row prepares the file on disk, drives the menu command a user
// would choose, and expects an alert saying what went wrong; once it is
// answered, every document still holds the text it held, the window of a
// failed Save is still marked changed, and the file on disk is as it was.
// A file of exactly 32,000 characters, the most TextEdit holds, opens
// without an alert; a clipboard another program filled with only a
// picture grays Paste, and choosing it anyway changes nothing.
#include <fstream>
#include <map>

#include "host/editor_driver.h"

namespace {

using namespace kwe_drive;

constexpr int kFile = 1, kEdit = 2;

enum class Act { kOpen, kSave, kPaste };

struct Row {
  const char* what;
  const char* file;     // written to the temporary folder first; null: none
  std::string content;  // the file's bytes
  Act act;
  // For a Save: done to the file after it is opened and typed into.
  void (*spoil)(const std::string& path);
  const char* alert;  // what the alert says, in part; null: no alert
};

struct {
  std::string folder;
  HANDLE mapping = nullptr;
  void* view = nullptr;
} g;

void Delete(const std::string& path) { DeleteFileA(path.c_str()); }
// As a viewer or an indexer holds it: Windows will not cut a file short
// while it is mapped.
void Map(const std::string& path) {
  HANDLE file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                            OPEN_EXISTING, 0, nullptr);
  g.mapping = CreateFileMappingA(file, nullptr, PAGE_READONLY, 0, 0, nullptr);
  g.view = MapViewOfFile(g.mapping, FILE_MAP_READ, 0, 0, 0);
  CloseHandle(file);
  Check(g.view != nullptr, "the file is mapped");
}
void Unmap() {
  if (g.view) UnmapViewOfFile(g.view);
  if (g.mapping) CloseHandle(g.mapping);
  g.view = g.mapping = nullptr;
}
void MakeReadOnly(const std::string& path) {
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
}

// A picture's first bytes, NULs and all.
std::string BitmapBytes() {
  std::string bytes = "BM";
  for (int i = 0; i < 200; ++i) bytes += char(i % 7 == 0 ? 0 : i);
  return bytes;
}

// Prose of exactly length characters, a return every 64.
std::string Lines(size_t length) {
  std::string text;
  while (text.size() < length) text += text.size() % 64 == 63 ? '\r' : char('a' + text.size() % 26);
  return text;
}

void PutOnlyAPicture() {
  WaitFor([] { return OpenClipboard(nullptr) != 0; }, "the clipboard opens");
  EmptyClipboard();
  static const WORD stripes[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
  SetClipboardData(CF_BITMAP, CreateBitmap(8, 8, 1, 1, stripes));
  CloseClipboard();
}

std::map<HWND, std::string> DocumentTexts() {
  std::map<HWND, std::string> texts;
  for (HWND w : Documents()) texts[w] = TextOf(DocumentOf(w)->docTE);
  return texts;
}

BOOL CALLBACK AddText(HWND child, LPARAM all) {
  *reinterpret_cast<std::string*>(all) += "[" + TextOf(child) + "]";
  return TRUE;
}

// Every child's text: what the alert says when it says something else.
std::string AllText(HWND window) {
  std::string all;
  EnumChildWindows(window, AddText, reinterpret_cast<LPARAM>(&all));
  return all;
}

HWND AnyAlert() {
  for (HWND w : LibraryWindows())
    if (ChildWithText(w, "OK")) return w;
  return nullptr;
}

// Opens the row's file, types into its window and spoils the file.
void PrepareSave(const Row& row, const std::string& path) {
  ChooseMenuItem(kFile, 1);  // Open...
  AnswerFileDialog(path, std::string(row.what) + ": Open");
  WaitFor([&] { return WindowTitled(row.file) != nullptr; },
          std::string(row.what) + ": the file opens");
  Type("typed into it ");
  Settle(row.what);
  row.spoil(path);
}

void RunRow(const Row& row) {
  std::string what = row.what, path = row.file ? g.folder + "\\" + row.file : "";
  if (row.file) {
    std::ofstream(path, std::ios::binary) << row.content;
  }
  if (row.act == Act::kSave) PrepareSave(row, path);
  if (row.act == Act::kPaste) {
    // Another program fills the clipboard while the editor is in the
    // background; back in front, its Edit menu grays Paste.
    PostMessageA(MainWindow(), WM_ACTIVATEAPP, FALSE, 0);
    Settle(what);
    PutOnlyAPicture();
    PostMessageA(MainWindow(), WM_ACTIVATEAPP, TRUE, 0);
    Settle(what);
    Check(EditStates()[3] == '-', what + ": Paste is grayed: " + EditStates());
  }
  Settle(what);
  std::map<HWND, std::string> before = DocumentTexts();
  std::string onDisk = row.file ? ReadFile(path) : "";
  switch (row.act) {
    case Act::kOpen:
      ChooseMenuItem(kFile, 1);  // Open...
      AnswerFileDialog(path, what + ": Open");
      break;
    case Act::kSave: ChooseMenuItem(kFile, 3); break;   // Save
    case Act::kPaste: ChooseMenuItem(kEdit, 4); break;  // Paste
  }
  if (!row.alert && row.act == Act::kPaste) {
    Settle(what);
    Check(DocumentTexts() == before && !AnyAlert(), what + ": Paste, grayed, changes nothing");
    return;
  }
  if (!row.alert) {
    WaitFor([&] { return WindowTitled(row.file) != nullptr; }, what + ": the file opens");
    Settle(what);
    HWND opened = WindowTitled(row.file);
    Check(TextOf(DocumentOf(opened)->docTE) == row.content, what + ": the window holds all of it");
    ChooseMenuItem(kFile, 2);  // Close: unchanged, it asks nothing
    WaitFor([&] { return !IsWindow(opened); }, what + ": Close closes it");
    return;
  }
  HWND alert = nullptr;
  WaitFor([&] { return (alert = AnyAlert()) != nullptr; }, what + ": an alert appears");
  Check(ChildWithText(alert, row.alert) != nullptr,
        what + ": the alert says " + row.alert + "; it holds " + AllText(alert));
  ClickButton(alert, "OK");
  WaitFor([&] { return !IsWindow(alert) || !IsWindowVisible(alert); }, what + ": OK answers it");
  Settle(what);
  Check(DocumentTexts() == before, what + ": every window keeps its text, and no window opens");
  if (row.act == Act::kSave)
    Check(DocumentOf(Documents().front())->docDirty,
          what + ": the window stays marked changed, for Save As");
  DWORD attributes = row.file ? GetFileAttributesA(path.c_str()) : 0;
  bool gone = row.spoil == Delete;
  Check(gone ? attributes == INVALID_FILE_ATTRIBUTES : ReadFile(path) == onDisk,
        what + ": the file on disk is as it was");
  Unmap();
}

void Script() {
  g.folder = TempFolder("kwe_editor_bad");
  WaitFor([] { return MainWindow() && WindowTitled("Untitled 1"); },
          "the editor opens its first window");
  Type("Typed before anything went wrong.");
  const Row rows[] = {
      {"a file that is not text", "picture.bmp", BitmapBytes(), Act::kOpen, nullptr,
       "\"picture.bmp\" is not a text file."},
      {"Notepad's Unicode text", "unicode.txt", std::string("\xFF\xFEH\0i\0!\0\r\0\n\0", 12),
       Act::kOpen, nullptr, "\"unicode.txt\" is not a text file."},
      {"a word processor's document", "letter.doc",
       std::string("\xD0\xCF\0\0\0\x01", 6) + Lines(200), Act::kOpen, nullptr,
       "\"letter.doc\" is not a text file."},
      {"a file of 0 bytes", "empty.txt", "", Act::kOpen, nullptr, "\"empty.txt\" is empty"},
      {"a file of 32,001 characters", "long.txt", Lines(32001), Act::kOpen, nullptr,
       "\"long.txt\" is longer than the 32,000 characters"},
      {"a file of 32,000 characters", "full.txt", Lines(32000), Act::kOpen, nullptr, nullptr},
      {"a file deleted before Save", "gone.txt", "kept\r", Act::kSave, Delete,
       "\"gone.txt\" is no longer there."},
      {"a file another program has mapped", "mapped.txt", "viewed\r", Act::kSave, Map,
       "Editor could not do that (error "},
      {"a read-only file", "locked.txt", "read only\r", Act::kSave, MakeReadOnly,
       "\"locked.txt\" is locked."},
      {"a clipboard holding only a picture", nullptr, "", Act::kPaste, nullptr, nullptr},
  };
  for (const Row& row : rows) RunRow(row);
  SetFileAttributesA((g.folder + "\\locked.txt").c_str(), FILE_ATTRIBUTE_NORMAL);

  // Quit asks about each changed window; Don't Save to each ends the program.
  int changed = 0;
  for (HWND w : Documents()) changed += DocumentOf(w)->docDirty ? 1 : 0;
  Check(changed == 4, "four windows are changed: " + std::to_string(changed));
  ChooseMenuItem(kFile, 6);  // Quit
  for (int i = 0; i < changed; ++i) {
    HWND ask = WaitForDialogWith("Save changes to", "Quit asks about a changed window");
    if (i == changed - 1) Finished();
    ClickButton(ask, "Don't Save");
    WaitFor([&] { return !IsWindow(ask) || !IsWindowVisible(ask); }, "Don't Save answers");
  }
}

const bool g_started = StartScript(Script);

}  // namespace
