// The 25 patchable Toolbox calls. Forwarding exports only call their slot;
// guarded exports do their own work unless a patch is installed and not
// already running.
#include "Dialogs.h"
#include "Events.h"
#include "MacWindows.h"
#include "Menus.h"
#include "Quickdraw.h"
#include "frame/trap_defaults.h"
#include "frame/trap_table.h"

namespace kwe::traps {
namespace {

template <class F>
ProcPtr P(F f) {
  return reinterpret_cast<ProcPtr>(f);
}

enum Index {
  kPopUpMenuSelect,
  kGetNextEvent,
  kWaitNextEvent,
  kEventAvail,
  kButton,
  kGetMouse,
  kSystemTask,
  kSetOrigin,
  kBeginUpdate,
  kEndUpdate,
  kInvalRect,
  kInvalRgn,
  kStillDown,
  kNewWindow,
  kNewCWindow,
  kShowWindow,
  kHideWindow,
  kSelectWindow,
  kCloseWindow,
  kFrontWindow,
  kModalDialog,
  kWaitMouseUp,
  kDrawMenuBar,
  kHiliteMenu,
  kSetCursor,
  kCount
};

#define KWE_FORWARDING(word, procedure) \
  { word, false, P(procedure), P(procedure) }
#define KWE_GUARDED(word, exported) \
  { word, true, P(exported), P(exported) }

Slot g_slots[kCount] = {
    KWE_GUARDED(0xA80B, &::PopUpMenuSelect),
    KWE_FORWARDING(0xA970, &events::GetNextEventDefault),
    KWE_FORWARDING(0xA860, &events::WaitNextEventDefault),
    KWE_FORWARDING(0xA971, &events::EventAvailDefault),
    KWE_GUARDED(0xA974, &::Button),
    KWE_GUARDED(0xA972, &::GetMouse),
    KWE_FORWARDING(0xA9B4, &events::SystemTaskDefault),
    KWE_FORWARDING(0xA878, &quickdraw::SetOriginDefault),
    KWE_FORWARDING(0xA922, &windows::BeginUpdateDefault),
    KWE_FORWARDING(0xA923, &windows::EndUpdateDefault),
    KWE_FORWARDING(0xA928, &windows::InvalRectDefault),
    KWE_FORWARDING(0xA927, &windows::InvalRgnDefault),
    KWE_FORWARDING(0xA973, &events::StillDownDefault),
    KWE_FORWARDING(0xA913, &windows::NewWindowDefault),
    KWE_FORWARDING(0xAA45, &windows::NewCWindowDefault),
    KWE_FORWARDING(0xA915, &windows::ShowWindowDefault),
    KWE_FORWARDING(0xA916, &windows::HideWindowDefault),
    KWE_FORWARDING(0xA91F, &windows::SelectWindowDefault),
    KWE_FORWARDING(0xA92D, &windows::CloseWindowDefault),
    KWE_FORWARDING(0xA924, &windows::FrontWindowDefault),
    KWE_FORWARDING(0xA991, &dialogs::ModalDialogDefault),
    KWE_FORWARDING(0xA977, &events::WaitMouseUpDefault),
    KWE_FORWARDING(0xA937, &menus::DrawMenuBarDefault),
    KWE_FORWARDING(0xA938, &menus::HiliteMenuDefault),
    KWE_FORWARDING(0xA851, &quickdraw::SetCursorDefault),
};

#undef KWE_FORWARDING
#undef KWE_GUARDED

// One re-entry flag per guarded export.
bool g_inButtonPatch = false;
bool g_inGetMousePatch = false;
bool g_inPopUpPatch = false;

// The patch to call for a guarded export, or null for the library's own work.
ProcPtr GuardedPatch(Index index, bool inPatch) {
  const Slot& slot = g_slots[index];
  if (inPatch || slot.current == slot.defaultProcedure || !slot.current) return nullptr;
  return slot.current;
}

struct ReentryFlag {
  explicit ReentryFlag(bool& flag) : flag_(flag) { flag_ = true; }
  ~ReentryFlag() { flag_ = false; }
  bool& flag_;
};

}  // namespace

Slot* Slots() { return g_slots; }
int SlotCount() { return kCount; }

}  // namespace kwe::traps

using namespace kwe::traps;

KWE_API SInt32 KWE_CALL PopUpMenuSelect(MenuHandle menu, SInt16 top, SInt16 left,
                                        SInt16 popUpItem) {
  if (ProcPtr patch = GuardedPatch(kPopUpMenuSelect, g_inPopUpPatch)) {
    ReentryFlag flag(g_inPopUpPatch);
    return reinterpret_cast<decltype(&PopUpMenuSelect)>(patch)(menu, top, left, popUpItem);
  }
  return kwe::menus::PopUpMenuSelectWork(menu, top, left, popUpItem);
}

KWE_API Boolean KWE_CALL Button(void) {
  if (ProcPtr patch = GuardedPatch(kButton, g_inButtonPatch)) {
    ReentryFlag flag(g_inButtonPatch);
    return reinterpret_cast<decltype(&Button)>(patch)();
  }
  return kwe::events::ButtonWork();
}

