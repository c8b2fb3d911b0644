/* The basic types under their older name. */
#ifndef KWE_TYPES_H
#define KWE_TYPES_H

#include "MacTypes.h"

#endif
