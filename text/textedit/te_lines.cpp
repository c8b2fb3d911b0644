// Breaking a library-drawn record's text into lines, and the geometry that
// follows from the lines: where a line stands, where an offset stands on
// it, and which offset lies under a point.
#include <algorithm>
#include <vector>

#include "Memory.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;

namespace {

constexpr UInt8 kReturn = 13;

// The start of the line after the one starting at start.
int LineEnd(TEHandle te, int start) {
  const TERec* r = *te;
  const UInt8* text = TextOf(r);
  int length = r->teLength;
  if (r->crOnly < 0) {
    for (int i = start; i < length; ++i)
      if (text[i] == kReturn) return i + 1;
    return length;
  }
  int width = r->destRect.right - r->destRect.left, used = 0, pos = start;
  while (pos < length) {
    int word = pos;
    while (word < length && IsBreak(*te, word)) {
      if (text[word] == kReturn) return word + 1;
      ++word;
    }
    int end = word;
    while (end < length && !IsBreak(*te, end)) ++end;
    int piece = MeasureSpan(te, pos, end);
    if (used + piece > width && end > word) {
      if (word > start) return word;
      // One word wider than the line: it breaks at the last character that fits.
      int fit = start + 1;
      while (fit < end && MeasureSpan(te, start, fit + 1) <= width) ++fit;
      return fit;
    }
    used += piece;
    pos = end;
  }
  return length;
}

int OldLineOf(const std::vector<SInt16>& starts, int offset) {
  auto it = std::upper_bound(starts.begin(), starts.end(), SInt16(offset));
  return std::max(0, int(it - starts.begin()) - 1);
}

}  // namespace

namespace kwe::textedit {

int Relayout(TEHandle te, int changeAt, int inserted, int delta) {
  TERec* r = *te;
  int length = r->teLength;
  std::vector<SInt16> old(r->lineStarts, r->lineStarts + std::max<int>(r->nLines, 0));
  int first = old.empty() ? 0 : std::max(0, OldLineOf(old, changeAt) - 1);
  std::vector<SInt16> starts(old.begin(), old.begin() + first);
  // Old line starts past the change stand in unchanged text once shifted.
  int unchangedFrom = changeAt + inserted, oldUnchangedFrom = unchangedFrom - delta;
  size_t k = 0;
  int pos = old.empty() ? 0 : old[size_t(first)];
  PortScope scope(te);
  while (pos < length) {
    starts.push_back(SInt16(pos));
    int next = LineEnd(te, pos);
    if (next >= unchangedFrom) {
      while (k < old.size() && old[k] + delta < next) ++k;
      if (k < old.size() && old[k] + delta == next && old[k] >= oldUnchangedFrom) {
        for (size_t i = k; i < old.size(); ++i) starts.push_back(SInt16(old[i] + delta));
        break;
      }
    }
    pos = next;
  }
  int count = int(starts.size());
  if (!EnsureLineRoom(te, count + 1)) {
    // No memory for more line starts: the record keeps as many as it has room for.
    count = int((GetHandleSize(reinterpret_cast<Handle>(te)) - kRecordBase) / 2) - 1;
  }
  r = *te;
  std::copy(starts.begin(), starts.begin() + count, r->lineStarts);
  r->nLines = SInt16(count);
  r->lineStarts[count] = SInt16(length);
  if (IsStyled(r)) FillLineHeights(te);
  return first;
}

int LineOf(const TERec* r, int offset) {
  int n = r->nLines;
  if (n <= 0) return 0;
  if (offset >= r->teLength && r->teLength > 0 && TextOf(r)[r->teLength - 1] == kReturn) return n;
  const SInt16* begin = r->lineStarts;
  int line = int(std::upper_bound(begin, begin + n, SInt16(offset)) - begin) - 1;
  return std::clamp(line, 0, n - 1);
}

// A line's height and ascent: the record's own, or for a styled record its
// entry in the line-height table (the last run's style past the table).
static LHElement LineMetrics(TEHandle te, int line) {
  const TERec* r = *te;
  TEStyleHandle s = StylesOf(r);
  if (!s) return LHElement{r->lineHeight, r->fontAscent};
  LHHandle table = (*s)->lhTab;
  if (line < r->nLines && table && GetHandleSize(Handle(table)) > Size(line * sizeof(LHElement)))
    return (*table)[line];
  const STElement& last = (*(*s)->styleTab)[(*s)->runs[std::max(0, (*s)->nRuns - 2)].styleIndex];
  return LHElement{last.stHeight, last.stAscent};
}

int LineHeightOf(TEHandle te, int line) { return LineMetrics(te, line).lhHeight; }

int LineAscentOf(TEHandle te, int line) { return LineMetrics(te, line).lhAscent; }

int LineTop(TEHandle te, int line) {
  const TERec* r = *te;
  if (!IsStyled(r)) return r->destRect.top + line * r->lineHeight;
  int top = r->destRect.top;
  for (int i = 0; i < line; ++i) top += LineHeightOf(te, i);
  return top;
}

// How far alignment moves a line: its text without the return and the
// blanks at its end, set in destRect.
static int AlignShift(TEHandle te, int line) {
  const TERec* r = *te;
  if (r->just == teJustLeft || line >= r->nLines) return 0;
  const UInt8* text = TextOf(r);
  int start = r->lineStarts[line], end = r->lineStarts[line + 1];
  while (end > start && text[end - 1] <= ' ') --end;
  int room = r->destRect.right - r->destRect.left - MeasureSpan(te, start, end);
  return r->just == teJustCenter ? room / 2 : room;
}

int OffsetX(TEHandle te, int line, int offset) {
  const TERec* r = *te;
  int x = r->destRect.left + AlignShift(te, line);
  if (line >= r->nLines) return x;
  return x + MeasureSpan(te, r->lineStarts[line], offset);
}

int OffsetAtX(TEHandle te, int line, int h) {
  const TERec* r = *te;
  if (line >= r->nLines) return r->teLength;
  int start = r->lineStarts[line], end = r->lineStarts[line + 1];
  if (end > start && TextOf(r)[end - 1] == kReturn) --end;
  int x = r->destRect.left + AlignShift(te, line);
  for (int c = start; c < end; ++c) {
    int w = MeasureSpan(te, c, c + 1);
    if (h < x + w / 2) return c;
    x += w;
  }
  return end;
}

}  // namespace kwe::textedit