KWE_API void KWE_CALL GetMouse(Point* mouseLoc) {
  if (ProcPtr patch = GuardedPatch(kGetMouse, g_inGetMousePatch)) {
    ReentryFlag flag(g_inGetMousePatch);
    reinterpret_cast<decltype(&GetMouse)>(patch)(mouseLoc);
    return;
  }
  kwe::events::GetMouseWork(mouseLoc);
}

KWE_API Boolean KWE_CALL GetNextEvent(EventMask eventMask, EventRecord* theEvent) {
  return Current<decltype(&GetNextEvent)>(kGetNextEvent)(eventMask, theEvent);
}

KWE_API Boolean KWE_CALL WaitNextEvent(EventMask eventMask, EventRecord* theEvent, UInt32 sleep,
                                       RgnHandle mouseRgn) {
  return Current<decltype(&WaitNextEvent)>(kWaitNextEvent)(eventMask, theEvent, sleep, mouseRgn);
}

KWE_API Boolean KWE_CALL EventAvail(EventMask eventMask, EventRecord* theEvent) {
  return Current<decltype(&EventAvail)>(kEventAvail)(eventMask, theEvent);
}

KWE_API void KWE_CALL SystemTask(void) { Current<decltype(&SystemTask)>(kSystemTask)(); }

KWE_API void KWE_CALL SetOrigin(SInt16 h, SInt16 v) {
  Current<decltype(&SetOrigin)>(kSetOrigin)(h, v);
}

KWE_API void KWE_CALL BeginUpdate(WindowPtr theWindow) {
  Current<decltype(&BeginUpdate)>(kBeginUpdate)(theWindow);
}

KWE_API void KWE_CALL EndUpdate(WindowPtr theWindow) {
  Current<decltype(&EndUpdate)>(kEndUpdate)(theWindow);
}

KWE_API void KWE_CALL InvalRect(const Rect* badRect) {
  Current<decltype(&InvalRect)>(kInvalRect)(badRect);
}

KWE_API void KWE_CALL InvalRgn(RgnHandle badRgn) {
  Current<decltype(&InvalRgn)>(kInvalRgn)(badRgn);
}

KWE_API Boolean KWE_CALL StillDown(void) { return Current<decltype(&StillDown)>(kStillDown)(); }

KWE_API WindowPtr KWE_CALL NewWindow(void* wStorage, const Rect* boundsRect, ConstStr255Param title,
                                     Boolean visible, SInt16 theProc, WindowPtr behind,
                                     Boolean goAwayFlag, SInt32 refCon) {
  return Current<decltype(&NewWindow)>(kNewWindow)(wStorage, boundsRect, title, visible, theProc,
                                                   behind, goAwayFlag, refCon);
}

KWE_API WindowPtr KWE_CALL NewCWindow(void* wStorage, const Rect* boundsRect,
                                      ConstStr255Param title, Boolean visible, SInt16 procID,
                                      WindowPtr behind, Boolean goAwayFlag, SInt32 refCon) {
  return Current<decltype(&NewCWindow)>(kNewCWindow)(wStorage, boundsRect, title, visible, procID,
                                                     behind, goAwayFlag, refCon);
}

KWE_API void KWE_CALL ShowWindo(WindowPtr theWindow) {
  Current<decltype(&ShowWindo)>(kShowWindow)(theWindow);
}

KWE_API void KWE_CALL HideWindow(WindowPtr theWindow) {
  Current<decltype(&HideWindow)>(kHideWindow)(theWindow);
}

KWE_API void KWE_CALL SelectWindow(WindowPtr theWindow) {
  Current<decltype(&SelectWindow)>(kSelectWindow)(theWindow);
}

KWE_API void KWE_CALL CloseWindo(WindowPtr theWindow) {
  Current<decltype(&CloseWindo)>(kCloseWindow)(theWindow);
}

KWE_API WindowPtr KWE_CALL FrontWindow(void) {
  return Current<decltype(&FrontWindow)>(kFrontWindow)();
}

KWE_API void KWE_CALL ModalDialog(ModalFilterProcPtr filterProc, SInt16* itemHit) {
  Current<decltype(&ModalDialog)>(kModalDialog)(filterProc, itemHit);
}

KWE_API Boolean KWE_CALL WaitMouseUp(void) {
  return Current<decltype(&WaitMouseUp)>(kWaitMouseUp)();
}

KWE_API void KWE_CALL DrawMenuBa(void) { Current<decltype(&DrawMenuBa)>(kDrawMenuBar)(); }

KWE_API void KWE_CALL HiliteMenu(SInt16 menuID) {
  Current<decltype(&HiliteMenu)>(kHiliteMenu)(menuID);
}

KWE_API void KWE_CALL SetCurso(const Cursor* crsr) {
  Current<decltype(&SetCurso)>(kSetCursor)(crsr);
}
