// Measuring text: the conversion into the scratch buffer, GDI's extent or
// the width table of extended text, and the measuring calls.
#include "quickdraw/text/text_measuring.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "FixMath.h"
#include "KWECharacters.h"
#include "memory/character_conversion.h"
#include "quickdraw/text/port_font.h"
#include "quickdraw/text/text_ink.h"
#include "quickdraw/text/width_table.h"

namespace kwe::quickdraw {
namespace {

// "(tm)" makes four bytes of one.
constexpr size_t kMostBytesPerCharacter = 4;

std::vector<UInt8> g_ansi;
std::vector<INT> g_advances;

// Character widths of the font last measured, asked of GDI one character
// at a time as they are met: summing them is what GetTextExtentPoint does,
// without a trip into GDI for every string.
struct CharacterWidths {
  UInt32 fontSerial = 0;
  bool known[256];
  INT widths[256];
} g_characterWidths;

// What KWE_MacToAnsiBuf's measuring mode adds up for extended text, one
// conversion at a time.
struct Measuring {
  const Fixed* widths = nullptr;
  Fixed spaceExtra = 0;
  Fixed scale = 0;  // 0: not scaled
  INT* advances = nullptr;
  size_t capacity = 0;
  size_t count = 0;
  int64_t total = 0;  // 32,767 characters overflow a Fixed
  Fixed fraction = 0;
} g_measuring;

// Whole pixels per character; the fractions are carried, and a carried half
// pixel gives the next character one pixel more.
void MeasureCharacter(UInt8 c) {
  Measuring& m = g_measuring;
  Fixed w = m.widths ? m.widths[c] : 0;
  if (c == ' ') w += m.spaceExtra;
  if (m.scale) w = FixMul(w, m.scale);
  m.total += w;
  INT whole = w >> 16;
  m.fraction += w & 0xFFFF;
  if (m.fraction >= 0x8000) {
    ++whole;
    m.fraction -= 0x10000;
  }
  if (m.count < m.capacity) m.advances[m.count++] = whole;
}

const kwe::text::TextMeasurer kMeasurer = {
    [] {
      g_measuring.count = 0;
      g_measuring.total = 0;
      g_measuring.fraction = 0;
    },
    MeasureCharacter,
    nullptr,
};

// The scratch buffers only grow, to the worst case of the expansions.
void GrowScratch(size_t count, bool advances) {
  size_t needed = count * kMostBytesPerCharacter + 32;
  if (g_ansi.size() < needed) g_ansi.resize(needed);
  if (advances && g_advances.size() < needed) g_advances.resize(needed);
}

SInt16 ConversionFlags(const PortAttr& a) {
  SInt16 flags = 0;
  if (a.textFlags & kTrueTypeText) flags |= kweKeepTypographic;  // TrueType draws them well
  if (a.textFlags & kExtendedText) flags |= kweMeasureText;
  if (a.textFlags & kShiftJisText) flags |= kweNoTranslation;  // double-byte text stays as it is
  return flags;
}

void PrepareMeasuring(GrafPtr port, PortAttr& a) {
  const CoordinateMapping& m = a.mapping;
  g_measuring.widths = a.extendedWidths ? a.extendedWidths : CurrentWidths();
  g_measuring.spaceExtra = port->spExtra;
  g_measuring.scale =
      m.scaleActive && m.sourceExtentH
          ? static_cast<Fixed>((static_cast<int64_t>(m.destExtentH) << 16) / m.sourceExtentH)
          : 0;
  g_measuring.advances = g_advances.data();
  g_measuring.capacity = g_advances.size();
}

int Scaled(int value, int32_t to, int32_t from) { return from ? MulDiv(value, to, from) : value; }

using MeasureProc = SInt16(KWE_CALL*)(SInt16, const void*, Point*, Point*, FontInfo*);

MeasureProc CustomMeasureProc(GrafPtr port) {
  if (!port->grafProcs) return nullptr;
  ProcPtr p = port->grafProcs->txMeasProc;
  if (!p || p == reinterpret_cast<ProcPtr>(&StdTxMeas)) return nullptr;
  return reinterpret_cast<MeasureProc>(p);
}

// -1 when GDI's extent must be asked for: double-byte text, or a raster font
// whose synthesised bold or italic overhangs every character.
int SummedWidth(const PortAttr& a, const char* bytes, int length) {
  if ((a.textFlags & kShiftJisText) || a.textMetrics.tmOverhang || !a.textFontSerial) return -1;
  CharacterWidths& cache = g_characterWidths;
  if (cache.fontSerial != a.textFontSerial) {
    cache.fontSerial = a.textFontSerial;
    std::fill(std::begin(cache.known), std::end(cache.known), false);
  }
  int sum = 0;
  for (int i = 0; i < length; ++i) {
    auto c = static_cast<UInt8>(bytes[i]);
    if (!cache.known[c]) {
      if (!GetCharWidth32A(a.hdc, c, c, &cache.widths[c])) return -1;
      cache.known[c] = true;
    }
    sum += cache.widths[c];
  }
  return sum;
}

}  // namespace

void InstallTextMeasuring() { kwe::text::InstallTextMeasurer(&kMeasurer); }

ConvertedText ConvertAndMeasure(GrafPtr port, PortAttr& a, const UInt8* text, int count) {
  ConvertedText t;
  const TEXTMETRICA& tm = a.textMetrics;
  if (count == 1 && text[0] == kCommandKeyCharacter) {
    t.commandKey = true;
    t.deviceWidth = std::min<int>(tm.tmMaxCharWidth, CommandKeyWidth());
    return t;
  }
  bool extended = (a.textFlags & kExtendedText) != 0;
  GrowScratch(static_cast<size_t>(count), extended);
  if (extended) PrepareMeasuring(port, a);
  t.length = KWE_MacToAnsiBuf(text, g_ansi.data(), static_cast<UInt16>(count), ConversionFlags(a));
  t.bytes = reinterpret_cast<const char*>(g_ansi.data());
  for (int i = 0; i < t.length; ++i) t.spaces += t.bytes[i] == ' ';
  if (extended) {
    t.advances = g_advances.data();
    t.deviceWidth = static_cast<int>((g_measuring.total + 0x8000) >> 16) + a.extendedExtra;
    return t;
  }
  if (port->spExtra && t.spaces)
    t.justification =
        FixRound(FixMul(port->spExtra, static_cast<Fixed>(static_cast<uint32_t>(t.spaces) << 16)));
  int width = SummedWidth(a, t.bytes, t.length);
  if (width < 0) {
    SIZE extent{};
    GetTextExtentPoint32A(a.hdc, t.bytes, t.length, &extent);
    width = extent.cx - tm.tmOverhang;
  }
  t.deviceWidth = width + t.justification;
  return t;
}

int LocalWidth(const PortAttr& a, int w) {
  return a.mapping.scaleActive ? Scaled(w, a.mapping.sourceExtentH, a.mapping.destExtentH) : w;
}

int LocalHeight(const PortAttr& a, int h) {
  return a.mapping.scaleActive ? Scaled(h, a.mapping.sourceExtentV, a.mapping.destExtentV) : h;
}

// Extended text lays lines out by its own widths, so the external leading
// counts as ascent there.
void FillFontInfo(const PortAttr& a, FontInfo* info) {
  const TEXTMETRICA& tm = a.textMetrics;
  bool extended = (a.textFlags & kExtendedText) != 0;
  info->ascent =
      static_cast<SInt16>(LocalHeight(a, tm.tmAscent + (extended ? tm.tmExternalLeading : 0)));
  info->descent = static_cast<SInt16>(LocalHeight(a, tm.tmDescent));
  info->widMax = static_cast<SInt16>(LocalWidth(a, tm.tmMaxCharWidth));
  info->leading = static_cast<SInt16>(extended ? 0 : LocalHeight(a, tm.tmExternalLeading));
}

TextRatio::TextRatio(GrafPtr port, PortAttr& a, Point numer, Point denom)
    : port_(port), attr_(a), savedSize_(port->txSize) {
  if ((numer.v == denom.v && numer.h == denom.h) || denom.v == 0) return;
  port->txSize = static_cast<SInt16>(port->txSize * numer.v / denom.v);
  a.dirty |= kTextDirty;
  active_ = true;
}

TextRatio::~TextRatio() {
  if (!active_) return;
  port_->txSize = savedSize_;
  attr_.dirty |= kTextDirty;
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

// numer and denom, when given, scale the font size for the measurement.
KWE_API SInt16 KWE_CALL StdTxMeas(SInt16 byteCount, const void* textAddr, Point* numer,
                                  Point* denom, FontInfo* info) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!a || byteCount < 1 || !textAddr) return 0;
  Point one{1, 1};
  TextRatio ratio(port, *a, numer ? *numer : one, denom ? *denom : one);
  if (!PrepareFont(port, *a)) return 0;
  if (info) FillFontInfo(*a, info);
  ConvertedText t = ConvertAndMeasure(port, *a, static_cast<const UInt8*>(textAddr), byteCount);
  return static_cast<SInt16>(LocalWidth(*a, t.deviceWidth));
}

