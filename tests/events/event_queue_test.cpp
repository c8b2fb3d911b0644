// The event queue as an application sees it: through PostEvent, the event
// calls and the queue header it may walk itself.
#include "events/event_host_window.h"

namespace {

using QueueTest = kwe_test::EventTest;

// The messages of the queued events, walked from the host's EventQueue.
std::vector<UInt32> QueuedMessages(const QHdr& header) {
  std::vector<UInt32> messages;
  for (QElemPtr e = header.qHead; e && messages.size() <= 64; e = e->qLink)
    messages.push_back(reinterpret_cast<EvQEl*>(e)->evtQMessage);
  return messages;
}

// Disabled kinds (key-ups, by default) and codes of no kind are refused; the
// rest come back in order, as far as each mask lets them.
TEST_F(QueueTest, PostedEventsComeBackInOrderAsTheMasksAllow) {
  EXPECT_EQ(GetEvQHdr(), &vars.EventQueue);
  for (SInt16 what : {SInt16(keyUp), SInt16(20), SInt16(-1), SInt16(40)})
    EXPECT_EQ(PostEvent(what, 1), 1) << what;
  EXPECT_EQ(vars.EventQueue.qHead, nullptr);
  EXPECT_EQ(PostEvent(keyDown, 0x0C71), noErr);
  EXPECT_EQ(PostEvent(mouseDown, 5), noErr);
  EventRecord e;
  EXPECT_FALSE(GetNextEvent(0, &e));
  EXPECT_FALSE(GetNextEvent(mUpMask | osMask, &e));
  EXPECT_FALSE(OSEventAvail(0, nullptr));
  ASSERT_TRUE(EventAvail(mDownMask, &e));
  EXPECT_EQ(e.what, mouseDown);
  ASSERT_TRUE(GetNextEvent(everyEvent, &e));
  EXPECT_EQ(e.what, keyDown);
  EXPECT_EQ(e.message, 0x0C71u);
  EXPECT_LE(TickCount() - e.when, 2u);
  EXPECT_EQ(e.modifiers & btnState, btnState);
  ASSERT_TRUE(GetOSEvent(everyEvent, &e));
  EXPECT_EQ(e.message, 5u);
  EXPECT_FALSE(GetNextEvent(everyEvent, &e));
  EXPECT_EQ(e.what, nullEvent);
  EXPECT_EQ(e.message, 0xFFFFFFFFu);
  EXPECT_EQ(vars.EventQueue.qTail, nullptr);
  EXPECT_EQ(vars.Ticks, TickCount());
  SetEventMask(everyEvent);
  EXPECT_EQ(PostEvent(keyUp, 3), noErr);
  EXPECT_TRUE(GetNextEvent(keyUpMask, nullptr));
}

// 32 events fit; the 33rd and every 8th after it push out the 8 oldest, so
// of 100 the last 28 are left.
TEST_F(QueueTest, AFullQueueLosesItsEightOldestAndNeverGrows) {
  for (UInt32 i = 0; i < 33; ++i) PostEvent(keyDown, SInt32(i));
  std::vector<UInt32> held = QueuedMessages(vars.EventQueue);
  ASSERT_EQ(held.size(), 25u);
  EXPECT_EQ(held.front(), 8u);
  for (UInt32 i = 33; i < 100; ++i) PostEvent(keyDown, SInt32(i));
  held = QueuedMessages(vars.EventQueue);
  ASSERT_EQ(held.size(), 28u);
  EXPECT_EQ(held.front(), 72u);
  EXPECT_EQ(DrainEvents().size(), 28u);
  for (int burst = 0; burst < 100; ++burst) {  // 10,000 more through the same elements
    for (UInt32 i = 0; i < 100; ++i) PostEvent(mouseDown, SInt32(i));
    ASSERT_EQ(DrainEvents().size(), 28u) << "burst " << burst;
  }
}

TEST_F(QueueTest, FlushEventsStopsAtTheStopMaskElseThrowsWindowsInputAway) {
  PostEvent(keyDown, 1);
  PostEvent(mouseDown, 2);
  Mouse(WM_LBUTTONDOWN);
  FlushEvents(everyEvent, keyDownMask);
  EXPECT_EQ(QueuedMessages(vars.EventQueue), (std::vector<UInt32>{1, 2}));
  MSG msg;
  EXPECT_TRUE(PeekMessageA(&msg, mainWindow, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
  PressKey('A');
  FlushEvents(mDownMask | mUpMask, 0);
  EXPECT_EQ(QueuedMessages(vars.EventQueue), (std::vector<UInt32>{1}));
  EXPECT_FALSE(PeekMessageA(&msg, mainWindow, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
  EXPECT_TRUE(PeekMessageA(&msg, mainWindow, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE));
}

}  // namespace
