#ifndef KWE_GESTALT_H
#define KWE_GESTALT_H

#include "MacTypes.h"

/* Unknown selectors give gestaltUndefSelectorErr (-5550) and a zero response. */
KWE_API OSErr KWE_CALL Gestalt(OSType selector, SInt32* response);

#endif