KWE_API void KWE_CALL GetFontInfo(FontInfo* info) {
  GrafPtr port = CurrentPort();
  PortAttr* a = CurrentAttr();
  if (!info) return;
  *info = FontInfo{};
  if (a && PrepareFont(port, *a)) FillFontInfo(*a, info);
}

KWE_API SInt16 KWE_CALL TextWidth(const void* textBuf, SInt16 firstByte, SInt16 byteCount) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr() || !textBuf) return 0;
  FontInfo info;
  GetFontInfo(&info);
  Point numer{1, 1}, denom{1, 1};
  const void* text = static_cast<const UInt8*>(textBuf) + firstByte;
  if (MeasureProc custom = CustomMeasureProc(port))
    return custom(byteCount, text, &numer, &denom, &info);
  return StdTxMeas(byteCount, text, &numer, &denom, &info);
}

KWE_API SInt16 KWE_CALL CharWidth(SInt16 ch) {
  UInt8 c = static_cast<UInt8>(ch);
  return TextWidth(&c, 0, 1);
}

KWE_API SInt16 KWE_CALL StringWidth(ConstStr255Param s) {
  return s ? TextWidth(s + 1, 0, s[0]) : 0;
}

KWE_API void KWE_CALL MeasureText(SInt16 count, const void* textAddr, SInt16* charLocs) {
  if (!charLocs) return;
  charLocs[0] = 0;
  if (!textAddr) return;
  for (SInt16 i = 0; i < count; ++i)
    charLocs[i + 1] = static_cast<SInt16>(charLocs[i] + TextWidth(textAddr, i, 1));
}
