// The Toolbox event queue and the state every event call shares: the current
// modifiers, the mouse position and the mask of kinds that may be waiting.
// The translators and the Window Manager post through these.
#pragma once
#include "Events.h"
#include "MacTypes.h"

namespace kwe::events {

constexpr int kQueueLength = 32;
constexpr UInt16 kUpdatePending = updateMask;
constexpr UInt16 kActivatePending = activMask;

// The mask bit of an event kind; kinds past 23 have none.
inline UInt16 MaskOf(UInt16 what) { return what < 16 ? UInt16(1u << what) : UInt16(0); }

UInt16& Modifiers();     // btnState set while the button is up
Point& MousePosition();  // global coordinates
UInt16& PendingMask();   // kinds that may be available

// Start-up: header cleared, every element free, modifiers btnState.
void ResetQueue();

// Queues a whole record: a keyUp is dropped unless SysEvtMask has it; a
// full queue loses its 8 oldest events with one beep. The element, or null
// when the event was dropped.
EvQEl* Enqueue(const EventRecord& event);
// Queues an event of the current time, mouse position and modifiers, without
// PostEvent's SysEvtMask test.
EvQEl* Post(UInt16 what, UInt32 message);
int QueuedCount();

// The first queued element whose kind is in mask, from the head.
EvQEl* FindQueued(EventMask mask);
// Removes a queued element, or consumes the synthetic one.
void RemoveElement(EvQEl* element);
void CopyEvent(const EvQEl& element, EventRecord* event);

// The one element that carries an update or activate event made on demand;
// never linked into the queue (qType 2).
// window is the event's window: the 32-bit message cannot hold a 64-bit
// pointer, so the element keeps it beside itself.
EvQEl* SyntheticElement(const EventRecord& event, WindowPtr window);

// For the Window Manager.
void SetPendingActivation(WindowPtr window, bool activate);
void ForgetWindow(WindowPtr window);
void RequestUpdate();
// A mouseDown at (v = -code, h = -1) that FindWindow decodes into a part.
void PostPseudoPoint(SInt16 code);
// mouseDown then mouseUp in screenRect (a click the library makes for a
// dialog's control), the mouse moved inside it.
void PostSyntheticClick(const Rect& screenRect);

}  // namespace kwe::events
