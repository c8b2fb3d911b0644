// Windows messages, posted to a host window whose procedure forwards them as
// a host's does, come back from GetNextEvent as Toolbox events.
#include "KWECharacters.h"
#include "events/event_host_window.h"

namespace {

using kwe_test::EventTest;
using TranslationTest = EventTest;

constexpr LPARAM kQScan = 0x00100001;  // repeat 1, scan code of Q

TEST_F(TranslationTest, ClicksInTheContentAreGlobalMouseDownsAndUps) {
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, MAKELPARAM(10, 20));
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(10, 20));
  PostMessageA(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(11, 21));
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(11, 21));
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 4u);
  const UInt16 expected[] = {mouseDown, mouseUp, mouseDown, mouseUp};
  for (size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(events[i].what, expected[i]);
    EXPECT_EQ(events[i].message, 0u);
    EXPECT_EQ(events[i].modifiers & btnState, expected[i] == mouseUp ? btnState : 0);
    EXPECT_LE(TickCount() - events[i].when, 4u);
  }
  Point first = GlobalPoint(10, 20), last = GlobalPoint(11, 21);
  EXPECT_EQ(events[0].where.h, first.h);
  EXPECT_EQ(events[0].where.v, first.v);
  EXPECT_EQ(events[0].modifiers & (shiftKey | cmdKey), shiftKey);
  EXPECT_EQ(events[3].where.h, last.h);
  EXPECT_EQ(events[3].where.v, last.v);
  EXPECT_EQ(vars.ButtonState, 1);
}

TEST_F(TranslationTest, RightClicksMakeNoEventsByDefault) {
  PostMessageA(window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 3));
  PostMessageA(window, WM_RBUTTONUP, 0, MAKELPARAM(3, 3));
  EXPECT_TRUE(DrainEvents().empty());
}

class RightButtonEventsTest : public EventTest {
  UInt32 SessionFlags() const override { return kweFlagRightButtonEvents; }
};
class RightButtonControlKeyTest : public EventTest {
  UInt32 SessionFlags() const override { return kweFlagRightButtonControlKey; }
};

TEST_F(RightButtonEventsTest, RightClicksAreOrdinaryClicks) {
  PostMessageA(window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 3));
  PostMessageA(window, WM_RBUTTONUP, 0, MAKELPARAM(3, 3));
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].what, mouseDown);
  EXPECT_EQ(events[0].modifiers & controlKey, 0);
  EXPECT_EQ(events[1].what, mouseUp);
}

TEST_F(RightButtonControlKeyTest, RightClicksCarryControlKey) {
  PostMessageA(window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(3, 3));
  PostMessageA(window, WM_RBUTTONUP, 0, MAKELPARAM(3, 3));
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 3u);
  EXPECT_EQ(events[0].modifiers & controlKey, controlKey);
  EXPECT_EQ(events[1].modifiers & controlKey, controlKey);
  EXPECT_EQ(events[2].modifiers & controlKey, 0);
}

TEST_F(TranslationTest, CtrlQIsCommandQAndItsCharacterAddsNothing) {
  HoldKeys({VK_CONTROL});
  PostMessageA(window, WM_KEYDOWN, 'Q', kQScan);
  PostMessageA(window, WM_KEYUP, 'Q', kQScan | LPARAM(0xC0000000));
  std::vector<EventRecord> events = DrainEvents();
  SetEventMask(everyEvent);  // key-ups are dropped under the default mask
  PostMessageA(window, WM_KEYDOWN, 'Q', kQScan);
  PostMessageA(window, WM_KEYUP, 'Q', kQScan | LPARAM(0xC0000000));
  std::vector<EventRecord> withUps = DrainEvents();

  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].what, keyDown);
  EXPECT_EQ(events[0].message, 0x0C71u);
  EXPECT_EQ(events[0].modifiers & (cmdKey | optionKey | shiftKey), cmdKey);
  ASSERT_EQ(withUps.size(), 2u);
  EXPECT_EQ(withUps[1].what, keyUp);
  EXPECT_EQ(withUps[1].message, 0x0C71u);
}

