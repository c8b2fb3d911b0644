#include "colour_wheel.h"

#include "QDOffscreen.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"

namespace {

constexpr SInt16 kSize = 40;
constexpr int kWedge = 10;  // degrees

// The hue at angle degrees (clockwise from 12 o'clock), fully saturated.
RGBColor Hue(int angle) {
  int sector = angle / 60 % 6;
  auto rise = static_cast<UInt16>((angle % 60) * 0xFFFF / 60);
  auto fall = static_cast<UInt16>(0xFFFF - rise);
  const RGBColor table[6] = {{0xFFFF, rise, 0}, {fall, 0xFFFF, 0}, {0, 0xFFFF, rise},
                             {0, fall, 0xFFFF}, {rise, 0, 0xFFFF}, {0xFFFF, 0, fall}};
  return table[sector];
}

// The wheel drawn with QuickDraw into the current port over r: a wedge of
// each hue round the circle, then ovals shrinking to the centre painted
// white in the blend pen mode, each a little whiter than the last.
void PaintWheel(const Rect& r) {
  EraseRect(&r);
  for (int angle = 0; angle < 360; angle += kWedge) {
    RGBColor c = Hue(angle + kWedge / 2);
    RGBForeColor(&c);
    PaintArc(&r, SInt16(angle), kWedge);
  }
  const RGBColor white{0xFFFF, 0xFFFF, 0xFFFF}, weight{0x1C00, 0x1C00, 0x1C00};
  RGBForeColor(&white);
  OpColor(&weight);
  PenMode(blend);
  for (SInt16 inset = 2; inset < kSize / 2; inset = SInt16(inset + 2)) {
    Rect ring = r;
    InsetRect(&ring, inset, inset);
    PaintOval(&ring);
  }
  PenMode(patCopy);
}

}  // namespace

void DrawColourWheel(SInt16 left, SInt16 top) {
  CGrafPtr port;
  GDHandle device;
  GetGWorld(&port, &device);
  GWorldPtr world = nullptr;
  Rect all{0, 0, kSize, kSize};
  if (NewGWorld(&world, 32, &all, nullptr, nullptr, 0) != noErr) return;
  SetGWorld(world, nullptr);
  PaintWheel(all);
  SetGWorld(port, device);

  const BitMap* from = reinterpret_cast<const BitMap*>(*GetGWorldPixMap(world));
  const BitMap* to = &reinterpret_cast<GrafPtr>(port)->portBits;
  // The wheel as it stands, and beside it twice as large; under the large
  // one, twice as large again through a mask of stripes: only the region's
  // pixels change.
  Rect one{top, left, static_cast<SInt16>(top + kSize), static_cast<SInt16>(left + kSize)};
  CopyBits(from, to, &all, &one, srcCopy, nullptr);
  SInt16 left2 = static_cast<SInt16>(left + kSize + 8);
  Rect twice{top, left2, static_cast<SInt16>(top + 2 * kSize),
             static_cast<SInt16>(left2 + 2 * kSize)};
  CopyBits(from, to, &all, &twice, srcCopy, nullptr);
  SInt16 top3 = static_cast<SInt16>(top + 2 * kSize + 8);
  Rect masked{top3, left2, static_cast<SInt16>(top3 + 2 * kSize),
              static_cast<SInt16>(left2 + 2 * kSize)};
  RgnHandle mask = NewRgn(), stripe = NewRgn();
  for (int i = 0; i < 2 * kSize; i += 16) {
    SetRectRgn(stripe, left2, static_cast<SInt16>(top3 + i), static_cast<SInt16>(left2 + 2 * kSize),
               static_cast<SInt16>(top3 + i + 8));
    UnionRgn(mask, stripe, mask);
  }
  CopyBits(from, to, &all, &masked, srcCopy, mask);
  DisposeRgn(stripe);
  DisposeRgn(mask);
  DisposeGWorld(world);
}
