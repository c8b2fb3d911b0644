/* PPC Toolbox: only the browser is exported. It reports "PPCBROWSER" and
   answers noErr without writing theLocation or thePortInfo. */
#ifndef KWE_PPCTOOLBOX_H
#define KWE_PPCTOOLBOX_H

#include "MacTypes.h"

typedef const unsigned char* ConstStr32Param;
typedef struct LocationNameRec LocationNameRec;
typedef struct PortInfoRec PortInfoRec;
typedef Boolean(KWE_CALL* PPCFilterProcPtr)(LocationNameRec* name, PortInfoRec* port);

KWE_API OSErr KWE_CALL PPCBrowser(ConstStr255Param prompt, ConstStr255Param applListLabel,
                                  Boolean defaultSpecified, LocationNameRec* theLocation,
                                  PortInfoRec* thePortInfo, PPCFilterProcPtr portFilter,
                                  ConstStr32Param theLocNBPType);

#endif
