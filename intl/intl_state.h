// The International Utilities' live state: the "INTL" 0 and 1 records, the
// date and time settings, and the handles GetIntlResource made of them.
#pragma once
#include "Packages.h"
#include "intl/date_settings.h"

namespace kwe::intl {

// The United States records, which stand until resources or WIN.INI say
// otherwise.
Intl0Rec DefaultIntl0();
Intl1Rec DefaultIntl1();

struct IntlState {
  Intl0Rec intl0 = DefaultIntl0();
  Intl1Rec intl1 = DefaultIntl1();
  DateTimeSettings settings;
  // Made by the first GetIntlResource(0) and (1) and kept. Until the second
  // exists nothing of the long picture is suppressed.
  Handle intl0Handle = nullptr;
  Handle intl1Handle = nullptr;
};

IntlState& State();

// Fills the records from the system resource file's 'INTL' 0 and 1 (when
// systemFile is an open file) and then from WIN.INI [intl].
void ReadInternationalSettings(SInt16 systemFile);

}  // namespace kwe::intl
