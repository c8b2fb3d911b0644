// The published layout of ControlRecord, which applications read field by
// field. Checked where pointers are 32 bits wide; the 64-bit build widens
// the pointer fields in place.
#include <cstdint>

#include "Controls.h"
#include "frame/layout_check.h"

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(ControlRecord) == 296, "ControlRecord");
KWE_FIELD(ControlRecord, contrlOwner, 4);
KWE_FIELD(ControlRecord, contrlRect, 8);
KWE_FIELD(ControlRecord, contrlVis, 16);
KWE_FIELD(ControlRecord, contrlHilite, 17);
KWE_FIELD(ControlRecord, contrlValue, 18);
KWE_FIELD(ControlRecord, contrlMin, 20);
KWE_FIELD(ControlRecord, contrlMax, 22);
KWE_FIELD(ControlRecord, contrlDefProc, 24);
KWE_FIELD(ControlRecord, contrlData, 28);
KWE_FIELD(ControlRecord, contrlAction, 32);
KWE_FIELD(ControlRecord, contrlRfCon, 36);
KWE_FIELD(ControlRecord, contrlTitle, 40);
#endif
