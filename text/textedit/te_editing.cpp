// Changing a record's text and selection: replacing the selection, keys,
// clicks with their tracking loop, and the calls built on them.
#include <algorithm>
#include <cstring>

#include "Events.h"
#include "KWECursors.h"
#include "Memory.h"
#include "quickdraw/ports/port_attr.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;

namespace kwe::textedit {

TEHandle g_clicking = nullptr;

namespace {

// A length field outside 0..32000 is taken as 32000, with the text handle
// made to match; the selection is kept within the text.
void MendFields(TERec* r) {
  if (r->teLength < 0 || r->teLength > kMaxText) {
    SetHandleSize(r->hText, kMaxText);
    r->teLength = SInt16(MemError() == noErr ? kMaxText : GetHandleSize(r->hText));
  }
  r->selStart = std::clamp<SInt16>(r->selStart, 0, r->teLength);
  r->selEnd = std::clamp<SInt16>(r->selEnd, r->selStart, r->teLength);
}

}  // namespace

bool SpliceText(TERec* r, int start, int end, const UInt8* text, int length) {
  int old = r->teLength, delta = length - (end - start);
  if (delta > 0) {
    SetHandleSize(r->hText, old + delta);
    if (MemError() != noErr) return false;
  }
  UInt8* bytes = TextOf(r);
  if (old > end) std::memmove(bytes + end + delta, bytes + end, size_t(old - end));
  if (length > 0) std::memcpy(bytes + start, text, size_t(length));
  if (delta < 0) SetHandleSize(r->hText, old + delta);
  r->teLength = SInt16(old + delta);
  return true;
}

int Replace(TEHandle te, int start, int end, const UInt8* text, int length,
            const std::vector<ScrpSTElement>* styles, int flags) {
  TERec* r = Usable(te);
  if (!r) return 0;
  MendFields(r);
  start = std::clamp<int>(start, 0, r->teLength);
  end = std::clamp<int>(end, start, r->teLength);
  if (!text) length = 0;
  length = std::clamp(length, 0, kMaxText - (r->teLength - (end - start)));
  bool draw = (flags & kDraw) && r->inPort;
  if (draw) {
    if (r->selStart != r->selEnd)
      HiliteSelection(te);
    else
      SetCaret(te, false);
  }
  std::vector<ScrpSTElement> typed;
  RunTable t;
  bool styled = IsStyled(r) && LoadRuns(r, &t);
  if (styled && !styles) typed.push_back(InsertionStyle(r, start));
  if (!SpliceText(r, start, end, text, length)) length = 0, end = start;
  int delta = length - (end - start);
  if (styled) {
    PortScope scope(te);
    RemoveRuns(t, start, end - start);
    InsertRuns(t, start, length, styles ? *styles : typed, MeasureInPort);
    StoreRuns(*te, t);
  }
  int first = Relayout(te, start, length, delta);
  r = *te;
  r->caretState = 0;
  r->caretTime = 0;
  r->selStart = SInt16((flags & kSelectInserted) ? start : start + length);
  r->selEnd = SInt16(start + length);
  if (draw) {
    DrawLines(te, first, 0x7FFF, nullptr, false);
    TESelView(te);
    HiliteSelection(te);
  }
  return length;
}

}  // namespace kwe::textedit

namespace {

// The word around offset, as the record's word-break procedure sees words.
void WordAround(const TERec* r, int offset, int* start, int* end) {
  int a = std::clamp<int>(offset, 0, r->teLength), b = a;
  if (a < r->teLength && IsBreak(r, a)) {
    *start = a;
    *end = a + 1;
    return;
  }
  while (a > 0 && !IsBreak(r, a - 1)) --a;
  while (b < r->teLength && !IsBreak(r, b)) ++b;
  *start = a;
  *end = b;
}

void MoveCaret(TEHandle te, int offset) { TESetSelect(offset, offset, te); }

// The offset under a point a little above or below the selection's line.
int OffsetBeside(TEHandle te, bool above) {
  TERec* r = *te;
  PortScope scope(te);
  int at = above ? r->selStart : r->selEnd, line = LineOf(r, at);
  int v = above ? LineTop(te, line) - 2 : LineTop(te, line) + LineHeightOf(te, line) + 2;
  Point pt{SInt16(v), SInt16(OffsetX(te, line, at))};
  if (above && line == 0) return at;
  return TEGetOffset(pt, te);
}

}  // namespace

