// RGB2HSV, HSV2RGB and GetGray: the Color Picker's conversions and the grey
// a device can show between two colours.
#include "QuickdrawColour.h"
#include "quickdraw/colour/colour_arithmetic.h"
#include "quickdraw/colour/device_colours.h"

using namespace kwe::quickdraw;

KWE_API void KWE_CALL RGB2HSV(const RGBColor* rColor, HSVColor* hColor) {
  if (!rColor || !hColor) return;
  Hsv hsv = ToHsv(*rColor);
  *hColor =
      HSVColor{static_cast<UInt16>(hsv.h), static_cast<UInt16>(hsv.s), static_cast<UInt16>(hsv.v)};
}

KWE_API void KWE_CALL HSV2RGB(const HSVColor* hColor, RGBColor* rColor) {
  if (!hColor || !rColor) return;
  *rColor = ToRgb(Hsv{hColor->hue, hColor->saturation, hColor->value});
}

// The entry of the device's table nearest the midpoint of the two colours;
// false, with fgColor unchanged, when that is one of the two themselves.
KWE_API Boolean KWE_CALL GetGray(GDHandle device, const RGBColor* backGround,
                                 RGBColor* foreGround) {
  if (!device || !*device || !backGround || !foreGround || !(*device)->gdPMap) return false;
  CTabHandle table = (*(*device)->gdPMap)->pmTable;
  int count = TableEntryCount(table);
  if (count == 0) return false;
  auto mid = [](UInt16 a, UInt16 b) { return static_cast<UInt16>((UInt32{a} + b) / 2); };
  RGBColor grey{mid(backGround->red, foreGround->red), mid(backGround->green, foreGround->green),
                mid(backGround->blue, foreGround->blue)};
  int index = NearestEntry(TableEntries(table), count, grey);
  if (index < 0) return false;
  RGBColor found = TableEntries(table)[index].rgb;
  auto same = [](const RGBColor& a, const RGBColor& b) {
    return a.red == b.red && a.green == b.green && a.blue == b.blue;
  };
  if (same(found, *backGround) || same(found, *foreGround)) return false;
  *foreGround = found;
  return true;
}
