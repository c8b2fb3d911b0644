// Styled records: the style record's handles read into a run table and
// written back, the null style, line heights, and the style calls.
#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;

namespace kwe::textedit {

namespace {

constexpr Size kStyleRecordBase = Size(offsetof(TEStyleRec, runs));

StScrpHandle NullScrap(const TERec* r) {
  TEStyleHandle s = StylesOf(r);
  if (!s || !(*s)->nullStyle || !*(*s)->nullStyle) return nullptr;
  return (*(*s)->nullStyle)->nullScrap;
}

bool HasNullStyle(const TERec* r) {
  StScrpHandle n = NullScrap(r);
  return n && *n && (*n)->scrpNStyles > 0;
}

std::vector<ScrpSTElement> ReadHandleScrap(StScrpHandle h) {
  std::vector<ScrpSTElement> elements;
  if (h && *h) ReadStyleScrap(*h, size_t(GetHandleSize(Handle(h))), &elements);
  return elements;
}

StScrpHandle NewScrapHandle(const std::vector<ScrpSTElement>& elements) {
  std::vector<UInt8> bytes = WriteStyleScrap(elements);
  Handle h = NewHandle(Size(bytes.size()));
  if (h) std::memcpy(*h, bytes.data(), bytes.size());
  return reinterpret_cast<StScrpHandle>(h);
}

// The attributes a style change gives one run (or the null style).
STElement Changed(STElement s, SInt16 mode, const TextStyle& to, UInt8 commonFace, bool exclusive) {
  if (mode & addSize)
    s.stSize = SInt16(std::max(1, s.stSize + to.tsSize));
  else if (mode & doSize)
    s.stSize = to.tsSize;
  if (mode & doFont) s.stFont = to.tsFont;
  if (mode & doFace) {
    if (to.tsFace == 0)
      s.stFace = 0;
    else if (exclusive)
      s.stFace ^= to.tsFace;
    else if ((mode & doToggle) && (commonFace & to.tsFace) == to.tsFace)
      s.stFace = UInt8(s.stFace & ~to.tsFace);
    else
      s.stFace |= to.tsFace;
  }
  if (mode & doColor) s.stColor = to.tsColor;
  s.stHeight = 0;
  return s;
}

void StyleOut(const STElement& s, TextStyle* out) {
  *out = TextStyle{s.stFont, s.stFace, 0, s.stSize, s.stColor};
}

// Run i takes the entry with these attributes (an existing one or a new,
// measured one); the entry it leaves is released when no run uses it.
void Restyle(RunTable& t, int i, const STElement& to) {
  int old = t.runs[size_t(i)].styleIndex;
  int index = FindOrAddStyle(t, to, MeasureInPort);
  t.runs[size_t(i)].styleIndex = SInt16(index);
  t.styles[size_t(index)].stCount++;
  ReleaseStyle(t, old);
}

// Whether an entry has the old style in every attribute that mode names.
bool HasStyle(const STElement& s, SInt16 mode, const TextStyle& old) {
  const RGBColor& c = old.tsColor;
  return (!(mode & doFont) || s.stFont == old.tsFont) &&
         (!(mode & doFace) || s.stFace == old.tsFace) &&
         (!(mode & doSize) || s.stSize == old.tsSize) &&
         (!(mode & doColor) ||
          (s.stColor.red == c.red && s.stColor.green == c.green && s.stColor.blue == c.blue));
}

// The lines of [start, end) again, drawn when redraw is set.
void AfterRestyle(TEHandle te, int start, int end, bool redraw) {
  int first = Relayout(te, start, end - start, 0);
  if (redraw) DrawLines(te, first, 0x7FFF);
}

}  // namespace

bool LoadRuns(const TERec* r, RunTable* t) {
  TEStyleHandle s = StylesOf(r);
  if (!s || !*s || GetHandleSize(Handle(s)) < kStyleRecordBase) return false;
  const TEStyleRec* st = *s;
  // The style record may be one the application handed over: its counts
  // are checked against its handles' sizes before anything is read.
  if (st->nRuns < 1 || st->nStyles < 1 || !st->styleTab || !*st->styleTab) return false;
  if (GetHandleSize(Handle(s)) < kStyleRecordBase + Size(st->nRuns * sizeof(StyleRun)) ||
      GetHandleSize(Handle(st->styleTab)) < Size(st->nStyles * sizeof(STElement)))
    return false;
  t->runs.assign(st->runs, st->runs + st->nRuns);
  t->styles.assign(*st->styleTab, *st->styleTab + st->nStyles);
  return MendRunTable(*t, r->teLength);
}

bool StoreRuns(TERec* r, const RunTable& t) {
  TEStyleHandle s = StylesOf(r);
  SetHandleSize(Handle(s), kStyleRecordBase + Size(t.runs.size() * sizeof(StyleRun)));
  if (MemError() != noErr) return false;
  SetHandleSize(Handle((*s)->styleTab), Size(t.styles.size() * sizeof(STElement)));
  if (MemError() != noErr) return false;
  TEStyleRec* st = *s;
  st->nRuns = SInt16(t.runs.size());
  st->nStyles = SInt16(t.styles.size());
  std::copy(t.runs.begin(), t.runs.end(), st->runs);
  std::copy(t.styles.begin(), t.styles.end(), *st->styleTab);
  return true;
}

void MeasureInPort(STElement& s) {
  ApplyStyle(s, false);
  FontInfo fi{};
  GetFontInfo(&fi);
  s.stHeight = SInt16(fi.ascent + fi.descent + fi.leading + 1);
  s.stAscent = SInt16(fi.ascent + fi.leading);
}

STElement StyleAt(const TERec* r, int offset) {
  if (!IsStyled(r))
    return STElement{0, r->lineHeight, r->fontAscent, r->txFont, r->txFace, 0, r->txSize, {}};
  RunTable t;
  if (!LoadRuns(r, &t)) return STElement{};
  if (t.runs.size() == 1) {
    StScrpHandle n = NullScrap(r);
    return n && *n ? AttributesOf((*n)->scrpStyleTab[0]) : t.styles[0];
  }
  return t.styles[size_t(t.runs[size_t(RunAt(t, offset))].styleIndex)];
}

ScrpSTElement InsertionStyle(const TERec* r, int offset) {
  if (HasNullStyle(r)) return (*NullScrap(r))->scrpStyleTab[0];
  return ElementOf(StyleAt(r, offset), 0);
}

void ClearNullStyle(TERec* r) {
  StScrpHandle n = NullScrap(r);
  if (n && *n) (*n)->scrpNStyles = 0;
}

bool FillLineHeights(TEHandle te) {
  TERec* r = *te;
  TEStyleHandle s = StylesOf(r);
  if (!s) return true;
  int lines = std::min<int>(r->nLines, kMostStyledLines);
  LHHandle table = (*s)->lhTab;
  Size needed = Size(((lines + kLineStep - 1) / kLineStep * kLineStep) * sizeof(LHElement));
  if (GetHandleSize(Handle(table)) < needed) {
    SetHandleSize(Handle(table), needed);
    if (MemError() != noErr) return false;
  }
  const TEStyleRec* st = *s;
  const STElement* styles = *st->styleTab;
  int run = 0;
  for (int line = 0; line < lines; ++line) {
    int start = r->lineStarts[line], end = r->lineStarts[line + 1];
    while (run < st->nRuns - 2 && st->runs[run + 1].startChar <= start) ++run;
    LHElement e{0, 0};
    for (int i = run; i < st->nRuns - 1 && (i == run || st->runs[i].startChar < end); ++i) {
      e.lhHeight = std::max(e.lhHeight, styles[st->runs[i].styleIndex].stHeight);
      e.lhAscent = std::max(e.lhAscent, styles[st->runs[i].styleIndex].stAscent);
    }
    (*table)[line] = e;
  }
  return true;
}

void DisposeStyles(Handle styles) {
  auto s = reinterpret_cast<TEStyleHandle>(styles);
  if (!s) return;
  if (*s) {
    TEStyleRec* st = *s;
    if (st->styleTab) DisposeHandle(Handle(st->styleTab));
    if (st->lhTab) DisposeHandle(Handle(st->lhTab));
    if (st->nullStyle) {
      if (*st->nullStyle && (*st->nullStyle)->nullScrap)
        DisposeHandle(Handle((*st->nullStyle)->nullScrap));
      DisposeHandle(Handle(st->nullStyle));
    }
  }
  DisposeHandle(styles);
}

std::vector<ScrpSTElement> StylesOfRange(const TERec* r, int start, int end) {
  std::vector<ScrpSTElement> out;
  RunTable t;
  if (!LoadRuns(r, &t)) return out;
  if (start >= end) {
    out.push_back(InsertionStyle(r, start));
    out[0].scrpStartChar = 0;
    return out;
  }
  int a = RunAt(t, start), b = RunAt(t, end);
  if (b > a && t.runs[size_t(b)].startChar == end) --b;
  if (t.runs.size() == 1) b = a;
  for (int i = a; i <= b; ++i)
    out.push_back(ElementOf(t.styles[size_t(t.runs[size_t(i)].styleIndex)],
                            std::max(0, t.runs[size_t(i)].startChar - start)));
  return out;
}

}  // namespace kwe::textedit

