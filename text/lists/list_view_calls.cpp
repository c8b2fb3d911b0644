// The calls that size, scroll, draw and activate a list.
#include <windows.h>

#include <algorithm>

#include "text/lists/list_manager.h"

namespace kwe::lists {
namespace {

bool Drawing(ListHandle l) { return !(SlotOf(l)->flags & kDrawingOff); }

int FirstSelected(ListHandle l) {
  for (int i = 0, n = CellCount(l); i < n; ++i)
    if (Selected(l, i)) return i;
  return -1;
}

bool InRect(const Rect& r, Cell c) {
  return c.v >= r.top && c.v < r.bottom && c.h >= r.left && c.h < r.right;
}

// The inactive look of a list in a dialog: the dialog item under the list,
// inset by a pixel (and short of the list's scroll bar), painted over in
// patBic with the gray pattern, so every other pixel turns to the
// background and the cells show dimmed. Drawn in the list box's own DC,
// since the list box covers the item.
void DimCoveredItem(ListHandle l) {
  HWND box = BoxOf(l), item = ExtraOf(l).coveredItem;
  if (!item || !IsWindow(item)) return;
  RECT r;
  GetWindowRect(item, &r);
  MapWindowPoints(nullptr, box, reinterpret_cast<POINT*>(&r), 2);
  InflateRect(&r, -1, -1);
  if (GetWindowLongA(box, GWL_STYLE) & WS_VSCROLL) r.right -= GetSystemMetrics(SM_CXVSCROLL);
  static const WORD kGray[8] = {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
  HBITMAP bits = CreateBitmap(8, 8, 1, 1, kGray);
  HBRUSH brush = CreatePatternBrush(bits);
  HDC dc = GetDC(box);
  // A 1-bit pattern brush takes the DC's text colour for its 0 bits and the
  // background colour for its 1 bits: black and white, then OR-ed onto the
  // cells, clears exactly the pixels where the gray pattern is set.
  COLORREF text = SetTextColor(dc, RGB(0, 0, 0)), back = SetBkColor(dc, RGB(255, 255, 255));
  HGDIOBJ old = SelectObject(dc, brush);
  constexpr DWORD kPatternOrDestination = 0x00FA0089;
  PatBlt(dc, r.left, r.top, r.right - r.left, r.bottom - r.top, kPatternOrDestination);
  SelectObject(dc, old);
  SetTextColor(dc, text);
  SetBkColor(dc, back);
  ReleaseDC(box, dc);
  DeleteObject(brush);
  DeleteObject(bits);
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe::lists;

KWE_API void KWE_CALL KWE_ListUpdateVisible(ListHandle lHandle) {
  if (IsLive(lHandle)) UpdateVisible(lHandle);
}

KWE_API void KWE_CALL LDraw(Cell theCell, ListHandle lHandle) {
  int index = IsLive(lHandle) ? IndexOf(lHandle, theCell) : -1;
  if (index >= 0) InvalidateCell(lHandle, index);
}

KWE_API void KWE_CALL LSetDrawingMode(Boolean drawIt, ListHandle lHandle) {
  Slot* s = SlotOf(IsLive(lHandle) ? lHandle : nullptr);
  if (!s) return;
  s->flags = UInt16(drawIt ? s->flags & ~kDrawingOff : s->flags | kDrawingOff);
  if (drawIt && ExtraOf(lHandle).stale) RefillTexts(lHandle);
  SendMessageA(s->listBox, WM_SETREDRAW, drawIt ? TRUE : FALSE, 0);
  if (drawIt)
    InvalidateRect(s->listBox, nullptr, TRUE);
  else
    ValidateRect(s->listBox, nullptr);
}

KWE_API void KWE_CALL LDoDraw(Boolean drawIt, ListHandle lHandle) {
  LSetDrawingMode(drawIt, lHandle);
}

KWE_API void KWE_CALL LSize(SInt16 listWidth, SInt16 listHeight, ListHandle lHandle) {
  if (!IsLive(lHandle)) return;
  ListRec& r = **lHandle;
  if (listWidth >= 1 && listHeight >= 1) {
    r.rView.right = SInt16(r.rView.left + listWidth);
    r.rView.bottom = SInt16(r.rView.top + listHeight);
    if (r.vScroll)
      (*r.vScroll)->contrlRect.bottom = SInt16((*r.vScroll)->contrlRect.top + listHeight);
  }
  PlaceBox(lHandle);
  UpdateWindow(BoxOf(lHandle));
  UpdateVisible(lHandle);
}

KWE_API void KWE_CALL LCellSize(Point cSize, ListHandle lHandle) {
  if (!IsLive(lHandle) || cSize.v <= 0) return;
  ListRec& r = **lHandle;
  r.cellSize.v = cSize.v;
  if (ExtraOf(lHandle).ownerDrawn && cSize.h > 0) r.cellSize.h = cSize.h;
  SendMessageA(BoxOf(lHandle), LB_SETITEMHEIGHT, 0, r.cellSize.v);
  InvalidateRect(BoxOf(lHandle), nullptr, TRUE);
  UpdateVisible(lHandle);
}

KWE_API void KWE_CALL LUpdate(RgnHandle, ListHandle lHandle) {
  if (!IsLive(lHandle)) return;
  HWND box = BoxOf(lHandle);
  ++State().drawNesting;
  InvalidateRect(box, nullptr, TRUE);
  UpdateWindow(box);
  --State().drawNesting;
  if (!(**lHandle).lActive) DimCoveredItem(lHandle);
}

KWE_API void KWE_CALL LScroll(SInt16 dCols, SInt16 dRows, ListHandle lHandle) {
  if (!IsLive(lHandle)) return;
  HWND box = BoxOf(lHandle);
  int rows = std::max(Rows(lHandle), 1);
  int top = int(SendMessageA(box, LB_GETTOPINDEX, 0, 0));
  if (ExtraOf(lHandle).grid) {
    int v = std::max(0, std::min(top + dRows, rows - 1));
    SendMessageA(box, LB_SETTOPINDEX, WPARAM(v), 0);
    if (dCols)
      ScrollColumns(lHandle, SB_THUMBPOSITION,
                    (**lHandle).visible.left - (**lHandle).dataBounds.left + dCols);
  } else {
    int h = std::max(0, std::min(top / rows + dCols, std::max(Columns(lHandle) - 1, 0)));
    int v = std::max(0, std::min(top % rows + dRows, rows - 1));
    SendMessageA(box, LB_SETTOPINDEX, WPARAM(h * rows + v), 0);
  }
  UpdateVisible(lHandle);
}

KWE_API void KWE_CALL LAutoScroll(ListHandle lHandle) {
  if (!IsLive(lHandle) || !((**lHandle).listFlags & 3) || CellCount(lHandle) <= 0) return;
  int first = FirstSelected(lHandle);
  if (first < 0) return;
  UpdateVisible(lHandle);
  if (InRect((**lHandle).visible, CellAt(lHandle, first))) return;
  SendMessageA(BoxOf(lHandle), LB_SETTOPINDEX, WPARAM(ItemOf(lHandle, first)), 0);
  UpdateVisible(lHandle);
}

KWE_API void KWE_CALL LRect(Rect* cellRect, Cell theCell, ListHandle lHandle) {
  if (!cellRect) return;
  *cellRect = Rect{0, 0, 0, 0};
  int index = IsLive(lHandle) ? IndexOf(lHandle, theCell) : -1;
  if (index < 0) return;
  UpdateVisible(lHandle);
  const ListRec& r = **lHandle;
  if (!InRect(r.visible, theCell)) return;
  RECT item{};
  SendMessageA(BoxOf(lHandle), LB_GETITEMRECT, WPARAM(ItemOf(lHandle, index)),
               reinterpret_cast<LPARAM>(&item));
  if (ExtraOf(lHandle).grid) {
    item.left = (theCell.h - r.visible.left) * r.cellSize.h;
    item.right = item.left + r.cellSize.h;
  }
  *cellRect = Rect{SInt16(item.top + r.rView.top), SInt16(item.left + r.rView.left),
                   SInt16(item.bottom + r.rView.top), SInt16(item.right + r.rView.left)};
}

KWE_API void KWE_CALL LActivate(Boolean act, ListHandle lHandle) {
  if (!IsLive(lHandle)) return;
  HWND box = BoxOf(lHandle);
  (**lHandle).lActive = act ? 1 : 0;
  EnableWindow(box, act ? TRUE : FALSE);
  if (act)
    PushSelection(lHandle);
  else if (GetWindowLongA(box, GWL_STYLE) & LBS_EXTENDEDSEL)
    SendMessageA(box, LB_SELITEMRANGE, FALSE, MAKELPARAM(0, 0xFFFF));
  else
    SendMessageA(box, LB_SETCURSEL, WPARAM(-1), 0);
  if (Drawing(lHandle)) InvalidateRect(box, nullptr, TRUE);
}
