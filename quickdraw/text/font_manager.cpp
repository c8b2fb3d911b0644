// The Font Manager's calls over the font map and the installed font list,
// and the text state QuickDraw starts and lets go.
#include <windows.h>

#include <cstring>

#include "Fonts.h"
#include "frame/layout_check.h"
#include "frame/low_memory.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/font_list.h"
#include "quickdraw/text/port_font.h"
#include "quickdraw/text/text_ink.h"
#include "quickdraw/text/text_measuring.h"
#include "quickdraw/text/text_state.h"
#include "quickdraw/text/width_table.h"

static_assert(sizeof(FMInput) == 16, "FMInput");
static_assert(sizeof(FontInfo) == 8, "FontInfo");
KWE_FIELD(FMInput, numer, 8);
KWE_FIELD(WidthTable, tabFont, 1024);
#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(FMOutput) == 26, "FMOutput");
KWE_FIELD(FMOutput, ascent, 13);
KWE_FIELD(FMOutput, numer, 18);
static_assert(sizeof(FMetricRec) == 20, "FMetricRec");
static_assert(sizeof(WidthTable) == 1072, "WidthTable");
KWE_FIELD(WidthTable, fID, 1036);
KWE_FIELD(WidthTable, fHand, 1054);
KWE_FIELD(WidthTable, vOutput, 1060);
KWE_FIELD(WidthTable, tabSize, 1070);
#endif

namespace kwe::quickdraw {
namespace {

FMOutput g_swapOutput;

UInt8 ClampToByte(SInt16 value) {
  return static_cast<UInt8>(value < 0 ? 0 : value > 255 ? 255 : value);
}

}  // namespace

void StartText() {
  InstallTextMeasuring();
  EnsureFontData();
}

void ReleaseTextCaches() {
  ReleaseFontData();
  ReleaseCommandKeyBitmap();
  ForgetFontMetrics();
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL InitFonts(void) {
  WidthTableHandle();
  EnsureFontData();
}

KWE_API void KWE_CALL GetFontName(SInt16 familyID, Str255 name) {
  if (!name) return;
  EnsureFontData();
  FaceChoice choice = FaceForNumber(familyID);
  const char* face = choice.face ? choice.face->faceName : "";
  name[0] = static_cast<UInt8>(std::strlen(face));
  std::memcpy(name + 1, face, name[0]);
}

// A face's own name answers its first Macintosh number; a Macintosh name of
// the map answers its entry's number.
KWE_API void KWE_CALL GetFNum(ConstStr255Param name, SInt16* familyID) {
  if (!familyID) return;
  *familyID = 0;
  if (!name) return;
  EnsureFontData();
  const char* text = reinterpret_cast<const char*>(name + 1);
  const InstalledFace* face = FaceOfName(text, name[0]);
  if (face && face->macNumbers[0] != -1) {
    *familyID = face->macNumbers[0];
    return;
  }
  const FontMapEntry* entry = MapEntryOfName(CurrentFontMap(), text, name[0]);
  if (entry && entry->number != -1) *familyID = entry->number;
}

KWE_API Boolean KWE_CALL RealFont(SInt16, SInt16) { return true; }

// Measured in a port of the library's own, opened and closed around the
// call; the current port stays current.
KWE_API FMOutPtr KWE_CALL FMSwapFont(const FMInput* inRec) {
  if (!inRec) return nullptr;
  GrafPtr saved = CurrentPort();
  GrafPort measuring{};
  AllowInternalSlot(true);
  OpenPort(&measuring);
  AllowInternalSlot(false);
  if (!AttrOf(&measuring)) return nullptr;
  TextFont(inRec->family);
  TextSize(inRec->size);
  TextFace(inRec->face);
  FontInfo info;
  GetFontInfo(&info);
  ClosePort(&measuring);
  if (saved) SetPort(saved);
  g_swapOutput = FMOutput{};
  g_swapOutput.ascent = ClampToByte(info.ascent);
  g_swapOutput.descent = ClampToByte(info.descent);
  g_swapOutput.widMax = ClampToByte(info.widMax);
  g_swapOutput.leading = static_cast<SInt8>(ClampToByte(info.leading));
  g_swapOutput.curStyle = static_cast<SInt8>(inRec->face);
  g_swapOutput.numer = inRec->numer;
  g_swapOutput.denom = inRec->denom;
  return &g_swapOutput;
}

KWE_API void KWE_CALL SetFractEnable(Boolean fractEnable) {
  kwe::lowmem::At<UInt8>(kwe::lowmem::Slot::FractEnable) = fractEnable ? 1 : 0;
}

KWE_API Boolean KWE_CALL IsOutline(Point, Point) { return false; }
KWE_API SInt16 KWE_CALL FTChoose(void) { return 0; }

KWE_API void KWE_CALL KWE_UpdateFontList(Boolean force) {
  UpdateFontList(force != 0);
  ForgetFontMetrics();
}

KWE_API SInt16 KWE_CALL KWE_GetIntlSystemFont(void) { return IntlSystemFont(); }

// The table is the application's; it must stay valid while extended text
// is on.
KWE_API void KWE_CALL KWE_ExtDrawText(Boolean on, Fixed* widths, SInt32 extra) {
  PortAttr* a = CurrentAttr();
  if (!a) return;
  a->textFlags = static_cast<UInt16>(a->textFlags & ~kExtendedText);
  a->extendedWidths = nullptr;
  a->extendedExtra = 0;
  if (!on) return;
  InstallTextMeasuring();
  a->textFlags |= kExtendedText;
  a->extendedWidths = widths;
  a->extendedExtra = extra;
}