KWE_API void KWE_CALL TEStyleInsert(const void* text, SInt32 length, StScrpHandle hST,
                                    TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || !text || length <= 0) return;
  auto bytes = static_cast<const UInt8*>(text);
  int n = int(std::min<SInt32>(length, kMaxText));
  if (IsBound(r)) return BoundReplace(hTE, bytes, n, true);
  int start = r->selStart, end = r->selEnd;
  std::vector<ScrpSTElement> styles = ReadHandleScrap(hST);
  bool given = IsStyled(r) && hST && !styles.empty();
  n = Replace(hTE, start, start, bytes, n, given ? &styles : nullptr, kDraw);
  TESetSelect(start + n, end + n, hTE);
}

KWE_API void KWE_CALL TEGetStyle(SInt16 offset, TextStyle* theStyle, SInt16* lineHeight,
                                 SInt16* fontAscent, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (!r) return;
  STElement s = StyleAt(r, offset);
  if (theStyle) StyleOut(s, theStyle);
  if (lineHeight) *lineHeight = s.stHeight;
  if (fontAscent) *fontAscent = s.stAscent;
}

KWE_API void KWE_CALL TESetStyle(SInt16 mode, const TextStyle* newStyle, Boolean redraw,
                                 TEHandle hTE) {
  TERec* r = Usable(hTE);
  RunTable t;
  if (!r || !newStyle || !IsStyled(r) || !LoadRuns(r, &t)) return;
  int start = r->selStart, end = r->selEnd;
  PortScope scope(hTE);
  if (start >= end) {
    StScrpHandle n = NullScrap(r);
    if (!n || !*n) return;
    ScrpSTElement base = InsertionStyle(r, start);
    STElement changed = Changed(AttributesOf(base), mode, *newStyle, 0, true);
    MeasureInPort(changed);
    SetHandleSize(Handle(n), sizeof(StScrpRec));
    if (MemError() != noErr) return;
    (*n)->scrpNStyles = 1;
    (*n)->scrpStyleTab[0] = ElementOf(changed, 0);
    return;
  }
  int a = SplitAt(t, start), b = SplitAt(t, end);
  UInt8 common = 0xFF;
  for (int i = a; i < b; ++i) common &= t.styles[size_t(t.runs[size_t(i)].styleIndex)].stFace;
  for (int i = a; i < b; ++i)
    Restyle(
        t, i,
        Changed(t.styles[size_t(t.runs[size_t(i)].styleIndex)], mode, *newStyle, common, false));
  MergeRuns(t);
  if (!StoreRuns(*hTE, t)) return;
  AfterRestyle(hTE, start, end, redraw);
}

