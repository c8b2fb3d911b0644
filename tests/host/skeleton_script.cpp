// The application skeleton as a user meets it: the menu bar from its 'MBAR',
// a document window that draws itself, File > New staggering a second one, a
// click leaving its mark, the zoom box, the close box, the About alert
// answered with its OK button, and File > Quit ending the program.
#include "host/program_driver.h"

extern "C" {
extern unsigned char gHasWaitNextEvent;
extern short gDocumentCount;
}

namespace {

using namespace kwe_drive;

constexpr COLORREF kBlack = RGB(0, 0, 0);
constexpr COLORREF kWhite = RGB(255, 255, 255);

HWND NthDocument(size_t n) {
  std::vector<HWND> windows = LibraryWindows();
  for (HWND w : windows)
    if (TextOf(w) == "Untitled " + std::to_string(n)) return w;
  return nullptr;
}

// The document's drawing: a frame 10 pixels inside the window and, 20
// further in, an oval filled with the gray pattern (black and white pixels
// side by side at its centre).
void CheckDocumentDrawn(HWND w, const std::string& name) {
  SIZE size = ClientSize(w);
  WaitFor([&] { return ClientPixel(w, 10, size.cy / 2) == kBlack; },
          name + "'s frame is drawn on its update event");
  Check(ClientPixel(w, 5, size.cy / 2) == kWhite, name + " is erased outside its frame");
  int x = size.cx / 2, y = size.cy / 2, black = 0, white = 0;
  for (int dy = 0; dy < 4; ++dy)
    for (int dx = 0; dx < 4; ++dx) {
      COLORREF c = ClientPixel(w, x + dx, y + dy);
      black += c == kBlack;
      white += c == kWhite;
    }
  Check(black == 8 && white == 8,
        name + "'s oval shows the gray pattern (" + std::to_string(black) + " black of 16)");
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
  Check(gDocumentCount == 1, "one document is left");

  ChooseMenuItem(0, 0);  // About Skeleton...
  HWND alert = nullptr;
  WaitFor(
      [&] {
        for (HWND w : LibraryWindows())
          if (ChildWithText(w, "Skeleton: a Macintosh")) alert = w;
        return alert != nullptr;
      },
      "About Skeleton shows the alert with its text");
  HWND ok = ChildWithText(alert, "OK");
  Check(ok != nullptr, "the alert has its OK button");
  PostMessageA(alert, WM_COMMAND, MAKEWPARAM(1, BN_CLICKED), reinterpret_cast<LPARAM>(ok));
  WaitFor([&] { return !IsWindow(alert) || !IsWindowVisible(alert); }, "OK puts the alert away");

  Finished();
  ChooseMenuItem(1, 3);  // File > Quit
}

const bool g_started = StartScript(Script);

}  // namespace
