// LNew and LDispose: a list's record, cells and slot, its scroll-bar
// records, its definition procedure and the list box that shows it.
#include <windows.h>

#include <cstring>
#include <initializer_list>

#include "Dialogs.h"
#include "Memory.h"
#include "Resources.h"
#include "controls/control_manager.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "text/lists/list_manager.h"
#include "windows/window_manager.h"

namespace kwe::lists {
namespace {

constexpr DWORD kBaseStyle = WS_CHILD | WS_VISIBLE | WS_BORDER | LBS_NOTIFY | LBS_WANTKEYBOARDINPUT;
constexpr SInt32 kVScrollRefCon = 0xFE00, kHScrollRefCon = 0xFE01;
constexpr SInt16 kScrollBarWidth = 16;
constexpr ResType kLdefType = 0x4C444546;  // 'LDEF'

void KWE_CALL TextProcedure(SInt16, Boolean, Rect*, Cell, SInt16, SInt16, ListHandle) {}

struct Shape {
  bool grid = false;
  bool severalColumns = false;  // slot flag: the several-column form unless a grid
  DWORD style = kBaseStyle;
};

Shape ShapeFor(int rows, int columns, SInt16 theProc, UInt16 options, bool scrollHoriz,
               bool scrollVert, bool onlyOne) {
  Shape s;
  s.grid = theProc == 0 && columns > 1 && rows != 1 && !(options & kweListNoGrid);
  s.severalColumns = (options & (kweListNoGrid | kweListSeveralColumns)) || scrollHoriz ||
                     (!s.grid && columns > 1);
  if (s.grid) {
    if (scrollHoriz) s.style |= WS_HSCROLL;
    if (scrollVert) s.style |= WS_VSCROLL;
  } else {
    if (!onlyOne) s.style |= LBS_EXTENDEDSEL;
    if (s.severalColumns) {
      s.style |= LBS_MULTICOLUMN;
      if (scrollHoriz) s.style |= WS_HSCROLL;
      if ((options & kweListNoGrid) && scrollHoriz) s.style |= LBS_NOINTEGRALHEIGHT;
    } else if (scrollVert) {
      s.style |= WS_VSCROLL;
    }
  }
  if (theProc != 0 || s.grid) s.style |= LBS_OWNERDRAWFIXED;
  // A list that fits keeps its scroll bars, disabled, as the Toolbox's
  // lists do; the list boxes of Windows 3.0 (version word 3) lack the style.
  if (TheSession().version.versionWord > 3) s.style |= LBS_DISABLENOSCROLL;
  return s;
}

HFONT FontFor(WindowPtr w) {
  Session& s = TheSession();
  if (windows::Peek(w)->windowKind == dialogKind) return s.fonts[s.dialogFont].font;
  SInt16 size = w->txSize;
  return s.fonts[size >= 12 || size == 0 ? kSystemFont : kSmallSystemFont].font;
}

SInt16 DefaultCellHeight() {
  HDC dc = GetDC(nullptr);
  HGDIOBJ old = SelectObject(dc, TheSession().fonts[kSystemFont].font);
  TEXTMETRICA tm{};
  GetTextMetricsA(dc, &tm);
  SelectObject(dc, old);
  ReleaseDC(nullptr, dc);
  return SInt16(tm.tmAscent + tm.tmDescent + tm.tmInternalLeading);
}

ProcPtr DefinitionFor(SInt16 theProc, bool grid, bool* wrapped) {
  *wrapped = false;
  if (theProc == 0) return grid ? GridProcedure() : reinterpret_cast<ProcPtr>(&TextProcedure);
  if (ProcPtr p = KWE_CodeResource(3, kLdefType, theProc, nullptr)) return p;
  Handle h = GetResource(kLdefType, theProc);
  ProcPtr stored = nullptr;
  if (!h || GetHandleSize(h) < Size(2 + sizeof stored)) return nullptr;
  std::memcpy(&stored, *h + 2, sizeof stored);
  if (!stored) return nullptr;
  *wrapped = true;
  return WrapHostProcedure(stored);
}

// The dialog user item under the list stops showing its own window.
HWND HideCoveredItem(HWND parent, const RECT& place) {
  POINT centre{(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  HWND child = ChildWindowFromPointEx(parent, centre, CWP_SKIPINVISIBLE);
  if (!child || child == parent ||
      GetWindowLongPtrA(child, GWLP_WNDPROC) != reinterpret_cast<LONG_PTR>(&K_UserItemWndProc))
    return nullptr;
  ShowWindow(child, SW_HIDE);
  return child;
}

ControlHandle ScrollBarBeside(WindowPtr w, Rect r, SInt32 refCon) {
  return NewControl(w, &r, reinterpret_cast<ConstStr255Param>(""), false, 0, 0, 0, scrollBarProc,
                    refCon);
}

HWND MakeListBox(ListHandle l, HWND parent, const Shape& shape, int slot) {
  DWORD exStyle = TheSession().version.NewShell() ? WS_EX_CLIENTEDGE : 0;
  int id = (shape.grid ? 0xFE00 : 0xFF00) | slot;
  HWND box = CreateWindowExA(exStyle, "listbox", "", shape.style, 0, 0, 0, 0, parent,
                             reinterpret_cast<HMENU>(INT_PTR(id)), TheSession().instance, nullptr);
  if (!box) return nullptr;
  WNDPROC previous = reinterpret_cast<WNDPROC>(
      SetWindowLongPtrA(box, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&K_ListBoxWndProc)));
  if (!State().listBoxProc) State().listBoxProc = previous;
  SendMessageA(box, WM_SETFONT, reinterpret_cast<WPARAM>(FontFor(Rec(l)->port)), FALSE);
  SendMessageA(box, LB_SETITEMHEIGHT, 0, Rec(l)->cellSize.v);
  return box;
}

void FillItems(ListHandle l, HWND box, bool scrollHoriz) {
  const ListRec& r = **l;
  if (scrollHoriz) {
    SendMessageA(box, LB_SETCOLUMNWIDTH, r.cellSize.h, 0);
    SendMessageA(box, LB_SETHORIZONTALEXTENT, r.cellSize.h * Columns(l), 0);
  }
  SendMessageA(box, WM_SETREDRAW, FALSE, 0);
  int items = ExtraOf(l).grid ? Rows(l) : CellCount(l);
  SendMessageA(box, LB_INITSTORAGE, items, 0);
  for (int i = 0; i < items; ++i)
    SendMessageA(box, LB_INSERTSTRING, WPARAM(-1), ExtraOf(l).ownerDrawn ? 0 : LPARAM(""));
  if (!(SlotOf(l)->flags & kDrawingOff)) SendMessageA(box, WM_SETREDRAW, TRUE, 0);
}

bool ValidBounds(const Rect* rView, const ListBounds* b, WindowPtr w) {
  if (!rView || !b || !w || !windows::IsLibraryWindow(w)) return false;
  if (b->right < b->left || b->bottom < b->top) return false;
  // Every cell takes at least its 2-byte length in cells.
  return (b->right - b->left) * (b->bottom - b->top) * 2 <= kMaxCellBytes;
}

void TakeApart(ListHandle l) {
  CallDefinition(l, lCloseMsg, false, &Rec(l)->rView, Cell{0, 0});
  Extra& extra = ExtraOf(l);
  if (extra.wrappedDefinition) ReleaseHostProcedure(Rec(l)->listDefProc);
  for (ControlHandle c : {Rec(l)->vScroll, Rec(l)->hScroll})
    if (c && controls::IsLiveControl(c)) DisposeControl(c);
  HWND box = BoxOf(l);
  if (IsWindow(box)) DestroyWindow(box);
  if (extra.coveredItem && IsWindow(extra.coveredItem)) ShowWindow(extra.coveredItem, SW_SHOW);
  if (Table()[UInt8(Rec(l)->lReserved)].dragHook)
    ReleaseHostProcedure(Table()[UInt8(Rec(l)->lReserved)].dragHook);
  FreeSlot(UInt8(Rec(l)->lReserved));
  DisposeHandle(reinterpret_cast<Handle>(Rec(l)->cells));
  DisposeHandle(reinterpret_cast<Handle>(l));
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe;
using namespace kwe::lists;

KWE_API ListHandle KWE_CALL LNew(const Rect* rView, const ListBounds* dataBounds, Point cSize,
                                 SInt16 theProc, WindowPtr theWindow, Boolean drawIt, Boolean,
                                 Boolean scrollHoriz, Boolean scrollVert) {
  if (!ValidBounds(rView, dataBounds, theWindow)) return nullptr;
  int rows = dataBounds->bottom - dataBounds->top, columns = dataBounds->right - dataBounds->left;
  int count = rows * columns;
  auto l = reinterpret_cast<ListHandle>(NewHandleClear(RecordBytes(count)));
  Handle cells = l ? NewHandleClear(2 * count) : nullptr;
  int slot = cells ? TakeSlot(l) : -1;
  if (slot < 0) {
    if (cells) DisposeHandle(cells);
    if (l) DisposeHandle(reinterpret_cast<Handle>(l));
    return nullptr;
  }
  UInt16 options = State().nextOptions;
  State().nextOptions = kDefaultNextOptions;
  ListRec& r = **l;
  r.rView = *rView;
  r.dataBounds = *dataBounds;
  r.port = theWindow;
  r.cells = reinterpret_cast<DataHandle>(cells);
  r.maxIndex = SInt16(count - 1);
  r.lReserved = SInt8(slot);
  r.lActive = 1;
  r.selFlags = SInt8(options & 0xFF);
  int width = rView->right - rView->left;
  r.cellSize.v = cSize.v && cSize.h ? cSize.v : DefaultCellHeight();
  r.cellSize.h =
      cSize.v && cSize.h ? cSize.h : SInt16(columns ? (width + columns / 2) / columns : width);
  for (int i = 0; i < count; ++i) Entry(l, i) = UInt16(2 * (i + 1));

  Shape shape =
      ShapeFor(rows, columns, theProc, options, scrollHoriz, scrollVert, (options & 0x80) != 0);
  Extra& extra = ExtraOf(l);
  extra.grid = shape.grid;
  Slot& s = *(Table() + slot);
  s.flags = UInt16((drawIt ? 0 : kDrawingOff) | (shape.severalColumns ? kSeveralColumns : 0) |
                   (options & kweListIgnoreTyping ? kIgnoreTyping : 0) |
                   (options & kweListIgnoreClicks ? kIgnoreClicks : 0) |
                   (options & kweListClicksToWindow ? kClicksToWindow : 0));
  if (scrollVert)
    r.vScroll = ScrollBarBeside(
        theWindow,
        Rect{rView->top, rView->right, rView->bottom, SInt16(rView->right + kScrollBarWidth - 1)},
        kVScrollRefCon);
  if (scrollHoriz)
    r.hScroll = ScrollBarBeside(
        theWindow,
        Rect{rView->bottom, rView->left, SInt16(rView->bottom + kScrollBarWidth - 1), rView->right},
        kHScrollRefCon);
  bool wrapped = false;
  r.listDefProc = DefinitionFor(theProc, shape.grid, &wrapped);
  if (!r.listDefProc) r.listDefProc = DefinitionFor(0, shape.grid, &wrapped);
  extra.wrappedDefinition = wrapped;
  extra.ownerDrawn = (shape.style & LBS_OWNERDRAWFIXED) != 0;

  HWND parent = windows::HwndOf(theWindow);
  HWND box = MakeListBox(l, parent, shape, slot);
  if (!box) {
    TakeApart(l);
    return nullptr;
  }
  s.listBox = box;
  FillItems(l, box, scrollHoriz);
  PlaceBox(l);
  RECT placed;
  GetWindowRect(box, &placed);
  MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&placed), 2);
  extra.coveredItem = HideCoveredItem(parent, placed);
  CallDefinition(l, lInitMsg, false, &r.rView, Cell{0, 0});
  return l;
}

KWE_API void KWE_CALL LDispose(ListHandle lHandle) {
  if (IsLive(lHandle)) TakeApart(lHandle);
}

KWE_API UInt16 KWE_CALL KWE_LSetSelFlags(UInt16 flags) {
  State().nextOptions = flags;
  return flags;
}

KWE_API HWND KWE_CALL KWE_GetHWNDFromListHandle(ListHandle lHandle) { return BoxOf(lHandle); }
