// Ink masks combined into the port. A 1-bit source blitted into a colour DC
// takes the DC's text colour for its 0 bits and its background colour for
// its 1 bits; with black and white there the ink reads as all one bits, and
// a ternary raster operation over a solid brush paints the port's colour
// where the ink is, or where it is not.
#include "quickdraw/text/text_ink.h"

#include <algorithm>

#include "quickdraw/ports/transfer_modes.h"

namespace kwe::quickdraw {
namespace {

constexpr int kCommandKeyHeight = 11;
constexpr int kCommandKeyBitmapWidth = 12;
constexpr const char* kCommandKeyRows[kCommandKeyHeight] = {
    ".##.....##.", "#..#...#..#", "#..#...#..#", ".#########.", "...#...#...", "...#...#...",
    "...#...#...", ".#########.", "#..#...#..#", "#..#...#..#", ".##.....##.",
};

constexpr DWORD kBrushWhereInk = 0x00E20746;     // DSPDxax: ink ? brush : destination
constexpr DWORD kBrushWhereBlank = 0x00B8074A;   // PSDPxax: ink ? destination : brush
constexpr DWORD kInvertWhereBlank = 0x00990066;  // DSxn

HBITMAP g_commandKey = nullptr;

HBITMAP CommandKeyBitmap() {
  if (g_commandKey) return g_commandKey;
  BYTE rows[kCommandKeyHeight * 2] = {};  // 1-bit rows are 16-bit aligned
  for (int v = 0; v < kCommandKeyHeight; ++v)
    for (int h = 0; kCommandKeyRows[v][h]; ++h)
      if (kCommandKeyRows[v][h] == '#') rows[v * 2 + h / 8] |= static_cast<BYTE>(0x80 >> (h % 8));
  g_commandKey = CreateBitmap(kCommandKeyBitmapWidth, kCommandKeyHeight, 1, 1, rows);
  return g_commandKey;
}

void Blit(PortAttr& a, HDC maskDC, const RECT& box, DWORD rop, COLORREF brushColour) {
  HBRUSH brush = CreateSolidBrush(brushColour);
  HGDIOBJ old = SelectObject(a.hdc, brush);
  BitBlt(a.hdc, box.left, box.top, box.right - box.left, box.bottom - box.top, maskDC, 0, 0, rop);
  SelectObject(a.hdc, old);
  DeleteObject(brush);
}

}  // namespace

int InkModeOf(SInt16 txMode) {
  ModeInGdi gdi = ModeInGdiOf(txMode);
  if (gdi.unsupported) return -1;
  switch (gdi.rop2) {
    case R2_COPYPEN: return kInkCopy;
    case R2_MASKPEN: return kInkOr;
    case R2_NOTXORPEN: return kInkXor;
    case R2_MERGENOTPEN: return kInkBic;
    case R2_NOTCOPYPEN: return kInkNotCopy;
    case R2_MASKPENNOT: return kInkNotOr;
    case R2_XORPEN: return kInkNotXor;
    case R2_MERGEPEN: return kInkNotBic;
    default: return -1;
  }
}

int CommandKeyWidth() { return kCommandKeyBitmapWidth; }

void ReleaseCommandKeyBitmap() {
  if (g_commandKey) DeleteObject(g_commandKey);
  g_commandKey = nullptr;
}

InkMask::InkMask(HDC reference, int width, int height)
    : dc_(CreateCompatibleDC(reference)),
      bitmap_(dc_ && width > 0 && height > 0 ? CreateBitmap(width, height, 1, 1, nullptr)
                                             : nullptr) {
  if (!bitmap_) return;
  oldBitmap_ = SelectObject(dc_, bitmap_);
  PatBlt(dc_, 0, 0, width, height, BLACKNESS);
}

InkMask::~InkMask() {
  if (oldBitmap_) SelectObject(dc_, oldBitmap_);
  if (bitmap_) DeleteObject(bitmap_);
  if (dc_) DeleteDC(dc_);
}

// The Macintosh's white and black ink in the srcBic and not modes are the
// port's background and foreground colours.
void CombineInk(PortAttr& a, HDC maskDC, const RECT& box, int inkMode) {
  SetTextColor(a.hdc, RGB(0, 0, 0));
  SetBkColor(a.hdc, RGB(255, 255, 255));
  a.selectedTextColorRef = CLR_INVALID;
  a.selectedBkColorRef = CLR_INVALID;
  switch (inkMode) {
    case kInkCopy:
    case kInkOr: Blit(a, maskDC, box, kBrushWhereInk, a.fgColorRef); break;
    case kInkXor:
      BitBlt(a.hdc, box.left, box.top, box.right - box.left, box.bottom - box.top, maskDC, 0, 0,
             SRCINVERT);
      break;
    case kInkBic: Blit(a, maskDC, box, kBrushWhereInk, a.bkColorRef); break;
    case kInkNotCopy:
      Blit(a, maskDC, box, PATCOPY, a.fgColorRef);
      Blit(a, maskDC, box, kBrushWhereInk, a.bkColorRef);
      break;
    case kInkNotOr: Blit(a, maskDC, box, kBrushWhereBlank, a.fgColorRef); break;
    case kInkNotXor:
      BitBlt(a.hdc, box.left, box.top, box.right - box.left, box.bottom - box.top, maskDC, 0, 0,
             kInvertWhereBlank);
      break;
    case kInkNotBic: Blit(a, maskDC, box, kBrushWhereBlank, a.bkColorRef); break;
    default: break;
  }
}

void DrawCommandKey(PortAttr& a, int h, int v, int width, int inkMode) {
  HBITMAP bitmap = CommandKeyBitmap();
  HDC maskDC = bitmap ? CreateCompatibleDC(a.hdc) : nullptr;
  if (!maskDC) return;
  HGDIOBJ old = SelectObject(maskDC, bitmap);
  RECT box{h, v - kCommandKeyHeight, h + std::min(width, kCommandKeyBitmapWidth), v};
  CombineInk(a, maskDC, box, inkMode);
  SelectObject(maskDC, old);
  DeleteDC(maskDC);
}

}  // namespace kwe::quickdraw
