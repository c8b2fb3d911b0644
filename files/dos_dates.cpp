#include "files/dos_dates.h"

namespace kwe::files {
namespace {

constexpr int64_t kSecondsPerDay = 86400;

// Days from 1 March of year 0 arithmetic (proleptic Gregorian), shifted so
// that 1 January 1904 is day 0.
int64_t DaysFromCivil(int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<int64_t>(doe) - 719468;
}

const int64_t kDay1904 = DaysFromCivil(1904, 1, 1);

void CivilFromDays(int64_t z, int64_t* y, unsigned* m, unsigned* d) {
  z += 719468;
  const int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  *d = doy - (153 * mp + 2) / 5 + 1;
  *m = mp < 10 ? mp + 3 : mp - 9;
  *y = static_cast<int64_t>(yoe) + era * 400 + (*m <= 2);
}

}  // namespace

uint32_t MacSecondsFromDosDateTime(uint16_t date, uint16_t time) {
  unsigned year = 1980 + (date >> 9);
  unsigned month = (date >> 5) & 15;
  unsigned day = date & 31;
  if (month < 1) month = 1;
  if (day < 1) day = 1;
  int64_t days = DaysFromCivil(year, month, day) - kDay1904;
  int64_t seconds =
      days * kSecondsPerDay + (time >> 11) * 3600 + ((time >> 5) & 63) * 60 + (time & 31) * 2;
  return static_cast<uint32_t>(seconds);
}

bool DosDateTimeFromMacSeconds(uint32_t seconds, uint16_t* date, uint16_t* time) {
  int64_t days = seconds / kSecondsPerDay;
  int64_t rest = seconds % kSecondsPerDay;
  int64_t year;
  unsigned month, day;
  CivilFromDays(days + kDay1904, &year, &month, &day);
  if (year < 1980 || year > 2107) return false;
  *date = static_cast<uint16_t>(((year - 1980) << 9) | (month << 5) | day);
  *time =
      static_cast<uint16_t>(((rest / 3600) << 11) | (((rest / 60) % 60) << 5) | ((rest % 60) / 2));
  return true;
}

}  // namespace kwe::files
