// The menus as a user drives them: Windows' own tracking of the bar and of
// pop-ups, opened and answered with the keys a user presses while the modal
// loop runs; command keys; owner-drawn items drawn by the library.
#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "Events.h"
#include "MacWindows.h"
#include "Memory.h"
#include "OSUtils.h"
#include "Resources.h"
#include "menus/menus_fixture.h"

namespace {

using namespace kwe_test;

class Tracking : public MenuTest {
 protected:
  void SetUp() override {
    MenuTest::SetUp();
    SetForegroundWindow(mainWindow);
    SetFocus(mainWindow);
    InsertMenu(NewMenu(1, P("\x14").c_str()), 0);
    file = NewMenu(129, P("File").c_str());
    AppendMenu(file, P("New/N;Open/O;(Print/P;-;Quit/Q").c_str());
    edit = NewMenu(130, P("Edit").c_str());
    AppendMenu(edit, P("Undo/z;Cut/X;Copy/C;Paste/V;Select All/a").c_str());
    InsertMenu(file, 0);
    InsertMenu(edit, 0);
    DrawMenuBar();
  }
  MenuHandle file = nullptr, edit = nullptr;
};

// The bar opened from the keyboard and an item chosen with the arrow keys
// and Return: Windows sends the command, the application gets a mouseDown
// in the menu bar and MenuSelect answers menu and item, once; Escape ends
// the tracking without a choice and MenuSelect answers 0.
TEST_F(Tracking, MenuSelectAnswersTheItemChosenInWindowsTracking) {
  const struct {
    std::vector<UINT> keys;
    SInt32 expected;
  } cases[] = {
      {{VK_DOWN, VK_DOWN, VK_RETURN}, (129 << 16) | 2},
      {{VK_RIGHT, VK_DOWN, VK_DOWN, VK_RETURN}, (130 << 16) | 2},
      {{VK_ESCAPE, VK_ESCAPE}, 0},
  };
  for (const auto& c : cases) {
    WhileModal(Keys(c.keys), [this] { SendMessageA(mainWindow, WM_SYSCOMMAND, SC_KEYMENU, 0); });
    EventRecord e{};
    WindowPtr w = nullptr;
    EXPECT_EQ(NextMouseDown(&e) ? FindWindo(e.where, &w) : -1, c.expected ? inMenuBar : -1);
    EXPECT_EQ(MenuSelect(Point{-1, -1}), c.expected);
    EXPECT_EQ(MenuSelect(Point{-1, -1}), 0);
    HMENU bar = GetMenu(mainWindow);
    int position = c.expected >> 16 == 129 ? 0 : 1;
    if (c.expected) {
      EXPECT_EQ(vars.TheMenu, SInt16(c.expected >> 16));
      EXPECT_TRUE(GetMenuState(bar, UINT(position), MF_BYPOSITION) & MF_HILITE);
    }
    HiliteMenu(0);
    EXPECT_EQ(vars.TheMenu, 0);
    EXPECT_FALSE(GetMenuState(bar, UINT(position), MF_BYPOSITION) & MF_HILITE);
  }
}

// A WM_COMMAND posted from a timer while MenuSelect waits is its answer.
TEST_F(Tracking, MenuSelectPicksUpACommandStillOnItsWay) {
  UINT id = GetMenuItemID(BarPopup(1), 4);
  SInt32 answer = 0;
  WhileModal(
      {[&] { PostMessageA(mainWindow, WM_COMMAND, id, 0); }},
      [&] {
        Sleep(20);
        answer = MenuSelect(Point{-1, -1});
      },
      1);
  EXPECT_EQ(answer, (130 << 16) | 5);
}

// Every command key of the bar, in either case, answers its item; disabled
// items and keys without an item answer 0.
TEST_F(Tracking, MenuKeyAnswersEveryCommandKeyOfTheBar) {
  for (MenuHandle m : {file, edit}) {
    for (SInt16 i = 1; i <= CountMItems(m); ++i) {
      SInt16 key;
      GetItemCmd(m, i, &key);
      if (!key) continue;
      SInt32 expected = i == 3 && m == file ? 0 : ((**m).menuID << 16) | i;
      for (int ch : {std::toupper(key), std::tolower(key)})
        EXPECT_EQ(MenuKey(SInt16(ch)), expected) << char(ch);
    }
  }
  for (char ch : std::string("BDEFGHJKLMRSTUWY1!")) EXPECT_EQ(MenuKey(ch), 0) << ch;
  DisableItem(edit, 0);
  EXPECT_EQ(MenuKey('X'), 0);
  // A submenu's keys answer through the hierarchical list.
  MenuHandle sub = NewMenu(200, P("Sub").c_str());
  AppendMenu(sub, P("Deep/D").c_str());
  InsertMenu(sub, -1);
  EXPECT_EQ(MenuKey('d'), (200 << 16) | 1);
}

// A pop-up shown at a point: the item chosen with the keys, 0 when it is
// cancelled, and the right button's form; the menu is gone afterwards.
TEST_F(Tracking, PopUpMenuSelectAnswersTheChosenItem) {
  MenuHandle pop = NewMenu(300, P("Pop").c_str());
  AppendMenu(pop, P("Red;Green;(Gray;Blue").c_str());
  const struct {
    std::vector<UINT> keys;
    SInt16 popUpItem;
    SInt32 expected;
  } cases[] = {
      {{VK_DOWN, VK_DOWN, VK_RETURN}, 1, (300 << 16) | 2},
      {{VK_DOWN, VK_DOWN, VK_DOWN, VK_DOWN, VK_RETURN}, 2, (300 << 16) | 4},
      {{VK_ESCAPE}, 1, 0},
      {{VK_DOWN, VK_RETURN}, -666, (300 << 16) | 1},
  };
  for (const auto& c : cases) {
    HWND shown = nullptr;
    std::vector<std::function<void()>> steps = Keys(c.keys);
    steps.insert(steps.begin(), [&] { shown = FindWindowA("#32768", nullptr); });
    SInt32 result = 0;
    WhileModal(steps, [&] { result = PopUpMenuSelect(pop, 120, 100, c.popUpItem); });
    EXPECT_EQ(result, c.expected) << c.popUpItem;
    EXPECT_NE(shown, nullptr);
    EXPECT_FALSE(IsWindowVisible(FindWindowA("#32768", nullptr)) &&
                 FindWindowA("#32768", nullptr) == shown);
  }
}

// The pop-up's left edge moves so that its right side ends 30 pixels
// before the screen's edge.
TEST_F(Tracking, PopUpNearTheScreensEdgeMovesLeft) {
  MenuHandle pop = NewMenu(301, P("Edge").c_str());
  AppendMenu(pop, P("A rather long item text;Two").c_str());
  int screen = GetSystemMetrics(SM_CXSCREEN);
  RECT at{};
  WhileModal(
      {[&] { GetWindowRect(FindWindowA("#32768", nullptr), &at); }, Keys({VK_ESCAPE})[0]},
      [&] { PopUpMenuSelect(pop, 100, SInt16(screen - 10), 1); }, 150);
  int width = (**pop).menuWidth;
  EXPECT_EQ(at.left, screen - width - 30 - 1);
}

// Items with icons and styles are drawn by the library when USER asks: the
// icon's black bits, the check mark and the item text are on the screen.
TEST_F(Tracking, OwnerDrawnItemsAreDrawnByTheLibrary) {
  resource_builder::Bytes icon(128, 0xFF);
  UseResources({resource_builder::MakeResource("ICON", 257, icon)});
  MenuHandle pop = NewMenu(302, P("Drawn").c_str());
  AppendMenu(pop, P("Iconic^1;Bold<B;Plain").c_str());
  CheckItem(pop, 2, true);
  int black = 0, ink = 0;
  RECT window{};
  SInt32 result = -1;
  WhileModal(
      {[&] {
         HWND h = FindWindowA("#32768", nullptr);
         GetWindowRect(h, &window);
         HDC dc = GetDC(nullptr);
         // Black icon pixels at the icon's place in item 1.
         for (int y = window.top + 4; y < window.top + 36; ++y)
           for (int x = window.left; x < window.left + 60; ++x)
             black += GetPixel(dc, x, y) == RGB(0, 0, 0);
         // Text pixels of the bold item.
         for (int y = window.top + 40; y < window.bottom; ++y)
           for (int x = window.left + 20; x < window.left + 80; ++x)
             ink += GetPixel(dc, x, y) == GetSysColor(COLOR_MENUTEXT);
         ReleaseDC(nullptr, dc);
       },
       Keys({VK_ESCAPE})[0]},
      [&] { result = PopUpMenuSelect(pop, 100, 100, 1); }, 200);
  EXPECT_EQ(result, 0);
  EXPECT_GE(black, 32 * 20);
  EXPECT_GT(ink, 10);
}

}  // namespace
