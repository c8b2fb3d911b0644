// ModalDialog, DialogSelect and the keyboard, driven by the input a user
// makes (keys as the keyboard hook hands them to the dialog window, clicks
// that Windows turns into WM_COMMAND), posted while the modal call runs.
#include <gtest/gtest.h>

#include <cstring>

#include "Controls.h"
#include "KWEEvents.h"
#include "KWEMenus.h"
#include "Menus.h"
#include "TextEdit.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"

namespace {

using namespace kwe_test;

class Modal : public DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    Resources(
        DialogTemplate(200, 60, 60, 260, 360, 200) +
        ItemList(200, {{150, 200, 170, 280, 4, "OK"},
                       {150, 100, 170, 180, 4, "Cancel"},
                       {10, 20, 26, 200, 5, "Wrap lines"},
                       {30, 20, 46, 120, 6, "Red"},
                       {50, 20, 66, 120, 6, "Green"},
                       {70, 20, 86, 120, 6, "Blue"},
                       {90, 20, 106, 200, 16, "Name"},
                       {110, 20, 126, 200, 8, "Notes:"}}) +
        DialogTemplate(201, 60, 60, 200, 300, 201) +
        ItemList(201, {{10, 20, 26, 200, 8, "Click anywhere"}}) +
        DialogTemplate(202, 60, 60, 260, 360, 202) +
        ItemList(202, {{150, 200, 170, 280, 4, "OK"},
                       {150, 100, 170, 180, 5, "Check"},
                       {10, 20, 90, 200, 16, "Several\rlines"}}) +
        DialogTemplate(203, 60, 60, 260, 360, 203) +
        ItemList(203, {{150, 200, 170, 280, 4, "OK"},
                       {10, 20, 26, 80, 8, "Name:"},
                       {10, 90, 26, 200, 16, ""},
                       {40, 20, 56, 200, 5, "Bold"},
                       {60, 20, 76, 200, 5, "Italic"}}) +
        DialogTemplate(204, 60, 60, 200, 320, 204) +
        ItemList(204, {{100, 160, 120, 240, 4, "OK"}, {20, 20, 36, 240, 16, "ab"}}) +
        DialogTemplate(210, 60, 60, 200, 300, 210) +
        ItemList(210, {{100, 100, 120, 180, 4, "OK"},
                       {40, 40, 56, 56, 5, ""},
                       {70, 40, 86, 140, 5, "Titled"}}) +
        PrivateTableText(203, 0, 0x40, {{5, 5, 0, 0}, {1, 1, 0, 0}, {2, 3, 'N', 0}, {3, 3, 0, 0}}));
  }
  DialogPtr Open(SInt16 id) {
    DialogPtr d = GetNewDialog(id, nullptr, InFront());
    EXPECT_NE(d, nullptr);
    if (d) SelectWindow(d);
    Drain();
    return d;
  }
  HWND Window() { return HwndOfDialog(dialog); }
  ControlHandle ControlOf(SInt16 item) {
    SInt16 type;
    Handle h;
    Rect r;
    GetDialogItem(dialog, item, &type, &h, &r);
    return reinterpret_cast<ControlHandle>(h);
  }
  // The focused item's ID before the first key and after each; Escape ends
  // the modal loop after the last.
  std::vector<int> FocusAfter(const std::vector<std::function<void()>>& keys) {
    std::vector<int> seen;
    auto record = [&seen] { seen.push_back(GetDlgCtrlID(GetFocus())); };
    std::vector<std::function<void()>> steps = {record};
    for (const auto& key : keys) {
      steps.push_back(key);
      steps.push_back(record);
    }
    HWND w = Window();
    steps.push_back([w] { PostKey(w, VK_ESCAPE); });
    RunModal(steps);
    return seen;
  }
  void TearDown() override {
    KWE_PlayBack(0);
    if (dialog) DisposeDialog(dialog);
    DialogTest::TearDown();
  }
  DialogPtr dialog = nullptr;
};

Boolean KWE_CALL PassEverything(DialogPtr, EventRecord*, SInt16*) { return false; }

