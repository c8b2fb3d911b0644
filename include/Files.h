/* File specifications (the File Manager's calls join them as that manager grows). */
#ifndef KWE_FILES_H
#define KWE_FILES_H

#include "MacTypes.h"

#pragma pack(push, 2)
typedef struct FSSpec {
  SInt16 vRefNum;
  SInt32 parID;
  Str63 name;
} FSSpec, *FSSpecPtr;
#pragma pack(pop)

#endif
