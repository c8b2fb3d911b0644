// The one message loop behind every event call: it peeks, translates and
// dispatches the thread's Windows messages (whose window procedures post
// Toolbox events) and then looks at the queue.
#pragma once
#include "Events.h"

namespace kwe::events {

// Start-up: sleep timer stopped, countdowns reloaded, hooks kept.
void ResetPump();

// One pass for the kinds in mask: pumps until an event may be waiting or
// sleepMilliseconds are over, then finds the first queued event of mask, or
// makes an update or activate event. The element found (not removed), or
// null with *event a null event. event may be null.
EvQEl* PumpPass(EventMask mask, EventRecord* event, UInt32 sleepMilliseconds);

// True while the library is tracking the mouse (capture depth above 0) or a
// pass is already running further up the stack.
bool PumpIsNested();

// GetNextEvent and WaitNextEvent: a pass, the event found removed.
Boolean NextEvent(EventMask mask, EventRecord* event, UInt32 sleepTicks);

// The next pass makes an update event if it can.
void RequestUpdate();

}  // namespace kwe::events
