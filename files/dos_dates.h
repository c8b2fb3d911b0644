// File dates: Macintosh seconds (local time since 1904) and the DOS date and
// time words that Windows converts file times through.
#pragma once
#include <cstdint>

namespace kwe::files {

// date: year - 1980 in bits 9-15, month 5-8, day 0-4; time: hours 11-15,
// minutes 5-10, seconds / 2 in 0-4.
uint32_t MacSecondsFromDosDateTime(uint16_t date, uint16_t time);

// False for a moment DOS dates cannot hold (before 1980 or after 2107).
// Odd seconds round down.
bool DosDateTimeFromMacSeconds(uint32_t seconds, uint16_t* date, uint16_t* time);

}  // namespace kwe::files
