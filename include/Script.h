/* The Script Manager's codes that file and text calls take. Only the Roman
   script exists here: the system script and the current script are both
   Macintosh Roman, which the library converts to and from the ANSI code
   page. */
#ifndef KWE_SCRIPT_H
#define KWE_SCRIPT_H

#include "MacTypes.h"

typedef SInt16 ScriptCode;
typedef SInt16 LangCode;

enum { smRoman = 0, smSystemScript = -1, smCurrentScript = -2, smAllScripts = -3 };
enum { langEnglish = 0 };

#endif
