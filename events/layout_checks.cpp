// The published 68K layouts of the Event Manager's records: applications
// walk the event queue through GetEvQHdr and fill VBL tasks field by field.
// Checked where pointers are 32 bits wide.
#include <cstdint>

#include "Events.h"
#include "Retrace.h"
#include "frame/layout_check.h"

static_assert(sizeof(EventRecord) == 16, "EventRecord");
KWE_FIELD(EventRecord, message, 2);
KWE_FIELD(EventRecord, when, 6);
KWE_FIELD(EventRecord, where, 10);
KWE_FIELD(EventRecord, modifiers, 14);

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(QHdr) == 10, "QHdr");
static_assert(sizeof(EvQEl) == 22, "EvQEl");
KWE_FIELD(EvQEl, qType, 4);
KWE_FIELD(EvQEl, evtQWhat, 6);
KWE_FIELD(EvQEl, evtQMessage, 8);
KWE_FIELD(EvQEl, evtQWhen, 12);
KWE_FIELD(EvQEl, evtQWhere, 16);
KWE_FIELD(EvQEl, evtQModifiers, 20);
static_assert(sizeof(VBLTask) == 14, "VBLTask");
KWE_FIELD(VBLTask, vblAddr, 6);
KWE_FIELD(VBLTask, vblCount, 10);
KWE_FIELD(VBLTask, vblPhase, 12);
#endif
