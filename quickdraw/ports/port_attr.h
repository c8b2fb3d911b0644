// The library's side record of an open port (PortAttr), the 64-slot table
// that holds them, and the drawing state every QuickDraw call starts from:
// the current port, its record and the current device context.
#pragma once
#include <windows.h>

#include <cstdint>

#include "Quickdraw.h"

namespace kwe::quickdraw {

constexpr int kPortSlotCount = 64;
constexpr int kInternalPortSlot = 63;  // only while an internal port is opened
constexpr int kScreenPortSlot = 0;

// PortAttr.flags
constexpr UInt16 kColourPortFlag = 0x0002;
constexpr UInt16 kOwnsDcFlag = 0x0004;
constexpr UInt16 kDialogFontFlag = 0x0010;
constexpr UInt16 kWindowPortFlag = 0x0020;
constexpr UInt16 kPixMapDcFlag = 0x0080;
// Library-private: set by the per-port switch of KWE_SetFlags.
constexpr UInt16 kRebuildSwitchFlag = 0x4000;

// PortAttr.dirty
constexpr UInt16 kPenDirty = 0x0001;
constexpr UInt16 kTextDirty = 0x0002;
constexpr UInt16 kNullPenSelected = 0x4000;
constexpr UInt16 kPenSelected = 0x8000;

constexpr Fixed kFixedOne = 0x00010000;

// Local to device coordinates; kept together so that the offscreen and
// printing code can save and restore it as one block.
struct CoordinateMapping {
  int32_t translateActive = 0;
  int32_t scaleActive = 0;
  int32_t sourceExtentH = 1, sourceExtentV = 1;
  int32_t originH = 0, originV = 0;  // portRect.topLeft, as SetOrigin set it
  int32_t transform[2] = {0, 0};     // printing only
  int32_t destExtentH = 1, destExtentV = 1;
  int32_t destOriginH = 0, destOriginV = 0;
};

struct PortAttr {
  UInt16 flags = 0;
  GrafPtr port = nullptr;
  HWND hwnd = nullptr;
  HDC hdc = nullptr;
  HDC ownedDC = nullptr;  // obtained for the port; stays its own while another DC is swapped in

  CoordinateMapping mapping;
  int32_t devicePenH = 0, devicePenV = 0;
  int32_t devicePenWidth = 1, devicePenHeight = 1;

  // What the port wants from GDI, and what was last put into the DC.
  int16_t penRop2 = R2_COPYPEN;  // derived from pnMode
  int16_t selectedRop2 = 0;      // 0: not yet set in the DC
  int16_t penBackgroundMode = OPAQUE;
  int16_t textBackgroundMode = TRANSPARENT;
  int16_t selectedBackgroundMode = 0;
  UInt16 dirty = kPenDirty;
  HPEN pen = nullptr;
  COLORREF penColour = 0;  // what pen was made with
  HBRUSH brush = nullptr;
  HPEN oldPen = nullptr;  // what the DC held before the port's first pen

  RGBColor fgRGB{0, 0, 0};
  RGBColor bkRGB{0xFFFF, 0xFFFF, 0xFFFF};
  int32_t penModeUnsupported = 0;
  int32_t clipEmpty = 0;
  int16_t polygonPointCount = 0;
  COLORREF fgColorRef = 0;
  COLORREF bkColorRef = 0xFFFFFF;
  COLORREF selectedBkColorRef = CLR_INVALID;
  COLORREF selectedTextColorRef = CLR_INVALID;

  int16_t visible = 1;
  int16_t penStyle = PS_SOLID;  // 0 solid, 2 patterned
  int16_t selectedPenStyle = -1;
  uint8_t deviceDepth = 1;
  uint8_t onePixelPensOnly = 0;
  int32_t penScaleOn = 0;
  Fixed penScale = kFixedOne;

  int16_t brushAlignCount = 0;
  int16_t brushOriginH = 0, brushOriginV = 0;
  // The offscreen bitmap table entry the port draws into (1 to 32), 0 for
  // none, -1 when its bits in memory cannot be drawn into.
  int16_t bitsEntry = 0;
  int32_t offscreenActive = 0;
  int16_t offscreenH = 0, offscreenV = 0;
  Point savedTopLeft{0, 0};

