// Date pictures and dates and times read from text, on arbitrary bytes. The
// first byte chooses the settings (date order, separators, suffixes); the
// rest is the text and, cut to a picture's length, the picture. Reading
// never looks past the text (the sanitizer sees the block's exact size),
// reports only what it read, and a date it accepts is a real one; every
// picture renders into at most 255 characters and goes through the "INTL" 1
// fields and back without harm.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "intl/calendar.h"
#include "intl/date_pictures.h"
#include "intl/date_reading.h"
#include "intl/date_settings.h"

using namespace kwe::intl;

namespace {

void CheckReading(const std::vector<char>& text, const DateTimeSettings& settings) {
  Today today{1999 + int(text.size() % 40), 1 + int(text.size() % 12), 1 + int(text.size() % 28)};
  LongDateRec d{};
  int32_t used = -1;
  StringToDateStatus status =
      ReadDate(text.data(), int32_t(text.size()), settings, today, &used, &d);
  if (!(status & fatalDateTime)) {
    if (used < 0 || used > int32_t(text.size())) std::abort();
    if (d.ld.month < 1 || d.ld.month > 12 || d.ld.day < 1 ||
        d.ld.day > DaysInMonth(d.ld.year, d.ld.month) || d.ld.year < 0 || d.ld.year > 9999)
      std::abort();
  }
  used = -1;
  status = ReadTime(text.data(), int32_t(text.size()), settings, &used, &d);
  if (!(status & fatalDateTime)) {
    if (used < 0 || used > int32_t(text.size())) std::abort();
    if (d.ld.hour > 23 || d.ld.minute > 59 || d.ld.second > 59) std::abort();
  }
}

void CheckPicture(const std::string& picture, uint8_t choice) {
  DateTimeRec d{SInt16(1904 + choice), SInt16(1 + choice % 12), SInt16(1 + choice % 28), 0, 0, 0,
                SInt16(1 + choice % 7)};
  Str255 out;
  RenderDatePicture(picture, d, choice % 5, out);
  RenderDatePicture(AbbreviatePicture(picture), d, 3, out);
  RenderDatePicture(SuppressElements(picture, choice & 0x0F), d, 3, out);
  AnalyseShortPicture(picture.c_str());
  Intl1Rec r{};
  LongPictureToIntl1(picture.c_str(), &r);
  RenderDatePicture(PictureFromIntl1(r), d, 3, out);
  r.lngDateFmt = choice;
  std::memcpy(r.st0, picture.data(), picture.size() < 4 ? picture.size() : 4);
  RenderDatePicture(PictureFromIntl1(r), d, 3, out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  uint8_t choice = data[0];
  DateTimeSettings settings;
  settings.dateOrder = choice % 3;
  const char separators[] = "/.- :";
  settings.dateSep = separators[choice % 5];
  settings.timeSep = separators[(choice >> 3) % 5];
  if (choice & 0x80) std::memcpy(settings.morning, " am", 4);
  std::vector<char> text(data + 1, data + size);
  CheckReading(text, settings);
  std::string picture(text.begin(), text.end());
  CheckPicture(picture.substr(0, kLongPictureMax), choice);
  return 0;
}
