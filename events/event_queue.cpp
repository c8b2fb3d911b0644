// The 32-element event queue. Its header is the host's EventQueue global and
// its elements keep the published EvQEl layout, so an application may walk
// the queue itself through GetEvQHdr.
#include "events/event_queue.h"

#include <windows.h>

#include "OSUtils.h"
#include "events/key_translation.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"

namespace kwe::events {
namespace {

constexpr SInt16 kFree = -1;
constexpr SInt16 kQueued = 1;
constexpr SInt16 kSynthetic = 2;
constexpr int kOverflowLoss = 8;
constexpr SInt16 kDragPseudoPoint = 4;

EvQEl g_elements[kQueueLength];
EvQEl g_synthetic{nullptr, kSynthetic, 0, 0, 0, {0, 0}, 0};
// The synthetic event's window. Its 32-bit evtQMessage cannot hold a 64-bit
// WindowPtr, so the pointer is kept here, beside the element.
WindowPtr g_syntheticWindow = nullptr;
int g_count = 0;
UInt16 g_pendingMask = 0;
UInt16 g_modifiers = btnState;
Point g_mouse{0, 0};

QHdr& Header() { return lowmem::At<QHdr>(lowmem::Slot::EventQueue); }
EvQEl* Head() { return reinterpret_cast<EvQEl*>(Header().qHead); }
EvQEl* Next(const EvQEl* e) { return reinterpret_cast<EvQEl*>(e->qLink); }
QElemPtr AsQElem(EvQEl* e) { return reinterpret_cast<QElemPtr>(e); }

WindowPtr& PendingActivation() { return lowmem::At<WindowPtr>(lowmem::Slot::PendingActivation); }
WindowPtr& PendingDeactivation() {
  return lowmem::At<WindowPtr>(lowmem::Slot::PendingDeactivation);
}

void Unlink(EvQEl* element) {
  QHdr& h = Header();
  EvQEl* previous = nullptr;
  for (EvQEl* e = Head(); e; previous = e, e = Next(e)) {
    if (e != element) continue;
    if (previous)
      previous->qLink = e->qLink;
    else
      h.qHead = e->qLink;
    if (h.qTail == AsQElem(e)) h.qTail = AsQElem(previous);
    if (!h.qHead) h.qTail = nullptr;
    e->qLink = nullptr;
    e->qType = kFree;
    if (--g_count == 0) g_pendingMask &= kUpdatePending | kActivatePending;
    return;
  }
}

}  // namespace

UInt16& Modifiers() { return g_modifiers; }
Point& MousePosition() { return g_mouse; }
UInt16& PendingMask() { return g_pendingMask; }
int QueuedCount() { return g_count; }
EvQEl* SyntheticElement(const EventRecord& e, WindowPtr window) {
  g_synthetic = EvQEl{nullptr, kSynthetic, e.what, e.message, e.when, e.where, e.modifiers};
  g_syntheticWindow = window;
  return &g_synthetic;
}

void ResetQueue() {
  Header() = QHdr{0, nullptr, nullptr};
  for (EvQEl& e : g_elements) e = EvQEl{nullptr, kFree, 0, 0, 0, {0, 0}, 0};
  g_count = 0;
  g_pendingMask = 0;
  g_modifiers = btnState;
  g_mouse = Point{0, 0};
}

EvQEl* Enqueue(const EventRecord& event) {
  if (event.what == keyUp && !(lowmem::At<SInt16>(lowmem::Slot::SysEvtMask) & keyUpMask))
    return nullptr;
  if (g_count >= kQueueLength) {
    for (int i = 0; i < kOverflowLoss && Head(); ++i) Unlink(Head());
    SysBeep(1);
  }
  EvQEl* element = nullptr;
  for (EvQEl& e : g_elements) {
    if (e.qType == kFree) {
      element = &e;
      break;
    }
  }
  if (!element) return nullptr;
  *element =
      EvQEl{nullptr, kQueued, event.what, event.message, event.when, event.where, event.modifiers};
  QHdr& h = Header();
  if (h.qTail)
    reinterpret_cast<EvQEl*>(h.qTail)->qLink = AsQElem(element);
  else
    h.qHead = AsQElem(element);
  h.qTail = AsQElem(element);
  g_pendingMask |= MaskOf(event.what);
  ++g_count;
  return element;
}

EvQEl* Post(UInt16 what, UInt32 message) {
  EventRecord e{what, message, lowmem::Ticks(), g_mouse, g_modifiers};
  return Enqueue(e);
}

EvQEl* FindQueued(EventMask mask) {
  for (EvQEl* e = Head(); e; e = Next(e))
    if (MaskOf(e->evtQWhat) & mask) return e;
  return nullptr;
}

void CopyEvent(const EvQEl& element, EventRecord* event) {
  if (!event) return;
  *event = EventRecord{element.evtQWhat, element.evtQMessage, element.evtQWhen, element.evtQWhere,
                       element.evtQModifiers};
}

void RemoveElement(EvQEl* element) {
  if (!element) return;
  if (element != &g_synthetic) {
    if (element->qType == kQueued) Unlink(element);
    return;
  }
  // An activate event is delivered once: the entry it came from is cleared.
  if (element->evtQWhat != activateEvt) return;
  WindowPtr window = g_syntheticWindow;
  if (PendingDeactivation() && PendingDeactivation() == window)
    PendingDeactivation() = nullptr;
  else
    PendingActivation() = nullptr;
  if (!PendingActivation() && !PendingDeactivation()) g_pendingMask &= ~kActivatePending;
}

void SetPendingActivation(WindowPtr window, bool activate) {
  (activate ? PendingActivation() : PendingDeactivation()) = window;
  g_pendingMask |= kActivatePending;
}

void ForgetWindow(WindowPtr window) {
  if (!window) return;
  if (PendingActivation() == window) PendingActivation() = nullptr;
  if (PendingDeactivation() == window) PendingDeactivation() = nullptr;
}

void PostPseudoPoint(SInt16 code) {
  RefreshModifiersFromKeyboard(false);
  EventRecord e{mouseDown, 0, lowmem::Ticks(), Point{SInt16(-code), -1}, g_modifiers};
  EvQEl* last = reinterpret_cast<EvQEl*>(Header().qTail);
  if (last && last->evtQWhat == mouseDown && last->evtQWhere.v == -kDragPseudoPoint &&
      last->evtQWhere.h == -1) {
    // A drag still waiting goes behind the new part, so the application sees
    // the part first and the drag after it.
    EventRecord drag;
    CopyEvent(*last, &drag);
    *last = EvQEl{nullptr, kQueued, e.what, e.message, e.when, e.where, e.modifiers};
    Enqueue(drag);
    return;
  }
  Enqueue(e);
}

void PostSyntheticClick(const Rect& r) {
  POINT at;
  GetCursorPos(&at);
  if (at.y < r.top || at.y >= r.bottom) at.y = (r.top + r.bottom) / 2;
  if (at.x < r.left || at.x >= r.right) at.x = (r.left + r.right) / 2;
  g_mouse = Point{SInt16(at.y), SInt16(at.x)};
  g_modifiers &= ~btnState;
  Post(mouseDown, 0);
  g_modifiers |= btnState;
  Post(mouseUp, 0);
}

}  // namespace kwe::events
