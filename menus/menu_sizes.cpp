// CalcMenuSize: a menu's width and height as Windows will show it, measured
// in the Windows system font the menu items are written in.
#include <algorithm>

#include "Memory.h"
#include "Resources.h"
#include "memory/character_conversion.h"
#include "menus/menu_manager.h"
#include "quickdraw/ports/screen_state.h"

namespace kwe::menus {

constexpr ResType kColourIconType = 0x6369636E;  // 'cicn'
constexpr int kDividerHeight = 8;

HDC MeasureDC() {
  ManagerState& s = State();
  if (!s.measureDC) {
    s.measureDC = CreateCompatibleDC(nullptr);
    if (s.measureDC) SelectObject(s.measureDC, GetStockObject(SYSTEM_FONT));
  }
  return s.measureDC;
}

void ReleaseMeasureDC() {
  ManagerState& s = State();
  if (s.measureDC) DeleteDC(s.measureDC);
  s.measureDC = nullptr;
}

int StandardItemHeight() {
  int height = quickdraw::Screen().menuItemHeight;
  if (height > 0) return height;
  // Before InitGraf: the same measure, taken here.
  TEXTMETRICA tm{};
  GetTextMetricsA(MeasureDC(), &tm);
  return tm.tmHeight + (tm.tmInternalLeading + 1) / 2;
}

SIZE IconSize(int icon, UInt8 key) {
  if (!(icon & 0x7F)) return SIZE{0, 0};
  if (key == iconItemCmd || key == sicnItemCmd) return SIZE{16, 16};
  // A 'cicn' starts with its pixel map: base address, row bytes, bounds.
  Handle h = GetResource(kColourIconType, SInt16(256 + icon));
  if (h && *h && GetHandleSize(h) >= 14) {
    const UInt8* p = reinterpret_cast<const UInt8*>(*h);
    SInt16 top = SInt16(ReadWord(p + 6)), left = SInt16(ReadWord(p + 8));
    SInt16 bottom = SInt16(ReadWord(p + 10)), right = SInt16(ReadWord(p + 12));
    if (bottom > top && right > left) return SIZE{right - left, bottom - top};
  }
  return SIZE{32, 32};
}

int ItemHeight(const ItemView& v) {
  if (v.text[0] && v.text[1] == '-') return kDividerHeight;
  int standard = StandardItemHeight();
  if (!(v.icon & 0x7F)) return standard;
  return std::max<int>(standard, IconSize(v.icon, v.key).cy);
}

namespace {

int TextWidthOf(const UInt8* text) {
  char ansi[256];
  int length = text[0];
  for (int i = 0; i < length; ++i) {
    UInt8 c = text[i + 1];
    ansi[i] = char(c >= 0x80 ? text::MacToAnsiCharacter(c) : c);
  }
  SIZE size{0, 0};
  GetTextExtentPoint32A(MeasureDC(), ansi, length, &size);
  return size.cx;
}

}  // namespace

}  // namespace kwe::menus

using namespace kwe::menus;

KWE_API void KWE_CALL CalcMenuSize(MenuHandle theMenu) {
  if (!Valid(theMenu)) return;
  if (DefinitionOf(theMenu)) {
    Rect r{0, 0, 0, 0};
    SInt16 which = 0;
    CallDefinition(theMenu, mSizeMsg, &r, Point{0, 0}, &which);
    return;
  }
  int width = 0, height = 0;
  ItemView v;
  for (ItemCursor c = Items(theMenu); c.Next(&v);) {
    int w = TextWidthOf(v.text);
    if (v.icon & 0x7F) w += IconSize(v.icon, v.key).cx + 8;
    width = std::max(width, w);
    height += ItemHeight(v);
  }
  WriteWord(Bytes(theMenu) + kMenuWidthOffset, UInt16(std::min(width + 24, 0x7FFF)));
  WriteWord(Bytes(theMenu) + kMenuHeightOffset, UInt16(std::min(height, 0x7FFF)));
}
