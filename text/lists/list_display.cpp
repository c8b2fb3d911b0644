// Where a list shows: the list box's place over rView, the visible cells,
// the owner-drawn items of grids and 'LDEF' lists, and the calls that size,
// scroll, draw and activate a list.
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "KWEPorts.h"
#include "Memory.h"
#include "memory/character_conversion.h"
#include "text/lists/list_manager.h"

namespace kwe::lists {
namespace {

HDC g_itemDC = nullptr;  // the DC of the WM_DRAWITEM being answered

int Ceiling(int a, int b) { return b > 0 ? (a + b - 1) / b : 0; }

// The list box's client origin in the port's local coordinates.
POINT ClientOrigin(ListHandle l) {
  POINT p{0, 0};
  HWND box = BoxOf(l);
  MapWindowPoints(box, GetParent(box), &p, 1);
  const Rect& pr = Rec(l)->port->portRect;
  return POINT{p.x + pr.left, p.y + pr.top};
}

void KWE_CALL Grid(SInt16 message, Boolean selected, Rect* r, Cell c, SInt16, SInt16,
                   ListHandle l) {
  if ((message != lDrawMsg && message != lHiliteMsg) || !r) return;
  HWND box = BoxOf(l);
  HDC dc = g_itemDC ? g_itemDC : GetDC(box);
  POINT origin = ClientOrigin(l);
  RECT cell{r->left - origin.x, r->top - origin.y, r->right - origin.x, r->bottom - origin.y};
  COLORREF back = GetSysColor(selected ? COLOR_HIGHLIGHT : COLOR_WINDOW);
  COLORREF fore = GetSysColor(selected ? COLOR_HIGHLIGHTTEXT : COLOR_WINDOWTEXT);
  HBRUSH brush = CreateSolidBrush(back);
  FillRect(dc, &cell, brush);
  DeleteObject(brush);
  UInt8 text[256];
  SInt16 length = 255;
  LGetCell(text, &length, c, l);
  text::MacToAnsiBytes(text, text, size_t(length));
  int mode = SetBkMode(dc, TRANSPARENT);
  COLORREF oldFore = SetTextColor(dc, fore);
  UINT align = SetTextAlign(dc, TA_BASELINE | TA_LEFT);
  ExtTextOutA(dc, cell.left + 3, cell.top + 12, ETO_CLIPPED, &cell,
              reinterpret_cast<const char*>(text), UINT(length), nullptr);
  SetTextAlign(dc, align);
  SetTextColor(dc, oldFore);
  SetBkMode(dc, mode);
  if (!g_itemDC) ReleaseDC(box, dc);
}

// The cell's rectangle in the list box's client area (empty for a cell of a
// grid's column out of view).
RECT ItemRect(ListHandle l, int index) {
  RECT r{};
  Cell c = CellAt(l, index);
  SendMessageA(BoxOf(l), LB_GETITEMRECT, WPARAM(ItemOf(l, index)), reinterpret_cast<LPARAM>(&r));
  if (ExtraOf(l).grid) {
    const ListRec& rec = **l;
    if (c.h < rec.visible.left || c.h >= rec.visible.right) return RECT{};
    r.left = (c.h - rec.visible.left) * rec.cellSize.h;
    r.right = r.left + rec.cellSize.h;
  }
  return r;
}

// A text cell as the list box shows it, in text (kept by the caller, so that
// a refill of thousands of cells reuses one buffer).
const char* AnsiText(ListHandle l, int index, std::string& text) {
  text.assign(size_t(DataLength(l, index)), '\0');
  text::MacToAnsiBytes(reinterpret_cast<const UInt8*>(*Rec(l)->cells + DataOffset(l, index)),
                       reinterpret_cast<UInt8*>(&text[0]), text.size());
  return text.c_str();
}

bool MultipleSelection(HWND box) { return (GetWindowLongA(box, GWL_STYLE) & LBS_EXTENDEDSEL) != 0; }

}  // namespace

ProcPtr GridProcedure() { return reinterpret_cast<ProcPtr>(&Grid); }

int ItemOf(ListHandle l, int index) {
  return ExtraOf(l).grid ? CellAt(l, index).v - Rec(l)->dataBounds.top : index;
}

void CallDefinition(ListHandle l, SInt16 message, bool selected, Rect* r, Cell c) {
  auto procedure = reinterpret_cast<ListDefProcPtr>(Rec(l)->listDefProc);
  if (!procedure) return;
  int index = IndexOf(l, c);
  SInt16 offset = index < 0 ? 0 : SInt16(DataOffset(l, index));
  SInt16 length = index < 0 ? 0 : DataLength(l, index);
  GrafPtr saved = nullptr;
  GetPort(&saved);
  SetPort(Rec(l)->port);
  // An 'LDEF' answering the list box's WM_DRAWITEM draws into the list
  // box's own DC, moved so that the port's coordinates land on the item:
  // the window's DC would paint over the list box, outside the items too.
  HDC portDC = g_itemDC && !ExtraOf(l).grid ? KWE_SwaphDC(nullptr, false) : nullptr;
  int savedDC = portDC ? SaveDC(g_itemDC) : 0;
  if (portDC) {
    POINT origin{0, 0};
    MapWindowPoints(BoxOf(l), GetParent(BoxOf(l)), &origin, 1);
    SetViewportOrgEx(g_itemDC, -origin.x, -origin.y, nullptr);
    KWE_SwaphDC(g_itemDC, true);
  }
  procedure(message, selected, r, c, offset, length, l);
  if (portDC) {
    KWE_SwaphDC(portDC, false);
    RestoreDC(g_itemDC, savedDC);
  }
  SetPort(saved);
}

void PlaceBox(ListHandle l) {
  HWND box = BoxOf(l);
  const ListRec& rec = **l;
  const Rect& pr = rec.port->portRect;
  RECT r{rec.rView.left - pr.left - 1, rec.rView.top - pr.top - 1, rec.rView.right - pr.left + 1,
         rec.rView.bottom - pr.top + 1};
  LONG style = GetWindowLongA(box, GWL_STYLE);
  if (style & WS_VSCROLL) r.right += GetSystemMetrics(SM_CXVSCROLL) - 1;
  if (style & WS_HSCROLL) r.bottom += GetSystemMetrics(SM_CYHSCROLL) - 1;
  POINT origin = ClientOrigin(l);
  UINT flags = SWP_NOZORDER | SWP_NOACTIVATE;
  if (origin.x == rec.rView.left && origin.y == rec.rView.top) flags |= SWP_NOMOVE;
  ExtraOf(l).placing = true;
  SetWindowPos(box, nullptr, r.left, r.top, r.right - r.left, r.bottom - r.top, flags);
  ExtraOf(l).placing = false;
}

void UpdateVisible(ListHandle l) {
  ListRec& r = **l;
  int top = int(SendMessageA(BoxOf(l), LB_GETTOPINDEX, 0, 0));
  int rows = std::max(Rows(l), 1);
  int h = ExtraOf(l).grid ? r.visible.left - r.dataBounds.left : top / rows;
  int v = ExtraOf(l).grid ? top : top % rows;
  h = std::max(0, std::min(h, std::max(Columns(l) - 1, 0)));
  int viewRows = Ceiling(r.rView.bottom - r.rView.top, r.cellSize.v);
  int viewColumns = Ceiling(r.rView.right - r.rView.left, r.cellSize.h);
  r.visible.top = SInt16(r.dataBounds.top + v);
  r.visible.left = SInt16(r.dataBounds.left + h);
  r.visible.bottom = SInt16(std::min<int>(r.visible.top + viewRows, r.dataBounds.bottom));
  r.visible.right = SInt16(std::min<int>(r.visible.left + viewColumns, r.dataBounds.right));
}

void InvalidateCell(ListHandle l, int index) {
  RECT r = ItemRect(l, index);
  if (!IsRectEmpty(&r)) InvalidateRect(BoxOf(l), &r, TRUE);
}

void RefreshItem(ListHandle l, int index) {
  HWND box = BoxOf(l);
  Extra& e = ExtraOf(l);
  int item = ItemOf(l, index);
  if (e.grid) {
    InvalidateCell(l, index);
    return;
  }
  if (e.ownerDrawn) {
    Ptr data = *Rec(l)->cells + DataOffset(l, index);
    SendMessageA(box, LB_SETITEMDATA, WPARAM(item), reinterpret_cast<LPARAM>(data));
    InvalidateCell(l, index);
    return;
  }
  // While drawing is off the texts wait for LSetDrawingMode to turn it on
  // and refill the list box in one pass: replacing one item is a deletion
  // and an insertion, each moving the whole item array of the list box.
  if (SlotOf(l)->flags & kDrawingOff) {
    e.stale = true;
    return;
  }
  std::string text;
  AnsiText(l, index, text);
  SendMessageA(box, WM_SETREDRAW, FALSE, 0);
  LRESULT caret = SendMessageA(box, LB_GETCARETINDEX, 0, 0);
  bool selected = SendMessageA(box, LB_GETSEL, WPARAM(item), 0) > 0;
  SendMessageA(box, LB_DELETESTRING, WPARAM(item), 0);
  SendMessageA(box, LB_INSERTSTRING, WPARAM(item), reinterpret_cast<LPARAM>(text.c_str()));
  if (selected && MultipleSelection(box))
    SendMessageA(box, LB_SETSEL, TRUE, item);
  else if (selected)
    SendMessageA(box, LB_SETCURSEL, WPARAM(item), 0);
  if (MultipleSelection(box) && caret >= 0) SendMessageA(box, LB_SETCARETINDEX, WPARAM(caret), 0);
  SendMessageA(box, WM_SETREDRAW, TRUE, 0);
  InvalidateCell(l, index);
}

void RefillTexts(ListHandle l) {
  HWND box = BoxOf(l);
  ExtraOf(l).stale = false;
  LRESULT top = SendMessageA(box, LB_GETTOPINDEX, 0, 0);
  LRESULT caret = SendMessageA(box, LB_GETCARETINDEX, 0, 0);
  SendMessageA(box, LB_RESETCONTENT, 0, 0);
  int n = CellCount(l);
  SendMessageA(box, LB_INITSTORAGE, WPARAM(n),
               GetHandleSize(reinterpret_cast<Handle>(Rec(l)->cells)));
  // Straight to the list box's own procedure: K_ListBoxWndProc adds nothing
  // to an insertion, and under Wine passing through it costs about as much
  // as the insertion itself, ten thousand times over for a long list.
  WNDPROC own = State().listBoxProc;
  std::string text;
  for (int i = 0; i < n; ++i) {
    auto item = reinterpret_cast<LPARAM>(AnsiText(l, i, text));
    if (own)
      CallWindowProcA(own, box, LB_INSERTSTRING, WPARAM(-1), item);
    else
      SendMessageA(box, LB_INSERTSTRING, WPARAM(-1), item);
  }
  PushSelection(l);
  if (MultipleSelection(box) && caret >= 0) SendMessageA(box, LB_SETCARETINDEX, WPARAM(caret), 0);
  SendMessageA(box, LB_SETTOPINDEX, WPARAM(top), 0);
}

void PushSelection(ListHandle l) {
  HWND box = BoxOf(l);
  if (!Rec(l)->lActive) return;
  if (MultipleSelection(box)) {
    SendMessageA(box, LB_SETSEL, FALSE, -1);
    for (int i = 0, n = CellCount(l); i < n; ++i)
      if (Selected(l, i)) SendMessageA(box, LB_SETSEL, TRUE, i);
    return;
  }
  int first = -1;
  for (int i = 0, n = CellCount(l); i < n && first < 0; ++i)
    if (Selected(l, i)) first = i;
  SendMessageA(box, LB_SETCURSEL, first < 0 ? WPARAM(-1) : WPARAM(ItemOf(l, first)), 0);
  if (ExtraOf(l).grid) InvalidateRect(box, nullptr, TRUE);
}

void PullSelection(ListHandle l) {
  HWND box = BoxOf(l);
  for (int i = 0, n = CellCount(l); i < n; ++i) SetSelectedBit(l, i, false);
  int count = int(SendMessageA(box, LB_GETSELCOUNT, 0, 0));
  if (count <= 0) return;
  std::vector<int> items(size_t(count), 0);
  SendMessageA(box, LB_GETSELITEMS, WPARAM(count), reinterpret_cast<LPARAM>(items.data()));
  for (int item : items)
    if (item >= 0 && item < CellCount(l)) SetSelectedBit(l, item, true);
}

bool DrawItem(const DRAWITEMSTRUCT& dis) {
  ListHandle l = ListOfBox(dis.hwndItem);
  if (!l || dis.CtlType != ODT_LISTBOX) return false;
  if (int(dis.itemID) < 0) return true;
  POINT origin = ClientOrigin(l);
  HDC saved = g_itemDC;
  g_itemDC = dis.hDC;
  ListRec& r = **l;
  if (ExtraOf(l).grid) {
    UpdateVisible(l);
    SInt16 v = SInt16(r.dataBounds.top + int(dis.itemID));
    for (SInt16 h = r.visible.left; h < r.visible.right; ++h) {
      int left = int(origin.x) + (h - r.visible.left) * r.cellSize.h;
      Rect cell{SInt16(origin.y + dis.rcItem.top), SInt16(left),
                SInt16(origin.y + dis.rcItem.bottom), SInt16(left + r.cellSize.h)};
      int index = IndexOf(l, Cell{v, h});
      CallDefinition(l, lDrawMsg, index >= 0 && Selected(l, index), &cell, Cell{v, h});
    }
  } else {
    Rect cell{SInt16(origin.y + dis.rcItem.top), SInt16(origin.x + dis.rcItem.left),
              SInt16(origin.y + dis.rcItem.bottom), SInt16(origin.x + dis.rcItem.right)};
    CallDefinition(l, lDrawMsg, (dis.itemState & ODS_SELECTED) != 0, &cell,
                   CellAt(l, int(dis.itemID)));
  }
  g_itemDC = saved;
  return true;
}

void ScrollColumns(ListHandle l, int code, int thumb) {
  ListRec& r = **l;
  int left = r.visible.left - r.dataBounds.left;
  int shown = r.visible.right - r.visible.left;
  int toRight = r.dataBounds.right - r.visible.right;
  int by = 0;
  switch (code) {
    case SB_LINELEFT: by = left > 0 ? -1 : 0; break;
    case SB_LINERIGHT: by = toRight > 0 ? 1 : 0; break;
    case SB_PAGELEFT: by = left > 0 ? -std::min(shown - 1, left) : 0; break;
    case SB_PAGERIGHT: by = toRight > 0 ? std::min(shown - 1, toRight) : 0; break;
    case SB_THUMBPOSITION:
    case SB_THUMBTRACK: by = thumb - left; break;
    default: return;
  }
  by = std::max(-left, std::min(by, Columns(l) - 1 - left));
  if (by == 0) return;
  r.visible.left = SInt16(r.visible.left + by);
  r.visible.right = SInt16(r.visible.right + by);
  HWND box = BoxOf(l);
  ScrollWindow(box, -by * r.cellSize.h, 0, nullptr, nullptr);
  SetScrollPos(box, SB_HORZ, r.visible.left - r.dataBounds.left, TRUE);
  UpdateVisible(l);
}

}  // namespace kwe::lists
