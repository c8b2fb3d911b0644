#include "document_windows.h"

#include "Fonts.h"
#include "Quickdraw.h"
#include "QuickdrawText.h"
#include "Resources.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "document_controls.h"

namespace {

WindowPtr g_windows[2] = {nullptr, nullptr};
Pattern g_bricks;

const char* const kTitles[2] = {"Shapes", "Chart"};

StringPtr Pascal(const char* text, Str255 out) {
  out[0] = 0;
  while (text[out[0]] && out[0] < 255) {
    out[out[0] + 1] = static_cast<unsigned char>(text[out[0]]);
    ++out[0];
  }
  return out;
}

void Say(SInt16 h, SInt16 v, const char* text) {
  Str255 p;
  MoveTo(h, v);
  DrawString(Pascal(text, p));
}

int IndexOf(WindowPtr w) {
  for (int i = 0; i < 2; ++i)
    if (w && w == g_windows[i]) return i;
  return -1;
}

// The event's window: update and activate events name it in their message
// (32 bits, so it is compared with each window rather than cast back).
int IndexOfMessage(const EventRecord& e) {
  for (int i = 0; i < 2; ++i)
    if (g_windows[i] && e.message == UInt32(reinterpret_cast<uintptr_t>(g_windows[i]))) return i;
  return -1;
}

void Heading(const char* title, const char* note) {
  TextFont(times);
  TextSize(18);
  TextFace(bold);
  Say(12, 26, title);
  TextFont(geneva);
  TextSize(10);
  TextFace(normal);
  Say(12, 42, note);
}

void DrawShapes() {
  Heading("QuickDraw shapes", "zoomDocProc: a zoom box and a grow box");
  Rect oval{58, 12, 128, 92}, round{58, 104, 128, 184}, wedge{58, 196, 128, 276};
  ForeColor(redColor);
  PaintOval(&oval);
  ForeColor(blueColor);
  PaintRoundRect(&round, 24, 24);
  ForeColor(greenColor);
  PaintArc(&wedge, 45, 270);
  ForeColor(magentaColor);
  for (int i = 0; i < 4; ++i) {
    Rect ring{SInt16(142 + 7 * i), SInt16(12 + 7 * i), SInt16(206 - 7 * i), SInt16(92 - 7 * i)};
    PenSize(2, 2);
    FrameOval(&ring);
  }
  PenNormal();
  ForeColor(blackColor);
  Rect tiles{142, 104, 206, 184};
  FillRect(&tiles, &g_bricks);
  FrameRect(&tiles);
  PolyHandle star = OpenPoly();
  const SInt16 points[][2] = {{236, 142}, {256, 206}, {202, 166}, {270, 166}, {216, 206}};
  MoveTo(points[0][0], points[0][1]);
  for (int i = 1; i <= 5; ++i) LineTo(points[i % 5][0], points[i % 5][1]);
  ClosePoly();
  ForeColor(cyanColor);
  PaintPoly(star);
  ForeColor(blackColor);
  FramePoly(star);
  KillPoly(star);
}

void DrawChart() {
  Heading("Sales by quarter", "noGrowDocProc: no grow box");
  const SInt16 sales[4] = {60, 95, 75, 120};
  const SInt32 colours[4] = {redColor, greenColor, blueColor, magentaColor};
  MoveTo(24, 60);
  LineTo(24, 180);
  LineTo(172, 180);
  for (int q = 0; q < 4; ++q) {
    SInt16 left = SInt16(34 + 34 * q);
    Rect bar{SInt16(180 - sales[q]), left, 180, SInt16(left + 24)};
    ForeColor(colours[q]);
    PaintRect(&bar);
    ForeColor(blackColor);
    FrameRect(&bar);
    char label[3] = {'Q', char('1' + q), 0};
    Say(SInt16(left + 6), 194, label);
  }
  // The same figures as a pie: each wedge's angle is its share of 360.
  Rect pie{80, 186, 170, 276};
  SInt16 start = 0;
  const SInt16 total = 60 + 95 + 75 + 120;
  for (int q = 0; q < 4; ++q) {
    SInt16 arc = q == 3 ? SInt16(360 - start) : SInt16(sales[q] * 360 / total);
    ForeColor(colours[q]);
    PaintArc(&pie, start, arc);
    start = SInt16(start + arc);
  }
  ForeColor(blackColor);
  FrameOval(&pie);
}

// The Macintosh's size box glyph, two overlapping squares, in the corner
// DrawGrowIcon has painted: its square is painted in the scroll bar colour,
// which Wine's default colours make white, so the glyph shows where it is.
void DrawSizeBoxGlyph(WindowPtr w) {
  SInt16 r = w->portRect.right, b = w->portRect.bottom;
  Rect back{SInt16(b - 12), SInt16(r - 12), SInt16(b - 5), SInt16(r - 5)};
  Rect front{SInt16(b - 9), SInt16(r - 9), SInt16(b - 2), SInt16(r - 2)};
  FrameRect(&back);
  EraseRect(&front);
  FrameRect(&front);
}

void Draw(int which) {
  WindowPtr w = g_windows[which];
  EraseRect(&w->portRect);
  if (which == 0) {
    BeginScrolledDrawing(w);
    DrawShapes();
    EndScrolledDrawing(w);
    DrawGrowIcon(w);
    DrawSizeBoxGlyph(w);
  } else {
    DrawChart();
  }
}

// The application's answer to a mouseDown in one of its windows, by the
// part FindWindow names: the usual Macintosh dispatch. Windows has already
// dragged, sized or zoomed the window when the part comes from a
// pseudo-point; the calls only bring the records up to date.
std::string Click(short part, WindowPtr w, const EventRecord& e) {
  Rect limits{64, 64, 32767, 32767};
  switch (part) {
    case inContent:
      if (w == FrontWindow())
        return TrackDocumentControls(w, e.where) ? "inContent, control" : "inContent";
      SelectWindow(w);
      return "inContent, SelectWindow";
    case inDrag: DragWindow(w, e.where, &limits); return "inDrag";
    case inGrow:
      if (SInt32 size = GrowWindow(w, e.where, &limits)) {
        SizeWindow(w, LoWord(size), HiWord(size), true);
        SetPort(w);
        InvalRect(&w->portRect);
      }
      return "inGrow";
    case inZoomIn:
    case inZoomOut:
      if (TrackBox(w, e.where, part)) {
        ZoomWindow(w, part, true);
        SetPort(w);
        InvalRect(&w->portRect);
      }
      return "inZoom";
    case inGoAway:
      if (TrackGoAway(w, e.where)) HideWindow(w);
      return "inGoAway";
    default: return "elsewhere";
  }
}

}  // namespace

