// Selection: the cells' selected bits, the list box's selection, and LClick,
// which reads back what the list box made of the user's click.
#include <windows.h>

#include <vector>

#include "Events.h"
#include "frame/host_procedures.h"
#include "text/lists/list_manager.h"

namespace kwe::lists {
namespace {

bool Multiple(ListHandle l) { return (GetWindowLongA(BoxOf(l), GWL_STYLE) & LBS_EXTENDEDSEL) != 0; }

int FirstSelectedFrom(ListHandle l, int start) {
  for (int i = start, n = CellCount(l); i < n; ++i)
    if (Selected(l, i)) return i;
  return -1;
}

bool RunClickLoop(ListHandle l) {
  ListClickLoopProcPtr loop = Rec(l)->lClikLoop;
  if (!loop) return true;
  auto callable =
      reinterpret_cast<ListClickLoopProcPtr>(WrapHostProcedure(reinterpret_cast<ProcPtr>(loop)));
  bool goOn = true;
  while (goOn && (GetAsyncKeyState(VK_LBUTTON) & 0x8000)) goOn = callable() != 0;
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(callable));
  return goOn;
}

void WaitForButtonUp() {
  MSG msg;
  while (GetAsyncKeyState(VK_LBUTTON) & 0x8000) {
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
    Sleep(1);
  }
}

// The cell the single-selection list box's current item stands for: a
// grid's column comes from the point.
int ClickedCell(ListHandle l, Point pt) {
  int item = int(SendMessageA(BoxOf(l), LB_GETCURSEL, 0, 0));
  if (item < 0) return -1;
  if (!ExtraOf(l).grid) return item;
  const ListRec& r = **l;
  POINT origin{0, 0};
  MapWindowPoints(BoxOf(l), GetParent(BoxOf(l)), &origin, 1);
  int x = pt.h - (origin.x + r.port->portRect.left);
  int h = r.visible.left + (r.cellSize.h > 0 ? x / r.cellSize.h : 0);
  return IndexOf(l, Cell{SInt16(r.dataBounds.top + item), SInt16(h)});
}

void ClickSingle(ListHandle l, Point pt) {
  int old = FirstSelectedFrom(l, 0);
  int now = ClickedCell(l, pt);
  if (now >= 0 && (Rec(l)->selFlags & lNoNilHilite) && DataLength(l, now) == 0) now = old;
  if (now != old) {
    if (old >= 0) SetSelectedBit(l, old, false);
    if (now >= 0) SetSelectedBit(l, now, true);
  }
  PushSelection(l);
}

void ClickMultiple(ListHandle l) {
  std::vector<UInt16> before(static_cast<size_t>(CellCount(l)));
  for (int i = 0, n = CellCount(l); i < n; ++i) before[size_t(i)] = Entry(l, i);
  PullSelection(l);
  if (!(Rec(l)->selFlags & lNoNilHilite)) return;
  for (int i = 0, n = CellCount(l); i < n; ++i) {
    if (Selected(l, i) && !(before[size_t(i)] & kSelectedBit) && DataLength(l, i) == 0) {
      for (int j = 0; j < n; ++j) Entry(l, j) = before[size_t(j)];
      PushSelection(l);
      return;
    }
  }
}

}  // namespace
}  // namespace kwe::lists

using namespace kwe::lists;

KWE_API Boolean KWE_CALL LGetSelect(Boolean next, Cell* theCell, ListHandle lHandle) {
  if (!theCell || !IsLive(lHandle)) return false;
  int index = IndexOf(lHandle, *theCell);
  if (index < 0) return false;
  if (!next) return Selected(lHandle, index);
  int found = FirstSelectedFrom(lHandle, index);
  if (found < 0) return false;
  *theCell = CellAt(lHandle, found);
  return true;
}

KWE_API void KWE_CALL LSetSelect(Boolean setIt, Cell theCell, ListHandle lHandle) {
  int index = IsLive(lHandle) ? IndexOf(lHandle, theCell) : -1;
  if (index < 0) return;
  if (!Multiple(lHandle) && setIt)
    for (int i = 0, n = CellCount(lHandle); i < n; ++i) SetSelectedBit(lHandle, i, false);
  SetSelectedBit(lHandle, index, setIt != 0);
  if (!Rec(lHandle)->lActive) return;
  if (Multiple(lHandle))
    SendMessageA(BoxOf(lHandle), LB_SETSEL, setIt ? TRUE : FALSE, ItemOf(lHandle, index));
  else
    PushSelection(lHandle);
}

KWE_API Boolean KWE_CALL LClick(Point pt, UInt16, ListHandle lHandle) {
  if (!IsLive(lHandle)) return false;
  if (!RunClickLoop(lHandle)) return false;
  WaitForButtonUp();
  if (Multiple(lHandle))
    ClickMultiple(lHandle);
  else
    ClickSingle(lHandle, pt);
  ListRec& r = **lHandle;
  int first = FirstSelectedFrom(lHandle, 0);
  if (first >= 0) r.lastClick = CellAt(lHandle, first);
  r.clikLoc = pt;
  r.clikTime = SInt32(TickCount());
  return ExtraOf(lHandle).doubleClick;
}

KWE_API SInt32 KWE_CALL LLastClick(ListHandle lHandle) {
  if (!IsLive(lHandle)) return 0;
  const Cell& c = Rec(lHandle)->lastClick;
  return SInt32((UInt32(UInt16(c.h)) << 16) | UInt16(c.v));
}

KWE_API SInt32 KWE_CALL LongLastClick(ListHandle lHandle) { return LLastClick(lHandle); }
