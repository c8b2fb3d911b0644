// Windows messages, posted to a host window whose procedure forwards them as
// a host's does, come back from GetNextEvent as Toolbox events.
#include <iterator>

#include "events/event_host_window.h"

namespace {

using TranslationTest = kwe_test::EventTest;

constexpr UInt16 kKeyModifiers = shiftKey | cmdKey | optionKey | alphaLock | controlKey;

// Each click as the session's right-button flags have it: left clicks with
// Shift or Ctrl (the Command key); right clicks dropped, plain, or with
// controlKey. btnState is set while the button is up.
TEST_F(TranslationTest, ClicksAreGlobalMouseEventsWithTheirModifiers) {
  const UInt32 kRight = kweFlagRightButtonEvents, kControl = kweFlagRightButtonControlKey;
  struct {
    UInt32 flags;
    UINT msg;
    WPARAM keys;
    UInt16 what;  // nullEvent: none
    UInt16 modifiers;
  } const cases[] = {
      {0, WM_LBUTTONDOWN, MK_LBUTTON | MK_SHIFT, mouseDown, shiftKey},
      {0, WM_LBUTTONUP, MK_CONTROL, mouseUp, cmdKey | btnState},
      {0, WM_LBUTTONDBLCLK, MK_LBUTTON, mouseDown, 0},
      {0, WM_RBUTTONDOWN, MK_RBUTTON, nullEvent, 0},
      {0, WM_RBUTTONUP, 0, nullEvent, 0},
      {kRight, WM_RBUTTONDOWN, MK_RBUTTON, mouseDown, 0},
      {kRight, WM_RBUTTONUP, 0, mouseUp, btnState},
      {kControl, WM_RBUTTONDOWN, MK_RBUTTON, mouseDown, controlKey},
      {kControl, WM_RBUTTONUP, 0, mouseUp, controlKey | btnState},
      {kControl, WM_LBUTTONDOWN, MK_LBUTTON | MK_CONTROL, mouseDown, cmdKey},
  };
  for (int i = 0; i < int(std::size(cases)); ++i) {
    const auto& c = cases[i];
    KWE_SetFlags(kRight | kControl, c.flags, 0, 0);
    Mouse(c.msg, c.keys, 10 + i, 20);
    std::vector<EventRecord> events = DrainEvents();
    ASSERT_EQ(events.size(), c.what == nullEvent ? 0u : 1u) << "case " << i;
    if (events.empty()) continue;
    POINT at{10 + i, 20};
    ClientToScreen(mainWindow, &at);
    EXPECT_EQ(events[0].what, c.what) << "case " << i;
    EXPECT_EQ(events[0].modifiers & (kKeyModifiers | btnState), c.modifiers) << "case " << i;
    EXPECT_LE(TickCount() - events[0].when, 4u);
    EXPECT_EQ(events[0].where.h, at.x) << "case " << i;
    EXPECT_EQ(events[0].where.v, at.y) << "case " << i;
  }
  EXPECT_EQ(vars.ButtonState, 0) << "the last button is down";
}

// A key pressed with modifier keys held: the keyDown's message (key code and
// character) and its modifiers, which are the keys held. Ctrl is the Command
// key, and Command leaves the character unshifted. Modifier keys make no
// event; a key let go makes a keyUp.
TEST_F(TranslationTest, KeystrokesCarryMacintoshKeyCodesCharactersAndModifiers) {
  constexpr int kExtended = 0x100, kLetGo = 0x200;
  constexpr int kEnter = VK_RETURN | kExtended, kLetGoOfQ = 'Q' | kLetGo;  // the keypad's Enter
  constexpr UInt16 kNone = 0, kCmdShift = cmdKey | shiftKey;
  struct {
    UInt16 held;
    int key;
    UInt32 message;
  } const cases[] = {
      {kNone, 'A', 0x0061},        {kNone, 'Z', 0x067A},         {shiftKey, 'A', 0x0041},
      {alphaLock, 'Q', 0x0C51},    {cmdKey, 'Q', 0x0C71},        {kCmdShift, 'Q', 0x0C71},
      {optionKey, 'A', 0x0061},    {shiftKey, '1', 0x1221},      {kNone, VK_NUMPAD0, 0x5230},
      {kNone, VK_NUMPAD9, 0x5C39}, {kNone, VK_RETURN, 0x240D},   {kNone, kEnter, 0x4C03},
      {kNone, VK_F1, 0x7A10},      {kNone, VK_F15, 0x7110},      {kNone, VK_LEFT, 0x7B1C},
      {kNone, VK_NEXT, 0x790C},    {kNone, VK_DELETE, 0x757F},   {kNone, VK_BACK, 0x3308},
      {kNone, VK_CLEAR, 0x471B},   {shiftKey, VK_OEM_1, 0x293A}, {kNone, VK_SHIFT, 0x0000},
      {kNone, VK_CAPITAL, 0x0000}, {cmdKey, kLetGoOfQ, 0x0C71},  {kNone, VK_OEM_PLUS, 0x183D},
  };
  const std::pair<UInt16, int> keyOf[] = {
      {shiftKey, VK_SHIFT}, {cmdKey, VK_CONTROL}, {optionKey, VK_MENU}, {alphaLock, VK_CAPITAL}};
  SetEventMask(everyEvent);
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << "key 0x" << std::hex << c.key << " held 0x" << c.held);
    BYTE state[256] = {};
    for (const auto& [modifier, vk] : keyOf)
      if (c.held & modifier) state[vk] = vk == VK_CAPITAL ? 0x01 : 0x80;
    SetKeyboardState(state);
    UINT msg = (c.key & kLetGo) ? WM_KEYUP : c.held == optionKey ? WM_SYSKEYDOWN : WM_KEYDOWN;
    PressKey(c.key & 0xFF, c.key & kExtended, msg);
    std::vector<EventRecord> events = DrainEvents();
    ASSERT_EQ(events.size(), c.message ? 1u : 0u);
    if (events.empty()) continue;
    EXPECT_EQ(events[0].what, msg == WM_KEYUP ? keyUp : keyDown);
    EXPECT_EQ(events[0].message, c.message);
    EXPECT_EQ(events[0].modifiers & kKeyModifiers, c.held);
  }
}

TEST_F(TranslationTest, ACharacterWithoutItsKeyComesWithRepeatsAndOption) {
  SetEventMask(everyEvent);
  PostMessageA(mainWindow, WM_CHAR, 0xE9, 3);  // é typed through a dead key, repeated
  PostMessageA(mainWindow, WM_CHAR, 'k', 1);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 6u);
  const UInt16 expected[] = {keyDown, autoKey, autoKey, keyUp, keyDown, keyUp};
  for (size_t i = 0; i < 6; ++i) EXPECT_EQ(events[i].what, expected[i]) << i;
  EXPECT_EQ(events[0].message, 0x7F8Eu) << "0x8E: é in Macintosh Roman, on no key";
  EXPECT_EQ(events[0].modifiers & optionKey, optionKey);
  EXPECT_EQ(events[4].message, 0x286Bu);
  EXPECT_EQ(events[4].modifiers & optionKey, 0);
}

int g_helpCalls;
void __stdcall CountHelp() { ++g_helpCalls; }

TEST_F(TranslationTest, TheHelpHookTakesOnlyTheReleaseOfF1) {
  constexpr LPARAM kReleased = LPARAM(0xC0000001);
  g_helpCalls = 0;
  KWE_EnableHelpHook(CountHelp);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F2, kReleased), 0);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F1, 1), 0);
  EXPECT_EQ(K_HelpKeyHook(HC_ACTION, VK_F1, kReleased), 1);
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
