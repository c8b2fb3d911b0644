// The English names of the date pictures, as the Windows pictures spell them
// in the default locale.
#include "intl/date_settings.h"

namespace kwe::intl {

const char* const kMonthNames[12] = {"January",   "February", "March",    "April",
                                     "May",       "June",     "July",     "August",
                                     "September", "October",  "November", "December"};
const char* const kDayNames[7] = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                  "Thursday", "Friday", "Saturday"};

}  // namespace kwe::intl
