// The port's text settings. A change only marks the font dirty: the GDI
// font is made again when text is next drawn or measured.
#include <windows.h>

#include "Quickdraw.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/port_font.h"

using namespace kwe::quickdraw;

namespace {

void MarkTextDirty() {
  if (PortAttr* a = CurrentAttr()) a->dirty |= kTextDirty;
}

}  // namespace

KWE_API void KWE_CALL TextFont(SInt16 font) {
  GrafPtr port = CurrentPort();
  if (!port || port->txFont == font) return;
  port->txFont = font;
  MarkTextDirty();
}

KWE_API void KWE_CALL TextFace(SInt16 face) {
  GrafPtr port = CurrentPort();
  auto style = static_cast<Style>(face);
  if (!port || port->txFace == style) return;
  port->txFace = style;
  MarkTextDirty();
}

// Size 0 is the Toolbox's "default size", which this library takes as 12.
KWE_API void KWE_CALL TextSize(SInt16 size) {
  GrafPtr port = CurrentPort();
  if (size == 0) size = 12;
  if (!port || port->txSize == size) return;
  port->txSize = size;
  MarkTextDirty();
}

KWE_API void KWE_CALL TextMode(SInt16 mode) {
  GrafPtr port = CurrentPort();
  if (!port) return;
  port->txMode = mode;
  if (PortAttr* a = CurrentAttr()) DeriveTextMode(*a, mode);
}

KWE_API void KWE_CALL SpaceExtra(Fixed extra) {
  GrafPtr port = CurrentPort();
  if (!port) return;
  port->spExtra = extra;
  PortAttr* a = CurrentAttr();
  if (extra == 0 && a && a->hdc) SetTextJustification(a->hdc, 0, 0);
}
