// The Dialog Manager through the DLL, read back from USER: dialogs made from
// 'DLOG', 'DITL' and 'KWED' (one Win32 child per item, the private table's
// caption band, button exchange and mnemonics, bad resources, a flat
// footprint); ModalDialog, DialogSelect and the keyboard driven by input
// posted while the modal call runs; and alerts: stages, icons, buttons.
#include <gtest/gtest.h>

#include <cstring>

#include "Controls.h"
#include "KWEEvents.h"
#include "KWEMenus.h"
#include "Memory.h"
#include "Menus.h"
#include "Resources.h"
#include "TextEdit.h"
#include "dialogs/dialogs_fixture.h"

namespace kwe_test {
namespace {

const Child* Find(const std::vector<Child>& children, int id) {
  for (const Child& c : children)
    if (c.id == id) return &c;
  return nullptr;
}

class Building : public DialogTest {};

TEST_F(Building, EveryItemTypeBecomesItsChild) {
  Resources(DialogTemplate(128, 60, 60, 260, 360, 128) +
            ItemList(128, {{10, 20, 30, 100, 4, "OK"},
                           {40, 20, 56, 120, 5, "Wrap"},
                           {60, 20, 76, 120, 6, "Red"},
                           {80, 20, 96, 200, 8, "Caf\x8E & bar"},
                           {100, 20, 116, 200, 16, "Name"},
                           {120, 20, 121, 200, 4, ""},
                           {130, 20, 148, 60, 0, ""},
                           {130, 100, 162, 132, 32 + 128, "1000"},
                           {170, 20, 190, 60, 3, "x"}}));
  DialogPtr d = GetNewDialog(128, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(GetFocus(), ItemChild(d, 5)) << "the edit item has the focus";
  std::vector<Child> children = ChildrenOf(HwndOfDialog(d));
  EXPECT_EQ(children.size(), 8u) << "type 3 has no window";
  struct Expect {
    int id;
    const char* cls;
    DWORD styleMask, style;
    const char* text;
    int top, left, right;  // -1: not checked
  };
  const Expect table[] = {
      {1, "button", 0xF, BS_DEFPUSHBUTTON, "OK", 10, 20, 100},
      {2, "button", 0xF, BS_CHECKBOX, "Wrap", 40, 20, 122},
      {3, "button", 0xF, BS_RADIOBUTTON, "Red", 58, 20, 121},
      {4, "static", 0xFFFFFFFF, 0x50000000, "Caf\xE9 && bar", 80, 20, 200},
      {5, "edit", WS_BORDER | ES_MULTILINE, WS_BORDER, "Name", -1, 20, 204},
      {6, "static", 0xFFFFFFFF, 0x50000004, "", 120, 20, 200},
      {7, "button", 0xFFFFFFFF, 0x5800000B, "", 130, 20, 60},
      {8, "button", 0xFFFFFFFF, 0x5800000B, "", 130, 100, 132},
  };
  for (const Expect& e : table) {
    SCOPED_TRACE(e.id);
    const Child* c = Find(children, e.id);
    ASSERT_NE(c, nullptr);
    EXPECT_EQ(c->cls, e.cls);
    EXPECT_EQ(c->style & e.styleMask, e.style);
    EXPECT_EQ(c->text, e.text);
    if (e.top >= 0) {
      EXPECT_EQ(c->place.top, e.top);
    }
    EXPECT_EQ(c->place.left, e.left);
    EXPECT_EQ(c->place.right, e.right);
  }
  EXPECT_EQ(Find(children, 4)->place.bottom, 95) << "static text one pixel shorter";
  EXPECT_EQ(Find(children, 7)->place.bottom, 150) << "an 18-pixel user item grows by 2";
  const Child* edit = Find(children, 5);
  EXPECT_NEAR((edit->place.top + edit->place.bottom) / 2.0, 108, 1.0) << "centred on its item";
  DialogItem text = ItemOf(d, 4);
  EXPECT_EQ(text.type, 8);
  EXPECT_EQ(reinterpret_cast<HWND>(text.h), ItemChild(d, 4));
  EXPECT_EQ(Show(text.r), "80,20,96,200");
  EXPECT_EQ(CountDITL(d), 9);
  DisposeDialog(d);
}

TEST_F(Building, PrivateTableGivesCaptionMnemonicsAndButtonOrder) {
  Resources(DialogTemplate(130, 60, 60, 200, 300, 130) +
            ItemList(130, {{4, 10, 16, 200, 8, "Find things"},
                           {40, 20, 60, 100, 4, "OK"},
                           {40, 120, 60, 200, 4, "Cancel"},
                           {70, 20, 86, 100, 8, "Name:"},
                           {70, 110, 86, 230, 16, ""},
                           {5, 220, 15, 230, 4, "Hidden"}}) +
            PrivateTableText(130, 20, 0x20, {{4, 5, 'N', 0}}) +
            DialogTemplate(131, 60, 60, 200, 300, 131) +
            ItemList(131, {{40, 20, 60, 100, 4, "OK"}, {40, 120, 60, 200, 4, "Cancel"}}) +
            PrivateTableText(131, 0, 0x20, {}));
  DialogPtr d = GetNewDialog(130, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  HWND hwnd = HwndOfDialog(d);
  char title[64] = "";
  GetWindowTextA(hwnd, title, sizeof title);
  EXPECT_STREQ(title, "Find things");
  EXPECT_EQ(ItemChild(d, 1), nullptr) << "the caption has no child";
  EXPECT_EQ(ItemChild(d, 6), nullptr) << "a button in the band is not made";
  // Items 2 and 3 are the first two push buttons only with bit 5 on items 1
  // and 2; here item 1 is the caption, so nothing is exchanged.
  std::vector<Child> children = ChildrenOf(hwnd);
  EXPECT_EQ(Find(children, 2)->place.top, 40 - 15) << "moved up by three quarters of the band";
  EXPECT_EQ(Find(children, 4)->text, "&Name:") << "the mnemonic marked";
  SetDialogItemText(ItemOf(d, 1).h, PStr("\007Renamed"));
  GetWindowTextA(hwnd, title, sizeof title);
  EXPECT_STREQ(title, "Renamed");
  DisposeDialog(d);
  // Bit 5 with push buttons as items 1 and 2 exchanges their places.
  d = GetNewDialog(131, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  children = ChildrenOf(HwndOfDialog(d));
  EXPECT_EQ(Find(children, 1)->place.left, 120);
  EXPECT_EQ(Find(children, 1)->text, "OK");
  EXPECT_EQ(Find(children, 2)->place.left, 20);
  DisposeDialog(d);
}

TEST_F(Building, ItemAccessKeepsChildrenInStep) {
  Resources(DialogTemplate(132, 60, 60, 200, 300, 132) +
            ItemList(132, {{10, 20, 30, 100, 4, "OK"}, {40, 20, 56, 200, 8, "Text"}}));
  DialogPtr d = GetNewDialog(132, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  HWND text = ItemChild(d, 2);
  for (int round = 0; round < 2; ++round) HideDialogItem(d, 2);
  EXPECT_EQ(ItemOf(d, 2).r.left, 20 + 16384) << "hidden twice moves once";
  EXPECT_FALSE(IsWindowVisible(text));
  EXPECT_EQ(FindDialogItem(d, Pt(30, 45)), -1);
  ShowDialogItem(d, 2);
  EXPECT_EQ(ItemOf(d, 2).r.left, 20);
  EXPECT_TRUE(IsWindowVisible(text));
  EXPECT_EQ(FindDialogItem(d, Pt(30, 45)), 1);
  EXPECT_EQ(FindDialogItem(d, Pt(30, 15)), 0);
  Rect moved{60, 30, 80, 150};
  SetDialogItem(d, 2, statText + itemDisable, ItemOf(d, 2).h, &moved);
  EXPECT_EQ(ChildrenOf(HwndOfDialog(d))[1].place.left, 30);
  EXPECT_EQ(FindDialogItem(d, Pt(40, 70)), 1) << "found at its new place";
  // Missing items leave every out parameter 0.
  for (SInt16 item : {SInt16(0), SInt16(3), SInt16(-1), SInt16(32767)}) {
    SInt16 type = 99;
    Handle h = reinterpret_cast<Handle>(1);
    Rect r{1, 1, 1, 1};
    GetDialogItem(d, item, &type, &h, &r);
    EXPECT_EQ(Show(r) + " " + std::to_string(type) + (h ? " h" : ""), "0,0,0,0 0") << item;
    SetDialogItem(d, item, 0, nullptr, &moved);
    HideDialogItem(d, item);
  }
  EXPECT_EQ(CountDITL(d), 2);
  DisposeDialog(d);
}

// NewDialog on the application's storage and item list; items appended
// over the others or after them, and the list shortened again.
TEST_F(Building, NewDialogThenAppendAndShortenTheItemList) {
  Resources(ItemList(135, {{10, 20, 30, 100, 4, "OK"}, {40, 20, 56, 200, 8, "Text"}}) +
            ItemList(136, {{70, 20, 86, 200, 5, "More"}, {90, 20, 106, 200, 16, "Field"}}));
  Handle list = GetResource(0x4449544C, 135);  // 'DITL'
  ASSERT_NE(list, nullptr);
  DetachResource(list);
  Rect bounds{60, 60, 260, 360};
  DialogRecord storage;
  DialogPtr d =
      NewDialog(&storage, &bounds, PStr("\x04Mine"), true, dBoxProc, InFront(), false, 7, list);
  ASSERT_EQ(d, reinterpret_cast<DialogPtr>(&storage));
  EXPECT_TRUE(IsWindowVisible(HwndOfDialog(d)));
  Handle more = GetResource(0x4449544C, 136);  // 'DITL'
  ASSERT_NE(more, nullptr);
  AppendDITL(d, more, appendDITLBottom);
  EXPECT_EQ(capture.Reports(), (std::vector<std::string>{"AppendDITL"}));
  EXPECT_EQ(CountDITL(d), 2);
  AppendDITL(d, more, overlayDITL);
  EXPECT_EQ(CountDITL(d), 4);
  std::vector<Child> children = ChildrenOf(HwndOfDialog(d));
  ASSERT_EQ(children.size(), 4u);
  EXPECT_EQ(Find(children, 3)->text, "More");
  EXPECT_EQ(Find(children, 4)->cls, "edit");
  EXPECT_EQ(Show(ItemOf(d, 4).r), "90,20,106,200");
  ShortenDITL(d, 3);
  EXPECT_EQ(CountDITL(d), 1);
  EXPECT_EQ(ChildrenOf(HwndOfDialog(d)).size(), 1u);
  ShortenDITL(d, 5);
  EXPECT_EQ(CountDITL(d), 0);
  EXPECT_TRUE(ChildrenOf(HwndOfDialog(d)).empty());
  CloseDialog(d);
  EXPECT_FALSE(IsWindow(HwndOfDialog(d)));
  DisposeHandle(list);
}

TEST_F(Building, TextRoundTripsInTheMacintoshSet) {
  Resources(DialogTemplate(133, 60, 60, 260, 360, 133) +
            ItemList(133, {{10, 20, 26, 200, 8, "^0 and ^1^3"},
                           {40, 20, 56, 200, 16, "^2"},
                           {60, 20, 140, 200, 16, ""}}));
  ParamText(PStr("\003one"), PStr("\005t\216wo&"), PStr("\002^0"), PStr("\001!"));
  DialogPtr d = GetNewDialog(133, nullptr, InFront());
  ASSERT_NE(d, nullptr);
  EXPECT_EQ(TextOfItem(d, 1), "one and t\x8Ewo&!");
  char ansi[64];
  GetWindowTextA(ItemChild(d, 1), ansi, sizeof ansi);
  EXPECT_STREQ(ansi, "one and t\xE9wo&&!");
  EXPECT_EQ(TextOfItem(d, 2), "one") << "a parameter expanded once when it is set";
  // Two lines in the multi-line edit item: a CR-LF pair in the control, one
  // return in the item's text.
  SetDialogItemText(ItemOf(d, 3).h, PStr("\012t\216wo &\r2nd"));
  EXPECT_EQ(TextOfItem(d, 3), "t\216wo &\r2nd");
  char lines[64];
  GetWindowTextA(ItemChild(d, 3), lines, sizeof lines);
  EXPECT_STREQ(lines, "t\xE9wo &\r\n2nd");
  // Later ParamText reaches the static text through KWE_UpdateParamStr.
  ParamText(PStr("\003ONE"), nullptr, nullptr, nullptr);
  KWE_UpdateParamStr(d, 0);
  EXPECT_EQ(TextOfItem(d, 1), "ONE and t\x8Ewo&!");
  DisposeDialog(d);
}

// Resources a careless tool or a damaged file gives: the call answers null
// or makes a dialog of the items that are whole. Over a hundred rounds with
// a whole dialog of every kind of item, nothing grows.
TEST_F(Building, DamagedResourcesLeaveNothingBehind) {
  std::string bad = DialogTemplate(140, 60, 60, 200, 300, 999) +  // no such 'DITL'
                    DialogTemplate(141, 60, 60, 200, 300, 141) +
                    ItemList(141, {}, -1) +  // count -1: no items
                    DialogTemplate(142, 60, 60, 200, 300, 142) +
                    ItemList(142, {{10, 20, 30, 100, 4, "OK"}}, 40) +  // count past the end
                    DialogTemplate(143, 60, 60, 200, 300, 143) +
                    ItemList(143, {{30, 200, 10, 20, 4, "Inverted"},
                                   {-30000, -30000, 30000, 30000, 8, "Huge"},
                                   {10, 10, 20, 20, 99, "?"},
                                   {10, 10, 20, 20, 255, "!"}}) +
                    PrivateTableText(143, 0, 0xDF, {{0, 77, 'Q', 0xFF}, {200, 1, 0, 1}}) +
                    "resource 'DLOG' 144\n  words 1 2 3\n" +  // cut short
                    "resource 'KWED' 142\n  hex 10\n" +       // cut inside its header
                    DialogTemplate(150, 60, 60, 200, 300, 150) +
                    ItemList(150, {{10, 20, 30, 100, 4, "OK"},
                                   {40, 20, 56, 120, 5, "Wrap"},
                                   {60, 20, 76, 120, 8, "^0"},
                                   {80, 20, 96, 200, 16, "Name"},
                                   {100, 20, 118, 60, 0, ""}});
  Resources(bad);
  int windows = CountUserWindows();
  Footprint before{};
  struct Case {
    SInt16 id;
    bool made;
    int items, children;
  };
  const Case cases[] = {{140, false, 0, 0}, {141, true, 0, 0},  {142, true, 1, 1},
                        {143, true, 4, 2},  {144, false, 0, 0}, {145, false, 0, 0},
                        {150, true, 5, 5}};
  // Later rounds leave what the first did.
  for (int round = 0; round < 60; ++round)
    for (const Case& c : cases) {
      SCOPED_TRACE(c.id);
      if (round == 10 && c.id == cases[0].id) {
        Drain();
        before = Now();
      }
      DialogPtr d = GetNewDialog(c.id, nullptr, InFront());
      ASSERT_EQ(d != nullptr, c.made);
      if (!d) continue;
      EXPECT_EQ(CountDITL(d), c.items);
      EXPECT_EQ(int(ChildrenOf(HwndOfDialog(d)).size()), c.children);
      DisposeDialog(d);
      EXPECT_EQ(CountUserWindows(), windows);
    }
  Drain();
  EXPECT_TRUE(Flat(before, Now()));
}

TEST_F(Building, MoreDialogsThanTheTableHoldsStillWork) {
  Resources(DialogTemplate(151, 60, 60, 120, 200, 151) +
            ItemList(151, {{10, 20, 30, 100, 4, "OK"}}));
  std::vector<DialogPtr> open;
  for (int i = 0; i < 48; ++i) open.push_back(GetNewDialog(151, nullptr, InFront()));
  // The message box is modal: the capture's hook reads it and presses OK.
  DialogPtr extra = GetNewDialog(151, nullptr, InFront());
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"Too many Dialogs"});
  ASSERT_NE(extra, nullptr);
  EXPECT_EQ(ChildrenOf(HwndOfDialog(extra)).size(), 1u);
  DisposeDialog(extra);
  for (DialogPtr d : open) {
    ASSERT_NE(d, nullptr);
    DisposeDialog(d);
  }
}

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
    HWND w = Window();
    SInt16 hit = RunModal({[&] { EXPECT_FALSE(IsWindowEnabled(mainWindow)); }, [&] { c.input(w); }},
                          c.filter, {c.hit, 2});
    EXPECT_EQ(hit, c.hit) << "answers " << ::testing::PrintToString(hits);
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
  SetControlValue(reinterpret_cast<ControlHandle>(ItemOf(dialog, 5).h), 1);
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

// Another window takes the activation and goes: the focus returns to the
// radio button the arrow key moved it to, though the application has not
// checked it (Tab passes over it), and not to the default button.
TEST_F(Modal, ComingBackFindsTheFocusWhereTheArrowLeftIt) {
  dialog = Open(200);
  SetControlValue(reinterpret_cast<ControlHandle>(ItemOf(dialog, 5).h), 1);
  HWND w = Window(), other = nullptr;
  std::vector<int> seen =
      FocusAfter({[w] { PostKey(w, VK_TAB, true); }, [w] { PostKey(w, VK_UP); },
                  [&other] {
                    other = CreateWindowExA(0, "STATIC", "", WS_POPUP | WS_VISIBLE, 400, 400, 50,
                                            50, nullptr, nullptr, nullptr, nullptr);
                    SetForegroundWindow(other);
                  },
                  [&other, w] {
                    DestroyWindow(other);
                    SetForegroundWindow(w);
                  }});
  EXPECT_EQ(seen, (std::vector<int>{7, 5, 4, 4, 4}));
}

TEST_F(Modal, TableOrderAndMnemonics) {
  dialog = Open(203);
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
  DialogItem text = ItemOf(dialog, 8);
  SetDialogItem(dialog, 8, statText + itemDisable, text.h, &text.r);
  EXPECT_FALSE(DialogSelect(&click, &which, &hit));
  EventRecord none{};
  none.what = mouseDown;
  none.where = Pt(-30000, -30000);
  EXPECT_FALSE(DialogSelect(&none, &which, &hit));
  EXPECT_EQ(hit, -1);
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
      SetDialogItemText(ItemOf(dialog, 2).h, PStr("\002ab"));
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

struct Seen {
  int beeps = 0;
  int defaultButton = 0;  // the item whose child USER shows as the default
  std::string iconItem;
  HICON icon = nullptr;
  std::vector<std::string> buttons;  // "left,width" of items 1..3 as USER has them
  std::string firstItemRect;
} g_seen;

void KWE_CALL CountBeeps(SInt16 n) { g_seen.beeps += n; }

// Looks at the alert once it runs, then answers with its default item.
Boolean KWE_CALL Inspect(DialogPtr d, EventRecord*, SInt16* itemHit) {
  DialogItem last = ItemOf(d, CountDITL(d));
  g_seen.iconItem = std::to_string(last.type) + "@" + Show(last.r);
  if (last.type == iconItem + itemDisable && last.h && *last.h)
    g_seen.icon = reinterpret_cast<HICON>(intptr_t(*reinterpret_cast<SInt32*>(*last.h)));
  for (const Child& c : ChildrenOf(HwndOfDialog(d))) {
    if (c.cls != "button" || c.id > 3) continue;
    if ((c.style & 0xF) == BS_DEFPUSHBUTTON) g_seen.defaultButton = c.id;
    g_seen.buttons.push_back(std::to_string(c.place.left) + "," +
                             std::to_string(c.place.right - c.place.left));
  }
  g_seen.firstItemRect = Show(ItemOf(d, 1).r);
  *itemHit = PeekDialog(d)->aDefItem;
  return true;
}

class Alerts : public DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    ErrorSound(CountBeeps);
    Resources(AlertText(300, 60, 60, 160, 360, 300, Stage(false, true, 1), Stage(true, true, 2),
                        Stage(false, false, 3), Stage(true, true, 0)) +
              ItemList(300, {{70, 200, 90, 280, 4, "OK"},
                             {70, 100, 90, 180, 4, "Cancel"},
                             {10, 60, 50, 280, 8, "Save changes?"}}) +
              AlertText(301, 60, 60, 160, 360, 301, Stage(false, true, 0), Stage(false, true, 0),
                        Stage(false, true, 0), Stage(false, true, 0)) +
              ItemList(301, {{70, 20, 90, 100, 4, "OK"}, {10, 60, 50, 280, 8, "Done."}}) +
              AlertText(302, 60, 60, 160, 360, 999, 15, 15, 15, 15) +
              "resource 'ALRT' 303\n  words 1 2 3\n");
  }
  SInt16 Run(SInt16 (*call)(SInt16, ModalFilterProcPtr), SInt16 id) {
    g_seen = Seen{};
    return call(id, Inspect);
  }
};

TEST_F(Alerts, StagesDecideShownBeepsAndDefault) {
  struct Step {
    SInt16 result;
    int beeps;
    SInt16 def;
    SInt16 stage;
  };
  // Stage 3 is not shown; the fifth call stays at stage 4.
  const Step steps[] = {{1, 1, 1, 0}, {2, 2, 2, 1}, {-1, 0, 0, 2}, {2, 0, 2, 3}, {2, 0, 2, 3}};
  for (size_t i = 0; i < std::size(steps); ++i) {
    SCOPED_TRACE(i + 1);
    EXPECT_EQ(Run(Alert, 300), steps[i].result);
    EXPECT_EQ(g_seen.beeps, steps[i].beeps);
    EXPECT_EQ(g_seen.defaultButton, steps[i].def);
    EXPECT_EQ(GetAlertStage(), steps[i].stage);
  }
  ResetAlertStage();
  EXPECT_EQ(GetAlertStage(), -1);
  EXPECT_EQ(Run(Alert, 300), 1) << "stage 1 again";
  EXPECT_EQ(Run(NoteAlert, 301), 1);
  EXPECT_EQ(GetAlertStage(), 0) << "another alert starts at stage 1";
}

TEST_F(Alerts, IconsAndButtonPlaces) {
  struct Case {
    SInt16 (*call)(SInt16, ModalFilterProcPtr);
    LPCSTR icon;
  };
  const Case cases[] = {
      {StopAlert, IDI_HAND}, {NoteAlert, IDI_ASTERISK}, {CautionAlert, IDI_QUESTION}};
  for (const Case& c : cases) {
    ResetAlertStage();
    EXPECT_EQ(Run(c.call, 300), 1);
    EXPECT_EQ(g_seen.iconItem, "160@20,10,52,42");
    EXPECT_EQ(g_seen.icon, LoadIconA(nullptr, c.icon));
    // OK, right of Cancel in the resource, comes up at its left.
    EXPECT_EQ(g_seen.buttons, (std::vector<std::string>{"100,80", "200,80"}));
  }
  Run(Alert, 301);
  EXPECT_EQ(g_seen.iconItem, "8@10,60,50,280") << "no icon item";
  EXPECT_EQ(g_seen.buttons, (std::vector<std::string>{"110,80"})) << "a lone button is centred";
  EXPECT_EQ(g_seen.firstItemRect, "70,110,90,170");
}

TEST_F(Alerts, BadAlertsAnswerMinusOneAndLeaveNothing) {
  Drain();
  int windows = CountUserWindows();
  for (SInt16 id : {SInt16(302), SInt16(303), SInt16(304)}) {
    SCOPED_TRACE(id);
    EXPECT_EQ(Run(StopAlert, id), -1);
    EXPECT_EQ(CountUserWindows(), windows);
  }
  // What the first alerts leave (USER's and GDI's caches) stays as it is
  // over the next hundred.
  for (int i = 0; i < 20; ++i) Run(i % 2 ? NoteAlert : Alert, 301);
  Drain();
  Footprint before = Now();
  for (int i = 0; i < 100; ++i) Run(i % 2 ? NoteAlert : Alert, 301);
  Drain();
  EXPECT_TRUE(Flat(before, Now()));
}

// A lone button is centred at its own width while its item is made 60
// pixels wide: a press on the part of the button past the item's rectangle
// still answers the alert, at once rather than at the Escape that WhileModal
// presses a second later.
TEST_F(Alerts, APressOnTheLoneButtonsRightPartAnswersIt) {
  DWORD pressed = 0;
  SInt16 hit = 0;
  WhileModal({[&] {
               HWND alert = HwndOfDialog(FrontWindow()), ok = GetDlgItem(alert, 1);
               RECT r;
               GetWindowRect(ok, &r);
               SetCursorPos(r.right - 5, (r.top + r.bottom) / 2);
               PostMessageA(alert, WM_COMMAND, MAKEWPARAM(1, BN_CLICKED),
                            reinterpret_cast<LPARAM>(ok));
               pressed = GetTickCount();
             }},
             [&] { hit = Alert(301, nullptr); });
  EXPECT_EQ(hit, 1);
  EXPECT_LT(GetTickCount() - pressed, 500u) << "answered by the press, not by Escape";
}

}  // namespace
}  // namespace kwe_test
