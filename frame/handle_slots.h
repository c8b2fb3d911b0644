// Win32 handles kept in the 32-bit slots of published Toolbox records and
// calls: a device's gdReserved, the 4-byte 'ICON' stand-in, a file handle
// handed out as a long, a process serial number. 64-bit Windows keeps 32
// significant bits in USER, GDI and kernel handles and defines the full
// handle as those bits sign-extended (HandleToLong and LongToHandle), so a
// slot keeps the low half and gives the handle back sign-extended.
#pragma once
#include <cstdint>

#include "MacTypes.h"

namespace kwe {

template <typename H>
inline SInt32 HandleToSlot(H handle) {
  return static_cast<SInt32>(reinterpret_cast<std::intptr_t>(handle));
}

template <typename H>
inline H HandleFromSlot(SInt32 slot) {
  return reinterpret_cast<H>(static_cast<std::intptr_t>(slot));
}

}  // namespace kwe