// Keys and clicks and the item each answers; the other windows are disabled
// while the loop runs and enabled again after it.
TEST_F(Modal, KeysAndClicksGiveTheirItems) {
  struct Case {
    const char* what;
    std::function<void(HWND)> input;
    SInt16 hit;
    SInt16 id = 200;
    ModalFilterProcPtr filter = nullptr;
  };
  const Case cases[] = {
      {"Return", [](HWND w) { PostKey(w, VK_RETURN); }, 1},
      {"Return under the application's filter", [](HWND w) { PostKey(w, VK_RETURN); }, 1, 200,
       PassEverything},
      {"keypad Enter",
       [](HWND w) { PostMessageA(w, WM_KEYDOWN, VK_RETURN, LPARAM(1 | (0x1C << 16) | (1 << 24))); },
       1},
      {"Escape", [](HWND w) { PostKey(w, VK_ESCAPE); }, 2},
      {"Command-period", [](HWND w) { PostKey(w, VK_OEM_PERIOD, false, true); }, 2},
      {"click on the check box", [](HWND w) { SendMessageA(GetDlgItem(w, 3), BM_CLICK, 0, 0); }, 3},
      {"click on Green", [](HWND w) { SendMessageA(GetDlgItem(w, 5), BM_CLICK, 0, 0); }, 5},
      {"click on Cancel", [](HWND w) { SendMessageA(GetDlgItem(w, 2), BM_CLICK, 0, 0); }, 2},
      {"a click anywhere in a dialog without buttons",
       [](HWND w) {
         PostMessageA(w, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(50, 50));
         PostMessageA(w, WM_LBUTTONUP, 0, MAKELPARAM(50, 50));
       },
       1, 201},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    dialog = Open(c.id);
    ASSERT_NE(dialog, nullptr);
    HWND w = Window();
    SInt16 hit = RunModal({[&] { EXPECT_FALSE(IsWindowEnabled(mainWindow)); }, [&] { c.input(w); }},
                          c.filter, {c.hit, 2});
    EXPECT_EQ(hit, c.hit);
    EXPECT_TRUE(IsWindowEnabled(mainWindow)) << "enabled again after the loop";
    DisposeDialog(dialog);
    dialog = nullptr;
  }
}

// A menu choice Windows delivered while the dialog was up (or just before)
// comes with a mouseDown in the menu bar; the loop takes that mouseDown, so
// the choice must not wait for the application's next MenuSelect, which
// would then answer every later choice one step late.
TEST_F(Modal, AMenuChoiceTheLoopTakesIsNotHandedBackLater) {
  InitMenus();
  dialog = Open(200);
  ASSERT_NE(dialog, nullptr);
  HWND w = Window();
  EXPECT_EQ(RunModal({[] { KWE_EventMenuSel(0x0105); }, [w] { PostKey(w, VK_RETURN); }}), 1);
  EXPECT_EQ(MenuSelect(Point{-1, -1}), 0);
}

// Edit item 7 has the focus after building; Tab goes on in item order,
// wrapping, and takes only the checked radio button (Green); the arrows
// click the next radio button of the run 4 to 6 (Down and Right forward, Up
// and Left backward), wrapping inside it.
TEST_F(Modal, TabAndArrowsWalkTheFocusableItems) {
  dialog = Open(200);
  ASSERT_NE(dialog, nullptr);
  SetControlValue(ControlOf(5), 1);
  HWND w = Window();
  auto key = [w](UINT vk, bool shift = false) { return [w, vk, shift] { PostKey(w, vk, shift); }; };
  std::vector<int> seen = FocusAfter({key(VK_TAB), key(VK_TAB), key(VK_TAB), key(VK_TAB),
                                      key(VK_TAB), key(VK_TAB, true), key(VK_UP), key(VK_UP),
                                      key(VK_DOWN), key(VK_RIGHT), key(VK_LEFT)});
  EXPECT_EQ(seen, (std::vector<int>{7, 1, 2, 3, 5, 7, 5, 4, 6, 4, 5, 4}));
  // Keys while the edit item is current answer with it; each arrow answers
  // the radio button it clicked.
  EXPECT_EQ(hits, (std::vector<SInt16>{7, 4, 6, 4, 5, 4, 2}));
}

TEST_F(Modal, TableOrderAndMnemonics) {
  dialog = Open(203);
  ASSERT_NE(dialog, nullptr);
  HWND w = Window();
  auto tab = [w] { PostKey(w, VK_TAB); };
  // The focus starts on the table's last entry (3); Tab follows the table's
  // order 5, 1, 3, then the items it leaves out (2, 4) in item order; Alt+N
  // on the static text "Name:" focuses its target, the edit item.
  EXPECT_EQ(FocusAfter({tab, tab, tab, [w] { PostKey(w, 'N', false, false, true); }}),
            (std::vector<int>{3, 4, 5, 1, 3}));
  EXPECT_EQ(hits.back(), 1) << "Escape without a Cancel button presses the default";
}

