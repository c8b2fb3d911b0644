// The Event Manager's calls over the queue and the pump.
#include <windows.h>

#include <initializer_list>

#include "Events.h"
#include "KWEEvents.h"
#include "Quickdraw.h"
#include "events/event_queue.h"
#include "events/message_pump.h"
#include "events/translation_state.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "frame/trap_defaults.h"

namespace kwe::events {
namespace {

constexpr OSErr kEventNotEnabled = 1;  // evtNotEnb
constexpr int kStillDownCheckInterval = 65;

int g_stillDownCalls = 0;
bool g_started = false;

SInt16& SysEvtMask() { return lowmem::At<SInt16>(lowmem::Slot::SysEvtMask); }

void ThrowAwayMessages(UINT first, UINT last) {
  MSG msg;
  while (PeekMessageA(&msg, nullptr, first, last, PM_REMOVE | PM_NOYIELD)) {
  }
}

void ThrowAwayMessages(std::initializer_list<UINT> messages) {
  for (UINT m : messages) ThrowAwayMessages(m, m);
}

// Windows input of the flushed kinds, still waiting for the thread.
void FlushWindowsInput(EventMask mask) {
  bool downs = mask & mDownMask, ups = mask & mUpMask;
  if (downs && ups)
    ThrowAwayMessages(WM_LBUTTONDOWN, WM_MBUTTONDBLCLK);
  else if (downs)
    ThrowAwayMessages({WM_LBUTTONDOWN, WM_RBUTTONDOWN, WM_MBUTTONDOWN});
  else if (ups)
    ThrowAwayMessages({WM_LBUTTONUP, WM_RBUTTONUP, WM_MBUTTONUP});
  bool keyDowns = mask & keyDownMask, keyUps = mask & keyUpMask;
  if (keyDowns && keyUps)
    ThrowAwayMessages(WM_KEYFIRST, WM_SYSDEADCHAR);
  else if (keyDowns)
    ThrowAwayMessages(
        {WM_KEYDOWN, WM_CHAR, WM_DEADCHAR, WM_SYSKEYDOWN, WM_SYSCHAR, WM_SYSDEADCHAR});
  else if (keyUps)
    ThrowAwayMessages({WM_KEYUP, WM_CHAR, WM_DEADCHAR, WM_SYSKEYUP, WM_SYSCHAR, WM_SYSDEADCHAR});
}

}  // namespace

void StartEventManager() {
  CurrentTicks();
  ResetQueue();
  ResetPump();
  g_stillDownCalls = 0;
  SysEvtMask() = SInt16(0xFFEF);
  g_started = true;
}

bool EventManagerStarted() { return g_started; }

UInt32 CurrentTicks() {
  UInt32 ticks = GetTickCount() >> 4;
  lowmem::Ticks() = ticks;
  return ticks;
}

Boolean KWE_CALL GetNextEventDefault(EventMask mask, EventRecord* event) {
  return NextEvent(mask, event, 0);
}

// mouseRgn is not used: mouse movement makes no events.
Boolean KWE_CALL WaitNextEventDefault(EventMask mask, EventRecord* event, UInt32 sleep, RgnHandle) {
  return NextEvent(mask, event, sleep);
}

Boolean KWE_CALL EventAvailDefault(EventMask mask, EventRecord* event) {
  return PumpPass(mask, event, 0) != nullptr;
}

// Desk accessories have nothing to be given time here.
void KWE_CALL SystemTaskDefault() {}

Boolean ButtonWork() {
  bool down = GetAsyncKeyState(VK_LBUTTON) < 0 || GetAsyncKeyState(VK_RBUTTON) < 0;
  if (down)
    Modifiers() &= ~btnState;
  else
    Modifiers() |= btnState;
  return down;
}

// Asking Windows for the button's real state on every call would make a
// tracking loop slow; the state the messages left is answered, and Windows
// asked once in 65 calls.
Boolean KWE_CALL StillDownDefault() {
  if (PumpPass(mUpMask, nullptr, 0)) return false;
  if (++g_stillDownCalls >= kStillDownCheckInterval) {
    g_stillDownCalls = 0;
    return Button();
  }
  return !(Modifiers() & btnState);
}

Boolean KWE_CALL WaitMouseUpDefault() {
  if (StillDown()) return true;
  EventRecord up;
  GetNextEvent(mUpMask, &up);
  return false;
}

void GetMouseWork(Point* where) {
  POINT at;
  if (!GetCursorPos(&at)) at = POINT{MousePosition().h, MousePosition().v};
  MousePosition() = Point{static_cast<SInt16>(at.y), static_cast<SInt16>(at.x)};
  if (!where) return;
  *where = MousePosition();
  GlobalToLocal(where);  // the current port's local coordinates
}

}  // namespace kwe::events

using namespace kwe;
using namespace kwe::events;

KWE_API Boolean KWE_CALL GetOSEvent(EventMask mask, EventRecord* theEvent) {
  return GetNextEvent(mask, theEvent);
}

KWE_API Boolean KWE_CALL OSEventAvail(EventMask mask, EventRecord* theEvent) {
  EventRecord scratch;
  EventRecord* e = theEvent ? theEvent : &scratch;
  PumpPass(mask, e, 0);
  return e->what != nullEvent;
}

// Codes past 15 have no bit in SysEvtMask and no mask to read them with:
// they are refused as disabled rather than left in the queue for good.
KWE_API OSErr KWE_CALL PostEvent(SInt16 eventNum, SInt32 eventMsg) {
  if (eventNum < 0 || eventNum > 15) return kEventNotEnabled;
  if (!(UInt16(SysEvtMask()) & (1u << eventNum))) return kEventNotEnabled;
  Post(static_cast<UInt16>(eventNum), static_cast<UInt32>(eventMsg));
  return noErr;
}

// An event of a kind in stopMask ends the flush at once, even before any
// event of whichMask was removed.
KWE_API void KWE_CALL FlushEvents(EventMask whichMask, EventMask stopMask) {
  for (;;) {
    EvQEl* e = FindQueued(EventMask(whichMask | stopMask));
    if (!e) break;
    if (MaskOf(e->evtQWhat) & stopMask) return;
    RemoveElement(e);
  }
  FlushWindowsInput(whichMask);
}

KWE_API void KWE_CALL SetEventMask(EventMask mask) { SysEvtMask() = static_cast<SInt16>(mask); }

KWE_API QHdrPtr KWE_CALL GetEvQHdr(void) { return &lowmem::At<QHdr>(lowmem::Slot::EventQueue); }

KWE_API UInt32 KWE_CALL TickCount(void) { return CurrentTicks(); }

KWE_API UInt32 KWE_CALL GetDblTime(void) { return lowmem::At<UInt32>(lowmem::Slot::DoubleTime); }

KWE_API UInt32 KWE_CALL GetCaretTime(void) { return GetCaretBlinkTime() >> 4; }

KWE_API void KWE_CALL GetKeys(KeyMap theKeys) {
  if (!theKeys) return;
  for (int i = 0; i < 16; ++i) theKeys[i] = 0;
  struct Reported {
    int virtualKey;
    int keyCode;
  };
  static const Reported kKeys[] = {
      {VK_SPACE, 49}, {VK_CONTROL, 55}, {VK_SHIFT, 56}, {VK_MENU, 58}, {VK_ESCAPE, 53}};
  for (const Reported& k : kKeys)
    if (GetAsyncKeyState(k.virtualKey) < 0 || GetKeyState(k.virtualKey) < 0)
      theKeys[k.keyCode / 8] |= UInt8(1u << (k.keyCode % 8));
}
