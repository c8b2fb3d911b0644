// Macintosh time: seconds since 1 January 1904, local time.
#pragma once
#include <cstdint>

namespace kwe {

constexpr int64_t kMacEpochOffset = 2082844800;  // 1904-01-01 to 1970-01-01

// unixSeconds is universal time; minutesWest is the zone's offset west of
// universal time; daylight adds the hour the Toolbox has always added.
uint32_t MacSecondsFromUnix(int64_t unixSeconds, int32_t minutesWest, bool daylight);

}  // namespace kwe
