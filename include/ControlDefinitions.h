/* The standard control definitions' procIDs, part codes and messages: they
   live with the Control Manager's calls. */
#ifndef KWE_CONTROLDEFINITIONS_H
#define KWE_CONTROLDEFINITIONS_H

#include "Controls.h"

#endif
