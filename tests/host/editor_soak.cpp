// The document editor under a long run of random user actions: typing,
// menu commands, clicks in windows and their scroll bars, title-bar drags,
// close and zoom boxes, files opened again, and whatever dialog or alert
// that brings up answered with one of its buttons (a window's system menu,
// which a click on its icon leaves open, closed with Escape). The run is
// replayable: KWE_SOAK_SEED and KWE_SOAK_ACTIONS (default 27 and 400;
// `make soak` runs 10,000) choose it, and every failure names the seed and
// the action.
// After a warm-up that opens the most windows the editor opens, chooses
// every menu command once and closes every window (Windows' first-use
// caches, such as each common dialog's, are made then), USER's windows and
// GDI's objects are counted; after the run and closing every window again
// the windows, fonts and brushes are back to that count, and all GDI
// objects but Wine's window-DC cache within a few of it. An idle program
// must sleep: its thread's CPU time over a second of WaitNextEvent stays
// under 60 ms (Wine's own work on the thread takes some tens; a program
// that polls takes most of the second), with no window and with a blinking
// caret.
// KWE_SOAK_TRACE=1 prints each action and the GDI objects after it.
#include <winternl.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <random>
#include <set>

#include "host/editor_driver.h"

namespace {

using namespace kwe_drive;

constexpr int kApple = 0, kFile = 1, kEdit = 2, kFont = 3, kSize = 4, kStyle = 5;
// Wine's window-DC cache keeps, for each window DC ever in use at once, a
// device context that belongs to no window once released, with a bitmap, a
// region and one more object of its own; dialogs over the most documents
// can pass the warm-up's most, so the cache grows now and then all through
// a run (by 7 entries in a 400-action run, and to some 20 over the warm-up
// in 10,000 actions). What is left without the cache must come back to the
// warm-up's count, within this many objects.
constexpr int kObjectsPerCachedDC = 4;
constexpr int kGdiSlack = 6;

struct Soak {
  unsigned seed = 27;
  int actions = 400;
  int step = 0;
  std::string what;  // the action under way, for the failure messages
  std::mt19937 random;
  std::string folder;
} g;

int Pick(int n) { return int(g.random() % unsigned(n)); }

std::string Where() {
  return "seed " + std::to_string(g.seed) + ", action " + std::to_string(g.step) + " (" + g.what +
         ")";
}

// GDI objects of this process: all of them, the fonts and brushes the
// library makes for its ports, and the window DCs Wine keeps in its cache.
// Windows counts them for GetGuiResources; Wine answers 0 there, but keeps
// Windows' table of GDI handles that the process block points to, whose
// used entries have a type (a handle is the entry's index with its unique
// word above).
struct GdiCount {
  int all = 0, fonts = 0, brushes = 0, cachedDCs = 0;
  std::string detail;                     // the total and the counts of the commonest types
  std::multiset<std::string> brushKinds;  // each brush's style and colour
  int WithoutCache() const { return all - kObjectsPerCachedDC * cachedDCs; }
};

GdiCount GdiObjects() {
  GdiCount count;
  struct Entry {
    UINT64 object;
    ULONG owner;
    USHORT unique;
    UCHAR type, flags;
    UINT64 user;
  };
  using Query = NTSTATUS(WINAPI*)(HANDLE, PROCESSINFOCLASS, PVOID, ULONG, PULONG);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll.dll"), "NtQueryInformationProcess")));
  PROCESS_BASIC_INFORMATION basic{};
  if (!query || query(GetCurrentProcess(), ProcessBasicInformation, &basic, sizeof basic, nullptr))
    return count;
  const size_t tableOffset = sizeof(void*) == 8 ? 0xF8 : 0x94;
  auto* peb = reinterpret_cast<const unsigned char*>(basic.PebBaseAddress);
  const auto* table = *reinterpret_cast<const Entry* const*>(peb + tableOffset);
  std::map<int, int> types;
  for (int i = 0; table && i < 0x10000; ++i) {
    if (!table[i].type) continue;
    ++count.all, ++types[table[i].type];
    auto dc = reinterpret_cast<HDC>(UINT_PTR(unsigned(i) | unsigned(table[i].unique) << 16));
    if (table[i].type == 1 && GetObjectType(dc) == OBJ_DC && !WindowFromDC(dc)) ++count.cachedDCs;
    LOGBRUSH brush{};
    if (table[i].type == 0x10 && GetObjectA(dc, sizeof brush, &brush))
      count.brushKinds.insert("style " + std::to_string(brush.lbStyle) + " colour " +
                              std::to_string(brush.lbColor) + " hatch " +
                              std::to_string(brush.lbHatch));
  }
  count.fonts = types[0x0A];
  count.brushes = types[0x10];
  if (DWORD n = GetGuiResources(GetCurrentProcess(), GR_GDIOBJECTS)) count.all = int(n);
  char detail[200];
  std::snprintf(detail, sizeof detail,
                "%d (%d device contexts, %d of them cached window DCs, %d regions, %d bitmaps, "
                "%d fonts, %d brushes, %d pens)",
                count.all, types[1], count.cachedDCs, types[4], types[5], count.fonts,
                count.brushes, types[0x30]);
  count.detail = detail;
  if (std::getenv("KWE_SOAK_TRACE")) std::printf("  gdi: %s\n", detail);
  return count;
}

// The program's thread's CPU time, in milliseconds.
double ProgramCpuMs() {
  HANDLE thread =
      OpenThread(THREAD_QUERY_INFORMATION, FALSE, GetWindowThreadProcessId(MainWindow(), nullptr));
  FILETIME created, ended, kernel, user;
  GetThreadTimes(thread, &created, &ended, &kernel, &user);
  CloseHandle(thread);
  auto ms = [](FILETIME t) {
    return double(UINT64(t.dwHighDateTime) << 32 | t.dwLowDateTime) / 1e4;
  };
  return ms(kernel) + ms(user);
}

void PostFrameClick(HWND w, LRESULT hit) {
  POINT spot = FrameSpot(w, hit);
  if (spot.x < 0) return;
  SetCursorPos(spot.x, spot.y);
  PostMessageA(w, WM_NCLBUTTONDOWN, WPARAM(hit), MAKELPARAM(spot.x, spot.y));
  PostMessageA(w, WM_LBUTTONUP, 0, 0);
}

POINT RandomPointIn(HWND w) {
  RECT r;
  GetWindowRect(w, &r);
  return POINT{r.left + 4 + Pick(std::max(1, int(r.right - r.left) - 8)),
               r.top + 4 + Pick(std::max(1, int(r.bottom - r.top) - 8))};
}

// Whether the program's thread is in a menu's loop: a click on a window's
// system-menu icon opens that menu, and Windows keeps it open after the
// button comes up, until the next click or Escape.
bool MenuIsOpen() { return ProgramThreadInfo().flags & GUI_INMENUMODE; }

// Whether the program's thread is in one of Windows' loops that wait for a
// key: an open menu, or a move or size begun from a system menu's Move or
// Size item, which waits for arrow keys and Return or Escape and takes
// every message meanwhile. The loop's message filter says so even when
// USER shows no menu or move mode for the thread.
bool HeldInWindowsLoop() {
  const int kMoveLoop = 3, kSizeLoop = 4;  // MSGF_MOVE, MSGF_SIZE: not in MinGW's winuser.h
  int loop = LoopTakingInput();
  return ProgramThreadInfo().flags & (GUI_INMENUMODE | GUI_INMOVESIZE) || loop == MSGF_MENU ||
         loop == kMoveLoop || loop == kSizeLoop;
}

// Posted to the program's queue, where Windows' loops read their keys:
// the keyboard's input goes to the foreground window, and once in thousands
// of actions the program had none, so a menu opened by a click on the menu
// bar never saw the Escape that SendInput made.
void PressEscape() {
  PostMessageA(MainWindow(), WM_KEYDOWN, VK_ESCAPE, 0x00010001);
  PostMessageA(MainWindow(), WM_KEYUP, VK_ESCAPE, LPARAM(0xC0010001));
}

// A dialog or alert, answered as a user might: one of its buttons, and
// sometimes the common file dialog answered with a file to open; an open
// menu, or a move or size waiting for keys, is ended with Escape.
bool AnswerWhatIsUp() {
  if (HeldInWindowsLoop()) {
    PressEscape();
    return true;
  }
  if (HWND common = FileDialog()) {
    HWND field = FileNameField(common);
    char title[64] = "";
    GetWindowTextA(common, title, sizeof title);
    bool open = std::string(title).find("Open") != std::string::npos;
    if (open && field && Pick(2)) {
      std::string path = g.folder + "\\doc" + std::to_string(Pick(3)) + ".txt";
      SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
      PostMessageA(common, WM_COMMAND, IDOK, 0);
    } else {
      PostMessageA(common, WM_COMMAND, IDCANCEL, 0);
    }
    return true;
  }
  for (HWND w : LibraryWindows()) {
    std::vector<HWND> buttons;
    for (const char* name : {"OK", "Cancel", "Don't Save", "Find"})
      if (HWND b = ChildWithText(w, name)) buttons.push_back(b);
    if (buttons.empty()) continue;
    if (HWND field = FindWindowExA(w, nullptr, "Edit", nullptr); field && Pick(2))
      SendMessageA(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>("line"));
    PressButton(w, buttons[size_t(Pick(int(buttons.size())))]);
    return true;
  }
  return false;
}

void SettleAndAnswer() {
  for (int round = 0; round < 20; ++round) {
    Settle(Where());
    if (!AnswerWhatIsUp()) return;
  }
  std::string up;
  for (HWND w : LibraryWindows())
    if (ChildWithText(w, "OK") || ChildWithText(w, "Cancel"))
      for (HWND item = GetWindow(w, GW_CHILD); item; item = GetWindow(item, GW_HWNDNEXT))
        up += " [" + TextOf(item) + "]";
  Check(false, Where() + ": dialogs keep coming:" + up +
                   (HeldInWindowsLoop() ? " and a Windows loop" : ""));
}

const int kMenuItems[][2] = {{kApple, 0}, {kFile, 0},  {kFile, 1},  {kFile, 2},  {kFile, 3},
                             {kFile, 4},  {kEdit, 0},  {kEdit, 2},  {kEdit, 3},  {kEdit, 4},
                             {kEdit, 5},  {kEdit, 7},  {kEdit, 9},  {kEdit, 10}, {kEdit, 12},
                             {kFont, 0},  {kSize, -1}, {kStyle, -1}};

void RandomAction() {
  if (std::getenv("KWE_SOAK_TRACE")) std::printf("action %d\n", g.step), std::fflush(stdout);
  std::vector<HWND> documents = Documents();
  HWND target = documents.empty() ? nullptr : documents[size_t(Pick(int(documents.size())))];
  switch (int kind = Pick(10); target ? kind : kind % 3) {
    case 0: {
      std::string text;
      for (int n = 1 + Pick(8); n > 0; --n)
        text += Pick(8) == 0 ? '\r' : Pick(10) == 0 ? '\b' : char(' ' + Pick(95));
      g.what = "type " + std::to_string(text.size()) + " characters";
      Type(text);
      break;
    }
    case 1:
    case 2: {
      const int* item = kMenuItems[Pick(int(std::size(kMenuItems)))];
      int position = item[1] >= 0 ? item[1] : Pick(6);
      if (item[0] == kFont)
        position = Pick(GetMenuItemCount(GetSubMenu(GetMenu(MainWindow()), kFont)));
      g.what = "menu " + std::to_string(item[0]) + " item " + std::to_string(position);
      ChooseMenuItem(item[0], position);
      break;
    }
    case 3:
    case 4:
    case 5: {
      POINT at = RandomPointIn(target);
      HWND under = WindowFromPoint(at);
      LRESULT hit = SendMessageA(under, WM_NCHITTEST, 0, MAKELPARAM(at.x, at.y));
      g.what = "click at " + std::to_string(at.x) + "," + std::to_string(at.y) + " (hit test " +
               std::to_string(hit) + ")";
      MouseTo(at);
      MouseButton(true);
      if (Pick(3) == 0) MouseTo(RandomPointIn(target));  // a drag: a selection, a thumb
      MouseButton(false);
      break;
    }
    case 6: {
      // Only where the title bar shows: a press on another window there
      // goes into that window's own loop (TEClick's, a scroll bar's), which
      // holds the program until the button comes up, while Drag waits for
      // the program between press and release.
      POINT grab = FrameSpot(target, HTCAPTION);
      if (grab.x < 0 || WindowFromPoint(grab) != target) return;
      POINT to{grab.x + Pick(121) - 60, grab.y + Pick(81) - 40};
      g.what = "drag the title bar to " + std::to_string(to.x) + "," + std::to_string(to.y);
      Drag(grab, to, Where());
      break;
    }
    case 7:
      g.what = "close box";
      PostFrameClick(target, HTCLOSE);
      break;
    case 8:
      g.what = "zoom box";
      PostFrameClick(target, HTMAXBUTTON);
      break;
    default:
      g.what = "open a file";
      ChooseMenuItem(kFile, 1);
      break;
  }
  if (std::getenv("KWE_SOAK_TRACE")) std::printf("  %s\n", g.what.c_str()), std::fflush(stdout);
  SettleAndAnswer();
  if (std::getenv("KWE_SOAK_TRACE")) GdiObjects();
  Check(IsWindow(MainWindow()), Where() + ": the program still runs");
}

// The menu bar as USER holds it: each title and the File menu's items with
// their states, for a run whose menu commands stop doing what they say.
void DescribeMenuBar() {
  HMENU bar = GetMenu(MainWindow());
  std::printf("menu bar:");
  for (int i = 0; i < GetMenuItemCount(bar); ++i) std::printf(" [%s]", MenuText(bar, i).c_str());
  std::printf("\nFile menu:");
  HMENU file = GetSubMenu(bar, kFile);
  for (int i = 0; i < GetMenuItemCount(file); ++i)
    std::printf(" [%s %u%s]", MenuText(file, i).c_str(), GetMenuItemID(file, i),
                GetMenuState(file, UINT(i), MF_BYPOSITION) & MF_GRAYED ? " grey" : "");
  std::printf("\n");
  std::fflush(stdout);
}

void CloseEverything() {
  g.what = "close every window";
  for (int round = 0; round < 40 && !Documents().empty(); ++round) {
    ChooseMenuItem(kFile, 2);  // Close
    Settle(Where());
    for (HWND w : LibraryWindows())
      if (HWND b = ChildWithText(w, "Don't Save")) PressButton(w, b);
    SettleAndAnswer();
  }
  Check(Documents().empty() && gDocumentCount == 0, Where() + ": every window closes");
  if (!Documents().empty()) DescribeMenuBar();
}

void CheckIdle(const std::string& state) {
  Settle(state);
  Sleep(500);  // what the last input set going (a caption redrawn) ends
  double before = ProgramCpuMs();
  Sleep(1000);
  double used = ProgramCpuMs() - before;
  std::printf("soak: idle %s: %d ms of CPU in a second\n", state.c_str(), int(used));
  std::fflush(stdout);
  Check(used < 60,
        state + ": the idle program used " + std::to_string(int(used)) + " ms of CPU in a second");
}

void Script() {
  if (const char* seed = std::getenv("KWE_SOAK_SEED"))
    g.seed = unsigned(std::strtoul(seed, nullptr, 10));
  if (const char* n = std::getenv("KWE_SOAK_ACTIONS")) g.actions = std::atoi(n);
  std::printf("soak: seed %u, %d actions (KWE_SOAK_SEED, KWE_SOAK_ACTIONS)\n", g.seed, g.actions);
  std::fflush(stdout);
  g.random.seed(g.seed);
  g.folder = TempFolder("kwe_soak");
  for (int i = 0; i < 3; ++i) {
    std::ofstream out(g.folder + "\\doc" + std::to_string(i) + ".txt", std::ios::binary);
    for (int line = 0; line < 20 * (i + 1); ++line)
      out << "line " << line << " of doc " << i << "\r";
  }
  WaitFor([] { return MainWindow() && !Documents().empty(); }, "the editor opens its first window");
  // The common dialogs list the current folder, and Windows caches an icon
  // for each kind of file they show: the folder of the documents shows the
  // same three all through.
  SetCurrentDirectoryA(g.folder.c_str());

  // The warm-up: as many documents as the editor opens, then every menu
  // command once over them, answered as the random run answers; then every
  // window closed, and the counts taken. (Wine keeps the device contexts of
  // its window-DC cache, which grows to the most windows ever open at once.)
  for (int i = 0; i < kMaxDocuments; ++i) {
    g.what = "warm-up: a new window";
    ChooseMenuItem(kFile, 0);
    SettleAndAnswer();
  }
  for (const auto& item : kMenuItems) {
    g.what = "warm-up: menu " + std::to_string(item[0]) + " item " + std::to_string(item[1]);
    ChooseMenuItem(item[0], std::max(item[1], 0));
    SettleAndAnswer();
  }
  // A window's system menu, opened with a click on its icon and closed
  // with Escape: Wine makes its menus' font and brushes for the first menu
  // it shows, and keeps them.
  g.what = "warm-up: a window's system menu";
  POINT icon = FrameSpot(Documents().front(), HTSYSMENU);
  Check(icon.x >= 0, Where() + ": the window shows its system-menu icon");
  MouseTo(icon);
  MouseButton(true);
  MouseButton(false);
  WaitFor(MenuIsOpen, Where() + ": the menu opens");
  SettleAndAnswer();
  // Wine makes a system colour's brush the first time anything in the
  // process asks for it (a dialog's control colours, a list's selection)
  // and keeps it; a rare action that first needs one must not read as a
  // leak, so every one is made here.
  for (int colour = 0; colour <= COLOR_MENUBAR; ++colour) GetSysColorBrush(colour);
  CloseEverything();
  int windows = CountProcessWindows();
  GdiCount gdi = GdiObjects();
  for (g.step = 1; g.step <= g.actions; ++g.step) RandomAction();
  CloseEverything();
  g.what = "after the run";
  int windowsNow = CountProcessWindows();
  GdiCount gdiNow = GdiObjects();
  Check(windowsNow == windows, Where() + ": USER holds as many windows as after the warm-up: " +
                                   std::to_string(windowsNow) + ", then " +
                                   std::to_string(windows));
  // Which brushes are new, for a run that ends with more: their style and
  // colour point at the code that made them.
  for (auto kind = gdiNow.brushKinds.begin(); kind != gdiNow.brushKinds.end();
       kind = gdiNow.brushKinds.upper_bound(*kind))
    if (gdiNow.brushKinds.count(*kind) > gdi.brushKinds.count(*kind))
      std::printf("soak: %d brushes of %s after the run, %d after the warm-up\n",
                  int(gdiNow.brushKinds.count(*kind)), kind->c_str(),
                  int(gdi.brushKinds.count(*kind)));
  Check(gdiNow.fonts == gdi.fonts && gdiNow.brushes == gdi.brushes,
        Where() + ": the fonts and brushes of the closed ports are gone: " +
            std::to_string(gdiNow.fonts) + " fonts and " + std::to_string(gdiNow.brushes) +
            " brushes, then " + std::to_string(gdi.fonts) + " and " + std::to_string(gdi.brushes));
  // All GDI objects but Wine's window-DC cache (see kObjectsPerCachedDC).
  std::printf("soak: GDI objects after the warm-up %s, after the run %s\n", gdi.detail.c_str(),
              gdiNow.detail.c_str());
  Check(gdiNow.WithoutCache() <= gdi.WithoutCache() + kGdiSlack,
        Where() + ": without Wine's window-DC cache GDI holds what it held after the warm-up: " +
            std::to_string(gdiNow.WithoutCache()) + ", then " + std::to_string(gdi.WithoutCache()));
  CheckIdle("with no window");
  ChooseMenuItem(kFile, 0);  // New
  CheckIdle("with a window and its blinking caret");
  std::string quit = MenuText(GetSubMenu(GetMenu(MainWindow()), kFile), 6);
  Check(quit.rfind("&Quit\t", 0) == 0, Where() + ": the File menu's seventh item is Quit: " + quit);
  Finished();
  ChooseMenuItem(kFile, 6);  // Quit: the new window is unchanged
  // The process ends with the program; a program still running is shown.
  WaitFor([] { return false; }, "the program ends after Quit", 30000);
}

const bool g_started = StartScript(Script);

}  // namespace
