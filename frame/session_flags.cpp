#include "KWESession.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace {
constexpr UInt16 kPortRebuildSwitch = 0x0002;
}

// The second pair sets switches of the drawing code; the session only keeps
// them for the managers that read them.
KWE_API UInt32 KWE_CALL KWE_SetFlags(UInt32 mask, UInt32 value, SInt16 switchMask,
                                     SInt16 switchValue) {
  kwe::Session& s = kwe::TheSession();
  UInt32 previous = s.flags;
  s.flags = (s.flags & ~mask) | (value & mask);
  UInt16 m = static_cast<UInt16>(switchMask);
  UInt16 v = static_cast<UInt16>(switchValue);
  s.drawingSwitches = static_cast<UInt16>((s.drawingSwitches & ~m) | (v & m));
  if (m & kPortRebuildSwitch) kwe::quickdraw::SetCurrentPortSwitch((v & kPortRebuildSwitch) != 0);
  return previous;
}
