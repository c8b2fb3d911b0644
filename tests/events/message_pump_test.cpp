// The pump behind the event calls: sleeping without spinning, waking for
// input, re-entry from window procedures and VBL tasks, and the hooks.
#include <atomic>

#include "OSUtils.h"
#include "Retrace.h"
#include "events/event_host_window.h"

namespace {

using kwe_test::EventTest;
using PumpTest = EventTest;

double ProcessorSeconds() {
  FILETIME created, exited, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
  auto seconds = [](const FILETIME& t) {
    return double((ULONGLONG(t.dwHighDateTime) << 32) | t.dwLowDateTime) / 1e7;
  };
  return seconds(kernel) + seconds(user);
}

TEST_F(PumpTest, ASleepingWaitNextEventUsesNoProcessor) {
  EventRecord e;
  double cpu = ProcessorSeconds();
  DWORD start = GetTickCount();
  EXPECT_FALSE(WaitNextEvent(everyEvent, &e, 125, nullptr));  // 2 seconds
  DWORD elapsed = GetTickCount() - start;
  cpu = ProcessorSeconds() - cpu;
  EXPECT_EQ(e.what, nullEvent);
  EXPECT_GE(elapsed, 1900u);
  EXPECT_LE(elapsed, 2300u);
  EXPECT_LT(cpu, 0.1) << "processor seconds in a 2 s sleep";
  std::printf("2 s WaitNextEvent: %u ms elapsed, %.1f ms processor\n", unsigned(elapsed),
              cpu * 1000);
}

TEST_F(PumpTest, AClickWakesASleepingWaitNextEvent) {
  HWND target = window;
  HANDLE poster = CreateThread(
      nullptr, 0,
      [](void* w) -> DWORD {
        Sleep(300);
        PostMessageA(static_cast<HWND>(w), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
        return 0;
      },
      target, 0, nullptr);
  EventRecord e;
  DWORD start = GetTickCount();
  ASSERT_TRUE(WaitNextEvent(everyEvent, &e, 300, nullptr));
  DWORD elapsed = GetTickCount() - start;
  EXPECT_EQ(e.what, mouseDown);
  EXPECT_GE(elapsed, 250u);
  EXPECT_LT(elapsed, 1000u);
  WaitForSingleObject(poster, INFINITE);
  CloseHandle(poster);
}

EventRecord g_inner;
Boolean g_innerFound;
void PostAndReadInsideTheDispatch() {
  PostEvent(keyDown, 7);
  g_innerFound = GetNextEvent(keyDownMask, &g_inner);
}

TEST_F(PumpTest, AWindowProcedureMayCallGetNextEventInsideTheDispatch) {
  kwe_test::g_onUserMessage = PostAndReadInsideTheDispatch;
  PostMessageA(window, WM_USER + 1, 0, 0);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  EventRecord e;
  ASSERT_TRUE(WaitNextEvent(everyEvent, &e, 30, nullptr));
  EXPECT_TRUE(g_innerFound);
  EXPECT_EQ(g_inner.what, keyDown);
  EXPECT_EQ(g_inner.message, 7u);
  EXPECT_EQ(e.what, mouseDown);
  EXPECT_TRUE(DrainEvents().empty());
  EXPECT_EQ(kwe_test::WindowLog().userMessages, 1);
}

int g_taskRuns;
void KWE_CALL DelayingTask() {
  ++g_taskRuns;
  Delay(25, nullptr);  // pumps, nested inside the pass that runs the task
}

TEST_F(PumpTest, AVblTaskMayDelayWhileTheButtonIsDown) {
  g_taskRuns = 0;
  VBLTask task{nullptr, 1, DelayingTask, 1, 0};
  ASSERT_EQ(VInstall(&task), noErr);
  EXPECT_EQ(GetCapture(), window);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  PostMessageA(window, WM_USER + 1, 0, 0);
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].what, mouseDown);
  EXPECT_EQ(events[1].what, mouseUp);
  EXPECT_EQ(g_taskRuns, 1);
  EXPECT_EQ(kwe_test::WindowLog().userMessages, 1);