TEST_F(TranslationTest, ReturnAndKeypadEnterDiffer) {
  // One key at a time, as typed: each key-down's WM_CHAR follows it.
  auto typed = [&](WPARAM vk, LPARAM lParam) {
    PostMessageA(window, WM_KEYDOWN, vk, lParam);
    return DrainEvents();
  };
  std::vector<EventRecord> ret = typed(VK_RETURN, 0x001C0001);
  std::vector<EventRecord> enter = typed(VK_RETURN, 0x011C0001);  // extended: the keypad's
  std::vector<EventRecord> left = typed(VK_LEFT, 0x014B0001);
  EXPECT_TRUE(typed(VK_SHIFT, 0x002A0001).empty());  // modifier keys make no event
  ASSERT_EQ(ret.size(), 1u);
  ASSERT_EQ(enter.size(), 1u);
  ASSERT_EQ(left.size(), 1u);
  EXPECT_EQ(ret[0].message, 0x240Du);
  EXPECT_EQ(enter[0].message, 0x4C03u);
  EXPECT_EQ(left[0].message, 0x7B1Cu);
}

TEST_F(TranslationTest, ACharacterWithoutItsKeyComesWithRepeatsAndOption) {
  SetEventMask(everyEvent);
  PostMessageA(window, WM_CHAR, 0xE9, 3);  // é typed through a dead key, repeated
  PostMessageA(window, WM_CHAR, 'k', 1);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 6u);
  const UInt16 expected[] = {keyDown, autoKey, autoKey, keyUp, keyDown, keyUp};
  for (size_t i = 0; i < 6; ++i) EXPECT_EQ(events[i].what, expected[i]) << i;
  UInt8 ansi[1] = {0xE9}, mac[1] = {0};
  KWE_AnsiToMacBuf(ansi, mac, 1);
  EXPECT_EQ(events[0].message, 0x7F00u | mac[0]);
  EXPECT_EQ(events[0].modifiers & optionKey, optionKey);
  EXPECT_EQ(events[4].message, 0x286Bu);
  EXPECT_EQ(events[4].modifiers & optionKey, 0);
}

TEST_F(TranslationTest, MessagesThatAreNoInputMakeNoEvents) {
  EXPECT_EQ(KWE_EventMouse(window, WM_USER + 7, 0, 0), 0);
  EXPECT_EQ(KWE_EventMouse(window, WM_MOUSEMOVE, MK_SHIFT, 0), 0);
  EXPECT_EQ(KWE_EventKey(window, WM_USER, 'A', 0), 0);
  EXPECT_EQ(KWE_EventKey(window, WM_KEYDOWN, 0xFFFF, 0), keyDown);  // unknown key
  KWE_EventCommand(window, WM_COMMAND, 0x00010065, nullptr);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].what, keyDown);
  EXPECT_EQ(events[0].message, 0u);
}

int g_helpCalls;
void __stdcall CountHelp() { ++g_helpCalls; }

TEST_F(TranslationTest, KeyboardHooksPassKeysOnUnlessTheyAreTheirs) {
  constexpr LPARAM kReleased = LPARAM(0xC0000001);
  EXPECT_EQ(KWE_DlgKeyHook(HC_ACTION, 'A', 1), 0);  // no dialog: the key goes on
  KWE_EndSession(1);
  EXPECT_EQ(K_DlgKeyHook(HC_ACTION, 'A', 1), 1);
  KWE_EndSession(0);
  EXPECT_EQ(K_DlgKeyHook(HC_ACTION, 'A', 1), 0);

  g_helpCalls = 0;
  KWE_EnableHelpHook(CountHelp);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F2, kReleased), 0);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F1, 1), 0);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F1, kReleased), 1);
  EXPECT_EQ(g_helpCalls, 1);
  KWE_DisableHelpHook();
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F1, kReleased), 0);
  EXPECT_EQ(g_helpCalls, 1);
  EXPECT_TRUE(DrainEvents().empty());
}

TEST_F(TranslationTest, SwitchingApplicationsSuspendsAndResumes) {
  KWE_ActivateApp(false);
  KWE_ActivateApp(true);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].what, osEvt);
  EXPECT_EQ(events[0].message, 0x01000000u);
  EXPECT_EQ(events[1].message, 0x01000001u);
}

}  // namespace
