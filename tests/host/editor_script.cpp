// The document editor as a user meets it. First a tour, one step at a time:
// open a file, type, select a word, style it, scroll with the scroll bar's
// arrow and page area, zoom the window out and in, find, copy, and the
// About alert; after each step the TextEdit record, the controls, USER and
// the marks and states the menus show on opening are checked, and the
// window is compared with its image in golden/ (with
// KWE_EDITOR_SHOTS=<folder>, as `make demo` runs it, each step's window is
// also saved there as a PNG). Then Save As writing the text to disk with
// the Macintosh's returns, Preferences choosing the size of new windows,
// the Save Changes alert on closing a changed window, Paste from a
// clipboard another program filled, and Quit.
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "Fonts.h"
#include "host/editor_driver.h"
#include "host/golden_image.h"
#include "png_writer.h"
#include "support/scroll_bar_aim.h"

namespace {

using namespace kwe_drive;
using kwe_test::Aim;

constexpr int kApple = 0, kFile = 1, kEdit = 2, kFont = 3, kSize = 4, kStyle = 5;
constexpr COLORREF kWhite = RGB(255, 255, 255);

std::string Selection(TEHandle te) {
  return TextOf(te).substr(size_t((*te)->selStart), size_t((*te)->selEnd - (*te)->selStart));
}

void CheckEditMenu(const std::string& wanted, const std::string& step) {
  std::string states = EditStates();
  Check(states == wanted, step + ": Undo, Cut, Copy, Paste and Clear are " + states + ", not " +
                              wanted + " (+ enabled, - grayed)");
}

// Copies the front window's whole text through Select All and Copy.
std::string CopyAll(const std::string& step) {
  PutClipboardText("");
  ChooseMenuItem(kEdit, 7);  // Select All
  ChooseMenuItem(kEdit, 3);  // Copy
  std::string text;
  WaitFor(
      [&] {
        text = ClipboardText();
        return !text.empty();
      },
      step + ": Copy puts the text on the clipboard");
  return text;
}

// The lowest row of the client area, above the horizontal scroll bar, on
// which the text left a dark pixel; -1 for none.
int LowestInkRow(HWND w) {
  SIZE size;
  std::vector<unsigned char> rgb = CaptureWindow(w, &size);
  RECT frame, client;
  GetWindowRect(w, &frame);
  GetClientRect(w, &client);
  MapWindowPoints(w, nullptr, reinterpret_cast<POINT*>(&client), 2);
  int left = client.left - frame.left, top = client.top - frame.top;
  for (int y = client.bottom - client.top - 21; y >= 0; --y)
    for (int x = 4; x < client.right - client.left - 20; ++x)
      if (rgb[(size_t(top + y) * size_t(size.cx) + size_t(left + x)) * 3] < 128) return y;
  return -1;
}

// ---- The tour ----

struct Tour {
  std::string folder;
  HWND notes = nullptr;
  RECT unzoomed{};
  HWND about = nullptr;
} g;

TEHandle NotesTE() { return DocumentOf(g.notes)->docTE; }
ControlHandle NotesBar() { return DocumentOf(g.notes)->docVScroll; }
// The vertical scroll bar's child window in USER.
HWND VerticalBar() {
  for (HWND child = GetWindow(g.notes, GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT))
    if (GetWindowLongA(child, GWL_STYLE) & SBS_VERT) return child;
  return nullptr;
}

void Click(POINT at, const std::string& step) {
  MouseTo(at);
  MouseButton(true);
  MouseButton(false);
  Settle(step);
}

// The scroll bar, in the control record and in USER, and the text scrolled
// by exactly the lines above its value.
void CheckScrolledTo(int value, const std::string& step) {
  ControlHandle bar = NotesBar();
  TEHandle te = NotesTE();
  int shown = GetScrollPos(VerticalBar(), SB_CTL);
  Check((*bar)->contrlValue == value && shown == value,
        step + ": the scroll bar's value is " + std::to_string(value) + " (record " +
            std::to_string((*bar)->contrlValue) + ", USER " + std::to_string(shown) + ")");
  int above = (*te)->viewRect.top - (*te)->destRect.top;
  int lines = value > 0 ? TEGetHeight(value, 1, te) : 0;
  Check(above == lines,
        step + ": the text is scrolled by the lines above the value: " + std::to_string(above) +
            " pixels, " + std::to_string(lines) + " wanted");
}

void OpenNotes() {
  std::ofstream out(g.folder + "\\notes.txt", std::ios::binary);
  out << "Notes from disk\r";
  for (int i = 2; i <= 60; ++i) out << "line " << i << "\r";
  out.close();
  ChooseMenuItem(kFile, 1);  // Open...
  AnswerFileDialog(g.folder + "\\notes.txt", "Open");
  WaitFor([] { return (g.notes = WindowTitled("notes.txt")) != nullptr; },
          "Open shows the file's window");
}

void CheckOpened() {
  TEHandle te = NotesTE();
  Check(gDocumentCount == 2, "two documents are open");
  Check(LibraryWindows().front() == g.notes && DocumentOf(g.notes)->docWindow.hilited,
        "the opened window is in front and highlighted");
  Check(TextOf(te) == ReadFile(g.folder + "\\notes.txt"), "the window holds the file's text");
  int low = 0, high = 0;
  GetScrollRange(VerticalBar(), SB_CTL, &low, &high);
  Check(high > 30 && high < 60 && high == (*NotesBar())->contrlMax,
        "the vertical scroll bar's range counts the lines below the view: " + std::to_string(high));
}

void TypeGreeting() { Type("Dear reader\r"); }

void CheckTyped() {
  TEHandle te = NotesTE();
  Check(TextOf(te).rfind("Dear reader\rNotes from disk\r", 0) == 0,
        "the typed line stands before the file's text");
  Check((*te)->selStart == 12 && (*te)->selEnd == 12, "the caret follows the typed line");
  Check(DocumentOf(g.notes)->docDirty, "typing marks the document changed");
  // No selection: nothing to cut, copy or clear; the editor has no Undo.
  CheckEditMenu("-----", "with the caret and nothing on the clipboard");
}

// A double click on "reader" (the second word of the first line).
void DoubleClickWord() {
  TEHandle te = NotesTE();
  POINT at{(*te)->viewRect.left + 48, (*te)->viewRect.top + 6};
  ClientToScreen(g.notes, &at);
  MouseTo(at);
  for (bool down : {true, false, true, false}) MouseButton(down);
  Settle("select");
}

void CheckSelected() {
  Check(Selection(NotesTE()) == "reader",
        "a double click selects the word: " + Selection(NotesTE()));
}

void MakeBoldAndLarger() {
  ChooseMenuItem(kStyle, 1);  // Bold
  ChooseMenuItem(kSize, 4);   // 18 Point
}

void CheckStyled() {
  TEHandle te = NotesTE();
  TextStyle word{}, after{};
  TEGetStyle((*te)->selStart, &word, nullptr, nullptr, te);
  TEGetStyle(30, &after, nullptr, nullptr, te);
  Check(word.tsFace == bold && word.tsSize == 18, "the word is bold at 18 points");
  Check(after.tsFace == normal && after.tsSize == 12, "the text after it keeps its style");
  Check(Selection(te) == "reader", "styling keeps the selection");
  // The menus mark the selection's style.
  Str255 font;
  GetFontName(word.tsFont, font);
  std::string name(reinterpret_cast<const char*>(font + 1), font[0]);
  Check(CheckedItems(kFont) == name,
        "the Font menu marks " + name + " alone: " + CheckedItems(kFont));
  Check(CheckedItems(kSize) == "18 Point",
        "the Size menu marks 18 Point alone: " + CheckedItems(kSize));
  Check(CheckedItems(kStyle) == "Bold", "the Style menu marks Bold alone: " + CheckedItems(kStyle));
  CheckEditMenu("-++-+", "with a word selected");
}

void ScrollByArrowsAndPage() {
  HWND bar = VerticalBar();
  for (int i = 0; i < 3; ++i) Click(Aim(bar, inDownButton), "scroll");
  CheckScrolledTo(3, "three clicks on the down arrow");
  Click(Aim(bar, inPageDown), "scroll");
}

// A page is the lines that fit below the top less one.
void CheckScrolled() {
  TEHandle te = NotesTE();
  int view = (*te)->viewRect.bottom - (*te)->viewRect.top, fit = 0;
  while (TEGetHeight(4 + fit, 4, te) <= view) ++fit;
  CheckScrolledTo(3 + fit - 1, "a click in the page-down area");
}

void ClickZoomBox() {
  if (IsRectEmpty(&g.unzoomed)) GetWindowRect(g.notes, &g.unzoomed);
  POINT box = FrameSpot(g.notes, HTMAXBUTTON);
  Check(box.x >= 0, "the window has a zoom box");
  SetCursorPos(box.x, box.y);
  PostMessageA(g.notes, WM_NCLBUTTONDOWN, HTMAXBUTTON, MAKELPARAM(box.x, box.y));
  PostMessageA(g.notes, WM_LBUTTONUP, 0, 0);
  Settle("zoom");
}

// The text and the scroll bars fill the window's new size.
void CheckFitsWindow(const std::string& step) {
  TEHandle te = NotesTE();
  RECT client;
  GetClientRect(g.notes, &client);
  RECT bar;
  GetWindowRect(VerticalBar(), &bar);
  MapWindowPoints(nullptr, g.notes, reinterpret_cast<POINT*>(&bar), 2);
  Check((*te)->viewRect.right == client.right - 15 - 4 &&
            (*te)->viewRect.bottom == client.bottom - 15 - 4,
        step + ": the text's view fills the window less the scroll bars");
  Check(bar.right == client.right + 1, step + ": the vertical scroll bar stands at the right edge");
  int low = 0, high = 0;
  GetScrollRange(VerticalBar(), SB_CTL, &low, &high);
  Check(high == (*NotesBar())->contrlMax, step + ": USER's range is the control's maximum");
}

void CheckZoomed() {
  RECT r;
  GetWindowRect(g.notes, &r);
  Check(r.right - r.left > g.unzoomed.right - g.unzoomed.left + 200 &&
            r.bottom - r.top > g.unzoomed.bottom - g.unzoomed.top + 100,
        "the zoom box makes the window larger");
  CheckFitsWindow("zoomed out");
}

void CheckUnzoomed() {
  RECT r;
  GetWindowRect(g.notes, &r);
  Check(EqualRect(&r, &g.unzoomed),
        "the zoom box again puts the window back: " + std::to_string(r.left) + "," +
            std::to_string(r.top) + " " + std::to_string(r.right - r.left) + "x" +
            std::to_string(r.bottom - r.top) + ", was " + std::to_string(g.unzoomed.left) + "," +
            std::to_string(g.unzoomed.top) + " " +
            std::to_string(g.unzoomed.right - g.unzoomed.left) + "x" +
            std::to_string(g.unzoomed.bottom - g.unzoomed.top));
  CheckFitsWindow("zoomed in");
}

void FindLine40() {
  ChooseMenuItem(kEdit, 9);  // Find...
  HWND find = WaitForDialogWith("Find what:", "Find... shows the Find dialog");
  HWND field = FindWindowExA(find, nullptr, "Edit", nullptr);
  Check(field != nullptr, "the Find dialog has its edit field");
  // Keys as the keyboard sends them: the key-down, whose WM_CHAR the
  // dialog's own message loop makes.
  for (char c : std::string("LINE 40"))
    PostMessageA(field, WM_KEYDOWN, WPARAM(c),
                 LPARAM(1 | MapVirtualKeyA(UINT(c), MAPVK_VK_TO_VSC) << 16));
  WaitFor(
      [&] {
        char text[16] = "";
        GetWindowTextA(field, text, sizeof text);
        return std::string(text) == "line 40";
      },
      "the search text is typed into the field");
  ClickButton(find, "Find");
  WaitFor([&] { return !IsWindow(find) || !IsWindowVisible(find); }, "Find puts the dialog away");
  Settle("find");
}

void CheckFound() {
  TEHandle te = NotesTE();
  Check(Selection(te) == "line 40", "Find selects the match, ignoring case: " + Selection(te));
  int top = (*NotesBar())->contrlValue, line = 0;
  while (line + 1 < (*te)->nLines && (*te)->lineStarts[line + 1] <= (*te)->selStart) ++line;
  int view = (*te)->viewRect.bottom - (*te)->viewRect.top;
  int below = TEGetHeight(line + 1, top + 1, te);
  Check(top <= line && below <= view, "the view scrolls to show the match: top line " +
                                          std::to_string(top) + ", match on line " +
                                          std::to_string(line) + ", " + std::to_string(below) +
                                          " pixels down a view of " + std::to_string(view));
}

void CopySelection() {
  PutClipboardText("");
  ChooseMenuItem(kEdit, 3);  // Copy
}

void CheckCopied() {
  WaitFor([] { return ClipboardText() == "line 40"; }, "Copy puts the match on the clipboard");
  CheckEditMenu("-++++", "after Copy");
}

void OpenAbout() { ChooseMenuItem(kApple, 0); }

void CheckAbout() {
  g.about = WaitForDialogWith("a TextEdit document editor", "About Editor shows its alert");
  Check(!DocumentOf(g.notes)->docWindow.hilited, "the alert takes the highlight from the window");
}

HWND Notes() { return g.notes; }
HWND About() { return g.about; }

struct Step {
  const char* name;  // of the screenshot and of the golden image
  void (*act)();     // what the user does
  void (*check)();   // what the records and USER then hold
  HWND (*shot)();    // the window the screenshot shows
};

const Step kTour[] = {
    {"open", OpenNotes, CheckOpened, Notes},
    {"type", TypeGreeting, CheckTyped, Notes},
    {"select", DoubleClickWord, CheckSelected, Notes},
    {"style", MakeBoldAndLarger, CheckStyled, Notes},
    {"scroll", ScrollByArrowsAndPage, CheckScrolled, Notes},
    {"zoom-out", ClickZoomBox, CheckZoomed, Notes},
    {"zoom-in", ClickZoomBox, CheckUnzoomed, Notes},
    {"find", FindLine40, CheckFound, Notes},
    {"copy", CopySelection, CheckCopied, Notes},
    {"about", OpenAbout, CheckAbout, About},
};

// The window as it stands, taken while the TextEdit caret is off: a shot
// between two reads of the same blink (state off, unchanged time) does not
// hold half a blink.
Image SteadyShot(HWND w) {
  DocumentPeek doc = w == g.notes ? DocumentOf(w) : nullptr;
  Image shot;
  for (int attempt = 0; attempt < 50; ++attempt) {
    TEHandle te = doc ? doc->docTE : nullptr;
    UInt32 time = te ? (*te)->caretTime : 0;
    bool off = !te || (*te)->caretState == 0;
    SIZE size;
    shot.rgb = CaptureWindow(w, &size);
    shot.width = size.cx;
    shot.height = size.cy;
    if (off && (!te || ((*te)->caretState == 0 && (*te)->caretTime == time))) break;
    Sleep(60);
  }
  return shot;
}

void ShootStep(int number, const Step& step) {
  // The pointer away from the windows: scroll bars and caption buttons
  // Windows draws lit under it.
  MouseTo(POINT{1010, 750});
  Settle(step.name);
  Image shot = SteadyShot(step.shot());
  char prefix[32];
  std::snprintf(prefix, sizeof prefix, "editor-%02d-", number);
  if (const char* folder = std::getenv("KWE_EDITOR_SHOTS")) {
    std::string path = std::string(folder) + "/" + prefix + step.name + ".png";
    Check(WritePng(path, shot.width, shot.height, shot.rgb), "saved " + path);
  }
  std::string differs = CompareWithGolden(KWE_GOLDEN_DIR, prefix + std::string(step.name), shot);
  Check(differs.empty(), std::string(step.name) + " looks as its golden image: " + differs);
}

void Script() {
  // Paste starts grayed: no program has put anything on the clipboard.
  WaitFor([] { return OpenClipboard(nullptr) != 0; }, "the clipboard opens");
  EmptyClipboard();
  CloseClipboard();
  g.folder = TempFolder("kwe_editor");
  WaitFor([] { return MainWindow() && WindowTitled("Untitled 1"); },
          "the editor opens its first window");
  HMENU bar = GetMenu(MainWindow());
  Check(GetMenuItemCount(bar) == 6, "the menu bar holds Apple, File, Edit, Font, Size and Style");
  Check(GetMenuItemCount(GetSubMenu(bar, 3)) > 0, "the Font menu lists the system's fonts");
  int number = 0;
  for (const Step& step : kTour) {
    step.act();
    Settle(step.name);
    step.check();
    ShootStep(++number, step);
  }
  ClickButton(g.about, "OK");
  WaitFor([] { return !IsWindow(g.about) || !IsWindowVisible(g.about); }, "OK puts About away");

  std::string saved = g.folder + "\\greeting.txt";
  ChooseMenuItem(kFile, 4);  // Save As...
  AnswerFileDialog(saved, "Save As");
  WaitFor([&] { return WindowTitled("greeting.txt") != nullptr; },
          "the window takes the file's name");
  WaitFor([&] { return ReadFile(saved).rfind("Dear reader\rNotes from disk\rline 2\r", 0) == 0; },
          "the file on disk holds the text with the Macintosh's returns");

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
  WaitFor([] { return WindowTitled("Untitled 3") != nullptr; }, "File > New opens Untitled 3");
  HWND larger = WindowTitled("Untitled 3");
  Type("H");
  WaitFor([&] { return LowestInkRow(larger) > 0; }, "a letter typed into the new window appears");
  Settle("new window");
  TextStyle style{};
  TEGetStyle(0, &style, nullptr, nullptr, DocumentOf(larger)->docTE);
  Check(style.tsSize == 18, "the new window's text has the size Preferences chose");
  ChooseMenuItem(kFile, 2);  // Close
  HWND closing = WaitForDialogWith("Save changes to", "closing the typed-in window asks first");
  ClickButton(closing, "Don't Save");
  WaitFor([&] { return !IsWindow(larger); }, "Don't Save closes the window");

  HWND notes = g.notes;
  ChooseMenuItem(kEdit, 7);  // Select All
  Type("x");
  PutClipboardText("pasted from Windows\rsecond line");
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
  HWND ask = WaitForDialogWith("Save changes to", "Quit asks about the changed greeting.txt");
  Check(ChildWithText(ask, "greeting.txt") != nullptr, "the alert names the window");
  // Don't Save lets the Quit go on: the program ends without another step.
  Finished();
  ClickButton(ask, "Don't Save");
}

const bool g_started = StartScript(Script);

}  // namespace