TEST_F(Modal, MultiLineReturnAndEscapeToAnotherDefault) {
  dialog = Open(202);
  ASSERT_NE(dialog, nullptr);
  HWND w = Window();
  HWND edit = GetDlgItem(w, 3);
  // Return in the multi-line field goes to the field (the hook hands it to
  // both); the standard filter leaves it there, so the loop runs on.
  bool runsOn = false;
  SInt16 hit = RunModal({[&] {
                           SendMessageA(edit, EM_SETSEL, 7, 7);
                           PostMessageA(edit, WM_CHAR, '\r', 1);
                           PostKey(w, VK_RETURN);
                         },
                         [&] { runsOn = true; }, [w] { PostKey(w, VK_ESCAPE); }});
  EXPECT_TRUE(runsOn) << "Return pressed the default button";
  EXPECT_EQ(hit, 1) << "Escape with a check box as item 2 presses item 1";
  char text[64];
  GetWindowTextA(edit, text, sizeof text);
  EXPECT_STREQ(text, "Several\r\n\r\nlines");
}

// The Macintosh idiom of a bold round rectangle around the default button:
// framed 4 pixels outside Cancel it makes Cancel the default and draws
// nothing; a frame around a whole group is drawn as it is.
TEST_F(Modal, FramingARoundRectAroundAButtonMakesItTheDefault) {
  dialog = Open(200);
  ASSERT_NE(dialog, nullptr);
  SetPort(dialog);
  PenSize(3, 3);
  Rect hug{146, 96, 174, 184};
  FrameRoundRect(&hug, 16, 16);
  EXPECT_EQ(GetWindowLongA(ItemChild(dialog, 2), GWL_STYLE) & 0xF, BS_DEFPUSHBUTTON);
  EXPECT_EQ(GetWindowLongA(ItemChild(dialog, 1), GWL_STYLE) & 0xF, BS_PUSHBUTTON);
  EXPECT_NE(Pixel(dialog, 97, 160), RGB(0, 0, 0)) << "the frame is not drawn";
  Rect group{5, 5, 140, 230};
  FrameRoundRect(&group, 16, 16);
  EXPECT_EQ(GetWindowLongA(ItemChild(dialog, 2), GWL_STYLE) & 0xF, BS_DEFPUSHBUTTON);
  EXPECT_EQ(Pixel(dialog, 6, 70), RGB(0, 0, 0)) << "a frame around a group is drawn";
  PenSize(1, 1);
}

int g_focusCalls = 0;
void KWE_CALL CountButtonFocus(HWND button, SInt16 id) {
  g_focusCalls += GetDlgCtrlID(button) == id;
}

// A check box without a title shows a focus rectangle at its left while it
// has the focus; a push button taking the focus tells the host's procedure.
TEST_F(Modal, UntitledItemsShowAFocusRectangle) {
  dialog = Open(210);
  ASSERT_NE(dialog, nullptr);
  KWE_SetButtonFocusHookProc(CountButtonFocus);
  g_focusCalls = 0;
  HWND w = Window();
  SetFocus(GetDlgItem(w, 3));
  auto column = [&] {
    std::vector<COLORREF> px;
    for (int v = 40; v < 57; ++v) px.push_back(Pixel(dialog, 38, v));
    return px;
  };
  std::vector<COLORREF> before = column();
  SetFocus(GetDlgItem(w, 2));
  EXPECT_NE(column(), before) << "the rectangle's left edge is drawn";
  SetFocus(GetDlgItem(w, 3));
  EXPECT_EQ(column(), before) << "and taken away again";
  SetFocus(GetDlgItem(w, 1));
  EXPECT_EQ(g_focusCalls, 1);
  KWE_SetButtonFocusHookProc(nullptr);
}

