#include "menus/item_drawing.h"

#include <algorithm>
#include <string>

#include "Memory.h"
#include "Resources.h"
#include "frame/library_fonts.h"
#include "frame/session.h"

namespace kwe::menus {

namespace {

constexpr ResType kIconType = 0x49434F4E;       // 'ICON'
constexpr ResType kSmallIconType = 0x5349434E;  // 'SICN'
constexpr int kAcceleratorMargin = 15;
constexpr COLORREF kDividerGrey = RGB(0x80, 0x80, 0x80);

struct ItemText {
  std::string text, accelerator;
};

ItemText TextsOf(const ItemView& v) {
  ItemText t;
  TextOptions options = CurrentTextOptions();
  options.keepAmpersands = true;  // drawn as it is, no mnemonic
  t.text = Win32MenuText(v.text + 1, v.text[0], nullptr, options);
  if (v.key > sicnItemCmd) {
    const ManagerState& s = State();
    t.accelerator = AcceleratorText(v.key, v.style, s.plainFormat.c_str(), s.shiftedFormat.c_str(),
                                    SessionFlag(kweFlagDigitCommandKeys));
    if (!t.accelerator.empty() && t.accelerator[0] == '\t') t.accelerator.erase(0, 1);
  }
  return t;
}

// A single blank or control character stands for no text.
bool NoText(const ItemView& v) { return v.text[0] == 1 && v.text[1] <= ' '; }

HFONT MakeItemFont(UInt8 style) {
  const LibraryFont& stock = GetLibraryFont(kStockSystemFont);
  LOGFONTA lf{};
  lf.lfHeight = stock.ascent + stock.descent > 0 ? stock.ascent + stock.descent : 16;
  lf.lfWeight = (style & bold) ? 800 : 400;
  lf.lfItalic = (style & italic) != 0;
  lf.lfUnderline = (style & underline) != 0;
  lf.lfStrikeOut = (style & 64) != 0;
  lf.lfCharSet = ANSI_CHARSET;
  lstrcpyA(lf.lfFaceName, "System");
  return CreateFontIndirectA(&lf);
}

// A 1-bit Macintosh icon (rows of whole bytes, 1 is black) drawn at r: the
// bits are inverted for Windows, where 1 is white in a monochrome bitmap.
void DrawMonoIcon(HDC dc, const RECT& r, const UInt8* bits, int width, int height, COLORREF ink,
                  COLORREF back) {
  int rowBytes = (width + 15) / 16 * 2;
  std::string inverted(size_t(rowBytes * height), '\0');
  int srcRow = width / 8;
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < srcRow; ++x)
      inverted[size_t(y * rowBytes + x)] = char(~bits[y * srcRow + x]);
  HBITMAP bitmap = CreateBitmap(width, height, 1, 1, inverted.data());
  HDC mem = CreateCompatibleDC(dc);
  HGDIOBJ old = SelectObject(mem, bitmap);
  // Black bits take the ink, white ones the item's background.
  COLORREF oldText = SetTextColor(dc, ink);
  COLORREF oldBack = SetBkColor(dc, back);
  StretchBlt(dc, r.left, r.top, r.right - r.left, r.bottom - r.top, mem, 0, 0, width, height,
             SRCCOPY);
  SetTextColor(dc, oldText);
  SetBkColor(dc, oldBack);
  SelectObject(mem, old);
  DeleteDC(mem);
  DeleteObject(bitmap);
}

void DrawIcon(HDC dc, const RECT& r, const ItemView& v, COLORREF ink, COLORREF back) {
  SInt16 id = SInt16(256 + (v.icon & 0xFF));
  bool small = v.key == sicnItemCmd;
  Handle h = GetResource(small ? kSmallIconType : kIconType, id);
  size_t need = small ? 32 : 128;
  if (!h || !*h || size_t(GetHandleSize(h)) < need) return;
  int side = small ? 16 : 32;
  DrawMonoIcon(dc, r, reinterpret_cast<const UInt8*>(*h), side, side, ink, back);
}

}  // namespace

