#include <windows.h>

#include "OSUtils.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"

KWE_API SInt32 KWE_CALL KWE_SystemValue(SInt16 operation, SInt16 index, SInt32 value) {
  // The scroll-bar sizes follow the system metrics as they are now.
  if (index == 3) return GetSystemMetrics(SM_CXVSCROLL);
  if (index == 4) return GetSystemMetrics(SM_CYHSCROLL);
  SInt32 previous = kwe::SystemValue(operation, index, value);
  if (operation == 1 && index == kwe::kSysValuePumpCountdown) kwe::events::ExpirePumpCountdown();
  return previous;
}
