// The library's 46 indexed process-wide settings (KWE_SystemValue), read by
// the managers that each one tunes.
#pragma once
#include <cstdint>

namespace kwe {

enum SystemValueIndex : int16_t {
  kSysValueEventPumpInterval = 5,
  kSysValuePumpCountdown = 6,
  kSysValueSmallBlockLimit = 15,
  kSysValueConvertTexts = 24,
  kSysValueCount = 46
};

enum class SystemValueKind : uint8_t { Unassigned, Word, LowWord, Long, GetOnly };

SystemValueKind KindOfSystemValue(int16_t index);

// Operation 1 stores value and answers the previous value; any other
// operation answers the current one. Index 3 and 4 (scroll-bar sizes) are
// answered by the caller from the platform; here they read 0.
int32_t SystemValue(int16_t operation, int16_t index, int32_t value);

// What the managers read.
int32_t ReadSystemValue(int16_t index);

// Back to the defaults (a fresh process).
void ResetSystemValues();

}  // namespace kwe
