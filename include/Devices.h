/* Device Manager: the driver calls Windows has no drivers for. They report
   themselves as unsupported calls do; the parameter blocks are the File
   Manager's. */
#ifndef KWE_DEVICES_H
#define KWE_DEVICES_H

#include "Desk.h"
#include "Files.h"
#include "UnsupportedCalls.h"

#endif
