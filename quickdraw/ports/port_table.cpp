// The port attribute table and the current port, record and DC.
#include <new>

#include "Memory.h"
#include "frame/low_memory.h"
#include "quickdraw/offscreen/offscreen_bitmaps.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/port_font.h"

namespace kwe::quickdraw {
namespace {

PortAttr* g_table[kPortSlotCount] = {};
bool g_internalSlotAllowed = false;
GrafPtr g_currentPort = nullptr;
PortAttr* g_currentAttr = nullptr;
HDC g_currentDC = nullptr;
bool g_screenDCDeferred = false;

// Which port last became current on each DC that ports have shared lately
// (the shared memory DC, a DC put under several ports): a port that comes
// back to a DC another used since cannot trust what it last selected there.
struct DCUser {
  HDC dc = nullptr;
  PortAttr* attr = nullptr;
};
constexpr int kDCUsers = 8;
DCUser g_dcUsers[kDCUsers];
int g_nextDCUser = 0;

// Another port may have drawn into the DC: the port's own objects stay
// its own, but each is selected and each DC setting made again when next
// needed.
void ForgetSelections(PortAttr& a) {
  a.selectedRop2 = 0;
  a.selectedBackgroundMode = 0;
  a.selectedBkColorRef = CLR_INVALID;
  a.selectedTextColorRef = CLR_INVALID;
  a.selectedPenStyle = -1;
  a.dirty = static_cast<UInt16>(a.dirty & ~(kPenSelected | kNullPenSelected));
  a.brush = nullptr;
}

void NoteDCUser(PortAttr* a) {
  if (!a || !a->hdc) return;
  for (DCUser& u : g_dcUsers) {
    if (u.dc != a->hdc) continue;
    if (u.attr != a) ForgetSelections(*a);
    u.attr = a;
    return;
  }
  // A DC not seen lately: who used it meanwhile is not known.
  ForgetSelections(*a);
  g_dcUsers[g_nextDCUser] = DCUser{a->hdc, a};
  g_nextDCUser = (g_nextDCUser + 1) % kDCUsers;
}

// The screen port became current without its DC: SetPort takes it now.
void TakeDeferredScreenDC() {
  g_screenDCDeferred = false;
  SetPort(g_currentPort);
}

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
PortAttr* CurrentAttr() {
  if (g_screenDCDeferred) TakeDeferredScreenDC();
  return g_currentAttr;
}
HDC CurrentDC() {
  if (g_screenDCDeferred) TakeDeferredScreenDC();
  return g_currentDC;
}
void SetCurrentDC(HDC dc) { g_currentDC = dc; }
void MakeScreenCurrentDeferringDC() {
  MakeCurrent(ScreenPort());
  g_currentDC = nullptr;
  g_screenDCDeferred = g_currentPort != nullptr;
}

GrafPtr ScreenPort() { return g_table[kScreenPortSlot] ? g_table[kScreenPortSlot]->port : nullptr; }

void MakeCurrent(GrafPtr port) {
  if (port != g_currentPort) {
    if (g_currentAttr && g_currentAttr->bitsEntry > 0) PortLeft(g_currentPort);
    PortAttr* next = AttrOf(port);
    if (next && next->bitsEntry > 0) PortEntered(port);
  }
  g_screenDCDeferred = false;
  g_currentPort = port;
  g_currentAttr = AttrOf(port);
  NoteDCUser(g_currentAttr);
  lowmem::At<GrafPtr>(lowmem::Slot::ThePort) = port;
}

// A colour port's portVersion has both top bits set (0xC000, a GWorld's
// 0xE000), in the place of a plain port's portBits.rowBytes, whose top bits
// are clear for a bitmap and only bit 15 for a pixel map handed to
// SetPortBits: bit 15 alone does not make a colour port, as for CopyBits.
bool IsColourPort(GrafPtr port) {
  return port && (static_cast<UInt16>(AsColour(port)->portVersion) & 0xC000) == 0xC000;
}

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
  for (DCUser& u : g_dcUsers)
    if (u.attr == a) u = DCUser{};
  a->~PortAttr();
  DisposePtr(reinterpret_cast<Ptr>(a));
}

bool AnyOrdinaryPortOpen() {
  for (int i = kScreenPortSlot + 1; i < kPortSlotCount; ++i)
    if (g_table[i]) return true;
  return false;
}

void DeselectGdiObjects(PortAttr& a) {
  if (a.hdc && (a.pen || a.penPatternBrush)) {
    SelectObject(a.hdc, GetStockObject(BLACK_PEN));
    SelectObject(a.hdc, GetStockObject(WHITE_BRUSH));
  }
  ForgetSelections(a);
}

// Objects the port made are taken out of its DC before they are deleted:
// GDI refuses to delete an object that is selected.
void ResetGdiCache(PortAttr& a) {
  DeselectGdiObjects(a);
  if (a.hdc && a.textFont) SelectObject(a.hdc, GetStockObject(SYSTEM_FONT));
  a.dirty = static_cast<UInt16>(a.dirty | kPenDirty | kTextDirty);
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
