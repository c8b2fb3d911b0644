// The Gestalt and SysEnvirons answers: a Toolbox of System 6.0.5 vintage on
// a 68040-class machine with colour QuickDraw.
#pragma once
#include <cstdint>

namespace kwe {

constexpr uint16_t kSystemVersion = 0x0605;
constexpr uint16_t kCoprocessorFlag = 0x0400;  // of the Windows-flags word

// The response for selector, or false for a selector Gestalt does not know.
bool GestaltResponse(uint32_t selector, uint16_t windowsFlags, int32_t* response);

}  // namespace kwe
