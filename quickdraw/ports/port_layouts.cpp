// The published 32-bit layouts of the port records, which applications
// compile against and read directly.
#include <cstddef>

#include "Quickdraw.h"
#include "frame/layout_check.h"

// Both builds: a colour port is read through a GrafPtr where the two agree.
#define KWE_SHARED_PORT_FIELD(field) \
  static_assert(offsetof(GrafPort, field) == offsetof(CGrafPort, field), "shared " #field)
KWE_SHARED_PORT_FIELD(portRect);
KWE_SHARED_PORT_FIELD(visRgn);
KWE_SHARED_PORT_FIELD(clipRgn);
KWE_SHARED_PORT_FIELD(pnLoc);
KWE_SHARED_PORT_FIELD(pnMode);
KWE_SHARED_PORT_FIELD(pnVis);
KWE_SHARED_PORT_FIELD(fgColor);
KWE_SHARED_PORT_FIELD(patStretch);
KWE_SHARED_PORT_FIELD(grafProcs);
static_assert(offsetof(GrafPort, portBits.rowBytes) == offsetof(CGrafPort, portVersion),
              "portVersion tells a colour port apart");
static_assert(sizeof(GrafPort) == sizeof(CGrafPort), "GrafPort and CGrafPort");

static_assert(sizeof(PenState) == 18, "PenState");
KWE_FIELD(PenState, pnPat, 10);

#if defined(_WIN32) && !defined(_WIN64)
static_assert(sizeof(GrafPort) == 108, "GrafPort");
KWE_FIELD(GrafPort, portBits, 2);
KWE_FIELD(GrafPort, portRect, 16);
KWE_FIELD(GrafPort, visRgn, 24);
KWE_FIELD(GrafPort, clipRgn, 28);
KWE_FIELD(GrafPort, bkPat, 32);
KWE_FIELD(GrafPort, fillPat, 40);
KWE_FIELD(GrafPort, pnLoc, 48);
KWE_FIELD(GrafPort, pnSize, 52);
KWE_FIELD(GrafPort, pnMode, 56);
KWE_FIELD(GrafPort, pnPat, 58);
KWE_FIELD(GrafPort, pnVis, 66);
KWE_FIELD(GrafPort, txFont, 68);
KWE_FIELD(GrafPort, txFace, 70);
KWE_FIELD(GrafPort, txMode, 72);
KWE_FIELD(GrafPort, txSize, 74);
KWE_FIELD(GrafPort, spExtra, 76);
KWE_FIELD(GrafPort, fgColor, 80);
KWE_FIELD(GrafPort, bkColor, 84);
KWE_FIELD(GrafPort, colrBit, 88);
KWE_FIELD(GrafPort, patStretch, 90);
KWE_FIELD(GrafPort, picSave, 92);
KWE_FIELD(GrafPort, rgnSave, 96);
KWE_FIELD(GrafPort, polySave, 100);
KWE_FIELD(GrafPort, grafProcs, 104);

static_assert(sizeof(CGrafPort) == 108, "CGrafPort");
KWE_FIELD(CGrafPort, portPixMap, 2);
KWE_FIELD(CGrafPort, portVersion, 6);
KWE_FIELD(CGrafPort, grafVars, 8);
KWE_FIELD(CGrafPort, chExtra, 12);
KWE_FIELD(CGrafPort, pnLocHFrac, 14);
KWE_FIELD(CGrafPort, portRect, 16);
KWE_FIELD(CGrafPort, bkPixPat, 32);
KWE_FIELD(CGrafPort, rgbFgColor, 36);
KWE_FIELD(CGrafPort, rgbBkColor, 42);
KWE_FIELD(CGrafPort, pnLoc, 48);
KWE_FIELD(CGrafPort, pnMode, 56);
KWE_FIELD(CGrafPort, pnPixPat, 58);
KWE_FIELD(CGrafPort, fillPixPat, 62);
KWE_FIELD(CGrafPort, pnVis, 66);
KWE_FIELD(CGrafPort, patStretch, 90);
KWE_FIELD(CGrafPort, grafProcs, 104);

static_assert(sizeof(GrafVars) == 26, "GrafVars");
static_assert(sizeof(PixMap) == 50, "PixMap");
KWE_FIELD(PixMap, pmVersion, 14);
KWE_FIELD(PixMap, pixelSize, 32);
KWE_FIELD(PixMap, pmTable, 42);
static_assert(sizeof(PixPat) == 28, "PixPat");
KWE_FIELD(PixPat, patXValid, 14);
KWE_FIELD(PixPat, pat1Data, 20);
static_assert(sizeof(GDevice) == 62, "GDevice");
KWE_FIELD(GDevice, gdPMap, 22);
KWE_FIELD(GDevice, gdRect, 34);
KWE_FIELD(GDevice, gdReserved, 58);
static_assert(sizeof(QDProcs) == 52 && sizeof(CQDProcs) == 80, "procedure records");
#endif
