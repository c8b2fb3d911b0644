// How much memory there is: from GlobalMemoryStatus, or from the memory
// limit when one is set.
#pragma once
#include <windows.h>

namespace kwe::memory {

// The page-file and physical-memory figures, as GlobalMemoryStatus gives
// them now; kept for KWE_ComputeMemorySize.
MEMORYSTATUS SampleMemoryStatus();

}  // namespace kwe::memory
