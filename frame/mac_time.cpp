#include "frame/mac_time.h"

namespace kwe {

uint32_t MacSecondsFromUnix(int64_t unixSeconds, int32_t minutesWest, bool daylight) {
  int64_t seconds = unixSeconds + kMacEpochOffset - int64_t(minutesWest) * 60;
  if (daylight) seconds += 3600;
  return static_cast<uint32_t>(seconds);  // wraps in 2040, as the Toolbox's does
}

}  // namespace kwe
