// Realising a port's font: the installed face the font number stands for,
// the size and style bits in a LOGFONT, and the TEXTMETRIC of what Windows
// made of it.
#include "quickdraw/text/port_font.h"

#include <algorithm>
#include <cstring>

#include "frame/library_fonts.h"
#include "frame/system_values.h"
#include "quickdraw/ports/transfer_modes.h"
#include "quickdraw/text/font_list.h"
#include "quickdraw/text/text_rotation.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kMonacoFont = 4;
constexpr int16_t kSysValuePointSizes = 46;  // txSize in points at the DC's resolution
// Heights beyond this would make Windows rasterise glyphs of gigabytes.
constexpr int kLargestFontHeight = 2048;

// Dialog ports draw the system font and monaco in the library's own fonts.
HFONT PresetFont(GrafPtr port, const PortAttr& a) {
  if (!(a.flags & kDialogFontFlag)) return nullptr;
  const Session& s = TheSession();
  if (port->txFont == 0) return s.fonts[s.dialogFont].font;
  if (port->txFont == kMonacoFont) {
    if (port->txSize < 10) return s.fonts[kSmallMonoFont].font;
    if (port->txSize < 13) return s.fonts[kMonoFont].font;
  }
  return nullptr;
}

// A raster face's own size record is used as it is when it is the size
// asked for; every other font is asked for by character height.
void SetHeight(LOGFONTA& lf, GrafPtr port, const PortAttr& a, const FaceChoice& choice,
               const FaceSize* size) {
  bool ownRasterSize = choice.face && (choice.face->fontType & RASTER_FONTTYPE) && size &&
                       size->pixels == port->txSize;
  int height = ownRasterSize ? size->height : -port->txSize;
  int width = ownRasterSize ? size->width : 0;
  height = std::clamp(height, -kLargestFontHeight, kLargestFontHeight);
  const CoordinateMapping& m = a.mapping;
  if (m.scaleActive) {
    height = MulDiv(height, m.destExtentV, m.sourceExtentV);
    width = MulDiv(width, m.destExtentH, m.sourceExtentH);
  }
  if (ReadSystemValue(kSysValuePointSizes)) {
    auto product = static_cast<int16_t>(GetDeviceCaps(a.hdc, LOGPIXELSY) * height);
    height = static_cast<int>(product + 0.5) / 72;
  }
  lf.lfHeight = height;
  lf.lfWidth = width;
}

LOGFONTA LogFontOf(GrafPtr port, const PortAttr& a) {
  LOGFONTA lf{};
  FaceChoice choice = FaceForNumber(port->txFont);
  const FaceSize* size = choice.face ? SizeForRequest(*choice.face, port->txSize) : nullptr;
  SetHeight(lf, port, a, choice, size);
  if (size) {
    lf.lfEscapement = size->escapement;
    lf.lfOrientation = size->orientation;
    lf.lfOutPrecision = size->outPrecision;
    lf.lfClipPrecision = size->clipPrecision;
  }
  // Text the RotateBegin comment turned: only outline fonts turn.
  if (int escapement = TextEscapementOf(port)) {
    lf.lfEscapement = lf.lfOrientation = escapement;
    lf.lfOutPrecision = OUT_TT_ONLY_PRECIS;
  }
  lf.lfWeight = (port->txFace & bold) ? FW_BOLD : FW_NORMAL;
  lf.lfItalic = (port->txFace & italic) ? 1 : 0;
  lf.lfUnderline = (port->txFace & underline) ? 1 : 0;
  lf.lfStrikeOut = (port->txFace & extend) ? 1 : 0;
  lf.lfCharSet = choice.face ? choice.face->charSet : static_cast<BYTE>(DEFAULT_CHARSET);
  lf.lfQuality = DEFAULT_QUALITY;
  // Windows picks its default face of the family for a name it lacks.
  const char* name = "";
  if (choice.face) {
    lf.lfPitchAndFamily = static_cast<BYTE>(choice.face->pitchAndFamily & 0xF3);
    name = choice.face->faceName;
  } else if (choice.entry) {
    lf.lfPitchAndFamily = choice.entry->family;
    name = choice.entry->faces[0];
  }
  std::memcpy(lf.lfFaceName, name, strnlen(name, LF_FACESIZE - 1));
  return lf;
}

bool SameLogFont(const LOGFONTA& x, const LOGFONTA& y) {
  return std::memcmp(&x, &y, sizeof x) == 0;
}

void Realise(GrafPtr port, PortAttr& a) {
  EnsureFontData();
  HFONT chosen = PresetFont(port, a);
  HFONT own = nullptr;
  LOGFONTA lf{};
  if (!chosen) {
    lf = LogFontOf(port, a);
    own = a.font && SameLogFont(lf, a.textLogFont) ? a.font : CreateFontIndirectA(&lf);
    chosen = own ? own : static_cast<HFONT>(GetStockObject(SYSTEM_FONT));
  }
  SelectObject(a.hdc, chosen);
  if (a.font && a.font != own && !IsLibraryFont(a.font)) DeleteObject(a.font);
  a.font = own;
  a.textLogFont = own ? lf : LOGFONTA{};
  a.textFont = chosen;
  if (!GetTextMetricsA(a.hdc, &a.textMetrics)) a.textMetrics = TEXTMETRICA{};
  UInt16 flags = static_cast<UInt16>(a.textFlags & kExtendedText);
  if (a.textMetrics.tmPitchAndFamily & TMPF_TRUETYPE) flags |= kTrueTypeText;
  if (a.textMetrics.tmCharSet == SHIFTJIS_CHARSET) flags |= kShiftJisText;
  a.textFlags = flags;
  static UInt32 serial = 0;
  a.textFontSerial = ++serial ? serial : ++serial;
  a.dirty = static_cast<UInt16>(a.dirty & ~kTextDirty);
}

}  // namespace

bool PrepareFont(GrafPtr port, PortAttr& a) {
  if (!a.hdc) return false;
  if ((a.dirty & kTextDirty) || !a.textFont)
    Realise(port, a);
  else if (GetCurrentObject(a.hdc, OBJ_FONT) != a.textFont)
    SelectObject(a.hdc, a.textFont);
  return true;
}

void ReleasePortFont(PortAttr& a) {
  if (a.font && !IsLibraryFont(a.font)) DeleteObject(a.font);
  a.font = nullptr;
  a.textFont = nullptr;
  a.textLogFont = LOGFONTA{};
  a.dirty |= kTextDirty;
}

void DeriveTextMode(PortAttr& a, SInt16 mode) {
  a.textBackgroundMode = ModeInGdiOf(mode).backgroundMode;
}

}  // namespace kwe::quickdraw
