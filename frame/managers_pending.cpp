// Stand-ins for managers that are not built yet. The patchable calls report
// themselves like unsupported calls, so a porting developer sees each use;
// the start-up and shut-down steps do the least that keeps a session whole.
// Each manager removes its entries here as it takes them over.
#include <windows.h>

#include <cstring>

#include "frame/host_tables.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "frame/unsupported.h"

namespace kwe::events {
namespace {
LRESULT CALLBACK PassKeysOn(int code, WPARAM wParam, LPARAM lParam) {
  return CallNextHookEx(nullptr, code, wParam, lParam);
}
}  // namespace

void StartEventManager() { lowmem::At<SInt16>(lowmem::Slot::SysEvtMask) = SInt16(0xFFEF); }

UInt32 CurrentTicks() {
  UInt32 ticks = GetTickCount() >> 4;
  lowmem::Ticks() = ticks;
  return ticks;
}

void PumpOnePass(SInt16, UInt32 sleepMilliseconds) {
  MsgWaitForMultipleObjectsEx(0, nullptr, sleepMilliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

void ExpirePumpCountdown() {}
HOOKPROC KeyboardHookProcedure() { return PassKeysOn; }

Boolean KWE_CALL GetNextEventDefault(EventMask, EventRecord* event) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("GetNextEvent", Boolean(false));
}
Boolean KWE_CALL WaitNextEventDefault(EventMask, EventRecord* event, UInt32, RgnHandle) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("WaitNextEvent", Boolean(false));
}
Boolean KWE_CALL EventAvailDefault(EventMask, EventRecord* event) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("EventAvail", Boolean(false));
}
void KWE_CALL SystemTaskDefault() { Unsupported("SystemTask"); }
Boolean KWE_CALL StillDownDefault() { return Unsupported("StillDown", Boolean(false)); }
Boolean KWE_CALL WaitMouseUpDefault() { return Unsupported("WaitMouseUp", Boolean(false)); }
Boolean ButtonWork() { return Unsupported("Button", Boolean(false)); }
void GetMouseWork(Point* where) {
  if (where) *where = Point{0, 0};
  Unsupported("GetMouse");
}
}  // namespace kwe::events

namespace kwe::quickdraw {
void CloseQuickDraw() {}
void SetCurrentPortSwitch(bool) {}
void KWE_CALL SetOriginDefault(SInt16, SInt16) { Unsupported("SetOrigin"); }
void KWE_CALL SetCursorDefault(const Cursor*) { Unsupported("SetCursor"); }
}  // namespace kwe::quickdraw

namespace kwe::windows {
void DisposeAllWindows() {}
void KWE_CALL BeginUpdateDefault(WindowPtr) { Unsupported("BeginUpdate"); }
void KWE_CALL EndUpdateDefault(WindowPtr) { Unsupported("EndUpdate"); }
void KWE_CALL InvalRectDefault(const Rect*) { Unsupported("InvalRect"); }
void KWE_CALL InvalRgnDefault(RgnHandle) { Unsupported("InvalRgn"); }
WindowPtr KWE_CALL NewWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                    WindowPtr, Boolean, SInt32) {
  return Unsupported("NewWindow", WindowPtr(nullptr));
}
WindowPtr KWE_CALL NewCWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                     WindowPtr, Boolean, SInt32) {
  return Unsupported("NewCWindow", WindowPtr(nullptr));
}
void KWE_CALL ShowWindowDefault(WindowPtr) { Unsupported("ShowWindow"); }
void KWE_CALL HideWindowDefault(WindowPtr) { Unsupported("HideWindow"); }
void KWE_CALL SelectWindowDefault(WindowPtr) { Unsupported("SelectWindow"); }
void KWE_CALL CloseWindowDefault(WindowPtr) { Unsupported("CloseWindow"); }
WindowPtr KWE_CALL FrontWindowDefault() { return Unsupported("FrontWindow", WindowPtr(nullptr)); }
}  // namespace kwe::windows

namespace kwe::dialogs {
void ResetErrorSound() {}
void KWE_CALL ModalDialogDefault(ModalFilterProcPtr, SInt16* itemHit) {
  if (itemHit) *itemHit = 0;
  Unsupported("ModalDialog");
}
}  // namespace kwe::dialogs

namespace kwe::menus {
void DestroyAllMenus() {}
void KWE_CALL DrawMenuBarDefault() { Unsupported("DrawMenuBar"); }
void KWE_CALL HiliteMenuDefault(SInt16) { Unsupported("HiliteMenu"); }
SInt32 PopUpMenuSelectWork(MenuHandle, SInt16, SInt16, SInt16) {
  return Unsupported("PopUpMenuSelect", SInt32(0));
}
}  // namespace kwe::menus
