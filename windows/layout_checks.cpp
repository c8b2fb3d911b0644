// The published layouts of the Window Manager's records, which applications
// read field by field (and walk through nextWindow). Checked where pointers
// are 32 bits wide; the 64-bit build widens the pointer fields in place.
#include <cstdint>

#include "MacWindows.h"
#include "frame/layout_check.h"

static_assert(sizeof(WindowRecord) == sizeof(CWindowRecord), "WindowRecord and CWindowRecord");
static_assert(offsetof(WindowRecord, refCon) == offsetof(CWindowRecord, refCon), "shared fields");
static_assert(sizeof(WStateData) == 24, "the window data block");
KWE_FIELD(WStateData, stdState, 8);
KWE_FIELD(WStateData, windowHandle, 16);
KWE_FIELD(WStateData, flags, 20);
KWE_FIELD(WStateData, moreFlags, 22);

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(WindowRecord) == 156, "WindowRecord");
KWE_FIELD(WindowRecord, windowKind, 108);
KWE_FIELD(WindowRecord, visible, 110);
KWE_FIELD(WindowRecord, hilited, 111);
KWE_FIELD(WindowRecord, goAwayFlag, 112);
KWE_FIELD(WindowRecord, spareFlag, 113);
KWE_FIELD(WindowRecord, strucRgn, 114);
KWE_FIELD(WindowRecord, contRgn, 118);
KWE_FIELD(WindowRecord, updateRgn, 122);
KWE_FIELD(WindowRecord, windowDefProc, 126);
KWE_FIELD(WindowRecord, dataHandle, 130);
KWE_FIELD(WindowRecord, titleHandle, 134);
KWE_FIELD(WindowRecord, titleWidth, 138);
KWE_FIELD(WindowRecord, controlList, 140);
KWE_FIELD(WindowRecord, nextWindow, 144);
KWE_FIELD(WindowRecord, windowPic, 148);
KWE_FIELD(WindowRecord, refCon, 152);
#endif
