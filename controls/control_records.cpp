// The record's library fields, the tie between a record and its child
// window, and the coordinates between the owner port and its Win32 window.
#include <cstring>

#include "Memory.h"
#include "controls/control_manager.h"
#include "frame/handle_slots.h"
#include "windows/window_manager.h"

namespace kwe::controls {
namespace {

constexpr size_t kFieldsInTitle = 246;  // offset 286 of the 32-bit record

UInt8* FieldBytes(ControlHandle c) { return Rec(c)->contrlTitle + kFieldsInTitle; }

ManagerState g_state;

}  // namespace

ManagerState& State() { return g_state; }

LibraryFields FieldsOf(ControlHandle c) {
  const UInt8* b = FieldBytes(c);
  LibraryFields f;
  SInt32 slot;
  std::memcpy(&f.portTop, b, 2);
  std::memcpy(&f.portLeft, b + 2, 2);
  f.hasCdef = b[4] != 0;
  f.variation = b[5];
  std::memcpy(&slot, b + 6, 4);
  f.window = HandleFromSlot<HWND>(slot);
  return f;
}

void StoreFields(ControlHandle c, const LibraryFields& f) {
  UInt8* b = FieldBytes(c);
  SInt32 slot = HandleToSlot(f.window);
  std::memcpy(b, &f.portTop, 2);
  std::memcpy(b + 2, &f.portLeft, 2);
  b[4] = f.hasCdef;
  b[5] = f.variation;
  std::memcpy(b + 6, &slot, 4);
}

HWND ChildOf(ControlHandle c) { return c && *c ? FieldsOf(c).window : nullptr; }

MenuHandle PopUpMenuOf(ControlHandle c) {
  if (!c || !*c || KindOf(c) != kPopUp) return nullptr;
  if constexpr (kMenuFitsRefCon) {
    return reinterpret_cast<MenuHandle>(static_cast<intptr_t>(Rec(c)->contrlRfCon));
  } else {
    MenuHandle menu;
    std::memcpy(&menu, reinterpret_cast<UInt8*>(Rec(c)) + sizeof(ControlRecord), sizeof menu);
    return menu;
  }
}

void SetPopUpMenu(ControlHandle c, MenuHandle menu) {
  if constexpr (kMenuFitsRefCon)
    Rec(c)->contrlRfCon = SInt32(reinterpret_cast<intptr_t>(menu));
  else
    std::memcpy(reinterpret_cast<UInt8*>(Rec(c)) + sizeof(ControlRecord), &menu, sizeof menu);
}

intptr_t KindOf(ControlHandle c) {
  if (FieldsOf(c).hasCdef) return -1;
  return reinterpret_cast<intptr_t>(Rec(c)->contrlDefProc);
}

bool IsScrollBar(ControlHandle c) { return KindOf(c) == kScrollBar; }

ControlDefProcPtr CdefOf(ControlHandle c) {
  if (!FieldsOf(c).hasCdef) return nullptr;
  return reinterpret_cast<ControlDefProcPtr>(Rec(c)->contrlDefProc);
}

KWEControlParam CallCdef(ControlHandle c, SInt16 message, KWEControlParam param) {
  ControlDefProcPtr cdef = CdefOf(c);
  if (!cdef) return 0;
  return cdef(SInt16(FieldsOf(c).variation), c, message, param);
}

HWND OwnerWindow(ControlHandle c) {
  return c && *c ? windows::HwndOf(Rec(c)->contrlOwner) : nullptr;
}

ControlHandle ControlOfChild(HWND child) {
  WindowPtr w = windows::WindowOfHwnd(GetParent(child));
  if (!w) return nullptr;
  for (ControlHandle c = windows::Peek(w)->controlList; c && *c; c = Rec(c)->nextControl)
    if (ChildOf(c) == child) return c;
  return nullptr;
}

bool IsLiveControl(ControlHandle c) {
  if (!c || !*c) return false;
  WindowPtr w = Rec(c)->contrlOwner;
  if (!windows::DataOf(w)) return false;
  for (ControlHandle k = windows::Peek(w)->controlList; k && *k; k = Rec(k)->nextControl)
    if (k == c) return true;
  return false;
}

POINT ToClient(ControlHandle c, SInt16 h, SInt16 v) {
  const Rect& port = Rec(c)->contrlOwner->portRect;
  return POINT{h - port.left, v - port.top};
}

void RecordPortOrigin(ControlHandle c) {
  LibraryFields f = FieldsOf(c);
  const Rect& port = Rec(c)->contrlOwner->portRect;
  f.portTop = port.top;
  f.portLeft = port.left;
  StoreFields(c, f);
}

bool PortOriginMoved(ControlHandle c) {
  LibraryFields f = FieldsOf(c);
  const Rect& port = Rec(c)->contrlOwner->portRect;
  return f.portTop != port.top || f.portLeft != port.left;
}

void InvalidateInOwner(ControlHandle c, const Rect& r) {
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(Rec(c)->contrlOwner);
  InvalRect(&r);
  SetPort(saved);
}

}  // namespace kwe::controls
