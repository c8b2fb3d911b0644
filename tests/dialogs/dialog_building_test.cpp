// Dialogs made from 'DLOG', 'DITL' and 'KWED': one Win32 child per item of
// the class, place, text and style its type calls for; the private table's
// caption band, button exchange and mnemonics; bad resources; and what a
// dialog's life leaves behind in USER, GDI and the heap.
#include <gtest/gtest.h>

#include <cstring>

#include "Controls.h"
#include "Memory.h"
#include "Resources.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"

namespace {

using namespace kwe_test;

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
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, 4, &type, &h, &r);
  EXPECT_EQ(type, 8);
  EXPECT_EQ(reinterpret_cast<HWND>(h), ItemChild(d, 4));
  EXPECT_EQ(Show(r), "80,20,96,200");
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
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, 1, &type, &h, &r);
  // Items 2 and 3 are the first two push buttons only with bit 5 on items 1
  // and 2; here item 1 is the caption, so nothing is exchanged.
  std::vector<Child> children = ChildrenOf(hwnd);
  EXPECT_EQ(Find(children, 2)->place.top, 40 - 15) << "moved up by three quarters of the band";
  EXPECT_EQ(Find(children, 4)->text, "&Name:") << "the mnemonic marked";
  SetDialogItemText(h, PStr("\007Renamed"));
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
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, 2, &type, &h, &r);
  EXPECT_EQ(r.left, 20 + 16384) << "hidden twice moves once";
  EXPECT_FALSE(IsWindowVisible(text));
  EXPECT_EQ(FindDialogItem(d, Pt(30, 45)), -1);
  ShowDialogItem(d, 2);
  GetDialogItem(d, 2, &type, &h, &r);
  EXPECT_EQ(r.left, 20);
  EXPECT_TRUE(IsWindowVisible(text));
  EXPECT_EQ(FindDialogItem(d, Pt(30, 45)), 1);
  EXPECT_EQ(FindDialogItem(d, Pt(30, 15)), 0);
  Rect moved{60, 30, 80, 150};
  SetDialogItem(d, 2, statText + itemDisable, h, &moved);
  EXPECT_EQ(ChildrenOf(HwndOfDialog(d))[1].place.left, 30);
  EXPECT_EQ(FindDialogItem(d, Pt(40, 70)), 1) << "found at its new place";
  // Missing items leave every out parameter 0.
  for (SInt16 item : {SInt16(0), SInt16(3), SInt16(-1), SInt16(32767)}) {
    type = 99;
    h = reinterpret_cast<Handle>(1);
    r = Rect{1, 1, 1, 1};
    GetDialogItem(d, item, &type, &h, &r);
    EXPECT_EQ(type, 0);
    EXPECT_EQ(h, nullptr);
    EXPECT_EQ(Show(r), "0,0,0,0");
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
  EXPECT_EQ(GetWRefCon(d), 7);
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
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, 4, &type, &h, &r);
  EXPECT_EQ(Show(r), "90,20,106,200");
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
  Str255 text;
  SInt16 type;
  Handle h;
  Rect r;
  GetDialogItem(d, 1, &type, &h, &r);
  GetDialogItemText(h, text);
  EXPECT_EQ(AsString(text), "one and t\x8Ewo&!");
  char ansi[64];
  GetWindowTextA(ItemChild(d, 1), ansi, sizeof ansi);
  EXPECT_STREQ(ansi, "one and t\xE9wo&&!");
  GetDialogItem(d, 2, &type, &h, &r);
  GetDialogItemText(h, text);
  EXPECT_EQ(AsString(text), "one") << "a parameter expanded once when it is set";
  // Every Macintosh character that has an ANSI form, and two lines in the
  // multi-line edit item, come back as they went.
  std::string all;
  for (int c = 0x20; c < 0x100; ++c)
    if (c != 0x7F && c < 0xD9) all += char(c);
  GetDialogItem(d, 3, &type, &h, &r);
  for (size_t at = 0; at < all.size(); at += 100) {
    std::string part = all.substr(at, 100) + "\r2nd";
    Str255 in{UInt8(part.size())};
    std::memcpy(in + 1, part.data(), part.size());
    SetDialogItemText(h, in);
    GetDialogItemText(h, text);
    EXPECT_EQ(AsString(text), part) << "from " << at;
  }
  EXPECT_NE(GetWindowLongA(ItemChild(d, 3), GWL_STYLE) & ES_MULTILINE, 0);
  // Later ParamText reaches the static text through KWE_UpdateParamStr.
  ParamText(PStr("\003ONE"), nullptr, nullptr, nullptr);
  KWE_UpdateParamStr(d, 0);
  GetDialogItem(d, 1, &type, &h, &r);
  GetDialogItemText(h, text);
  EXPECT_EQ(AsString(text), "ONE and t\x8Ewo&!");
  GetDialogItemText(nullptr, text);
  EXPECT_EQ(text[0], 0);
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

}  // namespace
