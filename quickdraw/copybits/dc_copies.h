// Pixels put on a DC as a DIB: a library DIB pixel map as it stands
// (KWE_DSSimple), the pipeline's results through one DIB kept from call to
// call (the general routine of KWE_DSNotSimple), and the direct-to-device
// switch that lets an unscaled plain copy go out with SetDIBitsToDevice.
#pragma once
#include <windows.h>

#include "quickdraw/copybits/copy_sides.h"

namespace kwe::quickdraw {

// The direct-to-device switch for the length of one copy. On when the
// display takes DIBs straight to the device (RC_DIBTODEV), the copy is a
// plain one (srcCopy or ditherCopy) or KWE_NextWriteIsToScreen armed the
// switch, and the destination is neither a DIB pixel map nor a 1-bit bitmap
// of the offscreen bitmap table (a monochrome bitmap that GDI's stretching
// code matches colours into). The end of the copy disarms
// KWE_NextWriteIsToScreen, whatever the copy did.
class DirectSwitch {
 public:
  DirectSwitch();
  ~DirectSwitch();
  void Decide(const CopySide& dst, int mode);
  DirectSwitch(const DirectSwitch&) = delete;
  DirectSwitch& operator=(const DirectSwitch&) = delete;
};
bool DirectToDevice();

// Puts columns sx to sx + sw and rows sy to sy + sh (counted from the top,
// whichever way the DIB runs) of a DIB onto to: with SetDIBitsToDevice when
// the switch is on and the sizes match (it copies, whatever rop says),
// else with StretchDIBits and rop. False when GDI draws nothing.
bool PutDib(HDC dc, const RECT& to, const BITMAPINFO* info, const void* bits, int sx, int sy,
            int sw, int sh, DWORD rop, UINT usage);

// Clips a DC to a region (local coordinates of the port a) for the
// copy's duration, between SaveDC and RestoreDC.
class MaskClip {
 public:
  MaskClip(HDC dc, const PortAttr& a, RgnHandle mask);
  ~MaskClip();
  MaskClip(const MaskClip&) = delete;
  MaskClip& operator=(const MaskClip&) = delete;

 private:
  HDC dc_;
  int saved_ = 0;
};

// The pipeline's rows in a 32-bit top-down DIB section in a memory DC,
// kept from copy to copy and made again only for a larger rectangle: most
// copies onto a window are the same size again and again, and making the
// section is most of the cost of a small copy. 32 bits whatever the DC:
// the pipeline's colours stay whole until GDI matches them into the DC's
// format as the DIB is put there.
class KeptDib {
 public:
  // A section of at least width x height; false when none can be made
  // (the old one is gone then too).
  bool Fit(int width, int height);
  // A DC's pixels of r into the section's first rows.
  bool Read(HDC dc, const RECT& r);
  // The section's first rows, as wide and high as to, onto to.
  bool Put(HDC dc, const RECT& to);
  PipelineSide Side() const;
  void Release();

 private:
  HDC dc_ = nullptr;
  HBITMAP section_ = nullptr;
  HGDIOBJ old_ = nullptr;
  void* bits_ = nullptr;
  int width_ = 0, height_ = 0;
};
KeptDib& TheKeptDib();

// Large copies go in bands of rows, each about 64 KB of 32-bit pixels: the
// kept DIB stays small whatever the copy's size, and a band that size
// stays in the processor's cache between the read, the pipeline and the
// write.
int BandRows(int width, int height);

struct DeviceCopy;

// KWE_DSNotSimple over a copy CopyBits has classified: a memory or DIB
// pixel map source onto the destination port's DC. A simple mask region
// (job.clip) in srcCopy clips the DC; the pipeline otherwise.
OSErr NotSimpleOntoDevice(const DeviceCopy& job);

}  // namespace kwe::quickdraw
