// A library-drawn record in its port: measuring and drawing its lines, the
// selection highlight and the caret, updates, activation and scrolling.
// Drawing is clipped to the view rectangle (and an update's rectangle), so
// nothing outside them is ever erased.
#include <algorithm>

#include "Events.h"
#include "Memory.h"
#include "memory/character_conversion.h"
#include "quickdraw/ports/port_attr.h"
#include "text/textedit/te_internal.h"

using namespace kwe::textedit;

namespace kwe::textedit {

PortScope::PortScope(TEHandle te) {
  TERec* r = *te;
  if (!r->inPort) return;
  GetPort(&saved_);
  port_ = r->inPort;
  if (saved_ != port_) SetPort(port_);
  font_ = port_->txFont;
  face_ = port_->txFace;
  size_ = port_->txSize;
  mode_ = port_->txMode;
  password_ = kwe::text::PasswordMode();
  if (Password(r)) kwe::text::SetPasswordMode(true);
  if (IsStyled(r)) {
    styled_ = true;
    GetForeColor(&colour_);
    return;
  }
  if (font_ != r->txFont) TextFont(r->txFont);
  if (face_ != r->txFace) TextFace(r->txFace);
  if (size_ != r->txSize) TextSize(r->txSize);
  if (mode_ != r->txMode) TextMode(r->txMode);
}

PortScope::~PortScope() {
  if (!port_) return;
  kwe::text::SetPasswordMode(password_);
  if (port_->txFont != font_) TextFont(font_);
  if (port_->txFace != face_) TextFace(face_);
  if (port_->txSize != size_) TextSize(size_);
  if (port_->txMode != mode_) TextMode(mode_);
  if (styled_) RGBForeColor(&colour_);
  if (saved_ != port_) SetPort(saved_);
}

void ApplyStyle(const STElement& s, bool colour) {
  GrafPtr port = nullptr;
  GetPort(&port);
  if (!port) return;
  if (port->txFont != s.stFont) TextFont(s.stFont);
  if (port->txFace != s.stFace) TextFace(s.stFace);
  if (port->txSize != s.stSize) TextSize(s.stSize);
  if (colour) RGBForeColor(&s.stColor);
}

// Calls piece(from, to, style) for each run's part of [from, to); unstyled
// records give one piece without a style.
template <class Piece>
static void ForEachPiece(TEHandle te, int from, int to, Piece piece) {
  const TERec* r = *te;
  TEStyleHandle s = StylesOf(r);
  if (!s) return piece(from, to, nullptr);
  const TEStyleRec* st = *s;
  const STElement* table = *st->styleTab;
  for (int i = 0; i < st->nRuns - 1 && from < to; ++i) {
    int end = std::min<int>(to, st->runs[i + 1].startChar);
    if (end <= from) continue;
    piece(from, end, &table[st->runs[i].styleIndex]);
    from = end;
  }
  if (from < to) piece(from, to, st->nRuns ? &table[st->runs[st->nRuns - 1].styleIndex] : nullptr);
}

int MeasureSpan(TEHandle te, int from, int to) {
  if (to <= from || !(*te)->inPort) return 0;
  int width = 0;
  ForEachPiece(te, from, to, [&](int a, int b, const STElement* style) {
    if (style) ApplyStyle(*style, false);
    width += TextWidth(TextOf(*te), SInt16(a), SInt16(b - a));
  });
  return width;
}

}  // namespace kwe::textedit

namespace {

// The port's clip while drawing: its own clip within rect.
class ClipScope {
 public:
  explicit ClipScope(const Rect& rect) : saved_(NewRgn()) {
    RgnHandle inside = NewRgn();
    if (saved_ && inside) {
      GetClip(saved_);
      RectRgn(inside, &rect);
      SectRgn(inside, saved_, inside);
      SetClip(inside);
    }
    if (inside) DisposeRgn(inside);
  }
  ~ClipScope() {
    if (!saved_) return;
    SetClip(saved_);
    DisposeRgn(saved_);
  }
  ClipScope(const ClipScope&) = delete;
  ClipScope& operator=(const ClipScope&) = delete;

