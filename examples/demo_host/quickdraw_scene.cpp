#include "quickdraw_scene.h"

#include <cstring>

#include "Fonts.h"
#include "KWEPorts.h"
#include "Quickdraw.h"
#include "colour_wheel.h"
#include "demo_pictures.h"

namespace {

GrafPort g_scenePort;

constexpr SInt32 kColours[] = {blackColor, redColor,     greenColor, blueColor,
                               cyanColor,  magentaColor, yellowColor};

void Swatch(SInt16 left, const Pattern& pattern) {
  Rect r{0, left, 24, SInt16(left + 64)};
  FillRect(&r, &pattern);
  FrameRect(&r);
}

// Every shape in every verb: frame, paint, erase, invert, fill. The cells
// sit on a light gray ground so that erase and invert show.
void ShapeGrid(SInt16 top, const std::vector<Pattern>& patterns) {
  const SInt16 cellW = 74, cellH = 30;
  Rect ground{top, 12, SInt16(top + 6 * cellH), SInt16(12 + 5 * cellW)};
  FillRect(&ground, &qd.ltGray);
  static PolyHandle triangle = nullptr;
  if (!triangle) {
    triangle = OpenPoly();
    MoveTo(0, 22);
    LineTo(30, 0);
    LineTo(60, 22);
    LineTo(0, 22);
    ClosePoly();
  }
  RgnHandle ell = NewRgn(), piece = NewRgn();
  for (int verb = 0; verb < 5; ++verb) {
    for (int shape = 0; shape < 6; ++shape) {
      SInt16 left = SInt16(16 + verb * cellW), y = SInt16(top + 4 + shape * cellH);
      Rect r{y, left, SInt16(y + 22), SInt16(left + 62)};
      const Pattern& fill = patterns.empty() ? qd.gray : patterns[shape % patterns.size()];
      PenSize(verb == 0 ? 2 : 1, verb == 0 ? 2 : 1);
      switch (shape) {
        case 0:
          verb == 0   ? FrameRect(&r)
          : verb == 1 ? PaintRect(&r)
          : verb == 2 ? EraseRect(&r)
          : verb == 3 ? InvertRect(&r)
                      : FillRect(&r, &fill);
          break;
        case 1:
          verb == 0   ? FrameOval(&r)
          : verb == 1 ? PaintOval(&r)
          : verb == 2 ? EraseOval(&r)
          : verb == 3 ? InvertOval(&r)
                      : FillOval(&r, &fill);
          break;
        case 2:
          verb == 0   ? FrameRoundRect(&r, 16, 12)
          : verb == 1 ? PaintRoundRect(&r, 16, 12)
          : verb == 2 ? EraseRoundRect(&r, 16, 12)
          : verb == 3 ? InvertRoundRect(&r, 16, 12)
                      : FillRoundRect(&r, 16, 12, &fill);
          break;
        case 3:
          verb == 0   ? FrameArc(&r, 30, 270)
          : verb == 1 ? PaintArc(&r, 30, 270)
          : verb == 2 ? EraseArc(&r, 30, 270)
          : verb == 3 ? PaintArc(&r, 90, 180)
                      : FillArc(&r, 30, 270, &fill);
          break;
        case 4:
          OffsetPoly(triangle, left - (**triangle).polyBBox.left, y - (**triangle).polyBBox.top);
          verb == 0   ? FramePoly(triangle)
          : verb == 1 ? PaintPoly(triangle)
          : verb == 2 ? ErasePoly(triangle)
          : verb == 3 ? InvertPoly(triangle)
                      : FillPoly(triangle, &fill);
          break;
        default: {
          Rect a{y, left, SInt16(y + 10), SInt16(left + 62)},
              b{y, left, SInt16(y + 22), SInt16(left + 20)};
          RectRgn(ell, &a);
          RectRgn(piece, &b);
          UnionRgn(ell, piece, ell);
          verb == 0   ? FrameRgn(ell)
          : verb == 1 ? PaintRgn(ell)
          : verb == 2 ? EraseRgn(ell)
          : verb == 3 ? InvertRgn(ell)
                      : FillRgn(ell, &fill);
        }
      }
    }
  }
  PenNormal();
  DisposeRgn(ell);
  DisposeRgn(piece);
}

void Fan(SInt16 h, SInt16 v) {
  for (int i = 0; i <= 24; ++i) {
    ForeColor(kColours[i % 7]);
    PenSize(i % 3 == 0 ? 2 : 1, i % 3 == 0 ? 2 : 1);
    MoveTo(h, v);
    LineTo(SInt16(h - 90 + i * 15 / 2), SInt16(v - 90));
  }
  ForeColor(blackColor);
  PenNormal();
}

// A star recorded with the pen becomes the clip of a crowd of thick lines.
void ClippedStar(SInt16 h, SInt16 v) {
  const SInt16 star[][2] = {{0, -60}, {35, 50}, {-57, -18}, {57, -18}, {-35, 50}, {0, -60}};
  OpenRgn();
  MoveTo(h + star[0][0], v + star[0][1]);
  for (const auto& p : star) LineTo(h + p[0], v + p[1]);
  RgnHandle starRgn = NewRgn();
  CloseRgn(starRgn);
  SetClip(starRgn);
  PenSize(6, 3);
  for (int i = 0; i < 16; ++i) {
    ForeColor(kColours[1 + i % 6]);
    MoveTo(SInt16(h - 80), SInt16(v - 70 + i * 9));
    LineTo(SInt16(h + 80), SInt16(v - 50 + i * 9));
  }
  Rect everything{-16383, -16383, 16383, 16383};
  ClipRect(&everything);
  PenNormal();
  ForeColor(blackColor);
  MoveTo(h + star[0][0], v + star[0][1]);
  for (const auto& p : star) LineTo(h + p[0], v + p[1]);
  DisposeRgn(starRgn);
}

// Pascal strings from C text, for DrawString.
void Say(SInt16 h, SInt16 v, const char* text) {
  Str255 p;
  p[0] = static_cast<unsigned char>(std::strlen(text));
  std::memcpy(p + 1, text, p[0]);
  MoveTo(h, v);
  DrawString(p);
}

// Fonts by number through the font map, in several styles; the pen's
// baseline and advance are the Macintosh's.
void StyledText(SInt16 h, SInt16 v) {
  struct {
    SInt16 font, size, face;
    const char* text;
  } lines[] = {{geneva, 12, normal, "Geneva 12"},
               {times, 14, bold, "Times bold"},
               {courier, 12, italic, "Courier italic"},
               {helvetica, 12, underline, "Helvetica underlined"},
               {newYork, 18, bold | italic, "New York 18"},
               {monaco, 9, normal, "Monaco 9: 0123456789"}};
  for (const auto& line : lines) {
    TextFont(line.font);
    TextSize(line.size);
    TextFace(line.face);
    Say(h, v, line.text);
    v = SInt16(v + line.size + 10);
  }
  TextFont(systemFont);
  TextSize(12);
  TextFace(normal);
}

}  // namespace

void StartQuickDraw() {
  InitGraf(&qd.thePort);
  InitFonts();
  OpenPort(&g_scenePort);
}

void EndQuickDraw() { ClosePort(&g_scenePort); }

void DrawScene(HDC dc, int top, const std::vector<Pattern>& patterns) {
  GrafPtr saved;
  GetPort(&saved);
  SetPort(&g_scenePort);
  HDC previous = KWE_SwaphDC(dc, true);
  SetOrigin(0, SInt16(-top));  // local (0, 0) is the scene's top-left
  SInt16 left = 12;
  for (const Pattern& pattern : patterns) {
    Swatch(left, pattern);
    left += 76;
  }
  BackPat(&qd.white);
  ShapeGrid(32, patterns);
  Fan(490, 100);
  ClippedStar(490, 185);
  StyledText(600, 30);
  DrawColourWheel(872, SInt16(258 - top));  // right of the Chart window, under Shapes
  DrawPictureDemo(575, SInt16(461 - top));  // beside the host text, above the scene
  SetOrigin(0, 0);
  KWE_SwaphDC(previous, false);
  SetPort(saved);
}
