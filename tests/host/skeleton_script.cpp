// The application skeleton as a user meets it: the menu bar from its 'MBAR',
// a document window that draws itself, File > New staggering a second one, a
// click leaving its mark, the zoom box, the close box, Copy and Paste through
// the Windows clipboard, the About alert answered with its OK button, and
// File > Quit ending the program. The shell's description of the program is
// this file's, with Windows' editing keys as accelerators.
#include <cstring>

#include "KWEHost.h"
#include "host/program_driver.h"

extern "C" {
extern unsigned char gHasWaitNextEvent;
extern short gDocumentCount;
extern long gCopiedPictureSize;
extern long gPastedPictureSize;
}

// Ctrl+Insert copies and Shift+Insert pastes (Edit is the second menu after
// the Apple menu),
// F1 chooses the shell's About item (command 0).
const ACCEL kAccelerators[] = {{FVIRTKEY | FCONTROL, VK_INSERT, 0x203},
                               {FVIRTKEY | FSHIFT, VK_INSERT, 0x204},
                               {FVIRTKEY, VK_F1, 0}};
const KWEApplication KWEHostApplication = {"Skeleton", 0,   nullptr, kAccelerators,
                                           3,          800, 600,     nullptr};

namespace {

using namespace kwe_drive;
using Pixel = std::function<COLORREF(int x, int y)>;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

HWND NthDocument(size_t n) { return WindowTitled("Untitled " + std::to_string(n)); }

// The document's drawing: a frame 10 pixels inside the window and, 20
// further in, an oval filled with the gray pattern (black and white pixels
// side by side at its centre).
// exact: the gray pattern pixel for pixel; otherwise a pattern of black and
// white (Wine's metafile driver records the 8-by-8 pattern brush with every
// other row black).
void CheckDrawing(const Pixel& pixel, SIZE size, const std::string& name, bool exact = true) {
  Check(pixel(5, size.cy / 2) == kWhite, name + " is erased outside its frame");
  int x = size.cx / 2, y = size.cy / 2, black = 0, white = 0;
  for (int dy = 0; dy < 4; ++dy)
    for (int dx = 0; dx < 4; ++dx) {
      COLORREF c = pixel(x + dx, y + dy);
      black += c == kBlack;
      white += c == kWhite;
    }
  Check(exact ? black == 8 && white == 8 : black >= 8 && white >= 4 && black + white == 16,
        name + "'s oval shows the gray pattern (" + std::to_string(black) + " black of 16)");
}

void CheckDocumentDrawn(HWND w, const std::string& name) {
  SIZE size = ClientSize(w);
  WaitFor([&] { return ClientPixel(w, 10, size.cy / 2) == kBlack; },
          name + "'s frame is drawn on its update event");
  CheckDrawing([w](int x, int y) { return ClientPixel(w, x, y); }, size, name);
}

// The keys as the keyboard makes them, to the program's foreground window.
void Press(WORD modifier, WORD key) {
  SetForegroundWindow(MainWindow());
  std::vector<INPUT> strokes;
  for (WORD k : {modifier, key, key, modifier}) {
    if (!k) continue;
    INPUT in{};
    in.type = INPUT_KEYBOARD;
    in.ki.wVk = k;
    in.ki.dwFlags = strokes.size() >= (modifier ? 2u : 1u) ? KEYEVENTF_KEYUP : 0;
    strokes.push_back(in);
  }
  SendInput(UINT(strokes.size()), strokes.data(), sizeof(INPUT));
}

// The clipboard's text beside another program's picture, which is no
// 'PICT' of ours.
void PutTextAndPicture(const char* text) {
  WaitFor([] { return OpenClipboard(nullptr) != 0; }, "the clipboard opens");
  EmptyClipboard();
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, std::strlen(text) + 1);
  std::strcpy(static_cast<char*>(GlobalLock(memory)), text);
  GlobalUnlock(memory);
  SetClipboardData(CF_TEXT, memory);
  HDC metafile = CreateEnhMetaFileA(nullptr, nullptr, nullptr, nullptr);
  Rectangle(metafile, 0, 0, 40, 30);
  SetClipboardData(CF_ENHMETAFILE, CloseEnhMetaFile(metafile));
  CloseClipboard();
}

