// The Menu Manager through the DLL, read back from USER: bars and menus from
// resources and AppendMenu, bad resources and arguments; Windows' own
// tracking of the bar and of pop-ups driven by keys, command keys,
// owner-drawn items; 'MDEF' procedures, the menu hook, menus of resource
// names and fonts. The main window forwards the menu messages to the
// library as a host shell does.
#include <gtest/gtest.h>

#include <cctype>
#include <functional>
#include <string>
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "KWEMenus.h"
#include "MacWindows.h"
#include "Memory.h"
#include "Menus.h"
#include "OSUtils.h"
#include "Resources.h"
#include "support/menu_resources.h"
#include "support/resource_image_file.h"
#include "windows/windows_fixture.h"

namespace kwe_test {

// A Pascal string of text.
inline std::basic_string<UInt8> P(const std::string& text) {
  std::basic_string<UInt8> p(1, UInt8(text.size()));
  p.append(text.begin(), text.end());
  return p;
}

// What USER holds of one item of a Win32 menu, by position.
struct Win32Item {
  std::string text;
  UINT state;  // GetMenuState
  UINT id;     // GetMenuItemID (-1 for a submenu)
};
inline Win32Item Win32ItemAt(HMENU menu, int position) {
  char text[256] = {};
  GetMenuStringA(menu, UINT(position), text, sizeof text, MF_BYPOSITION);
  return Win32Item{text, GetMenuState(menu, UINT(position), MF_BYPOSITION),
                   GetMenuItemID(menu, position)};
}

// GetMenuItemText's answer.
inline std::string ItemText(MenuHandle m, SInt16 item) {
  Str255 text;
  GetMenuItemText(m, item, text);
  return std::string(reinterpret_cast<char*>(text + 1), text[0]);
}

inline WNDPROC g_previousHostProc = nullptr;

// The host's main window procedure: the menu messages go to the library.
inline LRESULT CALLBACK MenuHostProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  switch (msg) {
    case WM_COMMAND: KWE_EventCommand(w, msg, wParam, reinterpret_cast<HWND>(lParam)); return 0;
    case WM_INITMENUPOPUP: KWE_InitMenuMsg(reinterpret_cast<HMENU>(wParam)); return 0;
    case WM_MENUSELECT: KWE_MenuSelect(w, msg, wParam, lParam); break;
    case WM_ENTERIDLE: KWE_EnterIdle(w, msg, wParam, lParam); break;
    case WM_MEASUREITEM:
    case WM_DRAWITEM:
      if (wParam == 0) return KWE_MenuUserItem(w, msg, wParam, lParam);
      break;
    default: break;
  }
  return CallWindowProcA(g_previousHostProc, w, msg, wParam, lParam);
}

class MenuTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    g_previousHostProc = reinterpret_cast<WNDPROC>(
        SetWindowLongPtrA(mainWindow, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(MenuHostProc)));
    SetWindowPos(mainWindow, HWND_TOP, 40, 40, 600, 400, SWP_SHOWWINDOW);
    InitMenus();
    Pump();
  }
  void TearDown() override {
    if (resourceRefNum > 0) CloseResFile(resourceRefNum);
    if (!resourceFile.empty()) DeleteFileA(resourceFile.c_str());
    WindowTest::TearDown();
  }

  // Opens a resource file holding these resources (closed at the end).
  void UseResources(const std::vector<resource_builder::Resource>& resources) {
    OpenResourceImage(resource_builder::BuildResourceImage(resources), "kwe_menus_", &resourceFile,
                      &resourceRefNum);
  }
  // The Win32 popup of bar position (Toolbox menus from 0, the Apple menu
  // left out in merged mode).
  HMENU BarPopup(int toolboxIndex) {
    HMENU bar = GetMenu(mainWindow);
    for (int i = 0, seen = 0, n = GetMenuItemCount(bar); i < n; ++i)
      if (HMENU sub = GetSubMenu(bar, i); sub && seen++ == toolboxIndex) return sub;
    return nullptr;
  }
  // Steps that press and release these keys, as the keyboard posts them to
  // the focus.
  std::vector<std::function<void()>> Keys(const std::vector<UINT>& keys) {
    std::vector<std::function<void()>> steps;
    for (UINT vk : keys)
      steps.push_back([this, vk] { PostKey(GetFocus() ? GetFocus() : mainWindow, vk); });
    return steps;
  }
  // The titles of the Win32 bar, left to right.
  std::vector<std::string> BarTitles() {
    std::vector<std::string> titles;
    HMENU bar = GetMenu(mainWindow);
    for (int i = 0, n = GetMenuItemCount(bar); i < n; ++i)
      titles.push_back(Win32ItemAt(bar, i).text);
    return titles;
  }

  std::string resourceFile;
  SInt16 resourceRefNum = -1;
};

