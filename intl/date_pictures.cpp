#include "intl/date_pictures.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <vector>

#include "intl/date_settings.h"

namespace kwe::intl {
namespace {

// A run of one element letter ('d', 'm', 'y' or 'w', lower case), a quoted
// text (kind 'q', the quotes included), or plain text (kind 0).
struct Piece {
  size_t start, length;
  char kind;
};

char ElementKind(char c) {
  char lower = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return lower == 'd' || lower == 'm' || lower == 'y' || lower == 'w' ? lower : 0;
}

// The piece that starts at i; none allocates, so rendering stays cheap.
Piece NextPiece(const char* p, size_t n, size_t i) {
  size_t start = i;
  if (p[i] == '\'') {
    for (++i; i < n; ++i) {
      if (p[i] != '\'') continue;
      if (i + 1 < n && p[i + 1] == '\'') {
        ++i;  // a doubled quote inside quotes stands for one
        continue;
      }
      ++i;
      break;
    }
    return {start, i - start, 'q'};
  }
  char kind = ElementKind(p[i]);
  if (kind) {
    while (i < n && ElementKind(p[i]) == kind) ++i;
  } else {
    while (i < n && !ElementKind(p[i]) && p[i] != '\'') ++i;
  }
  return {start, i - start, kind};
}

std::vector<Piece> Split(const std::string& p) {
  std::vector<Piece> pieces;
  for (size_t i = 0; i < p.size(); i += pieces.back().length)
    pieces.push_back(NextPiece(p.data(), p.size(), i));
  return pieces;
}

// The text a quoted piece stands for, handed to add a run at a time.
template <typename Add>
void Unquoted(const char* p, const Piece& piece, Add add) {
  // A lone "''" outside quotes is itself a quote.
  if (piece.length == 2) {
    add("'", 1);
    return;
  }
  size_t end = piece.start + piece.length;
  for (size_t i = piece.start + 1; i < end; ++i) {
    if (p[i] == '\'') {
      if (i + 1 < end && p[i + 1] == '\'') add("'", 1);
      ++i;
      continue;
    }
    add(p + i, 1);
  }
}

std::string Unquote(const std::string& p, const Piece& piece) {
  std::string text;
  Unquoted(p.data(), piece, [&](const char* run, size_t n) { text.append(run, n); });
  return text;
}

class PascalWriter {
 public:
  explicit PascalWriter(Str255 out) : out_(out) { out_[0] = 0; }
  void Add(const char* text, size_t length) {
    size_t room = 255 - out_[0];
    length = std::min(length, room);
    std::memcpy(out_ + 1 + out_[0], text, length);
    out_[0] = static_cast<unsigned char>(out_[0] + length);
  }
  void Add(const std::string& text) { Add(text.data(), text.size()); }
  // At least digits digits, leading zeros added.
  void Number(int value, int digits) {
    char buffer[12];
    int n = 0;
    unsigned magnitude = value < 0 ? 0u - unsigned(value) : unsigned(value);
    do {
      buffer[sizeof buffer - 1 - n++] = static_cast<char>('0' + magnitude % 10);
      magnitude /= 10;
    } while (magnitude && n < 10);
    while (n < digits && n < 10) buffer[sizeof buffer - 1 - n++] = '0';
    if (value < 0) buffer[sizeof buffer - 1 - n++] = '-';
    Add(buffer + sizeof buffer - n, static_cast<size_t>(n));
  }
  void Name(const char* name, size_t length, int abbrLen) {
    Add(name, length < static_cast<size_t>(abbrLen) ? length : static_cast<size_t>(abbrLen));
  }

