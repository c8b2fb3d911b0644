// Palettes of real windows: the palette long and grafVars SetPalette fills,
// the Windows palette ActivatePalette selects into the window's DC, entry
// animation, the palette messages the host forwards and what USER holds
// after them; GetColor answered through the common colour dialog.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "KWEPalettes.h"
#include "KWEPorts.h"
#include "KWEWindows.h"
#include "MacWindows.h"
#include "support/test_host.h"

namespace {

using namespace kwe_test;

class WindowPalettes : public SessionTest {
 protected:
  void SetUp() override {
    SessionTest::SetUp();
    ShowWindow(mainWindow, SW_SHOW);
    GrafPtr screen = nullptr;
    InitGraf(&screen);
    InitWindows();
    Rect bounds{60, 60, 160, 220};
    window = NewCWindow(nullptr, &bounds, reinterpret_cast<ConstStr255Param>("\x03Pal"), true,
                        documentProc, reinterpret_cast<WindowPtr>(intptr_t{-1}), false, 0);
    ASSERT_NE(window, nullptr);
    hwnd = KWE_GethWnd(window);
    SetPort(window);
  }
  bool Invalid() {
    RECT r{};
    return GetUpdateRect(hwnd, &r, FALSE) && r.right > r.left;
  }
  PALETTEENTRY Entry(HPALETTE h, int i) {
    PALETTEENTRY e{};
    GetPaletteEntries(h, UINT(i), 1, &e);
    return e;
  }

  WindowPtr window = nullptr;
  HWND hwnd = nullptr;
};

TEST_F(WindowPalettes, AWindowsPaletteIsKeptSelectedAnimatedAndReleased) {
  CTabHandle table = GetCTable(4);
  PaletteHandle pal = NewPalette(16, table, pmCourteous, 0);
  SetEntryUsage(pal, 2, pmAnimated, -1);
  SetPalette(window, pal, true);
  EXPECT_EQ(GetWindowLongPtrA(hwnd, sizeof(LONG_PTR)), reinterpret_cast<LONG_PTR>(pal));
  auto* vars = reinterpret_cast<GrafVars*>(*reinterpret_cast<CGrafPtr>(window)->grafVars);
  EXPECT_EQ(vars->pmFgColor, reinterpret_cast<Handle>(pal));
  EXPECT_EQ(UInt16(vars->pmFlags), 0xE000);
  EXPECT_EQ(GetPalette(window), pal);

  HPALETTE hpal = nullptr;
  ASSERT_EQ(KWE_GetWindowsPalette(window, &hpal), noErr);
  HDC dc = KWE_GetCurrentDC();
  SelectPalette(dc, static_cast<HPALETTE>(GetStockObject(DEFAULT_PALETTE)), FALSE);
  ActivatePalette(window);
  EXPECT_EQ(GetCurrentObject(dc, OBJ_PAL), hpal);
  PmForeColor(6);
  RGBColor fg{};
  GetForeColor(&fg);
  EXPECT_EQ(fg.blue, 0xD4D4);

  // Only the animated entry takes the new colours.
  RGBColor pink{0xFF00, 0x8000, 0x8000};
  AnimateEntry(window, 2, &pink);
  AnimateEntry(window, 3, &pink);
  KWE_BeginPaletteAnimation();
  CTabHandle greys = GetCTable(20);
  AnimatePalette(window, greys, 4, 1, 3);
  KWE_EndPaletteAnimation();
  EXPECT_EQ(Entry(hpal, 2).peRed, 0xAA);  // grey 5 of the 16
  EXPECT_EQ(Entry(hpal, 2).peFlags, PC_RESERVED);
  EXPECT_EQ(Entry(hpal, 3).peRed, 0xDD);  // red stays

  // The palette messages: a change made by another window invalidates the
  // port windows; one the window made itself does not.
  const struct {
    HWND changedBy;
    bool invalid;
  } changes[] = {{hwnd, false}, {mainWindow, true}, {nullptr, true}};
  for (const auto& c : changes) {
    ValidateRect(hwnd, nullptr);
    KWE_PaletteChanged(hwnd, c.changedBy);
    EXPECT_EQ(Invalid(), c.invalid) << c.changedBy;
  }
  SelectPalette(dc, static_cast<HPALETTE>(GetStockObject(DEFAULT_PALETTE)), FALSE);
  ValidateRect(hwnd, nullptr);
  EXPECT_EQ(KWE_QueryNewPalette(hwnd), 0);  // a true-colour screen: nothing changes
  EXPECT_EQ(GetCurrentObject(dc, OBJ_PAL), hpal);
  EXPECT_FALSE(Invalid());

  // Disposed while selected: the DC gets the stock palette back.
  DisposePalette(pal);
  EXPECT_EQ(GetObjectType(hpal), 0u);
  EXPECT_NE(GetCurrentObject(dc, OBJ_PAL), hpal);
  SetPalette(window, nullptr, false);
  EXPECT_EQ(vars->pmFlags, 0);
  DisposeCTable(greys);
  DisposeCTable(table);
}

std::string g_title;
const char* g_red = nullptr;
WPARAM g_button = IDOK;

// The colour dialog is modal: a CBT hook sees it shown, types into its red,
// green and blue boxes, and presses the button.
LRESULT CALLBACK AnswerColourDialog(int code, WPARAM wParam, LPARAM lParam) {
  char name[16] = "";
  HWND dialog = reinterpret_cast<HWND>(wParam);
  if (code == HCBT_ACTIVATE && GetClassNameA(dialog, name, sizeof name) &&
      std::string(name) == "#32770") {
    char title[64] = "";
    GetWindowTextA(dialog, title, sizeof title);
    g_title = title;
    if (g_red) {
      SetDlgItemTextA(dialog, 706, g_red);
      SetDlgItemTextA(dialog, 707, "0");
      SetDlgItemTextA(dialog, 708, "0");
    }
    PostMessageA(dialog, WM_COMMAND, g_button, 0);
  }
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

TEST_F(WindowPalettes, GetColorAnswersWhatTheColourDialogChose) {
  const struct {
    WPARAM button;
    const char* red;
    bool chosen;
    RGBColor out;
  } cases[] = {{IDOK, nullptr, true, {0x1234, 0x5678, 0x9ABC}},
               {IDOK, "255", true, {0xFFFF, 0, 0}},
               {IDCANCEL, "255", false, {1, 2, 3}}};
  for (const auto& c : cases) {
    g_button = c.button;
    g_red = c.red;
    g_title.clear();
    RGBColor in{0x1234, 0x5678, 0x9ABC}, out{1, 2, 3};
    HHOOK hook = SetWindowsHookExA(WH_CBT, AnswerColourDialog, nullptr, GetCurrentThreadId());
    Point where{0, 0};
    Boolean chosen =
        GetColor(where, reinterpret_cast<ConstStr255Param>("\x0APick a hue"), &in, &out);
    UnhookWindowsHookEx(hook);
    EXPECT_EQ(chosen, c.chosen) << c.button << " " << (c.red ? c.red : "-");
    EXPECT_EQ(g_title, "Pick a hue");
    EXPECT_EQ(out.red, c.out.red) << c.button << " " << (c.red ? c.red : "-");
    EXPECT_EQ(out.green, c.out.green);
    EXPECT_EQ(out.blue, c.out.blue);
  }
  RGBColor any{};
  EXPECT_FALSE(GetColor(Point{0, 0}, nullptr, nullptr, &any));
}

}  // namespace
