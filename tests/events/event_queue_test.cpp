// The event queue as an application sees it: through PostEvent, the event
// calls and the queue header it may walk itself.
#include "events/event_host_window.h"

namespace {

using kwe_test::EventTest;
using QueueTest = EventTest;

// The messages of the queued events, walked from the host's EventQueue.
std::vector<UInt32> QueuedMessages(const QHdr& header) {
  std::vector<UInt32> messages;
  for (QElemPtr e = header.qHead; e && messages.size() <= 64; e = e->qLink)
    messages.push_back(reinterpret_cast<EvQEl*>(e)->evtQMessage);
  return messages;
}

TEST_F(QueueTest, PostedEventsComeBackInOrderWithTheirFields) {
  EXPECT_EQ(GetEvQHdr(), &vars.EventQueue);
  EXPECT_EQ(PostEvent(keyDown, 0x0C71), noErr);
  EXPECT_EQ(PostEvent(mouseDown, 5), noErr);
  EventRecord e;
  ASSERT_TRUE(EventAvail(keyDownMask, &e));
  EXPECT_EQ(e.what, keyDown);
  ASSERT_TRUE(GetNextEvent(everyEvent, &e));
  EXPECT_EQ(e.what, keyDown);
  EXPECT_EQ(e.message, 0x0C71u);
  EXPECT_LE(TickCount() - e.when, 2u);
  EXPECT_EQ(e.modifiers & btnState, btnState);
  ASSERT_TRUE(GetOSEvent(everyEvent, &e));
  EXPECT_EQ(e.what, mouseDown);
  EXPECT_EQ(e.message, 5u);

  EXPECT_FALSE(GetNextEvent(everyEvent, &e));
  EXPECT_EQ(e.what, nullEvent);
  EXPECT_EQ(e.message, 0xFFFFFFFFu);
  EXPECT_EQ(vars.EventQueue.qHead, nullptr);
  EXPECT_EQ(vars.EventQueue.qTail, nullptr);
  EXPECT_EQ(vars.Ticks, TickCount());
}

TEST_F(QueueTest, DisabledKindsBadCodesAndEmptyMasksLeaveTheQueueAlone) {
  EXPECT_EQ(vars.SysEvtMask, SInt16(0xFFEF));
  EXPECT_EQ(PostEvent(keyUp, 1), 1);
  EXPECT_EQ(PostEvent(20, 1), 1);
  EXPECT_EQ(PostEvent(-1, 1), 1);
  EXPECT_EQ(PostEvent(40, 1), 1);  // wraps onto no kind an application can ask for
  EXPECT_EQ(vars.EventQueue.qHead, nullptr);

  EXPECT_EQ(PostEvent(keyDown, 2), noErr);
  EventRecord e;
  EXPECT_FALSE(GetNextEvent(0, &e));
  EXPECT_FALSE(GetNextEvent(mouseDown | osMask, &e));
  EXPECT_FALSE(EventAvail(0, nullptr));
  EXPECT_TRUE(OSEventAvail(keyDownMask, &e));
  EXPECT_TRUE(GetNextEvent(keyDownMask, nullptr));
  EXPECT_EQ(vars.EventQueue.qHead, nullptr);

  SetEventMask(everyEvent);
  EXPECT_EQ(PostEvent(keyUp, 3), noErr);
  ASSERT_TRUE(GetNextEvent(keyUpMask, &e));
  EXPECT_EQ(e.what, keyUp);
}

TEST_F(QueueTest, AFullQueueLosesItsEightOldestAndNeverGrows) {
  for (UInt32 i = 0; i < 33; ++i) PostEvent(keyDown, SInt32(i));
  std::vector<UInt32> held = QueuedMessages(vars.EventQueue);
  ASSERT_EQ(held.size(), 25u);
  EXPECT_EQ(held.front(), 8u);
  EXPECT_EQ(held.back(), 32u);
  DrainEvents();

  // 10,000 events in bursts of 100: each burst ends with the same 28 (32 ->
  // 25 on the 33rd and every 8th after), and reading them empties the queue.
  for (int burst = 0; burst < 100; ++burst) {
    for (UInt32 i = 0; i < 100; ++i) PostEvent(mouseDown, SInt32(i));
    held = QueuedMessages(vars.EventQueue);
    ASSERT_EQ(held.size(), 28u) << "burst " << burst;
    EXPECT_EQ(held.front(), 72u);
    std::vector<EventRecord> read = DrainEvents();
    ASSERT_EQ(read.size(), 28u);
    EXPECT_EQ(read.back().message, 99u);
  }
  EXPECT_EQ(vars.EventQueue.qHead, nullptr);
}

TEST_F(QueueTest, FlushEventsStopsAtTheStopMaskElseThrowsWindowsInputAway) {
  PostEvent(keyDown, 1);
  PostEvent(mouseDown, 2);
  PostMessageA(window, WM_LBUTTONDOWN, 0, MAKELPARAM(5, 5));
  FlushEvents(everyEvent, keyDownMask);
  EXPECT_EQ(QueuedMessages(vars.EventQueue), (std::vector<UInt32>{1, 2}));
  MSG msg;
  EXPECT_TRUE(PeekMessageA(&msg, window, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));

  PostMessageA(window, WM_KEYDOWN, 'A', 0x001E0001);
  FlushEvents(mDownMask | mUpMask, 0);
  EXPECT_EQ(QueuedMessages(vars.EventQueue), (std::vector<UInt32>{1}));
  EXPECT_FALSE(PeekMessageA(&msg, window, WM_LBUTTONDOWN, WM_LBUTTONDOWN, PM_NOREMOVE));
  EXPECT_TRUE(PeekMessageA(&msg, window, WM_KEYDOWN, WM_KEYDOWN, PM_NOREMOVE));
}

TEST_F(QueueTest, GetKeysReportsTheCommandKeyFromCtrl) {
  HoldKeys({VK_CONTROL});
  KeyMap keys;
  GetKeys(keys);
  for (int i = 0; i < 16; ++i) EXPECT_EQ(keys[i], i == 6 ? 0x80 : 0) << "byte " << i;
  EXPECT_EQ(GetDblTime(), GetDoubleClickTime() >> 4);
  EXPECT_EQ(vars.DoubleTime, GetDblTime());
}

}  // namespace
