// The document editor as a user meets it: typing into the first window,
// Select All and Copy reaching the Windows clipboard, Save As through the
// common save dialog writing the text to disk with the Macintosh's returns,
// Find selecting the next match, Open reading a file from disk into a second
// window, Paste from a clipboard another program filled, a larger size
// redrawing the text taller, the scroll bar following a long text, and the
// Save Changes alert guarding a changed window on Quit.
#include <cstdio>
#include <fstream>
#include <sstream>

#include "host/program_driver.h"

extern "C" {
extern short gDocumentCount;
}

namespace {

using namespace kwe_drive;

constexpr int kFile = 1, kEdit = 2, kSize = 4;
constexpr COLORREF kWhite = RGB(255, 255, 255);

std::string TempFolder() {
  char path[MAX_PATH];
  GetTempPathA(MAX_PATH, path);
  std::string folder = std::string(path) + "kwe_editor_" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(folder.c_str(), nullptr);
  return folder;
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

HWND WindowTitled(const std::string& title) {
  for (HWND w : LibraryWindows())
    if (TextOf(w) == title) return w;
  return nullptr;
}

void Type(const std::string& text) {
  for (char c : text) PostMessageA(MainWindow(), WM_CHAR, WPARAM(static_cast<unsigned char>(c)), 1);
}

std::string Clipboard() {
  std::string text;
  if (!OpenClipboard(nullptr)) return text;  // the program has it open: ask again
  if (HANDLE data = GetClipboardData(CF_TEXT)) {
    text = static_cast<const char*>(GlobalLock(data));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return text;
}

void SetClipboard(const std::string& text) {
  HGLOBAL data = GlobalAlloc(GMEM_MOVEABLE, text.size() + 1);
  memcpy(GlobalLock(data), text.c_str(), text.size() + 1);
  GlobalUnlock(data);
  OpenClipboard(nullptr);
  EmptyClipboard();
  SetClipboardData(CF_TEXT, data);
  CloseClipboard();
}

// The common open or save dialog the program is showing, answered with a
// full path typed into its file-name field.
void AnswerFileDialog(const std::string& path, const std::string& step) {
  HWND dialog = nullptr;
  WaitFor(
      [&] {
        dialog = FindWindowA("#32770", nullptr);
        return dialog && IsWindowVisible(dialog);
      },
      step + " shows the common file dialog");
  HWND field = GetDlgItem(dialog, edt1);
  if (!field)
    if (HWND combo = GetDlgItem(dialog, cmb13))
      field = FindWindowExA(combo, nullptr, "Edit", nullptr);
  Check(field != nullptr, step + ": the dialog has a file-name field");
  SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
  PostMessageA(dialog, WM_COMMAND, IDOK, 0);
  WaitFor([&] { return !IsWindow(dialog); }, step + ": the dialog closes on OK");
}

// Copies the front window's whole text through Select All and Copy.
std::string CopyAll(const std::string& step) {
  SetClipboard("");
  ChooseMenuItem(kEdit, 7);  // Select All
  ChooseMenuItem(kEdit, 3);  // Copy
  std::string text;
  WaitFor(
      [&] {
        text = Clipboard();
        return !text.empty();
      },
      step + ": Copy puts the text on the clipboard");
  return text;
}

// The lowest row of the client area, above the horizontal scroll bar, on
// which the text left a dark pixel; -1 for none. The window is read once.
int LowestInkRow(HWND w) {
  SIZE size = ClientSize(w);
  int width = size.cx - 20, height = size.cy - 20;
  if (width <= 4 || height <= 0) return -1;
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HDC dc = GetDC(w), memory = CreateCompatibleDC(dc);
  HBITMAP image = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(memory, image);
  BitBlt(memory, 0, 0, width, height, dc, 0, 0, SRCCOPY);
  int lowest = -1;
  const auto* pixels = static_cast<const UINT32*>(bits);
  for (int y = height - 1; y >= 0 && lowest < 0; --y)
    for (int x = 4; x < width; ++x)
      if (((pixels[y * width + x] >> 16) & 0xFF) < 128) {
        lowest = y;
        break;
      }
  SelectObject(memory, old);
  DeleteObject(image);
  DeleteDC(memory);
  ReleaseDC(w, dc);
  return lowest;
}

HWND ClickButton(HWND dialog, const char* title) {
  HWND button = ChildWithText(dialog, title);
  Check(button != nullptr, std::string("the dialog has its ") + title + " button");
  PostMessageA(dialog, WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(button), BN_CLICKED),
               reinterpret_cast<LPARAM>(button));
  return button;
}

HWND WaitForDialogWith(const char* text, const std::string& what) {
  HWND found = nullptr;
  WaitFor(
      [&] {
        for (HWND w : LibraryWindows())
          if (ChildWithText(w, text)) found = w;
        return found != nullptr;
      },
      what);
  return found;
}

void Script() {
  std::string folder = TempFolder();
  WaitFor([] { return MainWindow() && WindowTitled("Untitled 1"); },
          "the editor opens its first window");
  HMENU bar = GetMenu(MainWindow());
  Check(GetMenuItemCount(bar) == 6, "the menu bar holds Apple, File, Edit, Font, Size and Style");
  Check(GetMenuItemCount(GetSubMenu(bar, 3)) > 0, "the Font menu lists the system's fonts");
  HWND first = WindowTitled("Untitled 1");

  Type("H");
  WaitFor([&] { return LowestInkRow(first) > 0; }, "a typed letter appears in the window");
  Type("ello there,\rthe quick brown fox\rjumps over the Lazy dog.");
  WaitFor([&] { return LowestInkRow(first) > 30; }, "typed text appears in the window");
  std::string typed = CopyAll("typing");
  Check(typed == "Hello there,\r\nthe quick brown fox\r\njumps over the Lazy dog.",
        "Select All and Copy give the typed text, returns as CR-LF: " + typed);

  std::string saved = folder + "\\fox.txt";
  ChooseMenuItem(kFile, 4);  // Save As...
  AnswerFileDialog(saved, "Save As");
  WaitFor([&] { return WindowTitled("fox.txt") != nullptr; }, "the window takes the file's name");
  WaitFor(
      [&] {
        return ReadFile(saved) == "Hello there,\rthe quick brown fox\rjumps over the Lazy dog.";
      },
      "the file on disk holds the text with the Macintosh's returns");

  ChooseMenuItem(kEdit, 9);  // Find...
  HWND find = WaitForDialogWith("Find what:", "Find... shows the Find dialog");
  HWND field = FindWindowExA(find, nullptr, "Edit", nullptr);
  Check(field != nullptr, "the Find dialog has its edit field");
  // Keys as the keyboard sends them: the key-down, whose WM_CHAR the
  // dialog's own message loop makes.
  for (char c : std::string("LAZY"))
    PostMessageA(field, WM_KEYDOWN, WPARAM(c),
                 LPARAM(1 | MapVirtualKeyA(c, MAPVK_VK_TO_VSC) << 16));
  WaitFor(
      [&] {
        char text[16] = "";
        GetWindowTextA(field, text, sizeof text);
        return std::string(text) == "lazy";
      },
      "the search text is typed into the field");
  ClickButton(find, "Find");
  WaitFor([&] { return !IsWindow(find) || !IsWindowVisible(find); }, "Find puts the dialog away");
  SetClipboard("");
  ChooseMenuItem(kEdit, 3);  // Copy
  WaitFor([] { return Clipboard() == "Lazy"; },
          "Find selects the match, ignoring case: " + Clipboard());

  // Preferences: the list of sizes, 18 Point chosen with a click; then a new
  // window, whose typed text makes closing it ask first.
  ChooseMenuItem(kEdit, 12);  // Preferences...
  HWND prefs = WaitForDialogWith("Text size for new windows:", "Preferences shows its dialog");
  HWND list = FindWindowExA(prefs, nullptr, "ListBox", nullptr);
  Check(list && SendMessageA(list, LB_GETCOUNT, 0, 0) == 6, "the size list holds the six sizes");
  Check(list && SendMessageA(list, LB_GETCURSEL, 0, 0) == 2, "12 Point is selected at first");
  RECT row{};
  SendMessageA(list, LB_GETITEMRECT, 4, reinterpret_cast<LPARAM>(&row));
  ClickClient(list, row.left + 5, (row.top + row.bottom) / 2);
  WaitFor([&] { return SendMessageA(list, LB_GETCURSEL, 0, 0) == 4; }, "a click selects 18 Point");
  ClickButton(prefs, "OK");
  WaitFor([&] { return !IsWindow(prefs) || !IsWindowVisible(prefs); }, "OK puts Preferences away");
  ChooseMenuItem(kFile, 0);  // New
  WaitFor([] { return WindowTitled("Untitled 2") != nullptr; }, "File > New opens Untitled 2");
  HWND larger = WindowTitled("Untitled 2");
  Type("H");
  WaitFor([&] { return LowestInkRow(larger) > 0; }, "a letter typed into the new window appears");
  ChooseMenuItem(kFile, 2);  // Close
  HWND closing = WaitForDialogWith("Save changes to", "closing the typed-in window asks first");
  ClickButton(closing, "Don't Save");
  WaitFor([&] { return !IsWindow(larger); }, "Don't Save closes the window");

  {
    std::ofstream out(folder + "\\notes.txt", std::ios::binary);
    out << "Notes from disk\r";
    for (int i = 2; i <= 60; ++i) out << "line " << i << "\r";
  }
  ChooseMenuItem(kFile, 1);  // Open...
  AnswerFileDialog(folder + "\\notes.txt", "Open");
  WaitFor([&] { return WindowTitled("notes.txt") != nullptr; }, "Open shows the file's window");
  HWND notes = WindowTitled("notes.txt");
  Check(gDocumentCount == 2, "two documents are open");
  Check(CopyAll("Open").rfind("Notes from disk\r\nline 2\r\n", 0) == 0,
        "the opened window holds the file's text");

  // Sixty lines are longer than the window: the vertical scroll bar counts
  // the lines below the view.
  HWND vertical = nullptr;
  for (HWND child = GetWindow(notes, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (GetWindowLongA(child, GWL_STYLE) & SBS_VERT) vertical = child;
  int low = 0, high = 0;
  if (vertical) GetScrollRange(vertical, SB_CTL, &low, &high);
  Check(vertical && high > 30 && high < 60,
        "the vertical scroll bar's range counts the lines below the view: " + std::to_string(high));
  ChooseMenuItem(kEdit, 7);  // Select All
  Type("x");
  SetClipboard("pasted from Windows\rsecond line");
  WaitFor([&] { return LowestInkRow(notes) < 30; }, "typing over the selection leaves one line");
  int oneLine = LowestInkRow(notes);
  ChooseMenuItem(kEdit, 4);  // Paste
  WaitFor([&] { return LowestInkRow(notes) > oneLine + 8; }, "Paste adds a second line");
  std::string pasted = CopyAll("Paste");
  Check(pasted == "xpasted from Windows\r\nsecond line",
        "Paste inserts the clipboard's text after the typed x: " + pasted);

  int before = LowestInkRow(notes);
  ChooseMenuItem(kEdit, 7);  // Select All
  ChooseMenuItem(kSize, 5);  // 24 Point
  WaitFor([&] { return LowestInkRow(notes) > before + 10; },
          "24 Point redraws the text taller (lowest ink row " + std::to_string(before) + ")");
  Check(ClientPixel(notes, 2, 2) == kWhite, "the window's margin stays white");

  ChooseMenuItem(kFile, 6);  // Quit
  HWND ask = WaitForDialogWith("Save changes to", "Quit asks about the changed notes.txt");
  Check(ChildWithText(ask, "notes.txt") != nullptr, "the alert names the window");
  // Don't Save lets the Quit go on: the program ends without another step.
  Finished();
  ClickButton(ask, "Don't Save");
}

const bool g_started = StartScript(Script);

}  // namespace
