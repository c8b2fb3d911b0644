// The pump behind the event calls: sleeping without spinning, waking for
// input, re-entry from window procedures and VBL tasks, and the hooks.
#include "OSUtils.h"
#include "Retrace.h"
#include "events/event_host_window.h"

namespace {

using kwe_test::g_windowLog;
using PumpTest = kwe_test::EventTest;

double ProcessorSeconds() {
  FILETIME created, exited, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
  ULARGE_INTEGER k{{kernel.dwLowDateTime, kernel.dwHighDateTime}};
  ULARGE_INTEGER u{{user.dwLowDateTime, user.dwHighDateTime}};
  return double(k.QuadPart + u.QuadPart) / 1e7;
}

DWORD WINAPI ClickAfterASecondAndAHalf(void* w) {
  Sleep(1500);
  PostMessageA(static_cast<HWND>(w), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(4, 4));
  return 0;
}

// A long sleep blocks in Windows until input comes: no processor time spent.
TEST_F(PumpTest, ASleepingWaitNextEventUsesNoProcessorAndWakesForAClick) {
  HANDLE poster = CreateThread(nullptr, 0, ClickAfterASecondAndAHalf, mainWindow, 0, nullptr);
  EventRecord e;
  double cpu = ProcessorSeconds();
  DWORD start = GetTickCount();
  ASSERT_TRUE(WaitNextEvent(everyEvent, &e, 600, nullptr));  // up to 10 seconds
  DWORD elapsed = GetTickCount() - start;
  EXPECT_LT(ProcessorSeconds() - cpu, 0.1) << "processor seconds in a 1.5 s sleep";
  EXPECT_EQ(e.what, mouseDown);
  EXPECT_GE(elapsed, 1400u);
  EXPECT_LT(elapsed, 2300u);
  WaitForSingleObject(poster, INFINITE);
  CloseHandle(poster);
  start = GetTickCount();
  EXPECT_FALSE(WaitNextEvent(everyEvent, &e, 30, nullptr));  // half a second of nothing
  EXPECT_EQ(e.what, nullEvent);
  EXPECT_GE(GetTickCount() - start, 450u);
}

EventRecord g_inner;
Boolean g_innerFound;
int g_taskRuns;
void KWE_CALL DelayingTask() {
  ++g_taskRuns;
  Delay(25, nullptr);  // pumps, nested inside the pass that runs the task
}

// Re-entry: a window procedure reads an event inside the dispatch, and a VBL
// task (which holds the mouse for the main window) pumps with the button down.
TEST_F(PumpTest, WindowProceduresAndVblTasksMayPumpInsideAPass) {
  g_taskRuns = 0;
  g_windowLog.onUserMessage = [] {
    PostEvent(keyDown, 7);
    g_innerFound = GetNextEvent(keyDownMask, &g_inner);
  };
  VBLTask task{nullptr, 1, DelayingTask, 1, 0};
  ASSERT_EQ(VInstall(&task), noErr);
  EXPECT_EQ(GetCapture(), mainWindow);
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON);
  PostMessageA(mainWindow, WM_USER + 1, 0, 0);
  Mouse(WM_LBUTTONUP);
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(events.size(), 2u);
  EXPECT_EQ(events[0].what, mouseDown);
  EXPECT_EQ(events[1].what, mouseUp);
  EXPECT_TRUE(g_innerFound);
  EXPECT_EQ(g_inner.message, 7u);
  EXPECT_EQ(g_taskRuns, 1);
  EXPECT_EQ(g_windowLog.userMessages, 1);

  task.vblCount = 1;  // the host's timer runs it with the button up
  KWE_VBL_Interrupt();
  EXPECT_EQ(g_taskRuns, 2);
  EXPECT_EQ(VRemove(&task), noErr);
  EXPECT_EQ(GetCapture(), nullptr);
  EXPECT_EQ(VRemove(&task), -1);
}

TEST_F(PumpTest, StillDownAndWaitMouseUpFollowTheQueuedClick) {
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON);
  EventRecord e;
  ASSERT_TRUE(GetNextEvent(mDownMask, &e));
  EXPECT_TRUE(StillDown());
  EXPECT_EQ(vars.ButtonState, 0);
  Mouse(WM_LBUTTONUP);
  EXPECT_FALSE(WaitMouseUp());  // finds the mouseUp and takes it
  EXPECT_TRUE(DrainEvents().empty());
  EXPECT_FALSE(StillDown());
}

BOOL __stdcall SwallowClicks(HWND, MSG* msg) { return msg->message != WM_LBUTTONDOWN; }

TEST_F(PumpTest, AMessageHookMaySwallowInputAndWmQuitLeavesTheLoopWorking) {
  KWE_SetMessageHook(SwallowClicks);
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON);
  PostEvent(keyDown, 1);
  EXPECT_EQ(DrainEvents().size(), 1u);
  KWE_SetMessageHook(nullptr);
  PostQuitMessage(0);
  EventRecord e;
  EXPECT_FALSE(GetNextEvent(everyEvent, &e)) << "WM_QUIT is no event";
  EXPECT_FALSE(GetNextEvent(everyEvent, &e));
  Mouse(WM_LBUTTONDOWN, MK_LBUTTON);
  EXPECT_EQ(DrainEvents().size(), 1u);
}

class AcceleratorTest : public PumpTest {
 protected:
  ACCEL ctrlN{FVIRTKEY | FCONTROL, 'N', 101};
  AcceleratorTest() { accelerators = CreateAcceleratorTableA(&ctrlN, 1); }
  ~AcceleratorTest() override { DestroyAcceleratorTable(accelerators); }
};

TEST_F(AcceleratorTest, TheSessionsAcceleratorsBecomeCommands) {
  HoldKeys({VK_CONTROL});
  KeyMap keys;
  GetKeys(keys);  // Ctrl is the Command key (key code 0x37)
  for (int i = 0; i < 16; ++i) EXPECT_EQ(keys[i], i == 6 ? 0x80 : 0) << "byte " << i;
  PressKey('N');
  PressKey('M');
  std::vector<EventRecord> events = DrainEvents();
  ASSERT_EQ(g_windowLog.commands.size(), 1u);
  EXPECT_EQ(LOWORD(g_windowLog.commands[0]), 101);
  ASSERT_EQ(events.size(), 1u);  // Ctrl+M was no accelerator: Command-M
  EXPECT_EQ(events[0].message, 0x2E6Du);
}

}  // namespace
