// The [intl] section of WIN.INI over the "INTL" 0 record and the date and
// time settings. Every key's default is what the record holds already, so a
// missing key changes nothing; text comes in the Windows ANSI set and is kept
// in the Macintosh one.
#include <windows.h>

#include <cstring>
#include <string>

#include "intl/date_pictures.h"
#include "intl/intl_state.h"
#include "memory/character_conversion.h"

namespace kwe::intl {
namespace {

constexpr int kProfileBuffer = 256;

// The key's text cut to at most max characters, in Macintosh Roman.
std::string ProfileText(const char* key, const std::string& fallback, size_t max) {
  char buffer[kProfileBuffer];
  GetProfileStringA("intl", key, fallback.c_str(), buffer, sizeof buffer);
  std::string text(buffer, strnlen(buffer, max));
  text::AnsiToMacBytes(reinterpret_cast<const UInt8*>(text.data()),
                       reinterpret_cast<UInt8*>(&text[0]), text.size());
  return text;
}

int ProfileNumber(const char* key, int fallback) {
  return static_cast<int>(GetProfileIntA("intl", key, fallback));
}

void ProfileCharacter(const char* key, char* field) {
  std::string text = ProfileText(key, std::string(1, *field), 1);
  if (!text.empty()) *field = text[0];
}

// A suffix of up to max characters and its NUL.
void ProfileSuffix(const char* key, char* field, size_t max) {
  std::string text = ProfileText(key, std::string(field, strnlen(field, max)), max);
  std::memset(field, 0, max + 1);
  std::memcpy(field, text.data(), text.size());
}

void SetBit(UInt8* bits, UInt8 bit, bool on) {
  *bits = static_cast<UInt8>(on ? *bits | bit : *bits & ~bit);
}

// "sCurrency" and its position (iCurrency: 0 before the number, 1 after, 2
// before with a blank, 3 after with a blank).
void ReadCurrency(Intl0Rec& r) {
  char current[4] = {r.currSym1, r.currSym2, r.currSym3, 0};
  std::string symbol = ProfileText("sCurrency", current[0] == ' ' ? current + 1 : current, 3);
  char places[3] = {0, 0, 0};
  std::memcpy(places, symbol.data(), symbol.size());
  int fallback = (r.currFmt & currSymLead) ? 0 : 1;
  int position = ProfileNumber("iCurrency", fallback);
  if (position == 2 && symbol.size() < 3) places[symbol.size()] = ' ';
  if (position == 3) {
    places[2] = places[1];
    places[1] = places[0];
    places[0] = ' ';
  }
  r.currSym1 = places[0];
  r.currSym2 = places[1];
  r.currSym3 = places[2];
  SetBit(&r.currFmt, currSymLead, position == 0 || position == 2);
}

void ReadIntl0(Intl0Rec& r) {
  ProfileSuffix("s1159", r.mornStr, 3);
  ProfileSuffix("s2359", r.eveStr, 3);
  ReadCurrency(r);
  SetBit(&r.currFmt, currLeadingZ, ProfileNumber("iLZero", (r.currFmt & currLeadingZ) != 0));
  SetBit(&r.currFmt, currTrailingZ, ProfileNumber("iDigits", (r.currFmt & currTrailingZ) != 0));
  int negative = ProfileNumber("iNegCurr", (r.currFmt & currNegSym) ? 1 : 0);
  SetBit(&r.currFmt, currNegSym, negative != 0 && negative != 4);
  ProfileCharacter("sThousand", &r.thousSep);
  ProfileCharacter("sDecimal", &r.decimalPt);
  ProfileCharacter("sDate", &r.dateSep);
  ProfileCharacter("sTime", &r.timeSep);
  ProfileCharacter("sList", &r.listSep);
  r.dateOrder = static_cast<UInt8>(ProfileNumber("iDate", r.dateOrder));
}

}  // namespace

void ReadInternationalSettings(SInt16) {
  IntlState& s = State();
  Intl0Rec& r = s.intl0;
  ReadIntl0(r);
  DateTimeSettings& d = s.settings;

  std::string shortPicture = ProfileText("sShortDate", d.shortPicture, kShortPictureMax);
  std::string longPicture = ProfileText("sLongDate", d.longPicture, kLongPictureMax);
  // An empty picture would show no date at all: the one before stays.
  if (!shortPicture.empty()) {
    std::memset(d.shortPicture, 0, sizeof d.shortPicture);
    std::memcpy(d.shortPicture, shortPicture.data(), shortPicture.size());
  }
  if (!longPicture.empty()) {
    std::memset(d.longPicture, 0, sizeof d.longPicture);
    std::memcpy(d.longPicture, longPicture.data(), longPicture.size());
  }
  ShortPictureTraits traits = AnalyseShortPicture(d.shortPicture);
  r.dateOrder = traits.dateOrder;
  r.shrtDateFmt = traits.shrtDateFmt;
  d.dateOrder = traits.dateOrder;
  d.dateSep = traits.dateSep ? traits.dateSep : r.dateSep;

  d.timeSep = r.timeSep;
  d.timeCycle = ProfileNumber("iTime", r.timeCycle == 0) ? 1 : 0;
  d.timeFmt = ProfileNumber("iTLZero", (r.timeFmt & 0x80) != 0) ? 0xE0 : 0x60;
  std::memcpy(d.morning, r.mornStr, sizeof r.mornStr);
  std::memcpy(d.evening, r.eveStr, sizeof r.eveStr);
  ProfileSuffix("s1159", d.morning, kSuffixMax);
  ProfileSuffix("s2359", d.evening, kSuffixMax);
  // The published cycle: 0 is the 24-hour day, 255 the 12-hour one.
  r.timeCycle = d.timeCycle ? 0 : 255;
  r.timeFmt = d.timeFmt;
  d.abbrLen = 3;

  LongPictureToIntl1(d.longPicture, &s.intl1);
}

}  // namespace kwe::intl