 private:
  RgnHandle saved_;
};

Rect Intersection(const Rect& a, const Rect& b) {
  Rect r{std::max(a.top, b.top), std::max(a.left, b.left), std::min(a.bottom, b.bottom),
         std::min(a.right, b.right)};
  if (r.bottom < r.top) r.bottom = r.top;
  if (r.right < r.left) r.right = r.left;
  return r;
}

int CountShownLines(const TERec* r) {
  bool afterReturn = r->teLength > 0 && TextOf(r)[r->teLength - 1] == 13;
  return r->nLines + (afterReturn ? 1 : 0);
}

void InvertClipped(const TERec* r, Rect box) {
  box = Intersection(box, r->viewRect);
  if (box.right > box.left && box.bottom > box.top) InvertRect(&box);
}

// The highlight of [selStart, selEnd) on lines first..last.
void InvertSelection(TEHandle te, int first, int last) {
  const TERec* r = *te;
  int a = r->selStart, b = r->selEnd;
  int lineA = LineOf(r, a), lineB = LineOf(r, b);
  for (int line = std::max(first, lineA); line <= std::min(last, lineB); ++line) {
    int top = LineTop(te, line);
    SInt16 left = line == lineA ? SInt16(OffsetX(te, line, a)) : (*te)->destRect.left;
    SInt16 right = line == lineB ? SInt16(OffsetX(te, line, b)) : (*te)->destRect.right;
    InvertClipped(*te, Rect{SInt16(top), left, SInt16(top + LineHeightOf(te, line)), right});
  }
}

void InvertCaret(TEHandle te) {
  const TERec* r = *te;
  int line = LineOf(r, r->selStart), top = LineTop(te, line);
  auto x = SInt16(OffsetX(te, line, r->selStart));
  InvertClipped(r, Rect{SInt16(top), x, SInt16(top + LineHeightOf(te, line)), SInt16(x + 1)});
}

}  // namespace

namespace kwe::textedit {

void SetCaret(TEHandle te, bool shown) {
  TERec* r = *te;
  if (!Active(r) || r->selStart != r->selEnd || (r->caretState != 0) == shown) return;
  PortScope scope(te);
  if (!scope.ok()) return;
  InvertCaret(te);
  (*te)->caretState = shown ? 255 : 0;
}

void HiliteSelection(TEHandle te) {
  TERec* r = *te;
  if (!Active(r)) return;
  if (r->selStart == r->selEnd) return SetCaret(te, r->caretState == 0);
  PortScope scope(te);
  if (!scope.ok()) return;
  InvertSelection(te, 0, CountShownLines(r));
}

void DrawLines(TEHandle te, int first, int last, const Rect* area, bool withHilite) {
  PortScope scope(te);
  if (!scope.ok()) return;
  const TERec* r = *te;
  Rect clip = area ? Intersection(*area, r->viewRect) : r->viewRect;
  ClipScope clipping(clip);
  int shown = CountShownLines(r);
  last = std::min(last, shown - 1);
  int top = LineTop(te, first);
  if (first == 0 && top > clip.top) {
    // Text scrolled down leaves the view's top empty.
    Rect above{clip.top, clip.left, SInt16(std::min<int>(top, clip.bottom)), clip.right};
    EraseRect(&above);
  }
  // Lines wholly above the area are passed over without drawing.
  while (first <= last && top + LineHeightOf(te, first) <= clip.top)
    top += LineHeightOf(te, first++);
  for (int line = first; line <= last && top < clip.bottom; ++line) {
    int height = LineHeightOf(te, line);
    Rect band{SInt16(top), std::min(r->destRect.left, r->viewRect.left), SInt16(top + height),
              std::max(r->destRect.right, r->viewRect.right)};
    EraseRect(&band);
    if (line < r->nLines) {
      int start = r->lineStarts[line], end = r->lineStarts[line + 1];
      if (end > start && TextOf(r)[end - 1] == 13) --end;
      MoveTo(SInt16(OffsetX(te, line, start)), SInt16(top + LineAscentOf(te, line)));
      ForEachPiece(te, start, end, [&](int a, int b, const STElement* style) {
        if (style) ApplyStyle(*style, true);
        DrawText(TextOf(*te), SInt16(a), SInt16(b - a));
      });
    }
    top += height;
  }
  if (last >= shown - 1 && top < clip.bottom) {
    Rect below{SInt16(top), clip.left, clip.bottom, clip.right};
    EraseRect(&below);
  }
  if (!withHilite || !Active(r)) return;
  if (r->selStart != r->selEnd)
    InvertSelection(te, first, std::max(last, first));
  else if (r->caretState)
    InvertCaret(te);
}

}  // namespace kwe::textedit

