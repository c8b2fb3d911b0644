// FontMetrics and the width table: the current port's font measured once
// per font, size and face.
#include <windows.h>

#include "Fonts.h"
#include "Memory.h"
#include "frame/low_memory.h"
#include "memory/character_conversion.h"
#include "quickdraw/text/font_list.h"
#include "quickdraw/text/port_font.h"
#include "quickdraw/text/text_measuring.h"
#include "quickdraw/text/width_table.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kOutputResolution = 256;

struct MetricsKey {
  SInt16 font = 0, size = 0;
  UInt8 face = 0;
  UInt32 fontData = 0;  // FontDataGeneration() the metrics were taken under
  bool operator==(const MetricsKey& k) const {
    return font == k.font && size == k.size && face == k.face && fontData == k.fontData;
  }
};

bool g_cached = false;
MetricsKey g_key;
FMetricRec g_metrics{};

Fixed ToFixed(int value) { return static_cast<Fixed>(value * 65536); }

// Entries 128 to 255 take the width of the ANSI character that the
// Macintosh character is drawn as.
void FillWidths(GrafPtr port, PortAttr& a, WidthTable& table) {
  const TEXTMETRICA& tm = a.textMetrics;
  INT widths[256];
  if (!GetCharWidth32A(a.hdc, 0, 255, widths)) {
    for (int c = 0; c < 256; ++c) {
      char ch = static_cast<char>(c);
      SIZE extent{};
      GetTextExtentPoint32A(a.hdc, &ch, 1, &extent);
      widths[c] = extent.cx;
    }
  }
  const CoordinateMapping& m = a.mapping;
  for (int c = 0; c < 256; ++c) {
    UInt8 mac = static_cast<UInt8>(c), ansi = mac;
    if (mac >= 0x80) kwe::text::MacToAnsiBytes(&mac, &ansi, 1);
    int64_t w = static_cast<int64_t>(widths[ansi] - tm.tmOverhang) << 16;
    if (m.scaleActive && m.destExtentH) w = w * m.sourceExtentH / m.destExtentH;
    table.tabData[c] = static_cast<Fixed>(w);
  }
  SInt16 size = static_cast<SInt16>(tm.tmHeight - tm.tmInternalLeading);
  table.tabFont = nullptr;
  table.sExtra = port->spExtra;
  table.style = port->txFace;
  table.fID = port->txFont;
  table.fSize = size;
  table.face = port->txFace;
  table.device = 0;
  table.inNumer = table.inDenom = Point{1, 1};
  table.aFID = port->txFont;
  table.fHand = nullptr;
  table.usedFam = false;
  table.aFace = port->txFace;
  table.vOutput = table.hOutput = kOutputResolution;
  table.vFactor = table.hFactor = kOutputResolution;
  table.aSize = size;
  table.tabSize = size;
}

}  // namespace

Handle WidthTableHandle() {
  Handle& global = lowmem::At<Handle>(lowmem::Slot::WidthTabHandle);
  if (!global) global = NewHandleClear(sizeof(WidthTable));
  return global;
}

void ForgetFontMetrics() { g_cached = false; }

const Fixed* CurrentWidths() {
  FMetricRec metrics;
  FontMetrics(&metrics);
  Handle table = metrics.wTabHandle;
  return table && *table ? reinterpret_cast<const WidthTable*>(*table)->tabData : nullptr;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// The last result is answered again while the port's font, size and face
// are those of the last call.
KWE_API void KWE_CALL FontMetrics(FMetricRecPtr theMetrics) {
  if (!theMetrics) return;
  *theMetrics = FMetricRec{};
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || !PrepareFont(port, *a)) return;
  MetricsKey key{port->txFont, port->txSize, port->txFace, FontDataGeneration()};
  if (g_cached && key == g_key) {
    *theMetrics = g_metrics;
    return;
  }
  FontInfo info;
  FillFontInfo(*a, &info);
  FMetricRec m{ToFixed(info.ascent), ToFixed(info.descent), ToFixed(info.leading),
               ToFixed(info.widMax), WidthTableHandle()};
  if (m.wTabHandle && *m.wTabHandle)
    FillWidths(port, *a, *reinterpret_cast<WidthTable*>(*m.wTabHandle));
  g_key = key;
  g_metrics = m;
  g_cached = true;
  *theMetrics = m;
}
