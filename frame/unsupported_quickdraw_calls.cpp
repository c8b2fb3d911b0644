// Colour QuickDraw, Palette Manager and Font Manager calls whose work belongs
// to Windows: the display's depth, TrueType outlines and their scaling, the
// colour of single pixels. Each call reports its own name (__func__ is the
// exported name) unless noted; nothing is drawn.
#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

KWE_API OSErr KWE_CALL SetDepth(GDHandle, SInt16, SInt16, SInt16) {
  return kwe::Unsupported("SetDepth - Not Supported, System 7", noErr);
}

KWE_API SInt16 KWE_CALL HasDepth(GDHandle, SInt16, SInt16, SInt16) {
  return kwe::Unsupported("HasDepth - Not Supported, System 7", SInt16{0});
}

KWE_API OSErr KWE_CALL PlotIconMethod(const Rect*, IconAlignmentType, IconTransformType,
                                      IconGetterProcPtr, void*) {
  return kwe::Unsupported("PLOTICONMETHOD", noErr);
}

KWE_API OSErr KWE_CALL PlotIconID(const Rect*, IconAlignmentType, IconTransformType, SInt16) {
  return noErr;
}

KWE_API OSErr KWE_CALL OutlineMetrics(SInt16, const void*, Point, Point, SInt16*, SInt16*, FixedPtr,
                                      FixedPtr, Rect*) {
  return kwe::Unsupported(__func__, OSErr{-1});
}

KWE_API void KWE_CALL SetFScaleDisable(Boolean) { kwe::Unsupported(__func__); }

// Published as a function; the Boolean it answers is false, so an application
// takes bitmapped fonts to be preferred.
KWE_API Boolean KWE_CALL GetOutlinePreferred(void) { return kwe::Unsupported(__func__, false); }

KWE_API void KWE_CALL SetOutlinePreferred(Boolean) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL PortChanged(GrafPtr) { kwe::Unsupported(__func__); }

KWE_API void KWE_CALL SeedCFill(const BitMap*, const BitMap*, const Rect*, const Rect*, SInt16,
                                SInt16, ColorSearchProcPtr, SInt32) {
  kwe::Unsupported(__func__);
}

KWE_API void KWE_CALL CharExtra(Fixed) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL AllocCursor(void) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL SetCPixel(SInt16, SInt16, const RGBColor*) { kwe::Unsupported(__func__); }