 private:
  unsigned char* out_;
};

void RenderElement(PascalWriter& w, char kind, size_t length, const DateTimeRec& d, int abbrLen) {
  int full = 255;
  if (kind == 'y') {
    w.Number(length <= 2 ? (d.year % 100 + 100) % 100 : d.year, length <= 2 ? 2 : 4);
    return;
  }
  if (kind == 'w') {
    w.Add(std::string(length, 'W'));
    return;
  }
  bool month = kind == 'm';
  int value = month ? d.month : d.day;
  if (length <= 2) {
    w.Number(value, static_cast<int>(length));
    return;
  }
  const char* name = "";
  if (month && d.month >= 1 && d.month <= 12) name = kMonthNames[d.month - 1];
  if (!month && d.dayOfWeek >= 1 && d.dayOfWeek <= 7) name = kDayNames[d.dayOfWeek - 1];
  w.Name(name, std::strlen(name), length == 3 ? abbrLen : full);
}

}  // namespace

void RenderDatePicture(const char* picture, size_t length, const DateTimeRec& d, int abbrLen,
                       Str255 result) {
  PascalWriter w(result);
  for (size_t i = 0; i < length;) {
    Piece piece = NextPiece(picture, length, i);
    i += piece.length;
    if (piece.kind == 'q')
      Unquoted(picture, piece, [&](const char* run, size_t n) { w.Add(run, n); });
    else if (piece.kind == 0)
      w.Add(picture + piece.start, piece.length);
    else
      RenderElement(w, piece.kind, piece.length, d, abbrLen);
  }
}

void RenderDatePicture(const std::string& picture, const DateTimeRec& d, int abbrLen,
                       Str255 result) {
  RenderDatePicture(picture.data(), picture.size(), d, abbrLen, result);
}

std::string AbbreviatePicture(const std::string& picture) {
  std::string out;
  for (const Piece& piece : Split(picture)) {
    size_t keep = piece.length;
    if ((piece.kind == 'd' || piece.kind == 'm') && keep >= 4) keep = 3;
    out.append(picture, piece.start, keep);
  }
  return out;
}

std::string SuppressElements(const std::string& picture, uint8_t suppressDay) {
  std::vector<Piece> pieces = Split(picture);
  std::vector<size_t> elements;
  for (size_t i = 0; i < pieces.size(); ++i)
    if (pieces[i].kind == 'd' || pieces[i].kind == 'm' || pieces[i].kind == 'y')
      elements.push_back(i);
  std::vector<bool> drop(elements.size(), false);
  for (size_t e = 0; e < elements.size(); ++e) {
    const Piece& piece = pieces[elements[e]];
    bool weekday = piece.kind == 'd' && piece.length >= 3;
    drop[e] = (piece.kind == 'd' && (suppressDay & supDay)) ||
              (weekday && (suppressDay & supWeek)) ||
              (piece.kind == 'm' && (suppressDay & supMonth)) ||
              (piece.kind == 'y' && (suppressDay & supYear));
  }
  std::vector<bool> removed(picture.size(), false);
  for (size_t e = 0; e < elements.size(); ++e) {
    if (!drop[e]) continue;
    const Piece& piece = pieces[elements[e]];
    size_t from = piece.start, to = piece.start + piece.length;
    if (e + 1 < elements.size()) {
      to = pieces[elements[e + 1]].start;  // with the text up to the next element
    } else {
      // The last goes with the text back to the element still shown before it.
      for (size_t k = e; k-- > 0;)
        if (!drop[k]) {
          from = pieces[elements[k]].start + pieces[elements[k]].length;
          break;
        }
    }
    std::fill(removed.begin() + static_cast<std::ptrdiff_t>(from),
              removed.begin() + static_cast<std::ptrdiff_t>(to), true);
  }
  std::string out;
  for (size_t i = 0; i < picture.size(); ++i)
    if (!removed[i]) out += picture[i];
  return out;
}

ShortPictureTraits AnalyseShortPicture(const char* picture) {
  ShortPictureTraits t;
  std::string p = picture;
  bool orderFound = false;
  for (const Piece& piece : Split(p)) {
    if (piece.kind == 'q') continue;
    if (piece.kind == 0 || piece.kind == 'w') {
      if (!t.dateSep) t.dateSep = p[piece.start];
      continue;
    }
    if (!orderFound) {
      t.dateOrder = piece.kind == 'm' ? mdy : piece.kind == 'd' ? dmy : ymd;
      orderFound = true;
    }
    if (piece.kind == 'm' && piece.length >= 2) t.shrtDateFmt |= mntLdingZ;
    if (piece.kind == 'd' && piece.length >= 2) t.shrtDateFmt |= dayLdingZ;
    if (piece.kind == 'y' && piece.length >= 3) t.shrtDateFmt |= century;
  }
  return t;
}

namespace {

constexpr uint8_t kDayCode = 0, kWeekdayCode = 1, kMonthCode = 2, kYearCode = 3;
constexpr uint8_t kDayMonthYear = 0x4B;  // weekday, day, month, year: stored as 0
constexpr uint8_t kMonthDayYear = 0x63;  // weekday, month, day, year: stored as 255

char* SeparatorOf(Intl1Rec* r, int index) {
  char* separators[5] = {r->st0, r->st1, r->st2, r->st3, r->st4};
  return separators[index];
}

}  // namespace

void LongPictureToIntl1(const char* picture, Intl1Rec* r) {
  std::string p = picture;
  // Without a weekday in the picture the weekday is suppressed.
  r->suppressDay = supWeek;
  r->dayLeading0 = 0;
  for (int i = 0; i < 5; ++i) std::memset(SeparatorOf(r, i), 0, 4);
  uint8_t codes = 0;
  int count = 0;
  bool present[4] = {};
  std::string text;
  auto closeSeparator = [&](int index) {
    std::memcpy(SeparatorOf(r, index), text.data(), std::min<size_t>(text.size(), 4));
    text.clear();
  };
  for (const Piece& piece : Split(p)) {
    if (piece.kind == 'w') continue;
    if (piece.kind == 0) {
      text.append(p, piece.start, piece.length);
      continue;
    }
    if (piece.kind == 'q') {
      text += Unquote(p, piece);
      continue;
    }
    if (count == 4) break;
    uint8_t code = piece.kind == 'm' ? kMonthCode : piece.kind == 'y' ? kYearCode : kDayCode;
    if (piece.kind == 'd' && piece.length >= 3) {
      code = kWeekdayCode;
      r->suppressDay &= static_cast<uint8_t>(~supWeek);
    }
    if (code == kDayCode) r->dayLeading0 = piece.length == 2;
    if (present[code]) continue;  // a field shows once
    present[code] = true;
    closeSeparator(count);
    codes = static_cast<uint8_t>(codes | code << (6 - 2 * count));
    ++count;
  }
  closeSeparator(count < 5 ? count : 4);
  // The fields the picture leaves out fill the remaining places, suppressed.
  for (uint8_t code = 0; code < 4 && count < 4; ++code) {
    if (present[code]) continue;
    codes = static_cast<uint8_t>(codes | code << (6 - 2 * count));
    ++count;
    if (code == kDayCode) r->suppressDay |= supDay;
    if (code == kMonthCode) r->suppressDay |= supMonth;
    if (code == kYearCode) r->suppressDay |= supYear;
  }
  r->lngDateFmt = codes == kDayMonthYear ? 0 : codes == kMonthDayYear ? 255 : codes;
}

std::string PictureFromIntl1(const Intl1Rec& r) {
  uint8_t codes = r.lngDateFmt == 0     ? kDayMonthYear
                  : r.lngDateFmt == 255 ? kMonthDayYear
                                        : r.lngDateFmt;
  auto quoted = [](const char* separator) {
    std::string text(separator, strnlen(separator, 4));
    std::string out = "'";
    for (char c : text) out += c == '\'' ? std::string("''") : std::string(1, c);
    return text.empty() ? std::string() : out + "'";
  };
  std::string picture = quoted(r.st0);
  const char* separators[4] = {r.st1, r.st2, r.st3, r.st4};
  for (int i = 0; i < 4; ++i) {
    uint8_t code = (codes >> (6 - 2 * i)) & 3;
    std::string element;
    if (code == kWeekdayCode && !(r.suppressDay & (supDay | supWeek))) element = "dddd";
    if (code == kDayCode && !(r.suppressDay & supDay)) element = r.dayLeading0 ? "dd" : "d";
    if (code == kMonthCode && !(r.suppressDay & supMonth)) element = "MMMM";
    if (code == kYearCode && !(r.suppressDay & supYear)) element = "yyyy";
    if (element.empty()) continue;  // and the separator after it
    picture += element + quoted(separators[i]);
  }
  return picture;
}

void RenderTime(int hour, int minute, int second, bool wantSeconds, const TimeStyle& style,
                Str255 result) {
  PascalWriter w(result);
  const char* suffix = style.suffix24;
  if (!style.twentyFourHour) {
    suffix = hour < 12 ? style.morning : style.evening;
    if (hour > 12) hour -= 12;
    if (hour == 0) hour = 12;
  }
  w.Number(hour, hour >= 10 || (style.timeFmt & 0x80) ? 2 : 1);
  w.Add(&style.timeSep, 1);
  w.Number(minute, minute >= 10 || (style.timeFmt & 0x40) ? 2 : 1);
  if (wantSeconds) {
    w.Add(&style.timeSep, 1);
    w.Number(second, second >= 10 || (style.timeFmt & 0x40) ? 2 : 1);
  }
  // An empty suffix (the 24-hour cycle's, as Windows has it) adds no blank.
  if (suffix && suffix[0]) {
    w.Add(" ", 1);
    w.Add(suffix, std::strlen(suffix));
  }
}

}  // namespace kwe::intl
