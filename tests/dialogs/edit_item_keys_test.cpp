// Keys that reach a modal dialog with an edit item in focus: typed into the
// edit control by the user (the record follows the control before the
// filter sees the key), or played back from a recording (KWE_PlayBack set:
// no control saw them, so they are typed through TEKey on the dialog's
// record). Keys are posted from a timer while ModalDialog runs; the control's
// text is read back from USER and the record's fields from textH.
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "KWEEvents.h"
#include "TextEdit.h"
#include "dialogs/dialog_text.h"
#include "dialogs/dialogs_fixture.h"

namespace {

using namespace kwe_test;

// What the application's filter saw of the record at each key, before the
// dialog handled it.
std::vector<int> g_lengthsSeen;

Boolean KWE_CALL WatchRecord(DialogPtr d, EventRecord* e, SInt16* itemHit) {
  if (e->what != keyDown) return false;
  if ((e->message & 0xFF) == 27) {
    *itemHit = 1;
    return true;
  }
  TEHandle te = PeekDialog(d)->textH;
  g_lengthsSeen.push_back(te ? (**te).teLength : -1);
  return false;
}

class EditItemKeys : public DialogTest {
 protected:
  void SetUp() override {
    DialogTest::SetUp();
    Resources(DialogTemplate(300, 60, 60, 200, 320, 300) +
              ItemList(300, {{100, 160, 120, 240, 4, "OK"}, {20, 20, 36, 240, 16, "ab"}}));
    dialog = GetNewDialog(300, nullptr, InFront());
    ASSERT_NE(dialog, nullptr);
    SelectWindow(dialog);
    Drain();
  }
  void TearDown() override {
    KWE_PlayBack(0);
    if (dialog) DisposeDialog(dialog);
    DialogTest::TearDown();
  }
  std::string ControlText() {
    char text[64] = "";
    GetWindowTextA(ItemChild(dialog, 2), text, sizeof text);
    return text;
  }
  DialogPtr dialog = nullptr;
};

TEST_F(EditItemKeys, TypedAndPlayedBackKeysEndInTheControlAndTheRecord) {
  struct Case {
    const char* what;
    bool playBack;
    bool onButton;           // OK has the focus, not the edit item
    std::vector<UINT> keys;  // virtual keys, posted one per tick
    std::string text;
    std::vector<int> seen;     // teLength as the filter saw it, key by key
    bool interrupted = false;  // another window is active for a while after the first key
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
      // Coming back to the dialog keeps the caret where the user left it.
      {"typed around another window", false, false, {'X', 'Y'}, "abxy", {3, 4}, true},
  };
  HWND w = HwndOfDialog(dialog);
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
    HWND other = nullptr;
    for (UINT vk : c.keys) {
      steps.push_back([=] {
        if (!c.playBack) PostMessageA(edit, WM_CHAR, WPARAM(vk | 0x20), 1);
        PostKey(w, vk);
      });
      if (c.interrupted && vk == c.keys.front()) {
        steps.push_back([&] {
          other = CreateWindowExA(0, "STATIC", "other", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50,
                                  nullptr, nullptr, nullptr, nullptr);
          SetForegroundWindow(other);
        });
        steps.push_back([&] { DestroyWindow(other); });
        steps.push_back([w] { SetForegroundWindow(w); });
      }
    }
    steps.push_back([w] { PostKey(w, VK_ESCAPE); });
    EXPECT_EQ(RunModal(steps, WatchRecord, {1}), 1) << "every key answers the edit item, 2";
    KWE_PlayBack(0);
    EXPECT_EQ(ControlText(), c.text);
    EXPECT_EQ(g_lengthsSeen, c.seen);
    TEHandle te = PeekDialog(dialog)->textH;
    ASSERT_NE(te, nullptr);
    EXPECT_EQ((**te).teLength, SInt16(c.text.size()));
    EXPECT_EQ((**te).selStart, SInt16(c.text.size()));
    EXPECT_EQ(std::string(*(**te).hText, size_t((**te).teLength)), c.text);
    DWORD start = 0, end = 0;
    SendMessageA(edit, EM_GETSEL, WPARAM(&start), LPARAM(&end));
    EXPECT_EQ(int(start), int(c.text.size())) << "the control's caret follows the record";
  }
}

}  // namespace