void OpenDocumentWindows(SInt16 h, SInt16 v) {
  GetIndPattern(&g_bricks, 128, 3);  // the bricks of the program's 'PAT#'
  const struct {
    Rect bounds;
    SInt16 procID;
  } made[2] = {{{v, SInt16(h + 100), SInt16(v + 230), SInt16(h + 430)}, zoomDocProc},
               {{SInt16(v + 226), h, SInt16(v + 430), SInt16(h + 300)}, noGrowDocProc}};
  for (int i = 0; i < 2; ++i) {
    Str255 title;
    g_windows[i] = NewWindow(nullptr, &made[i].bounds, Pascal(kTitles[i], title), true,
                             made[i].procID, reinterpret_cast<WindowPtr>(-1), true, i);
  }
  AddDocumentControls(g_windows[0]);
}

void CloseDocumentWindows() {
  for (WindowPtr& w : g_windows) {
    if (w) DisposeWindow(w);
    w = nullptr;
  }
}

WindowPtr DocumentWindow(int which) { return g_windows[which]; }

std::string HandleDocumentEvent(const EventRecord& e) {
  int which = -1;
  std::string said;
  switch (e.what) {
    case updateEvt:
      which = IndexOfMessage(e);
      if (which < 0) return "";
      BeginUpdate(g_windows[which]);
      Draw(which);
      EndUpdate(g_windows[which]);
      said = " updateEvt";
      break;
    case activateEvt:
      which = IndexOfMessage(e);
      if (which < 0) return "";
      if (which == 0) {
        DrawGrowIcon(g_windows[which]);
        SetPort(g_windows[which]);
        DrawSizeBoxGlyph(g_windows[which]);
      }
      said = (e.modifiers & activeFlag) ? " activateEvt (on)" : " activateEvt (off)";
      break;
    case mouseDown: {
      WindowPtr w = nullptr;
      short part = FindWindow(e.where, &w);
      which = IndexOf(w);
      if (which < 0) return "";
      said = " mouseDown (" + Click(part, w, e) + ")";
      break;
    }
    default: return "";
  }
  return said + " '" + kTitles[which] + "';";
}