  task.vblCount = 1;  // the host's timer runs it with the button up
  KWE_VBL_Interrupt();
  EXPECT_EQ(g_taskRuns, 2);
  EXPECT_EQ(VRemove(&task), noErr);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(VRemove(&task), -1);
  EXPECT_EQ(VRemove(nullptr), -1);
}

TEST_F(PumpTest, StillDownAndWaitMouseUpFollowTheQueuedClick) {
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  EventRecord e;
  ASSERT_TRUE(GetNextEvent(mDownMask, &e));
  EXPECT_TRUE(StillDown());
  EXPECT_EQ(vars.ButtonState, 0);
  PostMessageA(window, WM_LBUTTONUP, 0, MAKELPARAM(4, 4));
  EXPECT_FALSE(WaitMouseUp());  // finds the mouseUp and takes it
  EXPECT_TRUE(DrainEvents().empty());
  EXPECT_FALSE(StillDown());
}

TEST_F(PumpTest, TheCaptureDepthHoldsTheMouseForTheMainWindow) {
  EXPECT_EQ(KWE_SetCapture(true), 0);
  EXPECT_EQ(KWE_SetCapture(true), 1);
  EXPECT_EQ(GetCapture(), window);
  EXPECT_EQ(KWE_SetCapture(false), 2);
  EXPECT_EQ(GetCapture(), window);
  EXPECT_EQ(KWE_SetCapture(false), 1);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(KWE_SetCapture(false), 0);  // never below 0
  EXPECT_EQ(KWE_ForceCapture(3), 0);
  EXPECT_EQ(GetCapture(), window);
  EXPECT_EQ(KWE_ForceCapture(0), 3);
  EXPECT_EQ(GetCapture(), nullptr);
}

BOOL __stdcall SwallowClicks(HWND, MSG* msg) { return msg->message != WM_LBUTTONDOWN; }

TEST_F(PumpTest, AMessageHookMaySwallowInput) {
  KWE_SetMessageHook(SwallowClicks);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  PostEvent(keyDown, 1);
  EXPECT_EQ(DrainEvents().size(), 1u);
  KWE_SetMessageHook(nullptr);
  PostMessageA(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  EXPECT_EQ(DrainEvents().size(), 1u);
}

TEST_F(PumpTest, WmQuitIsNotDispatchedAndLeavesTheLoopWorking) {
  PostQuitMessage(0);
  EventRecord e;
  EXPECT_FALSE(GetNextEvent(everyEvent, &e));
  EXPECT_FALSE(GetNextEvent(everyEvent, &e));
  EXPECT_EQ(e.what, nullEvent);
  PostEvent(mouseDown, 3);
  EXPECT_EQ(DrainEvents().size(), 1u);
}

class AcceleratorTest : public EventTest {
 protected:
  HACCEL Accelerators() override {
    ACCEL entry{FVIRTKEY | FCONTROL, 'N', 101};
    table = CreateAcceleratorTableA(&entry, 1);
    return table;
  }
  void TearDown() override {
    EventTest::TearDown();
    DestroyAcceleratorTable(table);
  }
  HACCEL table = nullptr;
};

TEST_F(AcceleratorTest, TheSessionsAcceleratorsBecomeCommands) {
  HoldKeys({VK_CONTROL});
  PostMessageA(window, WM_KEYDOWN, 'N', 0x00310001);
  PostMessageA(window, WM_KEYDOWN, 'M', 0x00320001);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(kwe_test::WindowLog().commands.size(), 1u);
  EXPECT_EQ(LOWORD(kwe_test::WindowLog().commands[0]), 101);
  ASSERT_EQ(events.size(), 1u);  // Ctrl+M was no accelerator: Command-M
  EXPECT_EQ(events[0].message, 0x2E6Du);
}

}  // namespace