  PixPatHandle penPixPat = nullptr;  // the port's own, made on demand
  PixPatHandle backPixPat = nullptr;
  PixPatHandle fillPixPat = nullptr;
  HFONT font = nullptr;
  HBRUSH penPatternBrush = nullptr;  // cached brush of the pen pattern
  Pattern penBrushPattern{};         // what penPatternBrush was made from
  COLORREF penBrushFg = CLR_INVALID, penBrushBk = CLR_INVALID;
  PixPatHandle brushColourPattern = nullptr;  // the full-colour pattern it was made from

  // --- Text (port_font.h): the font realised for txFont, txSize and txFace.
  // font above is the port's own font object; textFont is what its text is
  // drawn in, that object or one of the library's preset fonts.
  HFONT textFont = nullptr;
  LOGFONTA textLogFont{};  // what font was made from
  TEXTMETRICA textMetrics{};
  UInt16 textFlags = 0;       // kTrueTypeText, kExtendedText, kShiftJisText
  UInt32 textFontSerial = 0;  // new at every realisation: what measured widths belong to
  const Fixed* extendedWidths = nullptr;  // KWE_ExtDrawText's table; null: the Font Manager's
  SInt32 extendedExtra = 0;
};

// --- The table and the current state. ---
PortAttr* AttrOfSlot(int slot);
// The record of a port, or null for a port without one (never opened,
// closed, or opened when no slot was free).
PortAttr* AttrOf(GrafPtr port);
GrafPtr CurrentPort();
PortAttr* CurrentAttr();
HDC CurrentDC();
void SetCurrentDC(HDC dc);
// Makes port current without the screen-DC bookkeeping of SetPort.
void MakeCurrent(GrafPtr port);
// Makes the screen port current; its DC (GetDC, a call to the window
// server) is taken only when something asks for the current record or DC.
void MakeScreenCurrentDeferringDC();
GrafPtr ScreenPort();
bool IsColourPort(GrafPtr port);
inline CGrafPtr AsColour(GrafPtr port) { return reinterpret_cast<CGrafPtr>(port); }

// A free slot's record (reset and pointing back at port), or null.
PortAttr* AllocateAttr(GrafPtr port, int* slot);
void FreeAttr(int slot);
// Gives back the GDI objects and owned DC of the record in slot and frees
// it, without touching the port record itself.
void ReleasePortRecord(int slot);
bool AnyOrdinaryPortOpen();
void AllowInternalSlot(bool allow);

// Forgets every GDI object the port selected or made and puts the stock
// ones back into its DC; what was last set in the DC is no longer known.
void ResetGdiCache(PortAttr& a);
// The port's pen and brush leave its DC but stay made, to be selected again
// into the DC it draws into next.
void DeselectGdiObjects(PortAttr& a);
void FlushGdiState(PortAttr& a);

// --- Device contexts the library holds. ---
HDC SharedMemoryDC();
// A DC the application put under a port with KWE_SwaphDC.
bool IsForeignDC(HDC dc);  // the DC of ports that draw into no window
int DeviceDepthOf(HDC dc);

// --- QuickDraw errors. ---
void SetQDError(OSErr err);

// --- Coordinates. ---
void LocalToDevice(const PortAttr& a, int* h, int* v);
void DeviceToLocal(const PortAttr& a, int* h, int* v);
bool MappingIsIdentity(const PortAttr& a);
// The window a port's device coordinates are client coordinates of.
HWND WindowOf(const PortAttr& a);
void UpdateDevicePen(PortAttr& a);
void UpdateDevicePenSize(PortAttr& a);
void TakeOriginFromPortRect(PortAttr& a);
// Moves (or scales) a region from the port's local coordinates to its
// device's, in place.
void RegionToDevice(const PortAttr& a, RgnHandle rgn);

// --- Clipping. ---
void RebuildClip(GrafPtr port);

// --- Pen and colour caches. ---
void DerivePenMode(PortAttr& a, SInt16 mode);
void ApplyForeColor(SInt32 color);
void ApplyBackColor(SInt32 color);

// pnLoc, the device pen and the DC's position, recording the point.
void MovePenTo(GrafPtr port, PortAttr& a, Point to);

// Polygon recording: the point goes to the polygon being recorded, if any.
void RecordPolygonPoint(GrafPtr port, Point pt);

}  // namespace kwe::quickdraw
