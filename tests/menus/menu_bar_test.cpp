// Bars and menus from resources and from AppendMenu, as USER holds them
// after DrawMenuBar and WM_INITMENUPOPUP; bad resources and arguments.
#include <gtest/gtest.h>

#include <string>

#include "Memory.h"
#include "OSUtils.h"
#include "Resources.h"
#include "menus/menus_fixture.h"

namespace {

using namespace kwe_test;

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
  const char* order[] = {"B", "A", "One", "Two", "Three"};
  Str255 text;
  for (int i = 0; i < 5; ++i) {
    GetMenuItemText(m, SInt16(i + 1), text);
    EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), order[i]);
  }
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
    GetMenuItemText(m, past, text);
    EXPECT_EQ(std::vector<int>({mark, key, text[0]}), std::vector<int>({0, 0, 0})) << past;
  }
  EXPECT_EQ(bytes(), before);
  // Items 32 and on have no enable bit: always enabled.
  for (int i = 0; i < 30; ++i) AppendMenu(m, P("x").c_str());
  DisableItem(m, 32);
  DisableItem(m, 33);
  EXPECT_EQ(CountMItems(m), 35);
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
  GetMenuItemText(m, 1, text);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), longest);
  SetMenuItemText(m, 2, P("").c_str());
  GetMenuItemText(m, 2, text);
  EXPECT_EQ(text[0], 1);
  EXPECT_EQ(CountMItems(m), 35);
  DeleteMenuItem(m, 1);
  EXPECT_EQ(CountMItems(m), 34);
}

// Bad resources and arguments: a bar naming a missing 'MENU' leaves it out;
// a 'MENU' cut inside its items keeps its whole items; a 25th menu is not
// taken; a null handle changes nothing; a full command slot table gives
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

  // Null handles.
  MenuHandle none = nullptr;
  AppendMenu(none, P("x").c_str());
  InsertMenu(none, 0);
  CheckItem(none, 1, true);
  EnableItem(none, 1);
  CalcMenuSize(none);
  DisposeMenu(none);
  EXPECT_EQ(CountMItems(none), 0);
  EXPECT_EQ(PopUpMenuSelect(none, 10, 10, 1), 0);

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

}  // namespace