KWE_API void KWE_CALL TEKey(SInt16 key, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  auto c = UInt8(key);
  if (IsBound(r)) return BoundKey(hTE, c);
  ObscureCursor();
  MendFields(r);
  int start = r->selStart, end = r->selEnd;
  switch (c) {
    case 28:
      if (start > 0) MoveCaret(hTE, start - 1);
      return;
    case 29:
      if (end < r->teLength) MoveCaret(hTE, end + 1);
      return;
    case 30:
    case 31: MoveCaret(hTE, OffsetBeside(hTE, c == 30)); return;
    case 8:
      if (start == end && start == 0) return;
      Replace(hTE, start == end ? start - 1 : start, end, nullptr, 0, nullptr, kDraw);
      return;
    case 127:
      if (start == end && end == r->teLength) return;
      Replace(hTE, start, start == end ? end + 1 : end, nullptr, 0, nullptr, kDraw);
      return;
    default:
      if (Replace(hTE, start, end, &c, 1, nullptr, kDraw) && IsStyled(*hTE)) ClearNullStyle(*hTE);
  }
}

KWE_API void KWE_CALL TESetSelect(SInt32 selStart, SInt32 selEnd, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  if (selEnd < selStart) std::swap(selStart, selEnd);
  selStart = std::clamp<SInt32>(selStart, 0, r->teLength);
  selEnd = std::clamp<SInt32>(selEnd, 0, r->teLength);
  if (IsBound(r)) return BoundSelect(hTE, int(selStart), int(selEnd));
  if (r->selStart == selStart && r->selEnd == selEnd) return TESelView(hTE);
  if (r->selStart != r->selEnd)
    HiliteSelection(hTE);
  else
    SetCaret(hTE, false);
  r = *hTE;
  r->selStart = SInt16(selStart);
  r->selEnd = SInt16(selEnd);
  TESelView(hTE);
  HiliteSelection(hTE);
}

KWE_API void KWE_CALL TEDelete(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r) return;
  if (IsBound(r)) return BoundReplace(hTE, nullptr, 0);
  if (r->selStart != r->selEnd) Replace(hTE, r->selStart, r->selEnd, nullptr, 0, nullptr, kDraw);
}

KWE_API void KWE_CALL TEInsert(const void* text, SInt32 length, TEHandle hTE) {
  TEStyleInsert(text, length, nullptr, hTE);
}

KWE_API void KWE_CALL TEClick(Point pt, Boolean fExtend, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return;
  g_clicking = hTE;
  SetCaret(hTE, false);
  if (!Active(r)) TEActivate(hTE);
  r = *hTE;
  if (r->teLength > 0 && IsStyled(r)) ClearNullStyle(r);
  int offset = TEGetOffset(pt, hTE);
  UInt32 now = TickCount();
  bool twice = offset == r->clickLoc && r->clickTime && now - r->clickTime < GetDblTime();
  r->clickTime = twice ? 0 : now;
  r->clickLoc = SInt16(offset);
  int anchorStart = offset, anchorEnd = offset;
  if (fExtend) anchorStart = anchorEnd = r->selStart < offset ? r->selStart : r->selEnd;
  if (twice) WordAround(r, offset, &anchorStart, &anchorEnd);
  auto selectTo = [&](int at) {
    int a = std::min(anchorStart, at), b = std::max(anchorEnd, at);
    if (twice) {
      int w0 = 0, w1 = 0;
      WordAround(*hTE, at, &w0, &w1);
      a = std::min(anchorStart, w0);
      b = std::max(anchorEnd, w1);
    }
    TESetSelect(a, b, hTE);
  };
  selectTo(offset);
  HWND window = nullptr;
  if (kwe::quickdraw::PortAttr* a = kwe::quickdraw::AttrOf(r->inPort)) window = a->hwnd;
  if (window) SetCapture(window);
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort((*hTE)->inPort);
  int last = offset;
  while (StillDown() && (*hTE)->clikLoop && (*hTE)->clikLoop()) {
    Point mouse{};
    GetMouse(&mouse);
    int now_at = TEGetOffset(mouse, hTE);
    if (now_at != last) selectTo(last = now_at);
  }
  SetPort(saved);
  if (window && GetCapture() == window) ReleaseCapture();
  SetCaret(hTE, true);
  if ((*hTE)->teLength > 0) TESelView(hTE);
  g_clicking = nullptr;
}

KWE_API Boolean KWE_CALL SimpleClikProc(void) {
  TEHandle te = g_clicking;
  TERec* r = Usable(te);
  if (!r || !AutoView(r)) return true;
  Point mouse{};
  GetMouse(&mouse);
  SInt16 step = SInt16(IsStyled(r) ? (*(*StylesOf(r))->styleTab)[0].stHeight : r->lineHeight);
  const Rect& v = r->viewRect;
  SInt16 dv = mouse.v < v.top ? step : mouse.v > v.bottom ? SInt16(-step) : 0;
  SInt16 dh = mouse.h < v.left ? step : mouse.h > v.right ? SInt16(-step) : 0;
  if (dv || dh) TEPinScroll(dh, dv, te);
  return true;
}
