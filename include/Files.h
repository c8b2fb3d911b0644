/* FSSpec: volume, parent directory and name (the File Manager grows around it). */
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