KWE_API Boolean KWE_CALL SimpleWordBreak(Ptr text, SInt16 charPos) {
  if (!text || charPos < 0) return true;
  auto c = UInt8(text[charPos]);
  return c < 0x80 && c < 33;
}

KWE_API Boolean KWE_CALL SimpleLineBreak(Ptr text, SInt16 charPos) {
  if (!text || charPos < 0) return true;
  auto c = UInt8(text[charPos]);
  if (c >= 0x80) return false;
  bool wordCharacter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
                       c == '\'' || c == '-' || c == '.';
  return !wordCharacter;
}

KWE_API SInt32 KWE_CALL TEGetHeight(SInt32 endLine, SInt32 startLine, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return 0;
  if (endLine < startLine) std::swap(endLine, startLine);
  int last = std::max<int>(r->nLines, 1);
  startLine = std::clamp<SInt32>(startLine, 1, last);
  endLine = std::clamp<SInt32>(endLine, 1, last);
  if (IsBound(r)) return r->lineHeight * (endLine - startLine + 1);
  return LineTop(hTE, endLine) - LineTop(hTE, startLine - 1);
}

KWE_API SInt16 KWE_CALL TEGetOffset(Point pt, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return 0;
  PortScope scope(hTE);
  int line = 0, top = r->destRect.top, lines = r->nLines;
  bool afterReturn = r->teLength > 0 && TextOf(r)[r->teLength - 1] == 13;
  int count = lines + (afterReturn ? 1 : 0);
  while (line < count - 1 && pt.v >= top + LineHeightOf(hTE, line))
    top += LineHeightOf(hTE, line++);
  return SInt16(OffsetAtX(hTE, line, pt.h));
}

KWE_API Point KWE_CALL TEGetPoint(SInt16 offset, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return Point{0, 0};
  PortScope scope(hTE);
  offset = std::clamp<SInt16>(offset, 0, r->teLength);
  int line = LineOf(r, offset);
  return Point{SInt16(LineTop(hTE, line) + LineHeightOf(hTE, line)),
               SInt16(OffsetX(hTE, line, offset))};
}
