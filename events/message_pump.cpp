// The message pump. A polling loop (GetNextEvent, WaitNextEvent with sleep 0)
// peeks without yielding, except once every so many calls (system value 6).
// A long sleep with nothing pending blocks in GetMessageA with one thread
// timer as its wake-up, so a sleeping application uses no processor time.
#include "events/message_pump.h"

#include <windows.h>

#include "KWEEvents.h"
#include "events/capture_depth.h"
#include "events/event_queue.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"

namespace kwe::events {
namespace {

constexpr UINT kPollFlags = PM_REMOVE | PM_NOYIELD;
constexpr UINT kYieldFlags = PM_REMOVE;
constexpr UInt32 kTimerResolution = 55;  // milliseconds of the system timer
constexpr UInt32 kBlockingSleep = 250;

UINT g_peekFlags = kPollFlags;
int g_yieldCountdown = 0;
int g_synthesisCountdown = 0;
UINT_PTR g_sleepTimer = 0;
UInt32 g_sleepTimerPeriod = 0;
UInt32 g_sleepRemainder = 0;
bool g_quit = false;
int g_passDepth = 0;
KWEMessageHook g_messageHook = nullptr;
KWEPeekMessageProc g_peekProcedure = nullptr;

struct PassDepth {
  PassDepth() { ++g_passDepth; }
  ~PassDepth() { --g_passDepth; }
};

void StopSleepTimer() {
  if (g_sleepTimer) KillTimer(nullptr, g_sleepTimer);
  g_sleepTimer = 0;
  g_sleepTimerPeriod = 0;
}

// False when Windows gave no timer: the pass must not block without one.
bool RunSleepTimer(UInt32 period) {
  if (g_sleepTimer && g_sleepTimerPeriod == period) return true;
  StopSleepTimer();
  g_sleepTimer = SetTimer(nullptr, 0, period, nullptr);
  if (g_sleepTimer) g_sleepTimerPeriod = period;
  return g_sleepTimer != 0;
}

bool Peek(MSG& msg) {
  if (g_peekProcedure) return g_peekProcedure(&msg, nullptr, 0, 0, g_peekFlags) != FALSE;
  if (!PeekMessageA(&msg, nullptr, 0, 0, g_peekFlags)) return false;
  // A peeked WM_PAINT stays in the queue until the window is validated.
  if (msg.message == WM_PAINT) GetMessageA(&msg, msg.hwnd, WM_PAINT, WM_PAINT);
  return true;
}

void Translate(MSG& msg, bool nested) {
  const Session& s = TheSession();
  if (msg.message >= WM_MOUSEFIRST && msg.message <= WM_MBUTTONDBLCLK) {
    if (msg.message == WM_MOUSEMOVE && nested) return;
  } else if (msg.message == WM_SETCURSOR || msg.message == WM_NCHITTEST) {
    if (nested) return;
  } else if (msg.message == WM_TIMER) {
    if (!msg.hwnd && g_sleepTimer && msg.wParam == g_sleepTimer) {
      StopSleepTimer();
      return;
    }
  } else if (msg.message >= WM_KEYFIRST && msg.message <= WM_SYSDEADCHAR) {
    bool modal = dialogs::InModalDialog();
    if (SessionFlag(kweFlagMDI) && s.mdiClient && !modal) {
      if (TranslateMDISysAccel(s.mdiClient, &msg)) return;
      if (msg.hwnd == s.mdiClient) msg.hwnd = s.mainWindow;
    }
    if (!modal && s.accelerators && s.mainWindow &&
        TranslateAcceleratorA(s.mainWindow, s.accelerators, &msg))
      return;
    TranslateMessage(&msg);
  }
  DispatchMessageA(&msg);
}

// Waiting out what is left of a sleep once a message has been taken (the
// pass then no longer blocks in GetMessageA): VBL tasks want a turn every
// millisecond; otherwise the next message wakes the thread, or a timer tick
// at the latest (an event another thread posts comes with no message), so
// an idle program is not woken a thousand times a second.
void WaitOutSleep(UInt32 left) {
  if (HaveVblTasks()) {
    Sleep(1);
    return;
  }
  MsgWaitForMultipleObjects(0, nullptr, FALSE, left < kTimerResolution ? left : kTimerResolution,
                            QS_ALLINPUT);
}

// The round loop of a pass: pumps until an event may be waiting (one round
// more once something is pending) or the sleep is over.
void PumpMessages(UInt32 sleep, bool nested) {
  DWORD start = sleep ? GetTickCount() : 0;
  bool took = false;
  for (int counter = 0; counter >= 0;) {
    if (PendingMask()) --counter;
    MSG msg;
    bool got;
    if (!nested && !took && PendingMask() == 0 && sleep > kBlockingSleep && RunSleepTimer(sleep)) {
      got = GetMessageA(&msg, nullptr, 0, 0) != -1;
    } else {
      got = Peek(msg);
    }
    if (!got) {
      // With an event pending the pass ends at once instead of sleeping on.
      if (sleep && counter >= 0 && GetTickCount() - start < sleep) {
        WaitOutSleep(sleep - (GetTickCount() - start));
        if (!(Modifiers() & btnState) && HaveVblTasks()) RunVblTasks();
        continue;
      }
      // The yielding peek of a polling loop lets other programs run.
      if (!g_peekProcedure && !(g_peekFlags & PM_NOYIELD)) Sleep(0);
      if (!took && !(Modifiers() & btnState) && HaveVblTasks()) RunVblTasks();
      return;
    }
    took = true;
    if (msg.message == WM_QUIT) {
      g_quit = true;
    } else {
      lowmem::Ticks() = msg.time >> 4;
      MousePosition() = Point{static_cast<SInt16>(msg.pt.y), static_cast<SInt16>(msg.pt.x)};
      if (!g_messageHook || g_messageHook(msg.hwnd, &msg)) Translate(msg, nested);
    }
    if (!(Modifiers() & btnState) && HaveVblTasks()) RunVblTasks();
  }
}

EvQEl* MadeEvent(EventMask mask) {
  if (!(mask & (kUpdatePending | kActivatePending))) return nullptr;
  if (--g_synthesisCountdown >= 0) return nullptr;
  EventRecord made{};
  WindowPtr window = nullptr;
  if (windows::NextUpdateOrActivate(mask, &made, &window)) {
    g_synthesisCountdown = -1;
    return SyntheticElement(made, window);
  }
  PendingMask() &= ~(mask & (kUpdatePending | kActivatePending));
  g_synthesisCountdown = ReadSystemValue(kSysValueEventPumpInterval);
  return nullptr;
}

}  // namespace

void ResetPump() {
  StopSleepTimer();
  g_peekFlags = kPollFlags;
  g_yieldCountdown = ReadSystemValue(kSysValuePumpCountdown);
  g_synthesisCountdown = 0;
  g_sleepRemainder = 0;
  g_quit = false;
}

bool PumpIsNested() { return CaptureDepth() != 0 || g_passDepth > 0; }

EvQEl* PumpPass(EventMask mask, EventRecord* event, UInt32 sleep) {
  bool nested = PumpIsNested();
  PassDepth depth;
  if (sleep) {
    if (!nested) g_peekFlags = kYieldFlags;
    g_sleepRemainder += sleep % kTimerResolution;
    sleep -= sleep % kTimerResolution;
    if (g_sleepRemainder > kTimerResolution) {
      g_sleepRemainder -= kTimerResolution;
      sleep += kTimerResolution;
    }
  }
  PumpMessages(sleep, nested);
  if (!nested) g_peekFlags = kPollFlags;
  lowmem::At<UInt8>(lowmem::Slot::ButtonState) = (Modifiers() & btnState) ? 1 : 0;

  EvQEl* found = (PendingMask() & mask) ? FindQueued(mask) : nullptr;
  if (!found) found = MadeEvent(mask);
  if (found) {
    CopyEvent(*found, event);
    return found;
  }
  PendingMask() &= ~mask;
  if (event)
    *event = EventRecord{nullEvent, 0xFFFFFFFFu, lowmem::Ticks(), MousePosition(), Modifiers()};
  return nullptr;
}

Boolean NextEvent(EventMask mask, EventRecord* event, UInt32 sleepTicks) {
  if (g_quit) {
    // WM_QUIT reaches the application as the Quit menu command.
    g_quit = false;
    menus::RecordMenuCommand(0xFFFF);
    if (event)
      *event = EventRecord{nullEvent, 0xFFFFFFFFu, lowmem::Ticks(), MousePosition(), Modifiers()};
    return false;
  }
  if (!PumpIsNested() && --g_yieldCountdown < 0) {
    g_yieldCountdown = ReadSystemValue(kSysValuePumpCountdown);
    g_peekFlags = kYieldFlags;
  }
  UInt32 sleep = sleepTicks == 0 ? 0 : sleepTicks < 2047 ? sleepTicks * 16 : 32767;
  EvQEl* found = PumpPass(mask, event, sleep);
  if (!found) return false;
  RemoveElement(found);
  return event ? event->what != nullEvent : true;
}

void RequestUpdate() {
  PendingMask() |= kUpdatePending;
  g_synthesisCountdown = -1;
}

void PumpOnePass(SInt16 eventMask, UInt32 sleepMilliseconds) {
  PumpPass(static_cast<EventMask>(eventMask), nullptr, sleepMilliseconds);
}

void ExpirePumpCountdown() { g_yieldCountdown = 0; }

}  // namespace kwe::events

using namespace kwe;

KWE_API void KWE_CALL KWE_SetMessageHook(KWEMessageHook hook) {
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(events::g_messageHook));
  events::g_messageHook =
      reinterpret_cast<KWEMessageHook>(WrapHostProcedure(reinterpret_cast<ProcPtr>(hook)));
}

KWE_API void KWE_CALL KWE_SetPeekMessageProc(KWEPeekMessageProc peek) {
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(events::g_peekProcedure));
  events::g_peekProcedure =
      reinterpret_cast<KWEPeekMessageProc>(WrapHostProcedure(reinterpret_cast<ProcPtr>(peek)));
}