KWE_API void KWE_CALL TEUpdate(const Rect* rUpdate, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return;
  DrawLines(hTE, 0, 0x7FFF, rUpdate);
}

KWE_API void KWE_CALL TEIdle(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r) || !Active(r) || r->selStart != r->selEnd) return;
  UInt32 now = TickCount();
  if (now - r->caretTime < GetCaretTime()) return;
  SetCaret(hTE, r->caretState == 0);
  (*hTE)->caretTime = now;
}

KWE_API void KWE_CALL TEActivate(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r) || Active(r)) return;
  TEStyleHandle s = StylesOf(r);
  if (s && (*s)->nStyles == 1 && !(r->clikStuff & 1) && r->inPort) {
    // The first activation gives the text the port's style, as TENew took it.
    SInt16 start = r->selStart, end = r->selEnd;
    r->selStart = 0;
    r->selEnd = r->teLength;
    TextStyle portStyle{r->inPort->txFont, r->inPort->txFace, 0, r->inPort->txSize, {}};
    TESetStyle(doFont | doFace | doSize, &portStyle, false, hTE);
    r = *hTE;
    r->selStart = start;
    r->selEnd = end;
    r->clikStuff |= 1;
  }
  if (r->selStart != r->selEnd) ClearNullStyle(r);
  r->active |= 1;
  r->caretState = 0;
  if (r->teLength > 0 && r->selStart != r->selEnd) TESelView(hTE);
  HiliteSelection(hTE);
  (*hTE)->caretTime = TickCount();
  if (kwe::quickdraw::PortAttr* a = kwe::quickdraw::AttrOf((*hTE)->inPort))
    if (a->hwnd && GetFocus() != a->hwnd) SetFocus(a->hwnd);
}

KWE_API void KWE_CALL TEDeactivate(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r) || !Active(r)) return;
  if (r->selStart != r->selEnd)
    HiliteSelection(hTE);
  else
    SetCaret(hTE, false);
  (*hTE)->active &= ~1;
}

KWE_API void KWE_CALL TEScroll(SInt16 dh, SInt16 dv, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r) || (dh == 0 && dv == 0)) return;
  r->destRect.left = SInt16(r->destRect.left + dh);
  r->destRect.right = SInt16(r->destRect.right + dh);
  r->destRect.top = SInt16(r->destRect.top + dv);
  r->destRect.bottom = SInt16(r->destRect.bottom + dv);
  DrawLines(hTE, 0, 0x7FFF);
}

KWE_API void KWE_CALL TEPinScroll(SInt16 dh, SInt16 dv, TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r)) return;
  if (dv < 0) {
    int bottom = LineTop(hTE, CountShownLines(r));
    dv = SInt16(std::min(0, std::max<int>(dv, r->viewRect.bottom - bottom)));
  }
  TEScroll(dh, dv, hTE);
}

KWE_API void KWE_CALL TESelView(TEHandle hTE) {
  TERec* r = Usable(hTE);
  if (!r || IsBound(r) || !AutoView(r)) return;
  int dh = 0, dv = 0;
  {
    PortScope scope(hTE);
    int line = LineOf(r, r->selStart), top = LineTop(hTE, line);
    int bottom = top + LineHeightOf(hTE, line), x = OffsetX(hTE, line, r->selStart);
    const Rect& v = (*hTE)->viewRect;
    if (top < v.top)
      dv = v.top - top;
    else if (bottom > v.bottom)
      dv = std::max(v.bottom - bottom, v.top - top);
    if (x < v.left)
      dh = v.left - x;
    else if (x > v.right)
      dh = v.right - x;
  }
  TEScroll(SInt16(dh), SInt16(dv), hTE);
}

KWE_API void KWE_CALL TETextBox(const void* text, SInt32 length, const Rect* box, SInt16 just) {
  if (!text || length < 1 || !box) return;
  TEHandle te = TENew(box, box);
  if (!te) return;
  TESetAlignment(just, te);
  EraseRect(box);
  Replace(te, 0, 0, static_cast<const UInt8*>(text), int(std::min<SInt32>(length, kMaxText)),
          nullptr, kDraw);
  TEDispose(te);
}

KWE_API void KWE_CALL TextBox(const void* text, SInt32 length, const Rect* box, SInt16 just) {
  TETextBox(text, length, box, just);
}