TEST_F(Modal, DialogSelectOutsideTheModalLoop) {
  dialog = Open(200);
  ASSERT_NE(dialog, nullptr);
  SendMessageA(GetDlgItem(Window(), 3), BM_CLICK, 0, 0);
  EventRecord e;
  DialogPtr which = nullptr;
  SInt16 hit = -7;
  bool found = false;
  for (int i = 0; i < 200 && !found; ++i) {
    if (!GetNextEvent(everyEvent, &e) || !IsDialogEvent(&e)) continue;
    found = DialogSelect(&e, &which, &hit);
  }
  EXPECT_TRUE(found);
  EXPECT_EQ(which, dialog);
  EXPECT_EQ(hit, 3);
  // A click on the static text hits it until the item is disabled.
  SetPort(dialog);
  EventRecord click{};
  click.what = mouseDown;
  click.where = Pt(50, 118);
  LocalToGlobal(&click.where);
  EXPECT_TRUE(DialogSelect(&click, &which, &hit));
  EXPECT_EQ(hit, 8);
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(dialog, 8, &type, &h, &r);
  SetDialogItem(dialog, 8, statText + itemDisable, h, &r);
  EXPECT_FALSE(DialogSelect(&click, &which, &hit));
  EventRecord none{};
  none.what = mouseDown;
  none.where = Pt(-30000, -30000);
  EXPECT_FALSE(DialogSelect(&none, &which, &hit));
  EXPECT_EQ(hit, -1);
  EXPECT_FALSE(IsDialogEvent(nullptr));
}

// What the application's filter saw of the record at each key, before the
// dialog handled it; the filter takes Q for an item of its own.
std::vector<int> g_lengthsSeen;

Boolean KWE_CALL WatchRecord(DialogPtr d, EventRecord* e, SInt16* itemHit) {
  if (e->what != keyDown) return false;
  if ((e->message & 0xDF) == 'Q') {
    *itemHit = 42;
    return true;
  }
  TEHandle te = PeekDialog(d)->textH;
  g_lengthsSeen.push_back(te ? (**te).teLength : -1);
  return false;
}

// Keys that reach the edit item in focus: typed into the control by the
// user (the record follows the control before the filter sees the key), or
// played back from a recording (KWE_PlayBack: no control saw them, so they
// are typed through TEKey on the dialog's record).
TEST_F(Modal, TypedAndPlayedBackKeysEndInTheControlAndTheRecord) {
  dialog = Open(204);
  ASSERT_NE(dialog, nullptr);
  struct Case {
    const char* what;
    bool playBack;
    bool onButton;           // OK has the focus, not the edit item
    std::vector<UINT> keys;  // virtual keys, posted one per tick
    std::string text;
    std::vector<int> seen;  // teLength as the filter saw it, key by key
  };
  const Case cases[] = {
      // The control took each character before its key event came round:
      // the filter already reads the longer text.
      {"typed", false, false, {'X', 'Y', 'Z'}, "abxyz", {3, 4, 5}},
      // Nothing typed into the control: the dialog types the keys through
      // TEKey after the filter, Backspace included.
      {"played back", true, false, {'X', 'Y', VK_BACK, 'Z'}, "abxz", {2, 3, 4, 3}},
      // With no edit item in focus nobody types them.
      {"played back to a button", true, true, {'X', 'Y'}, "ab", {2, 2}},
  };
  HWND w = Window();
  HWND edit = ItemChild(dialog, 2);
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    KWE_PlayBack(c.playBack);
    g_lengthsSeen.clear();
    // The text and caret are set once the modal loop has settled the focus
    // (its first focus upkeep selects the whole text of the edit item).
    std::vector<std::function<void()>> steps{[&] {
      SInt16 type;
      Handle item;
      Rect box;
      GetDialogItem(dialog, 2, &type, &item, &box);
      SetDialogItemText(item, PStr("\002ab"));
      SelectDialogItemText(dialog, 2, 2, 2);
      if (c.onButton) SetFocus(ItemChild(dialog, 1));
    }};
    for (UINT vk : c.keys)
      steps.push_back([=] {
        if (!c.playBack) PostMessageA(edit, WM_CHAR, WPARAM(vk | 0x20), 1);
        PostKey(w, vk);
      });
    steps.push_back([w] { PostKey(w, 'Q'); });
    EXPECT_EQ(RunModal(steps, WatchRecord, {42}), 42);
    KWE_PlayBack(0);
    char text[64] = "";
    GetWindowTextA(edit, text, sizeof text);
    EXPECT_EQ(text, c.text);
    EXPECT_EQ(g_lengthsSeen, c.seen);
    TEHandle te = PeekDialog(dialog)->textH;
    ASSERT_NE(te, nullptr);
    EXPECT_EQ(std::string(*(**te).hText, size_t((**te).teLength)), c.text);
    EXPECT_EQ((**te).selStart, SInt16(c.text.size()));
    DWORD start = 0, end = 0;
    SendMessageA(edit, EM_GETSEL, WPARAM(&start), LPARAM(&end));
    EXPECT_EQ(int(start), int(c.text.size())) << "the control's caret follows the record";
  }
}

}  // namespace
