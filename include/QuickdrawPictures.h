/* Pictures: recording QuickDraw calls into a picture (version 2) and
   playing pictures (versions 1 and 2) back scaled; picture comments; the
   1-bit mask routines and seed fill. Included by Quickdraw.h. */
#ifndef KWE_QUICKDRAW_PICTURES_H
#define KWE_QUICKDRAW_PICTURES_H

#include "Quickdraw.h"

#pragma pack(push, 2)
/* A finished picture holds picSize and picFrame in the processor's order
   and its opcode stream big-endian, as the Macintosh wrote it. */
struct Picture {
  SInt16 picSize; /* the low 16 bits of the whole length */
  Rect picFrame;
};
typedef struct Picture Picture, *PicPtr;

typedef struct OpenCPicParams {
  Rect srcRect;
  Fixed hRes;
  Fixed vRes;
  SInt16 version;
  SInt16 reserved1;
  SInt32 reserved2;
} OpenCPicParams;
#pragma pack(pop)

/* Recording: the current port's drawing goes into the picture (the pen is
   hidden until ClosePicture); 0 when the handle cannot be made. */
KWE_API PicHandle KWE_CALL OpenPicture(const Rect* picFrame);
KWE_API PicHandle KWE_CALL OpenCPicture(const OpenCPicParams* newHeader);
KWE_API void KWE_CALL ClosePicture(void);
KWE_API void KWE_CALL KillPicture(PicHandle myPicture);
/* Plays the picture with its frame mapped onto dstRect. */
KWE_API void KWE_CALL DrawPicture(PicHandle myPicture, const Rect* dstRect);
KWE_API void KWE_CALL PicComment(SInt16 kind, SInt16 dataSize, Handle dataHandle);
/* With true a picture may be opened while another is being recorded (its
   recording state is kept and restored by ClosePicture), and playback
   keeps the port's drawing state around a nested DrawPicture. */
KWE_API void KWE_CALL KWE_AllowPictStatePush(Boolean allow);
/* A picture for the scrap: a 10-byte header (size, frame (0, 0, height,
   width)) and a packed DIB of rect's size, 8 bits with the system palette
   on a palette screen, else 24. The current port's drawing until
   ClosePicture goes into the DIB; DrawPicture draws it as a bitmap. 0 for
   an empty rect. */
KWE_API PicHandle KWE_CALL KWE_OpenScrapPict(const Rect* rect);

/* --- Masks and seed fill over 1-bit rows (rows of `words` 16-bit words). */
/* Sets in dst every white pixel of src that can be reached from
   (seedH, seedV) through white pixels, stopping at pixels dst has set. */
KWE_API void KWE_CALL SeedFill(const void* srcPtr, void* dstPtr, SInt16 srcRow, SInt16 dstRow,
                               SInt16 height, SInt16 words, SInt16 seedH, SInt16 seedV);
/* Sets in dst every pixel that cannot be reached from the image's edges
   through white pixels: the black pixels and the white ones they enclose. */
KWE_API void KWE_CALL CalcMask(const void* srcPtr, void* dstPtr, SInt16 srcRow, SInt16 dstRow,
                               SInt16 height, SInt16 words);
/* CalcMask of any bitmap or pixel map: its pixels become black or white by
   1-bit colour matching (or by matchProc, installed as the device's only
   search procedure for the copy); the mask goes into dst within dstRect. */
KWE_API void KWE_CALL CalcCMask(const BitMap* srcBits, const BitMap* dstBits, const Rect* srcRect,
                                const Rect* dstRect, const RGBColor* seedRGB, ProcPtr matchProc,
                                SInt32 matchData);
/* A mask of src's pixels that are not white (with calc, CalcMask's mask):
   a handle of 1-bit rows (rowBytes of src's width) or, with asRegion, a
   mask region; null on failure. */
KWE_API Handle KWE_CALL KWE_CreateMask(const BitMap* src, Boolean calc, Boolean asRegion);

#endif
