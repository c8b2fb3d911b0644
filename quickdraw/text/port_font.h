// A port's GDI font: made from txFont, txSize and txFace when the font is
// dirty and text is drawn or measured, and kept until they change.
#pragma once
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {

// PortAttr.textFlags
constexpr UInt16 kTrueTypeText = 0x0001;
constexpr UInt16 kExtendedText = 0x0040;  // measured from a width table, drawn with ExtTextOut
constexpr UInt16 kShiftJisText = 0x0100;

// Realises the port's font when it is dirty and makes sure it is the one in
// the DC (another port may share the DC); false when the port has no DC.
bool PrepareFont(GrafPtr port, PortAttr& a);

// Deletes the port's own font object (FlushGdiState, after the stock font
// has gone back into the DC).
void ReleasePortFont(PortAttr& a);

// The text background mode that txMode draws with.
void DeriveTextMode(PortAttr& a, SInt16 mode);

}  // namespace kwe::quickdraw
