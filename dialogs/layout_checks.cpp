// The published layout of DialogRecord, which applications read field by
// field. Checked where pointers are 32 bits wide; the 64-bit build widens
// the pointer fields in place.
#include <cstdint>

#include "Dialogs.h"
#include "frame/layout_check.h"

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(DialogRecord) == 170, "DialogRecord");
KWE_FIELD(DialogRecord, items, 156);
KWE_FIELD(DialogRecord, textH, 160);
KWE_FIELD(DialogRecord, editField, 164);
KWE_FIELD(DialogRecord, editOpen, 166);
KWE_FIELD(DialogRecord, aDefItem, 168);
#endif