void CheckClipboardPicture(SIZE size, const std::string& name) {
  if (!OpenClipboard(nullptr)) return Check(false, "the clipboard opens for the picture");
  auto metafile = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
  Check(metafile != nullptr, name + " is on the clipboard as an enhanced metafile");
  HDC dc = CreateCompatibleDC(nullptr);
  BITMAPINFO info{};
  info.bmiHeader = {sizeof info.bmiHeader, size.cx, -size.cy, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  void* bits = nullptr;
  HBITMAP bitmap = CreateDIBSection(dc, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ old = SelectObject(dc, bitmap);
  RECT all{0, 0, size.cx, size.cy};
  FillRect(dc, &all, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
  if (metafile) PlayEnhMetaFile(dc, metafile, &all);  // its frame is the document's size
  CloseClipboard();
  GdiFlush();
  auto pixel = [&](int x, int y) {
    UInt32 v = static_cast<const UInt32*>(bits)[y * size.cx + x];
    return RGB(v >> 16 & 0xFF, v >> 8 & 0xFF, v & 0xFF);
  };
  Check(pixel(10, size.cy / 2) == kBlack, name + "'s frame is in the metafile");
  CheckDrawing(pixel, size, name + " on the clipboard", false);
  SelectObject(dc, old);
  DeleteObject(bitmap);
  DeleteDC(dc);
}

// Copy and Paste by Windows' keys and by the Macintosh command keys, the
// clipboard read and written by this thread as another program would.
void CheckClipboard(HWND document) {
  struct Case {
    const char* what;
    WORD modifier, key;
    const char* put;     // placed on the clipboard first; null: nothing
    const char* title;   // the document's title after a paste; null: a copy
    long pastedPicture;  // gPastedPictureSize after a paste; 1: the last copy's size
  } cases[] = {
      {"Ctrl+Insert copies", VK_CONTROL, VK_INSERT, nullptr, nullptr, 0},
      {"Shift+Insert pastes another program's text, not its picture", VK_SHIFT, VK_INSERT,
       "Pasted\r\nname", "Pasted", -102},
      {"Ctrl+C copies", VK_CONTROL, 'C', nullptr, nullptr, 0},
      {"Ctrl+V pastes text and picture", VK_CONTROL, 'V', nullptr, "Pasted", 1},
  };
  long copied = 0;
  for (const Case& c : cases) {
    std::string what = c.what, title = TextOf(document);
    if (c.put) PutTextAndPicture(c.put);
    gPastedPictureSize = gCopiedPictureSize = 0;
    Press(c.modifier, c.key);
    if (!c.title) {
      WaitFor([] { return gCopiedPictureSize > 0; }, what + ": a picture is put");
      copied = gCopiedPictureSize;
      WaitFor([&] { return ClipboardText() == title + "\r\ndrawn by Skeleton \x95"; },
              what + ": the title and a line, CR LF and ANSI, are on the clipboard");
      CheckClipboardPicture(ClientSize(document), what);
      continue;
    }
    WaitFor([] { return gPastedPictureSize != 0; }, what + ": Paste ran");
    WaitFor([&] { return TextOf(document) == c.title; }, what + ": the document is renamed");
    long expected = c.pastedPicture == 1 ? copied : c.pastedPicture;
    Check(gPastedPictureSize == expected,
          what + ": the scrap's picture is " + std::to_string(gPastedPictureSize));
  }
}

void CheckMenuBar() {
  HMENU bar = GetMenu(MainWindow());
  Check(GetMenuItemCount(bar) == 3, "the menu bar holds the three menus of 'MBAR' 128");
  Check(MenuText(bar, 0) == "Skeleton", "the shell's own menu comes first: " + MenuText(bar, 0));
  Check(MenuText(bar, 1) == "&File" && MenuText(bar, 2) == "&Edit", "File and Edit follow it");
  Check(MenuText(GetSubMenu(bar, 0), 0) == "&About Skeleton...",
        "the Apple menu's first item takes the shell's item: " + MenuText(GetSubMenu(bar, 0), 0));
  HMENU file = GetSubMenu(bar, 1);
  const char* items[] = {"&New\tCtrl+N", "&Close\tCtrl+W", "", "&Quit\tCtrl+Q"};
  for (int i = 0; i < 4; ++i)
    Check(MenuText(file, i) == items[i],
          "File item " + std::to_string(i + 1) + " reads " + items[i] + ": " + MenuText(file, i));
}

void Script() {
  WaitFor([] { return MainWindow() && IsWindowVisible(MainWindow()) && NthDocument(1); },
          "the main window and the first document are shown");
  Check(TextOf(MainWindow()) == "Skeleton", "the main window has the description's title");
  Check(gHasWaitNextEvent, "the trap test finds WaitNextEvent implemented");
  CheckMenuBar();
  HWND first = NthDocument(1);
  CheckDocumentDrawn(first, "Untitled 1");

  ChooseMenuItem(1, 0);  // File > New
  WaitFor([] { return NthDocument(2) != nullptr; }, "File > New opens Untitled 2");
  HWND second = NthDocument(2);
  RECT a, b;
  GetWindowRect(first, &a);
  GetWindowRect(second, &b);
  Check(b.left - a.left == 20 && b.top - a.top == 20, "the second window is staggered by 20");
  CheckDocumentDrawn(second, "Untitled 2");

  ClickClient(second, 60, 70);
  WaitFor(
      [&] {
        return ClientPixel(second, 53, 63) == kBlack && ClientPixel(second, 66, 76) == kBlack;
      },
      "a click in the front window paints its 16-pixel mark there");

  SIZE before = ClientSize(second);
  PostMessageA(second, WM_SYSCOMMAND, SC_MAXIMIZE, 0);
  WaitFor([&] { return ClientSize(second).cx > before.cx && ClientSize(second).cy > before.cy; },
          "the zoom box zooms the window out");
  SIZE zoomed = ClientSize(second);
  WaitFor([&] { return ClientPixel(second, zoomed.cx - 11, zoomed.cy / 2) == kBlack; },
          "the zoomed window draws its frame at its new size");

  PostMessageA(second, WM_SYSCOMMAND, SC_CLOSE, 0);
  WaitFor([&] { return !IsWindow(second); }, "the close box disposes of the window");
  WaitFor([] { return gDocumentCount == 1; }, "one document is left");
  CheckClipboard(first);

  ChooseMenuItem(0, 0);  // About Skeleton...
  HWND alert =
      WaitForDialogWith("Skeleton: a Macintosh", "About Skeleton shows the alert with its text");
  ClickButton(alert, "OK");
  WaitFor([&] { return !IsWindow(alert) || !IsWindowVisible(alert); }, "OK puts the alert away");

  Finished();
  ChooseMenuItem(1, 3);  // File > Quit
}

const bool g_started = StartScript(Script);

}  // namespace