SIZE MeasureItem(HDC dc, MenuHandle menu, int item) {
  ItemView v;
  if (!Item(menu, item, &v) || NoText(v)) return SIZE{0, 16};
  int check = LOWORD(GetMenuCheckMarkDimensions());
  ItemText t = TextsOf(v);
  HGDIOBJ old =
      SelectObject(dc, GetLibraryFont(kStockSystemFont).font ? GetLibraryFont(kStockSystemFont).font
                                                             : GetStockObject(SYSTEM_FONT));
  SIZE text{0, 0}, accel{0, 0};
  GetTextExtentPoint32A(dc, t.text.data(), int(t.text.size()), &text);
  if (!t.accelerator.empty())
    GetTextExtentPoint32A(dc, t.accelerator.data(), int(t.accelerator.size()), &accel);
  SelectObject(dc, old);
  SIZE icon = IconSize(v.icon, v.key);
  int width = check + text.cx + icon.cx + 19;
  if (text.cx && icon.cx) width += 6;
  if (v.key > sicnItemCmd) width += accel.cx + 12;
  return SIZE{width, std::max(text.cy, icon.cy) + 2};
}

void DrawItem(HDC dc, const RECT& r, MenuHandle menu, int item, ItemLook look) {
  ItemView v;
  if (!Item(menu, item, &v)) return;
  COLORREF back = GetSysColor(look.selected ? COLOR_HIGHLIGHT : COLOR_MENU);
  HBRUSH brush = CreateSolidBrush(back);
  FillRect(dc, &r, brush);
  DeleteObject(brush);
  if (v.text[0] && v.text[1] == '-') {
    // A divider: a grey line across the middle.
    HPEN pen = CreatePen(PS_SOLID, 1, kDividerGrey);
    HGDIOBJ old = SelectObject(dc, pen);
    int y = (r.top + r.bottom) / 2;
    MoveToEx(dc, r.left, y, nullptr);
    LineTo(dc, r.right, y);
    SelectObject(dc, old);
    DeleteObject(pen);
    return;
  }
  COLORREF ink = GetSysColor(look.grayed     ? COLOR_GRAYTEXT
                             : look.selected ? COLOR_HIGHLIGHTTEXT
                                             : COLOR_MENUTEXT);
  int check = LOWORD(GetMenuCheckMarkDimensions());
  int x = r.left + check;
  if (v.mark) {
    HBITMAP mark = LoadBitmapA(nullptr, MAKEINTRESOURCEA(32760));  // OBM_CHECK
    BITMAP info{};
    if (mark && GetObjectA(mark, sizeof info, &info)) {
      HDC mem = CreateCompatibleDC(dc);
      HGDIOBJ old = SelectObject(mem, mark);
      COLORREF oldText = SetTextColor(dc, ink);
      COLORREF oldBack = SetBkColor(dc, back);
      BitBlt(dc, r.left + (check - info.bmWidth) / 2, (r.top + r.bottom - info.bmHeight) / 2,
             info.bmWidth, info.bmHeight, mem, 0, 0, SRCCOPY);
      SetTextColor(dc, oldText);
      SetBkColor(dc, oldBack);
      SelectObject(mem, old);
      DeleteDC(mem);
    }
    if (mark) DeleteObject(mark);
  }
  SIZE icon = IconSize(v.icon, v.key);
  if (icon.cx) {
    RECT ir{x, (r.top + r.bottom - icon.cy) / 2, x + icon.cx, 0};
    ir.bottom = ir.top + icon.cy;
    DrawIcon(dc, ir, v, ink, back);
    x += icon.cx + 6;
  }
  ItemText t = TextsOf(v);
  HFONT font = MakeItemFont(v.style);
  HGDIOBJ oldFont = SelectObject(dc, font);
  SIZE probe{0, 0};
  GetTextExtentPoint32A(dc, "ABCjpq", 6, &probe);
  int y = (r.top + r.bottom - probe.cy) / 2;
  int oldMode = SetBkMode(dc, TRANSPARENT);
  COLORREF oldText = SetTextColor(dc, ink);
  TextOutA(dc, x, y, t.text.data(), int(t.text.size()));
  if (!t.accelerator.empty()) {
    SIZE a{0, 0};
    GetTextExtentPoint32A(dc, t.accelerator.data(), int(t.accelerator.size()), &a);
    TextOutA(dc, r.right - kAcceleratorMargin - a.cx, y, t.accelerator.data(),
             int(t.accelerator.size()));
  }
  SetTextColor(dc, oldText);
  SetBkMode(dc, oldMode);
  SelectObject(dc, oldFont);
  DeleteObject(font);
}

}  // namespace kwe::menus