KWE_API void KWE_CALL TEReplaceStyle(SInt16 mode, const TextStyle* oldStyle,
                                     const TextStyle* newStyle, Boolean redraw, TEHandle hTE) {
  TERec* r = Usable(hTE);
  RunTable t;
  if (!r || !oldStyle || !newStyle || !IsStyled(r) || !LoadRuns(r, &t)) return;
  int start = r->selStart, end = r->selEnd;
  if (start >= end || !(mode & doAll)) return;
  PortScope scope(hTE);
  // Entries are shared by every run of that style, so the runs inside the
  // selection are cut off from the rest and each matching one takes an
  // entry of its own; text outside the selection keeps its style.
  int a = SplitAt(t, start), b = SplitAt(t, end);
  for (int i = a; i < b; ++i) {
    STElement s = t.styles[size_t(t.runs[size_t(i)].styleIndex)];
    if (!HasStyle(s, mode, *oldStyle)) continue;
    if (mode & doFont) s.stFont = newStyle->tsFont;
    if (mode & doFace) s.stFace = newStyle->tsFace;
    if (mode & doSize) s.stSize = newStyle->tsSize;
    if (mode & doColor) s.stColor = newStyle->tsColor;
    s.stHeight = 0;
    Restyle(t, i, s);
  }
  MergeRuns(t);
  if (!StoreRuns(*hTE, t)) return;
  AfterRestyle(hTE, start, end, redraw);
}

