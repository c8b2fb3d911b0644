/* The library's pixel maps over Windows' own pixels. */
#ifndef KWE_PIXMAPS_H
#define KWE_PIXMAPS_H

#include <windows.h>

#include "KWEWin32.h"
#include "Quickdraw.h"

/* A pixel map over a copy of a packed DIB (header, colours, bits) of 1, 4,
   8 or 24 bits, uncompressed: bounds (0, 0, biHeight, biWidth), a colour
   table of the DIB's colours (reversed, flag 0x0100, unless they run from
   white to black), and deeper DIBs described as 16 bits. biClrUsed past the
   depth's colours and biSizeImage are set in dib. Null for anything else or
   when memory is short. CopyBits puts its pixels on a port's DC. */
KWE_API PixMapHandle KWE_CALL KWE_NewDIBPixMap(BITMAPINFOHEADER* dib);
/* The packed DIB of a library pixel map and, in *bits, its pixels; null
   for a pixel map that is not the library's or holds no DIB. */
KWE_API BITMAPINFO* KWE_CALL KWE_GetDIBFromPixMap(PixMapHandle pm, void** bits);
/* A pixel map over a DDB, which it then owns (DisposePixMap deletes it):
   bounds and rowBytes from the bitmap, deep bitmaps described as 16 bits;
   an indexed bitmap's colour table is the palette's colours reversed, or a
   copy of the current device's table. Null for no bitmap or when memory is
   short. */
KWE_API PixMapHandle KWE_CALL KWE_NewDDBPixMap(HBITMAP bitmap, HPALETTE palette);
/* A new bitmap with bitmap's pixels (through a DIB on the screen DC); null
   on any failure. */
KWE_API HBITMAP KWE_CALL KWE_CopyBM(HBITMAP bitmap);
/* A pixel map over a DDB flattened into one block in the machine's byte
   order: five 32-bit offsets and sizes (record, colour table, BITMAP, bits,
   size of the bits), the library record with its DC and bitmap fields 0,
   the colour table, the DDB's BITMAP and its bits. Null for a pixel map
   without a DDB. KWE_UnpackPixMap makes the pixel map and its DDB again;
   the block stays the caller's; null for a block that does not hold
   together. */
KWE_API Handle KWE_CALL KWE_PackPixMap(PixMapHandle pm);
/* Copies srcRect of Macintosh pixels into dstRect of a library DIB pixel
   map, scaled, through the transfer mode and maskRgn, with srcTable and
   dstTable standing for the maps' own tables when not null. Two 8-bit maps
   whose tables have the same seed, copied one for one in srcCopy or
   patCopy without a mask, have their rows copied as they stand. paramErr
   for a destination that is not a DIB pixel map or rectangles outside the
   maps; CopyBits' error otherwise. */
KWE_API OSErr KWE_CALL KWE_CopyBitsMacToDIB(PixMap* src, PixMap* dst, Rect srcRect, Rect dstRect,
                                            SInt16 mode, CTabHandle srcTable, CTabHandle dstTable,
                                            RgnHandle maskRgn);
KWE_API PixMapHandle KWE_CALL KWE_UnpackPixMap(Handle flat);
/* Puts srcRect of a library DIB pixel map unscaled on the current port's
   DC, its top left at dstRect's (local coordinates): SetDIBitsToDevice for
   a plain copy the display takes straight to the device, StretchDIBits at
   the same size otherwise. With table the main device's colour table, an
   indexed DIB's values are taken as indices of the DC's palette
   (DIB_PAL_COLORS). paramErr for a map that is not a DIB pixel map, a
   rectangle outside it or no current port. */
KWE_API OSErr KWE_CALL KWE_DSSimple(PixMap* src, Rect srcRect, Rect dstRect, CTabHandle table);
/* Copies srcRect of src (Macintosh pixels, or a library DIB pixel map)
   onto dstRect of the current port's DC through the transfer mode and
   maskRgn (local coordinates), srcTable standing for src's own table when
   not null. A rectangular or Win32 region clips the DC; the pixels go
   through the library's pixel pipeline and reach the DC as a DIB, the
   DC's pixels read first unless the mode overwrites them all. A DIB source
   is put as it stands; one with a mask made from a bitmap reports
   " SDNotSimple unimplemented" and draws nothing. dst and dstTable are
   not read: the DC is the destination. */
KWE_API OSErr KWE_CALL KWE_DSNotSimple(PixMap* src, PixMap* dst, Rect srcRect, Rect dstRect,
                                       SInt16 mode, CTabHandle srcTable, CTabHandle dstTable,
                                       RgnHandle maskRgn);
/* The next CopyBits onto a DC puts unscaled memory pixels with
   SetDIBitsToDevice when the display can, whatever its mode: the caller
   says the copy is a plain write. Only the next copy. */
KWE_API void KWE_CALL KWE_NextWriteIsToScreen(void);
/* Folds a library pixel map's Macintosh pixels into its own packed DIB.
   flags: 0x02 a fresh DIB, the rows of rect (null: all) converted into it;
   0x04 the DIB made but nothing converted; 0x08 a DDB made from the DIB as
   well; 0x10 a 1- or 8-bit map not converted now is marked reversed
   (0x0100); 0x20 a 4-bit map folds into a 4-bit DIB. A 1-bit DIB, and a
   4-bit one with 0x20, holds complemented values and marks the map
   reversed. 0x02 clears the Macintosh-pixels flag of a map without pixels
   of its own (baseAddr 32767 or a port tag). False for a bitmap, a pixel
   map that is not the library's, or when the DIB cannot be made. */
KWE_API Boolean KWE_CALL KWE_FoldPixMap(PixMap* pm, Rect* rect, SInt16 flags);
/* Writes a library pixel map's DIB pixels (or its DDB's) as Macintosh
   pixels into dst's memory, whose bounds become the map's: flags 0x100 at
   1 bit, 0x200 at 4, 0x400 at 8, else at dst's own depth. 0x10 maps
   indexed values as they stand (undoing the fold's complement), otherwise
   each colour goes to dst's nearest entry. Afterwards 0x40 lets go of the
   map's DIB or DDB, and 0x01 also disposes of it. The reserved arguments
   are not read. False for a map without a DIB or DDB, or a destination
   without room for the pixels. */
KWE_API Boolean KWE_CALL KWE_UnfoldPixMap(PixMap* pm, BitMap* dst, void* reserved1, void* reserved2,
                                          SInt16 flags);

#endif
