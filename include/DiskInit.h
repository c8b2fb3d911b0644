/* Disk Initialization Package: DIBadMount answers a disk-inserted event;
   DILoad and DIUnload have nothing to load. */
#ifndef KWE_DISKINIT_H
#define KWE_DISKINIT_H

#include "Files.h"
#include "UnsupportedCalls.h"

#endif
