/* The host's file-type table, handed over with KWE_Set_Tovel: file naming
   maps DOS extensions to file types with it, and the Standard File dialogs
   list their filters from it. */
#ifndef KWE_FILE_TYPES_H
#define KWE_FILE_TYPES_H

#include "MacTypes.h"

/* 40-byte records ended by one whose type is 0. */
typedef struct KWEFileTypeEntry {
  OSType fileType;
  char extension[3];
  char description[33];
} KWEFileTypeEntry;

#endif
