// The published layout of ListRec, which applications read field by field.
// Checked where pointers are 32 bits wide; the 64-bit build widens the
// pointer fields in place.
#include <cstdint>

#include "KWELists.h"
#include "Lists.h"
#include "frame/layout_check.h"

#if UINTPTR_MAX == 0xFFFFFFFFu
KWE_FIELD(ListRec, port, 8);
KWE_FIELD(ListRec, indent, 12);
KWE_FIELD(ListRec, cellSize, 16);
KWE_FIELD(ListRec, visible, 20);
KWE_FIELD(ListRec, vScroll, 28);
KWE_FIELD(ListRec, hScroll, 32);
KWE_FIELD(ListRec, selFlags, 36);
KWE_FIELD(ListRec, lActive, 37);
KWE_FIELD(ListRec, lReserved, 38);
KWE_FIELD(ListRec, listFlags, 39);
KWE_FIELD(ListRec, clikTime, 40);
KWE_FIELD(ListRec, clikLoc, 44);
KWE_FIELD(ListRec, mouseLoc, 48);
KWE_FIELD(ListRec, lClikLoop, 52);
KWE_FIELD(ListRec, lastClick, 56);
KWE_FIELD(ListRec, refCon, 60);
KWE_FIELD(ListRec, listDefProc, 64);
KWE_FIELD(ListRec, userHandle, 68);
KWE_FIELD(ListRec, dataBounds, 72);
KWE_FIELD(ListRec, cells, 80);
KWE_FIELD(ListRec, maxIndex, 84);
KWE_FIELD(ListRec, cellArray, 86);
#endif