namespace {

constexpr UInt8 kSub = 0x1B;

// Apple, File, Edit and Style menus, the Style menu with a Size submenu.
std::vector<resource_builder::Resource> StandardBar() {
  return {
      MenuResource(128, "\x14", {{"About Menus\xC9"}}),
      MenuResource(129, "File", {{"New", 0, 'N'}, {"Open\xC9", 0, 'O'}, {"-"}, {"Quit", 0, 'Q'}}),
      MenuResource(130, "Edit",
                   {{"Undo", 0, 'Z'},
                    {"-"},
                    {"Cut", 0, 'X'},
                    {"Copy", 0, 'C'},
                    {"Paste", 0, 'V'},
                    {"Clear"}},
                   0xFFFFFFFFu & ~(1u << 1)),
      MenuResource(131, "Style",
                   {{"Plain", 0, 'T', 18},
                    {"Bold", 0, 'B', 0, 1},
                    {"Find Again", 0, 'g'},
                    {"-"},
                    {"Size", 0, kSub, 200}}),
      MenuResource(200, "Size", {{"9"}, {"10", 0, 0, 18}, {"12"}}),
      MenuBarResource(128, {128, 129, 130, 131})};
}

struct ExpectedItem {
  std::string text;
  UINT state;
};

// What the standard bar's menus show, by Win32 position.
const std::vector<std::vector<ExpectedItem>> kShown = {
    {{"&New\tStrg+N", 0}, {"&Open...\tStrg+O", 0}, {"", MF_SEPARATOR}, {"&Quit\tStrg+Q", 0}},
    {{"&Undo\tStrg+Z", MF_GRAYED | MF_DISABLED},
     {"", MF_SEPARATOR},
     {"&Cut\tStrg+X", 0},
     {"Co&py\tStrg+C", 0},
     {"Pa&ste\tStrg+V", 0},
     {"C&lear", 0}},
    {{"&Plain\tStrg+T", MF_CHECKED},
     {"", MF_OWNERDRAW},
     {"&Find Again\tStrg+Umschalt+G", 0},
     {"", MF_SEPARATOR},
     {"&Size", MF_POPUP}}};

class MenuBar : public MenuTest {
 protected:
  void ShowStandardBar() {
    UseResources(StandardBar());
    Handle list = GetNewMBar(128);
    ASSERT_NE(list, nullptr);
    SetMenuBar(list);
    DisposeHandle(list);
    InsertMenu(GetMenu(200), -1);
    DrawMenuBar();
  }
  // Every item of the popup against what it should show; the command IDs
  // name the menu and item back.
  void ExpectItems(HMENU popup, SInt16 menuID, const std::vector<ExpectedItem>& items,
                   const std::string& where) {
    ASSERT_EQ(GetMenuItemCount(popup), int(items.size())) << where;
    for (size_t i = 0; i < items.size(); ++i) {
      Win32Item got = Win32ItemAt(popup, int(i));
      std::string at = where + " item " + std::to_string(i + 1);
      if (!(items[i].state & (MF_SEPARATOR | MF_OWNERDRAW))) {
        EXPECT_EQ(got.text, items[i].text) << at;
      }
      // USER grays every divider, and a submenu's state holds its item count
      // in the high byte.
      UINT mask = items[i].state & MF_SEPARATOR ? MF_SEPARATOR
                  : items[i].state & MF_POPUP   ? 0xFF
                                                : MF_CHECKED | MF_GRAYED | MF_DISABLED |
                                                    MF_SEPARATOR | MF_OWNERDRAW | MF_POPUP;
      EXPECT_EQ(got.state & mask, items[i].state) << at;
      if (items[i].state & MF_POPUP) continue;
      EXPECT_EQ(KWE_MenuIDFromCMD(popup, UInt16(got.id)), menuID) << at;
      EXPECT_EQ(int(got.id & 0xFF) + 1, int(i + 1)) << at;
    }
  }
};

// In merged mode the Apple menu stays out of the bar; without it, it is the
// first menu. Titles get their mnemonics; items their keys in the host's
// formats, marks, disabled states, dividers, owner-drawn styles, submenus.
TEST_F(MenuBar, BarFromResourcesMatchesWhatUserHoldsItemByItem) {
  for (int merged : {1, 0}) {
    KWE_SystemValue(1, 13, merged);
    ShowStandardBar();
    std::string where = merged ? "merged" : "apart";
    std::vector<std::string> expected = {"&File", "&Edit", "&Style"};
    if (!merged) expected.insert(expected.begin(), "\x14");
    EXPECT_EQ(BarTitles(), expected) << where;
    int first = merged ? 0 : 1;
    const SInt16 ids[] = {129, 130, 131};
    for (int m = 0; m < 3; ++m)
      ExpectItems(BarPopup(first + m), ids[m], kShown[size_t(m)],
                  where + " menu " + std::to_string(ids[m]));
    HMENU size = GetSubMenu(BarPopup(first + 2), 4);
    ExpectItems(size, 200, {{"9", 0}, {"10", MF_CHECKED}, {"12", 0}}, where + " submenu");
    EXPECT_EQ(GetMBarHeight(), 0);
    ClearMenuBar();
    DrawMenuBar();
    EXPECT_TRUE(BarTitles().empty()) << where;
  }
}

// What the application changes in its records reaches Windows when the
// menu is about to open.
TEST_F(MenuBar, ChangesReachWindowsWhenTheMenuOpens) {
  ShowStandardBar();
  MenuHandle file = GetMenuHandle(129);
  DisableItem(file, 1);
  CheckItem(file, 2, true);
  SetMenuItemText(file, 4, P("Exit Menus").c_str());
  SetItemCmd(file, 4, 'E');
  AppendMenu(file, P("(Revert;Print/P").c_str());
  HMENU popup = BarPopup(0);
  SendMessageA(mainWindow, WM_INITMENUPOPUP, WPARAM(popup), 0);
  ExpectItems(popup, 129,
              {{"&New\tStrg+N", MF_GRAYED | MF_DISABLED},
               {"&Open...\tStrg+O", MF_CHECKED},
               {"", MF_SEPARATOR},
               {"&Exit Menus\tStrg+E", 0},
               {"&Revert", MF_GRAYED | MF_DISABLED},
               {"&Print\tStrg+P", 0}},
              "after changes");
  DisableItem(file, 0);  // the whole menu
  SendMessageA(mainWindow, WM_INITMENUPOPUP, WPARAM(popup), 0);
  for (int i = 0; i < 6; ++i)
    EXPECT_TRUE(GetMenuState(popup, UINT(i), MF_BYPOSITION) & MF_GRAYED) << i;
}

// Item calls on a menu made in memory, and every call on items past the
// end: nothing changes and the getters answer the terminating zero.
TEST_F(MenuBar, ItemCallsAndItemsPastTheEnd) {
  MenuHandle m = NewMenu(300, P("Tools").c_str());
  ASSERT_NE(m, nullptr);
  AppendMenu(m, P("One;Two/2;(Three").c_str());
  InsertMenuItem(m, P("A;B").c_str(), 0);
  EXPECT_EQ(CountMItems(m), 5);
  std::string order;
  for (SInt16 i = 1; i <= 5; ++i) order += ItemText(m, i) + " ";
  EXPECT_EQ(order, "B A One Two Three ");
  SInt16 mark, key;
  auto bytes = [m] {
    const UInt8* at = reinterpret_cast<UInt8*>(*m);
    return std::vector<UInt8>(at, at + GetHandleSize(reinterpret_cast<Handle>(m)));
  };
  std::vector<UInt8> before = bytes();
  for (SInt16 past : {SInt16(6), SInt16(200), SInt16(-1)}) {
    SetItemMark(m, past, 18);
    SetItemCmd(m, past, 'Z');
    SetMenuItemText(m, past, P("Nope").c_str());
    DeleteMenuItem(m, past);
    CheckItem(m, past, true);
    GetItemMark(m, past, &mark);
    GetItemCmd(m, past, &key);
    EXPECT_EQ(std::to_string(mark) + std::to_string(key) + ItemText(m, past), "00") << past;
  }
  EXPECT_EQ(bytes(), before);
  // Items 32 and on have no enable bit: always enabled.
  for (int i = 0; i < 30; ++i) AppendMenu(m, P("x").c_str());
  DisableItem(m, 32);
  DisableItem(m, 33);
  EXPECT_EQ(CountMItems(m), 35);
  EXPECT_EQ((**m).enableFlags & 1, 1u) << "no shift by 32 reached the menu's own bit";
  SetItemIcon(m, 6, 1);
  InsertMenu(NewMenu(1, P("Apple").c_str()), 0);
  InsertMenu(m, 0);
  DrawMenuBar();
  HMENU popup = BarPopup(0);
  EXPECT_FALSE(GetMenuState(popup, 32, MF_BYPOSITION) & MF_GRAYED);
  EXPECT_TRUE(GetMenuState(popup, 4, MF_BYPOSITION) & MF_GRAYED) << "Three";
  // A long menu breaks into a second column after 25 rows; the item with an
  // icon takes two.
  std::vector<int> breaks;
  for (int i = 0; i < 35; ++i)
    if (GetMenuState(popup, UINT(i), MF_BYPOSITION) & MF_MENUBARBREAK) breaks.push_back(i + 1);
  EXPECT_EQ(breaks, std::vector<int>{25});
  // A 255-byte text survives whole, and an empty one keeps a blank.
  std::string longest(255, 'w');
  SetMenuItemText(m, 1, P(longest).c_str());
  SetMenuItemText(m, 2, P("").c_str());
  EXPECT_EQ(ItemText(m, 1), longest);
  EXPECT_EQ(ItemText(m, 2).size(), 1u);
  EXPECT_EQ(CountMItems(m), 35);
  DeleteMenuItem(m, 1);
  EXPECT_EQ(CountMItems(m), 34);
}

// Bad resources and arguments: a bar naming a missing 'MENU' leaves it out;
// a 'MENU' cut inside its items keeps its whole items; a 25th menu is not
// taken; a full command slot table gives
// 0xFF00 | (item - 1), which names no menu.
TEST_F(MenuBar, BadResourcesAndArgumentsLeaveACleanState) {
  auto cut = MenuResource(140, "Cut", {{"Whole"}, {"Also whole"}, {"Cut short"}});
  cut.data.resize(cut.data.size() - 6);
  UseResources({MenuResource(129, "File", {{"New"}}), cut, MenuBarResource(128, {129, 999, 140}),
                MenuResource(141, "X", {}), MenuBarResource(129, {})});
  Handle list = GetNewMBar(128);
  ASSERT_NE(list, nullptr);
  // The cut item is gone and the list ends with its 0 right after the
  // whole ones, as a program walking the record expects.
  MenuHandle cutMenu = GetMenu(140);
  EXPECT_EQ(CountMItems(cutMenu), 2);
  Size whole = 14 + 1 + 3 + (1 + 5 + 4) + (1 + 10 + 4);
  ASSERT_EQ(GetHandleSize(reinterpret_cast<Handle>(cutMenu)), whole + 1);
  EXPECT_EQ((*reinterpret_cast<Handle>(cutMenu))[whole], 0);
  EXPECT_EQ(GetMenu(998), nullptr);
  EXPECT_EQ(GetNewMBar(777), nullptr);
  Handle empty = GetNewMBar(129);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(reinterpret_cast<MenuListPtr>(*empty)->lastMenu, 0);
  SetMenuBar(list);
  DrawMenuBar();
  EXPECT_EQ(GetMenuItemCount(GetMenu(mainWindow)), 1);  // File is the merged Apple menu

  // 24 menus at most.
  ClearMenuBar();
  for (int i = 0; i < 30; ++i)
    InsertMenu(NewMenu(SInt16(400 + i), P("M" + std::to_string(i)).c_str()), 0);
  DrawMenuBar();
  EXPECT_EQ(GetMenuItemCount(GetMenu(mainWindow)), 23);  // the first is the Apple menu

  // Command slots run out after 254 menus.
  ClearMenuBar();
  UINT last = 0;
  for (int i = 0; i < 260; ++i) {
    MenuHandle m = NewMenu(SInt16(500 + i), P("S").c_str());
    AppendMenu(m, P("a;b").c_str());
    ClearMenuBar();
    InsertMenu(NewMenu(1, P("Apple").c_str()), 0);
    InsertMenu(m, 0);
    DrawMenuBar();
    last = GetMenuItemID(BarPopup(0), 1);
  }
  EXPECT_EQ(last, 0xFF01u);
  EXPECT_EQ(KWE_MenuIDFromCMD(nullptr, UInt16(last)), 0);
}

// 129 submenus: the 129th is not recorded, nothing breaks; a menu naming
// itself as its submenu stops at the Toolbox's depth.
TEST_F(MenuBar, ManySubmenusAndASelfNamingSubmenu) {
  MenuHandle sub = NewMenu(60, P("Sub").c_str());
  AppendMenu(sub, P("Leaf").c_str());
  InsertMenu(sub, -1);
  MenuHandle m = NewMenu(601, P("Many").c_str());
  for (int i = 0; i < 129; ++i) {
    AppendMenu(m, P("S").c_str());
    SetItemCmd(m, SInt16(i + 1), kSub);
    SetItemMark(m, SInt16(i + 1), 60);
  }
  MenuHandle self = NewMenu(62, P("Self").c_str());
  AppendMenu(self, P("Again").c_str());
  SetItemCmd(self, 1, kSub);
  SetItemMark(self, 1, 62);
  InsertMenu(self, -1);
  InsertMenu(NewMenu(1, P("Apple").c_str()), 0);
  InsertMenu(m, 0);
  InsertMenu(self, 0);
  DrawMenuBar();
  HMENU popup = BarPopup(0);
  ASSERT_EQ(GetMenuItemCount(popup), 129);
  for (int i = 0; i < 129; ++i) ASSERT_EQ(GetMenuItemCount(GetSubMenu(popup, i)), 1) << i;
  int depth = 0;
  for (HMENU h = BarPopup(1); h && depth < 10; h = GetSubMenu(h, 0)) ++depth;
  EXPECT_EQ(depth, 6);
  EXPECT_EQ(KWE_SearchHierMenuList(1), sub);
  EXPECT_EQ(KWE_SearchHierMenuList(0), self);
  EXPECT_EQ(KWE_SearchHierMenuList(0), nullptr);
}

// Hundreds of rebuilds of the bar and of its menus as they open: every
// Win32 menu replaced is gone, GDI objects and the heap stay flat.
TEST_F(MenuBar, RebuildsLeaveNothingBehind) {
  ShowStandardBar();
  std::vector<HMENU> replaced;
  for (int i = 0; i < 10; ++i) DrawMenuBar();
  Footprint before = Now();
  for (int i = 0; i < 300; ++i) {
    replaced.push_back(BarPopup(2));
    replaced.push_back(GetSubMenu(BarPopup(2), 4));
    DrawMenuBar();
    SendMessageA(mainWindow, WM_INITMENUPOPUP, WPARAM(BarPopup(2)), 0);
  }
  EXPECT_EQ(Now(), before);
  int alive = 0;
  for (HMENU h : replaced)
    alive += IsMenu(h) && h != BarPopup(2) && h != GetSubMenu(BarPopup(2), 4);
  EXPECT_EQ(alive, 0);
}

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

// Commands back to menus: 0xFFFF is the last item of the first registered
// menu (Quit), 0 item 1 of the bar's first menu, 0x0203 item 4 of slot 1's
// menu; a command of a slot that does not exist names menu 0, item low
// byte + 1. The quit message of the pump is the Quit command too, and a
// WM_COMMAND posted from a timer while MenuSelect waits is its answer.
TEST_F(Tracking, CommandsMapBackToMenuAndItem) {
  const struct {
    UInt32 command;
    SInt32 expected;
  } cases[] = {{0xFFFF, (129 << 16) | 5}, {0, (1 << 16) | 1}, {0x0203, (130 << 16) | 4},
               {0x0100, (129 << 16) | 1}, {0x5000, 1},        {0x1FFFF, (129 << 16) | 5}};
  for (const auto& c : cases) {
    KWE_EventMenuSel(c.command);
    EXPECT_EQ(MenuSelect(Point{-1, -1}), c.expected) << std::hex << c.command;
  }
  PostQuitMessage(0);
  EventRecord e;
  for (int i = 0; i < 5; ++i) GetNextEvent(everyEvent, &e);
  EXPECT_EQ(MenuSelect(Point{-1, -1}), (129 << 16) | 5);
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

constexpr ResType kMdef = 0x4D444546;  // 'MDEF'
constexpr ResType kDrvr = 0x44525652;  // 'DRVR'
constexpr ResType kFont = 0x464F4E54;  // 'FONT'

std::vector<SInt16> g_messages;
SInt16 g_choice = 0;

void KWE_CALL RecordingDefinition(SInt16 message, MenuHandle menu, Rect* r, Point,
                                  SInt16* whichItem) {
  g_messages.push_back(message);
  if (message == mSizeMsg) {
    (**menu).menuWidth = 120;
    (**menu).menuHeight = 60;
  }
  if (message == mDrawMsg && r) {
    // Draws the menu black, as a definition draws its items.
    PaintRect(r);
  }
  if (message == mChooseMsg && whichItem) {
    *whichItem = g_choice;
    SendMouse(MOUSEEVENTF_LEFTUP);
  }
}

class Definitions : public MenuTest {
 protected:
  void SetUp() override {
    MenuTest::SetUp();
    g_messages.clear();
    KWE_CodeResource(1, kMdef, 77, reinterpret_cast<ProcPtr>(RecordingDefinition));
    UseResources({MenuResource(150, "Drawn", {{"One"}, {"Two"}, {"Three"}}, 0xFFFFFFFFu, 77),
                  MenuResource(151, "Plain", {{"One"}}, 0xFFFFFFFFu, 78),
                  resource_builder::MakeResource("DRVR", 12, {0}, std::string("\0Alarm", 6)),
                  resource_builder::MakeResource("DRVR", 13, {0}, "Puzzle;(odd)/Q"),
                  resource_builder::MakeResource("MDEF", 77, {0, 0, 0, 0, 0, 0})});
  }
};

// GetMenu binds the 'MDEF' to its registered procedure (an 'MDEF' without
// one leaves a standard menu); sizes come from mSizeMsg; in the bar the
// whole menu is one owner-drawn item that USER measures through it.
TEST_F(Definitions, AnMdefMenuIsSizedAndDrawnByItsProcedure) {
  MenuHandle drawn = GetMenu(150);
  ASSERT_NE(drawn, nullptr);
  EXPECT_EQ(std::vector<SInt16>(g_messages), std::vector<SInt16>{mSizeMsg});
  EXPECT_EQ((**drawn).menuWidth, 120);
  InsertMenu(NewMenu(1, P("Apple").c_str()), 0);
  InsertMenu(drawn, 0);
  InsertMenu(GetMenu(151), 0);
  DrawMenuBar();
  HMENU popup = BarPopup(0);
  ASSERT_EQ(GetMenuItemCount(popup), 1);
  EXPECT_TRUE(GetMenuState(popup, 0, MF_BYPOSITION) & MF_OWNERDRAW);
  EXPECT_EQ(Win32ItemAt(BarPopup(1), 0).text, "&One") << "an unregistered 'MDEF' is standard";
  MEASUREITEMSTRUCT measure{ODT_MENU, 0, GetMenuItemID(popup, 0), 0, 0, 0};
  MENUITEMINFOA info{};
  info.cbSize = sizeof info;
  info.fMask = MIIM_DATA;
  GetMenuItemInfoA(popup, 0, TRUE, &info);
  measure.itemData = info.dwItemData;
  g_messages.clear();
  SendMessageA(mainWindow, WM_MEASUREITEM, 0, reinterpret_cast<LPARAM>(&measure));
  EXPECT_EQ(g_messages, std::vector<SInt16>{mSizeMsg});
  EXPECT_EQ(measure.itemWidth, UINT(120 - LOWORD(GetMenuCheckMarkDimensions())));
  EXPECT_EQ(measure.itemHeight, 60u);
}

// A pop-up of an 'MDEF' menu is tracked by the library in a window of its
// own: the definition sizes, places, draws and chooses; the choice is the
// result and the window is gone afterwards.
TEST_F(Definitions, AnMdefPopUpIsTrackedInATemporaryWindow) {
  MenuHandle drawn = GetMenu(150);
  g_messages.clear();
  g_choice = 3;
  SetCursorPos(200, 150);
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  int windowsBefore = CountUserWindows();
  SInt32 result = PopUpMenuSelect(drawn, 140, 190, 1);
  EXPECT_EQ(result, (150 << 16) | 3);
  ASSERT_GE(g_messages.size(), 4u);
  EXPECT_EQ(std::vector<SInt16>(g_messages.begin(), g_messages.begin() + 3),
            (std::vector<SInt16>{mSizeMsg, mPopUpMsg, mDrawMsg}));
  EXPECT_EQ(g_messages.back(), mChooseMsg);
  EXPECT_EQ(CountUserWindows(), windowsBefore);
  EXPECT_EQ(GetCapture(), nullptr);
}

int g_hookCalls = 0;
void KWE_CALL CountingHook() {
  if (++g_hookCalls == 3) SendMouse(MOUSEEVENTF_LEFTUP);
}

// With a menu hook installed a standard menu is tracked by the library
// too; the hook runs while the mouse stays outside the menu, and releasing
// the button there chooses nothing.
TEST_F(Definitions, TheMenuHookRunsWhileTheMouseIsOutsideThePopUp) {
  KWE_SetMenuHook(CountingHook);
  MenuHandle m = NewMenu(160, P("Hooked").c_str());
  AppendMenu(m, P("A;B").c_str());
  SetCursorPos(20, 20);
  SendMouse(MOUSEEVENTF_LEFTDOWN);
  SInt32 result = -1;
  WhileModal({[] { SetCursorPos(60, 60); }}, [&] { result = PopUpMenuSelect(m, 300, 300, 1); });
  EXPECT_EQ(result, 0);
  EXPECT_GE(g_hookCalls, 3);
  KWE_SetMenuHook(nullptr);
}

// Menus of resource names: a desk accessory's leading 0 is dropped and
// metacharacters stay text; fonts are the installed faces.
TEST_F(Definitions, ResourceNamesAndFontsBecomeItems) {
  MenuHandle m = NewMenu(170, P("Apple").c_str());
  AppendMenu(m, P("About;-").c_str());
  AppendResMenu(m, kDrvr);
  ASSERT_EQ(CountMItems(m), 4);
  EXPECT_EQ(ItemText(m, 3) + "|" + ItemText(m, 4), "Alarm|Puzzle;(odd)/Q");
  SInt16 key;
  GetItemCmd(m, 4, &key);
  EXPECT_EQ(key, 0);
  InsertResMenu(m, kDrvr, 1);
  EXPECT_EQ(ItemText(m, 2), "Alarm");
  MenuHandle fonts = NewMenu(171, P("Font").c_str());
  AppendResMenu(fonts, kFont);
  EXPECT_GT(CountMItems(fonts), 0);
  MenuHandle trueType = NewMenu(172, P("TT").c_str());
  KWE_AddResFontMenu(trueType, true);
  EXPECT_LE(CountMItems(trueType), CountMItems(fonts));
}

// InsertMenu before a menu of the bar puts it there, and not twice;
// GetMenuHandle looks in the bar first and DeleteMenu in the hierarchical
// list first; DisposeMenu takes the menu out of the bar; SetMenuBar brings
// a saved bar back.
TEST_F(Definitions, InsertDeleteAndDisposeKeepTheBarWhole) {
  MenuHandle a = NewMenu(1, P("A").c_str()), b = NewMenu(11, P("B").c_str());
  InsertMenu(a, 0);
  InsertMenu(NewMenu(12, P("C").c_str()), 0);
  InsertMenu(b, 12);
  InsertMenu(b, 0);  // already there
  DrawMenuBar();
  EXPECT_EQ(BarTitles(), (std::vector<std::string>{"&B", "&C"}));  // A is the Apple menu
  InsertMenu(NewMenu(11, P("Sub").c_str()), -1);
  EXPECT_EQ(GetMenuHandle(11), b);
  DeleteMenu(11);
  EXPECT_EQ(GetMenuHandle(11), b);
  DisposeMenu(b);
  DrawMenuBar();
  EXPECT_EQ(BarTitles(), std::vector<std::string>{"&C"});
  Handle copy = GetMenuBar();
  ClearMenuBar();
  EXPECT_EQ(GetMenuHandle(12), nullptr);
  SetMenuBar(copy);
  DrawMenuBar();
  EXPECT_EQ(BarTitles(), std::vector<std::string>{"&C"});
  DisposeHandle(copy);
}

}  // namespace
}  // namespace kwe_test
