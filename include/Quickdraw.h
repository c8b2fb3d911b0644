/* QuickDraw. The calls applications patch through the trap table, the
   regions and the rectangle mapping; the rest of QuickDraw joins them as it
   is built. */
#ifndef KWE_QUICKDRAW_H
#define KWE_QUICKDRAW_H

#include "MacTypes.h"

/* The fields of a region applications may read. The library keeps its own
   fields behind them (the shape is not the Macintosh scan-line encoding), so
   a region is only ever made by NewRgn and changed through the calls below. */
#pragma pack(push, 2)
struct MacRegion {
  SInt16 rgnSize;
  Rect rgnBBox;
};
#pragma pack(pop)
typedef struct MacRegion MacRegion, *RgnPtr;

KWE_API void KWE_CALL SetOrigin(SInt16 h, SInt16 v);
/* SetCursor: exported shortened, see KWENames.h. */
KWE_API void KWE_CALL SetCurso(const Cursor *crsr);

/* --- Rectangle mapping. --- */
KWE_API void KWE_CALL MapPt(Point *pt, const Rect *srcRect, const Rect *dstRect);
KWE_API void KWE_CALL MapRect(Rect *r, const Rect *srcRect, const Rect *dstRect);

/* --- Regions. ---
   Seven region calls share their names with Win32's region calls and are
   exported shortened. C++ sees each Toolbox name as an overload beside
   Win32's (RgnHandle and HRGN never convert into each other); C gets a macro
   unless windows.h is already in (it would rename Win32's calls). */
KWE_API RgnHandle KWE_CALL NewRgn(void);
KWE_API void KWE_CALL DisposeRgn(RgnHandle rgn);
KWE_API void KWE_CALL CopyRg(RgnHandle srcRgn, RgnHandle dstRgn);
KWE_API void KWE_CALL SetEmptyRgn(RgnHandle rgn);
KWE_API void KWE_CALL SetRectRg(RgnHandle rgn, SInt16 left, SInt16 top, SInt16 right,
                                SInt16 bottom);
KWE_API void KWE_CALL RectRgn(RgnHandle rgn, const Rect *r);
KWE_API void KWE_CALL OffsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL InsetRg(RgnHandle rgn, SInt16 dh, SInt16 dv);
KWE_API void KWE_CALL MapRgn(RgnHandle rgn, const Rect *srcRect, const Rect *dstRect);
KWE_API void KWE_CALL SectRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL UnionRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL DiffRgn(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API void KWE_CALL XorRg(RgnHandle srcRgnA, RgnHandle srcRgnB, RgnHandle dstRgn);
KWE_API Boolean KWE_CALL PtInRgn(Point pt, RgnHandle rgn);
KWE_API Boolean KWE_CALL RectInRgn(const Rect *r, RgnHandle rgn);
KWE_API Boolean KWE_CALL EqualRg(RgnHandle rgnA, RgnHandle rgnB);
KWE_API Boolean KWE_CALL EmptyRgn(RgnHandle rgn);
/* The black pixels of a 1-bit bitmap (or a 1-bit PixMap) as a region:
   pixMapTooDeepErr (-148) for a deeper PixMap, rgnTooBigErr (-152) when the
   region cannot be made (the region is then left as it was). */
KWE_API OSErr KWE_CALL BitMapToRegion(RgnHandle rgn, const BitMap *bits);
KWE_API OSErr KWE_CALL BitMapToRegionGlue(RgnHandle rgn, const BitMap *bits);

#ifdef __cplusplus
inline void CopyRgn(RgnHandle srcRgn, RgnHandle dstRgn) { CopyRg(srcRgn, dstRgn); }
inline void SetRectRgn(RgnHandle rgn, SInt16 left, SInt16 top, SInt16 right, SInt16 bottom) {
  SetRectRg(rgn, left, top, right, bottom);
}
inline void OffsetRgn(RgnHandle rgn, SInt16 dh, SInt16 dv) { OffsetRg(rgn, dh, dv); }
inline void InsetRgn(RgnHandle rgn, SInt16 dh, SInt16 dv) { InsetRg(rgn, dh, dv); }
inline void UnionRgn(RgnHandle a, RgnHandle b, RgnHandle dst) { UnionRg(a, b, dst); }
inline void XorRgn(RgnHandle a, RgnHandle b, RgnHandle dst) { XorRg(a, b, dst); }
inline Boolean EqualRgn(RgnHandle rgnA, RgnHandle rgnB) { return EqualRg(rgnA, rgnB); }
#elif !defined(_WINDOWS_) && !defined(_WINDOWS_H)
#define CopyRgn CopyRg
#define SetRectRgn SetRectRg
#define OffsetRgn OffsetRg
#define InsetRgn InsetRg
#define UnionRgn UnionRg
#define XorRgn XorRg
#define EqualRgn EqualRg
#endif

#endif
