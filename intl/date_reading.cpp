#include "intl/date_reading.h"

#include <cctype>
#include <cstring>
#include <string>
#include <vector>

#include "intl/calendar.h"
#include "intl/date_settings.h"

namespace kwe::intl {
namespace {

constexpr int kMostLookedAt = 63;
constexpr int kBiggestField = 99999;  // numbers past it are invalid anyway

bool IsBlank(char c) { return static_cast<unsigned char>(c) <= 32; }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// The characters the reader may look at, after the leading blanks.
struct Text {
  const char* p;
  int end;  // the characters looked at
  int start;
  int32_t total;  // all there are, for the characters left over
};

bool Prepare(const char* text, int32_t length, Text* t) {
  if (!text || length <= 0) return false;
  int limit = length > kMostLookedAt ? kMostLookedAt : static_cast<int>(length);
  int i = 0;
  while (i < limit && IsBlank(text[i])) ++i;
  if (i == limit) return false;
  *t = Text{text, limit, i, length};
  return true;
}

int ReadNumber(const Text& t, int* i) {
  int value = 0;
  while (*i < t.end && IsDigit(t.p[*i])) {
    if (value <= kBiggestField) value = value * 10 + (t.p[*i] - '0');
    ++*i;
  }
  return value;
}

bool SameWord(const std::string& word, const char* name, size_t length) {
  if (word.size() != length) return false;
  for (size_t k = 0; k < length; ++k)
    if (std::tolower(static_cast<unsigned char>(word[k])) !=
        std::tolower(static_cast<unsigned char>(name[k])))
      return false;
  return true;
}

// The index of the name word is (full names first, then cut to abbrLen), or -1.
int FindName(const std::string& word, const char* const* names, int count, int abbrLen) {
  for (int i = 0; i < count; ++i)
    if (SameWord(word, names[i], std::strlen(names[i]))) return i;
  for (int i = 0; i < count; ++i) {
    size_t length = std::strlen(names[i]);
    if (SameWord(word, names[i], length < size_t(abbrLen) ? length : size_t(abbrLen))) return i;
  }
  return -1;
}

void StoreDate(LongDateRec* date, int year, int month, int day) {
  date->ld.era = 0;
  date->ld.year = static_cast<SInt16>(year);
  date->ld.month = static_cast<SInt16>(month);
  date->ld.day = static_cast<SInt16>(day);
}

StringToDateStatus ReadNumericDate(const Text& t, const DateTimeSettings& s, const Today& today,
                                   int32_t* used, LongDateRec* date) {
  int numbers[3];
  char separators[2] = {0, 0};
  int count = 0, i = t.start, end = t.start;
  while (count < 3) {
    numbers[count++] = ReadNumber(t, &i);
    end = i;
    if (count == 3 || i >= t.end) break;
    char c = t.p[i];
    if (c != s.dateSep && c != '/' && c != '-' && c != ' ' && c != ':') break;
    if (i + 1 >= t.end || !IsDigit(t.p[i + 1])) break;
    separators[count - 1] = c;
    ++i;
  }
  int month = today.month, day = today.day, year = today.year;
  bool yearGiven = false;
  if (count == 1) {
    day = numbers[0];
  } else {
    // The fields in the date order; with two numbers the year is today's.
    int* fields[3][3] = {{&month, &day, &year}, {&day, &month, &year}, {&year, &month, &day}};
    int order = s.dateOrder <= 2 ? s.dateOrder : 0;
    if (count == 2 && order == 2) {
      month = numbers[0];  // year-month-day without the year
      day = numbers[1];
    } else {
      for (int k = 0; k < count; ++k) *fields[order][k] = numbers[k];
      yearGiven = count == 3;
    }
  }
  if (yearGiven && year < 100) year = WindowedYear(year, today.year);
  if (month < 1 || month > 12 || year < 0 || year > 9999 || day < 1 ||
      day > DaysInMonth(year, month))
    return dateTimeInvalid;
  StringToDateStatus status = longDateFound;
  if (count >= 2 && separators[0] != s.dateSep) status |= sepNotIntlSep;
  if (count == 3 && separators[1] != separators[0]) status |= sepNotConsistent;
  if (end < t.total) status |= leftOverChars;
  *used = end;
  StoreDate(date, year, month, day);
  return status;
}

struct Token {
  std::string word;
  int end;
};

// Words end at blanks and commas, and at periods: the day's ordinal mark of
// long dates ("31. October") and the one of abbreviations ("Oct.").
bool EndsWord(char c) { return IsBlank(c) || c == ',' || c == '.'; }

std::vector<Token> Tokens(const Text& t) {
  std::vector<Token> tokens;
  int i = t.start;
  while (i < t.end) {
    while (i < t.end && EndsWord(t.p[i])) ++i;
    int start = i;
    while (i < t.end && !EndsWord(t.p[i])) ++i;
    if (i > start) tokens.push_back({std::string(t.p + start, size_t(i - start)), i});
  }
  return tokens;
}

bool AllDigits(const std::string& word) {
  if (word.empty() || word.size() > 5) return false;
  for (char c : word)
    if (!IsDigit(c)) return false;
  return true;
}

StringToDateStatus ReadTextualDate(const Text& t, const DateTimeSettings& s, const Today& today,
                                   int32_t* used, LongDateRec* date) {
  std::vector<Token> tokens = Tokens(t);
  size_t k = 0;
  if (k < tokens.size() && FindName(tokens[k].word, kDayNames, 7, s.abbrLen) >= 0) ++k;
  int day = -1, year = -1;
  if (k < tokens.size() && AllDigits(tokens[k].word)) day = std::stoi(tokens[k++].word);
  int month = k < tokens.size() ? FindName(tokens[k].word, kMonthNames, 12, s.abbrLen) : -1;
  if (month < 0) return dateTimeNotFound;
  int lastEnd = tokens[k++].end;
  if (day < 0 && k < tokens.size() && AllDigits(tokens[k].word)) {
    day = std::stoi(tokens[k].word);
    lastEnd = tokens[k++].end;
  }
  if (k < tokens.size() && AllDigits(tokens[k].word)) {
    year = std::stoi(tokens[k].word);
    lastEnd = tokens[k++].end;
    if (year < 100) year = WindowedYear(year, today.year);
  }
  // What the text leaves out is today's.
  if (year < 0) year = today.year;
  if (day < 0) day = today.day;
  if (year < 1000 || year > 9999 || day < 1 || day > DaysInMonth(year, month + 1))
    return dateTimeInvalid;
  *used = lastEnd;
  StoreDate(date, year, month + 1, day);
  return k < tokens.size() ? StringToDateStatus(longDateFound | leftOverChars)
                           : StringToDateStatus(longDateFound);
}

// The suffix at text[i] (without case), or 0.
int SuffixAt(const Text& t, int i, const char* suffix) {
  int n = static_cast<int>(std::strlen(suffix));
  if (n == 0 || i + n > t.end) return 0;
  for (int k = 0; k < n; ++k)
    if (std::tolower(static_cast<unsigned char>(t.p[i + k])) !=
        std::tolower(static_cast<unsigned char>(suffix[k])))
      return 0;
  return n;
}

}  // namespace

int WindowedYear(int year, int currentYear) {
  int c = currentYear % 100, century = currentYear - c;
  if (c < 11 && year >= 90) return century - 100 + year;
  if (c > 89 && year <= 10) return century + 100 + year;
  return century + year;
}

StringToDateStatus ReadDate(const char* text, int32_t length, const DateTimeSettings& s,
                            const Today& today, int32_t* lengthUsed, LongDateRec* date) {
  Text t;
  if (!Prepare(text, length, &t)) return dateTimeNotFound;
  int32_t used = 0;
  // "5 March 1999" starts with a number but names its month.
  std::vector<Token> tokens = Tokens(t);
  bool named = tokens.size() >= 2 && AllDigits(tokens[0].word) &&
               FindName(tokens[1].word, kMonthNames, 12, s.abbrLen) >= 0;
  StringToDateStatus status = IsDigit(t.p[t.start]) && !named
                                  ? ReadNumericDate(t, s, today, &used, date)
                                  : ReadTextualDate(t, s, today, &used, date);
  if (lengthUsed) *lengthUsed = used;
  return status;
}

StringToDateStatus ReadTime(const char* text, int32_t length, const DateTimeSettings& s,
                            int32_t* lengthUsed, LongDateRec* date) {
  Text t;
  if (!Prepare(text, length, &t)) return dateTimeNotFound;
  int i = t.start;
  if (!IsDigit(t.p[i])) return dateTimeInvalid;
  int hour = ReadNumber(t, &i);
  if (i >= t.end || t.p[i] != s.timeSep || i + 1 >= t.end || !IsDigit(t.p[i + 1]))
    return dateTimeInvalid;
  ++i;
  int minute = ReadNumber(t, &i), second = 0;
  if (i + 1 < t.end && t.p[i] == s.timeSep && IsDigit(t.p[i + 1])) {
    ++i;
    second = ReadNumber(t, &i);
  }
  int j = i;
  bool blankSuffix = IsBlank(s.morning[0]) || IsBlank(s.evening[0]);
  if (!blankSuffix)
    while (j < t.end && IsBlank(t.p[j])) ++j;
  if (int n = SuffixAt(t, j, s.evening)) {
    if (hour < 12) hour += 12;
    i = j + n;
  } else if ((n = SuffixAt(t, j, s.morning))) {
    if (hour == 12) hour = 0;
    i = j + n;
  } else if ((n = SuffixAt(t, j, s.suffix24))) {
    i = j + n;
  }
  if (hour == 24 && minute == 0 && second == 0) hour = 0;
  if (hour > 23 || minute > 59 || second > 59) return dateTimeInvalid;
  date->ld.hour = static_cast<SInt16>(hour);
  date->ld.minute = static_cast<SInt16>(minute);
  date->ld.second = static_cast<SInt16>(second);
  if (lengthUsed) *lengthUsed = i;
  return i < t.total ? StringToDateStatus(longDateFound | leftOverChars)
                     : StringToDateStatus(longDateFound);
}

}  // namespace kwe::intl
