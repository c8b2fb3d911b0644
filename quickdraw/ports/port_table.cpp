// The port attribute table and the current port, record and DC.
#include <new>

#include "Memory.h"
#include "frame/low_memory.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/port_font.h"

namespace kwe::quickdraw {
namespace {

PortAttr* g_table[kPortSlotCount] = {};
bool g_internalSlotAllowed = false;
GrafPtr g_currentPort = nullptr;
PortAttr* g_currentAttr = nullptr;
HDC g_currentDC = nullptr;

}  // namespace

PortAttr* AttrOfSlot(int slot) {
  return slot >= 0 && slot < kPortSlotCount ? g_table[slot] : nullptr;
}

PortAttr* AttrOf(GrafPtr port) {
  if (!port) return nullptr;
  PortAttr* a = AttrOfSlot(port->patStretch);
  return a && a->port == port ? a : nullptr;
}

GrafPtr CurrentPort() { return g_currentPort; }
PortAttr* CurrentAttr() { return g_currentAttr; }
HDC CurrentDC() { return g_currentDC; }
void SetCurrentDC(HDC dc) { g_currentDC = dc; }
GrafPtr ScreenPort() { return g_table[kScreenPortSlot] ? g_table[kScreenPortSlot]->port : nullptr; }

void MakeCurrent(GrafPtr port) {
  g_currentPort = port;
  g_currentAttr = AttrOf(port);
  lowmem::At<GrafPtr>(lowmem::Slot::ThePort) = port;
}

bool IsColourPort(GrafPtr port) { return port && AsColour(port)->portVersion < 0; }

void AllowInternalSlot(bool allow) { g_internalSlotAllowed = allow; }

// The record lives in a Memory Manager pointer block, as every Toolbox-side
// record of the library does, so a heap check sees it.
PortAttr* AllocateAttr(GrafPtr port, int* slot) {
  int last = g_internalSlotAllowed ? kInternalPortSlot : kInternalPortSlot - 1;
  for (int i = 0; i <= last; ++i) {
    if (g_table[i]) continue;
    Ptr block = NewPtrClear(sizeof(PortAttr));
    if (!block) continue;
    PortAttr* a = new (block) PortAttr();
    a->port = port;
    g_table[i] = a;
    *slot = i;
    return a;
  }
  *slot = -1;
  return nullptr;
}

void FreeAttr(int slot) {
  PortAttr* a = AttrOfSlot(slot);
  if (!a) return;
  g_table[slot] = nullptr;
  if (g_currentAttr == a) g_currentAttr = nullptr;
  a->~PortAttr();
  DisposePtr(reinterpret_cast<Ptr>(a));
}

bool AnyOrdinaryPortOpen() {
  for (int i = kScreenPortSlot + 1; i < kPortSlotCount; ++i)
    if (g_table[i]) return true;
  return false;
}

// Objects the port made are taken out of its DC before they are deleted:
// GDI refuses to delete an object that is selected.
void ResetGdiCache(PortAttr& a) {
  if (a.hdc && (a.pen || a.penPatternBrush)) {
    SelectObject(a.hdc, GetStockObject(BLACK_PEN));
    SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
  }
  if (a.hdc && a.textFont) SelectObject(a.hdc, GetStockObject(SYSTEM_FONT));
  a.selectedRop2 = 0;
  a.selectedBackgroundMode = 0;
  a.selectedBkColorRef = CLR_INVALID;
  a.selectedTextColorRef = CLR_INVALID;
  a.selectedPenStyle = -1;
  a.dirty =
      static_cast<UInt16>((a.dirty | kPenDirty | kTextDirty) & ~(kPenSelected | kNullPenSelected));
  if (a.penPatternBrush) DeleteObject(a.penPatternBrush);
  a.penPatternBrush = nullptr;
  a.brushColourPattern = nullptr;
  a.brush = nullptr;
  if (a.pen) DeleteObject(a.pen);
  a.pen = nullptr;
  a.oldPen = nullptr;
}

// The DC may outlive the port (a window's DC, a foreign DC), so the stock
// objects go back in before the port's own are deleted.
void FlushGdiState(PortAttr& a) {
  if (a.hdc) {
    SelectObject(a.hdc, GetStockObject(NULL_PEN));
    SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
    SelectObject(a.hdc, GetStockObject(SYSTEM_FONT));
  }
  ResetGdiCache(a);
  ReleasePortFont(a);
  a.brush = nullptr;
}

}  // namespace kwe::quickdraw
