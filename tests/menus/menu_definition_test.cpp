// Menus drawn by a definition procedure (a host procedure registered for an
// 'MDEF'), the menu hook, commands mapped back to menus, menus of resource
// names and fonts, and DisposeMenu.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "Events.h"
#include "KWEEvents.h"
#include "MacWindows.h"
#include "Memory.h"
#include "Resources.h"
#include "menus/menus_fixture.h"

namespace {

using namespace kwe_test;

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

// Commands back to menus: 0xFFFF is the last item of the first registered
// menu (Quit), 0 item 1 of the bar's first menu, 0x0203 item 4 of slot 1's
// menu; a command of a slot that does not exist names menu 0, item low
// byte + 1.
TEST_F(Definitions, CommandsMapBackToMenuAndItem) {
  MenuHandle apple = NewMenu(1, P("Apple").c_str());
  AppendMenu(apple, P("About").c_str());
  MenuHandle file = NewMenu(129, P("File").c_str());
  AppendMenu(file, P("New;Open;Close;Save;Quit").c_str());
  MenuHandle edit = NewMenu(130, P("Edit").c_str());
  AppendMenu(edit, P("Undo;Cut;Copy;Paste").c_str());
  InsertMenu(apple, 0);
  InsertMenu(file, 0);
  InsertMenu(edit, 0);
  DrawMenuBar();
  const struct {
    UInt32 command;
    SInt32 expected;
  } cases[] = {{0xFFFF, (129 << 16) | 5}, {0, (1 << 16) | 1}, {0x0203, (130 << 16) | 4},
               {0x0100, (129 << 16) | 1}, {0x5000, 1},        {0x1FFFF, (129 << 16) | 5}};
  for (const auto& c : cases) {
    KWE_EventMenuSel(c.command);
    EXPECT_EQ(MenuSelect(Point{-1, -1}), c.expected) << std::hex << c.command;
  }
  // The quit message of the pump is the Quit command too.
  PostQuitMessage(0);
  EventRecord e;
  for (int i = 0; i < 5; ++i) GetNextEvent(everyEvent, &e);
  EXPECT_EQ(MenuSelect(Point{-1, -1}), (129 << 16) | 5);
}

// Menus of resource names: a desk accessory's leading 0 is dropped and
// metacharacters stay text; fonts are the installed faces.
TEST_F(Definitions, ResourceNamesAndFontsBecomeItems) {
  MenuHandle m = NewMenu(170, P("Apple").c_str());
  AppendMenu(m, P("About;-").c_str());
  AppendResMenu(m, kDrvr);
  ASSERT_EQ(CountMItems(m), 4);
  Str255 text;
  GetMenuItemText(m, 3, text);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), "Alarm");
  GetMenuItemText(m, 4, text);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), "Puzzle;(odd)/Q");
  SInt16 key;
  GetItemCmd(m, 4, &key);
  EXPECT_EQ(key, 0);
  InsertResMenu(m, kDrvr, 1);
  GetMenuItemText(m, 2, text);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(text + 1), text[0]), "Alarm");
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
