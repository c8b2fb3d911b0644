// Script Manager calls for which Windows' keyboard layouts and GDI text have
// no counterpart. Each call reports its own name (__func__ is the exported
// name) unless noted, and answers 0.
#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

namespace {
constexpr SInt16 kSmallFontAndSize = 82;     // smScriptSmallFondSize
constexpr SInt32 kHelvetica10 = 0x0015000A;  // font family 21 in the high word, 10 points
}  // namespace

KWE_API SInt32 KWE_CALL ScriptUtil(void) { return kwe::Unsupported(__func__, SInt32{0}); }

// Text-drawing code asks for the small font often; that one verb has an answer
// and is not reported.
KWE_API SInt32 KWE_CALL GetScript(SInt16, SInt16 verb) {
  if (verb == kSmallFontAndSize) return kHelvetica10;
  return kwe::Unsupported(__func__, SInt32{0});
}

KWE_API OSErr KWE_CALL SetScript(SInt16, SInt16, SInt32) {
  return kwe::Unsupported(__func__, noErr);
}

KWE_API void KWE_CALL KeyScript(SInt16) { kwe::Unsupported(__func__); }

KWE_API UInt32 KWE_CALL KeyTranslate(const void*, UInt16, UInt32*) {
  return kwe::Unsupported("KeyTrans", UInt32{0});
}

KWE_API SInt16 KWE_CALL Pixel2Char(Ptr, SInt16, SInt16, SInt16, Boolean*) {
  return kwe::Unsupported(__func__, SInt16{0});
}

KWE_API void KWE_CALL DrawJust(Ptr, SInt16, SInt16) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL MeasureJust(Ptr, SInt16, SInt16, Ptr) { kwe::Unsupported("MEASUREJUST"); }

KWE_API SInt32 KWE_CALL ReplaceTex(Handle, Handle, Str15) {
  return kwe::Unsupported(__func__, SInt32{0});
}
