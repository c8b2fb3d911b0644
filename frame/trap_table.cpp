#include "frame/trap_table.h"

#include <cstdint>

#include "OSUtils.h"
#include "frame/host_procedures.h"

namespace kwe::traps {

Slot* Find(UInt16 trapWord) {
  for (int i = 0; i < SlotCount(); ++i)
    if (Slots()[i].word == trapWord) return &Slots()[i];
  return nullptr;
}

}  // namespace kwe::traps

namespace {

UniversalProcPtr ProcedureFromNumber(std::uintptr_t n) {
  return reinterpret_cast<UniversalProcPtr>(n);
}

}  // namespace

KWE_API UniversalProcPtr KWE_CALL NGetTrapAddress(UInt16 trapNum, TrapType) {
  switch (trapNum) {
    // Availability tests look for these; they answer with themselves so each
    // is implemented and distinct from the others.
    case 0xAB03:
    case 0x0060:
    case 0xA1AD:
    case 0x008F: return ProcedureFromNumber(trapNum);
    default: break;
  }
  if (kwe::traps::Slot* slot = kwe::traps::Find(trapNum)) return slot->current;
  return ProcedureFromNumber(0xFFFFFFFFu);
}

KWE_API UniversalProcPtr KWE_CALL GetTrapAddress(UInt16 trapNum) {
  return NGetTrapAddress(trapNum, ToolTrap);
}

KWE_API UniversalProcPtr KWE_CALL GetToolboxTrapAddress(UInt16 trapNum) {
  return NGetTrapAddress(trapNum, ToolTrap);
}

// A null address restores the default rather than leaving a forwarding
// export to call null. Only the slot's own procedure instances are released:
// the library's defaults never went through the host's make procedure.
KWE_API void KWE_CALL NSetTrapAddress(UniversalProcPtr trapAddr, UInt16 trapNum, TrapType) {
  kwe::traps::Slot* slot = kwe::traps::Find(trapNum);
  if (!slot) return;
  if (!trapAddr) trapAddr = slot->defaultProcedure;
  if (slot->current == trapAddr) return;
  if (slot->current != slot->defaultProcedure) kwe::ReleaseHostProcedure(slot->current);
  slot->current = trapAddr == slot->defaultProcedure ? trapAddr : kwe::WrapHostProcedure(trapAddr);
}

KWE_API void KWE_CALL SetTrapAddress(UniversalProcPtr trapAddr, UInt16 trapNum) {
  NSetTrapAddress(trapAddr, trapNum, ToolTrap);
}
