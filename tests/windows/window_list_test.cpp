// The window list through the DLL, read back from USER.
#include <gtest/gtest.h>

#include "windows/windows_fixture.h"

namespace {

using namespace kwe_test;

TEST_F(WindowTest, NoGrowDocumentInFrontIsAVisibleHilitedChildWithOneActivate) {
  WindowPtr w = Make(noGrowDocProc);
  ASSERT_NE(w, nullptr);
  HWND hwnd = KWE_GethWnd(w);
  ASSERT_NE(hwnd, nullptr);
  EXPECT_TRUE(IsWindowVisible(hwnd));
  EXPECT_EQ(GetParent(hwnd), mainWindow);
  LONG style = GetWindowLongA(hwnd, GWL_STYLE);
  EXPECT_TRUE(style & WS_CHILD);
  EXPECT_EQ(style & WS_CAPTION, WS_CAPTION);
  EXPECT_TRUE(style & WS_SYSMENU);
  EXPECT_EQ(FrontWindow(), w);
  EXPECT_TRUE(reinterpret_cast<WindowPeek>(w)->hilited);
  WindowPtr back = nullptr;
  EXPECT_TRUE(KWE_GetwPtr(hwnd, &back));
  EXPECT_EQ(back, w);
  std::vector<EventRecord> events = Drain(activMask);
  ASSERT_EQ(events.size(), 1u);
  EXPECT_EQ(events[0].what, activateEvt);
  EXPECT_TRUE(events[0].modifiers & activeFlag);
  EXPECT_EQ(GetWVariant(w), noGrowDocProc);
  RECT client;
  GetClientRect(hwnd, &client);
  EXPECT_EQ(client.right, 160);
  EXPECT_EQ(client.bottom, 100);
  DisposeWindow(w);
  EXPECT_FALSE(IsWindow(hwnd));
}

TEST_F(WindowTest, InvalRectGivesOneUpdateEventAndBeginEndUpdateEndsIt) {
  WindowPtr w = Make(documentProc);
  Drain();
  SetPort(w);
  Rect r{10, 10, 20, 20};
  InvalRect(&r);
  EventRecord e;
  ASSERT_TRUE(GetNextEvent(updateMask, &e));
  EXPECT_EQ(e.what, updateEvt);
  BeginUpdate(w);
  EndUpdate(w);
  EXPECT_TRUE(Drain(updateMask).empty());
}

}  // namespace
