// The patchable entry points: one slot per call that applications commonly
// patch with NSetTrapAddress.
#pragma once
#include "MacTypes.h"

namespace kwe::traps {

struct Slot {
  UInt16 word;
  // A guarded export's default is the export itself; it calls a patch only
  // from outside that patch, so a patch may call the export for the
  // library's behaviour. Forwarding exports always call their slot.
  bool guarded;
  ProcPtr defaultProcedure;
  ProcPtr current;
};

// The table, in the order the exports define it (trap_exports.cpp).
Slot* Slots();
int SlotCount();
Slot* Find(UInt16 trapWord);

template <class Procedure>
Procedure Current(int index) {
  return reinterpret_cast<Procedure>(Slots()[index].current);
}

}  // namespace kwe::traps
