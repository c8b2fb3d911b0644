// Date, time, delays and the beep.
#include <windows.h>

#include <ctime>

#include "OSUtils.h"
#include "frame/mac_time.h"
#include "frame/subsystems.h"

KWE_API void KWE_CALL GetDateTime(UInt32* secs) {
  if (!secs) return;
  TIME_ZONE_INFORMATION zone{};
  DWORD state = GetTimeZoneInformation(&zone);
  *secs = kwe::MacSecondsFromUnix(static_cast<int64_t>(std::time(nullptr)), zone.Bias,
                                  state == TIME_ZONE_ID_DAYLIGHT);
}

KWE_API void KWE_CALL GetTime(DateTimeRec* d) {
  if (!d) return;
  SYSTEMTIME now;
  GetLocalTime(&now);
  d->year = static_cast<SInt16>(now.wYear);
  d->month = static_cast<SInt16>(now.wMonth);
  d->day = static_cast<SInt16>(now.wDay);
  d->hour = static_cast<SInt16>(now.wHour);
  d->minute = static_cast<SInt16>(now.wMinute);
  d->second = static_cast<SInt16>(now.wSecond);
  d->dayOfWeek = static_cast<SInt16>(now.wDayOfWeek + 1);
}

// Delays of 21 ticks or more keep the application's windows alive by running
// the message pump while they wait; shorter ones only watch the tick count.
KWE_API void KWE_CALL Delay(SInt32 numTicks, SInt32* finalTicks) {
  UInt32 start = kwe::events::CurrentTicks();
  UInt32 now = start;
  while (static_cast<SInt32>(now - start) < numTicks) {
    if (numTicks >= 21) {
      // Sleep only for what is left, so messages arriving midway do not
      // stretch the delay.
      SInt32 sleep = (numTicks - static_cast<SInt32>(now - start)) * 16;
      kwe::events::PumpOnePass(-1, static_cast<UInt32>(sleep > 32767 ? 32767 : sleep));
    }
    now = kwe::events::CurrentTicks();
  }
  if (finalTicks) *finalTicks = static_cast<SInt32>(now);
}

KWE_API void KWE_CALL SysBeep(SInt16 duration) {
  MessageBeep(0);
  UInt32 start = kwe::events::CurrentTicks();
  while (static_cast<SInt32>(kwe::events::CurrentTicks() - start) < duration) {
  }
}