KWE_API Boolean KWE_CALL TEContinuousStyle(SInt16* mode, TextStyle* aStyle, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (!r || !mode || !aStyle) return false;
  RunTable t;
  if (!IsStyled(r) || !LoadRuns(r, &t)) {
    *aStyle = TextStyle{r->txFont, r->txFace, 0, r->txSize, {}};
    return true;
  }
  if (r->selStart >= r->selEnd || t.runs.size() == 1) {
    int at = r->selStart > 0 ? r->selStart - 1 : 0;
    StyleOut(AttributesOf(InsertionStyle(r, HasNullStyle(r) ? r->selStart : at)), aStyle);
    return true;
  }
  int a = RunAt(t, r->selStart), b = RunAt(t, r->selEnd);
  if (b > a && t.runs[size_t(b)].startChar == r->selEnd) --b;
  const STElement& first = t.styles[size_t(t.runs[size_t(a)].styleIndex)];
  StyleOut(first, aStyle);
  SInt16 asked = *mode, kept = asked;
  UInt8 common = first.stFace;
  for (int i = a + 1; i <= b; ++i) {
    const STElement& s = t.styles[size_t(t.runs[size_t(i)].styleIndex)];
    if (s.stFont != first.stFont) kept &= ~doFont;
    if (s.stSize != first.stSize) kept &= ~doSize;
    if (std::memcmp(&s.stColor, &first.stColor, sizeof s.stColor) != 0) kept &= ~doColor;
    if (s.stFace != first.stFace) kept &= ~doFace;
    common &= s.stFace;
  }
  bool same = kept == asked;
  aStyle->tsFace = common;
  if ((asked & doFace) && common) kept |= doFace;
  *mode = kept;
  return same;
}

KWE_API SInt32 KWE_CALL TENumStyles(SInt32 rangeStart, SInt32 rangeEnd, TEHandle hTE) {
  TERec* r = Rec(hTE);
  RunTable t;
  if (!r) return 0;
  if (!IsStyled(r) || !LoadRuns(r, &t)) return 1;
  int a = RunAt(t, int(rangeStart)), b = RunAt(t, int(rangeEnd));
  int count = b - a + 1;
  if (b > a && t.runs[size_t(b)].startChar == rangeEnd) --count;
  return std::max(count, 1);
}

KWE_API TEStyleHandle KWE_CALL TEGetStyleHandle(TEHandle hTE) {
  TERec* r = Rec(hTE);
  return r ? StylesOf(r) : nullptr;
}

KWE_API void KWE_CALL TESetStyleHandle(TEStyleHandle theHandle, TEHandle hTE) {
  TERec* r = Rec(hTE);
  if (r && IsStyled(r) && theHandle) r->styleHandle = Handle(theHandle);
}

KWE_API StScrpHandle KWE_CALL TEGetStyleScrapHandle(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || !IsStyled(r)) return nullptr;
  return NewScrapHandle(StylesOfRange(r, r->selStart, r->selEnd));
}

KWE_API void KWE_CALL TEUseStyleScrap(SInt32 rangeStart, SInt32 rangeEnd, StScrpHandle newStyles,
                                      Boolean redraw, TEHandle hTE) {
  TERec* r = Usable(hTE);
  RunTable t;
  if (!r || !newStyles || !IsStyled(r) || !LoadRuns(r, &t)) return;
  int end = std::clamp<int>(int(rangeEnd), 0, r->teLength);
  int start = std::clamp<int>(int(rangeStart), 0, end);
  if (start == end) return;
  std::vector<ScrpSTElement> elements = ReadHandleScrap(newStyles);
  PortScope scope(hTE);
  RemoveRuns(t, start, end - start);
  InsertRuns(t, start, end - start, elements, MeasureInPort);
  if (!StoreRuns(*hTE, t)) return;
  AfterRestyle(hTE, start, end, redraw);
}
