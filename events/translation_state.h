// What the translators share: whether the application is the active one,
// and whether KWE_InitGlobals has started the Event Manager.
#pragma once

namespace kwe::events {

bool ApplicationActive();
bool EventManagerStarted();

}  // namespace kwe::events
