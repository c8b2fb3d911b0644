/* windows.h as the library's Windows-side headers bring it in. The print
   spooler's header names its own SetPort as a macro: dropped, so that the
   Toolbox's SetPort stays callable. A source that has Dialogs.h in already
   gets the Dialog Manager's Win32-typed calls with it (KWEDialogs.h). */
#ifndef KWE_WIN32_H
#define KWE_WIN32_H

#include <windows.h>

#ifdef SetPort
#undef SetPort
#endif

#endif

#if defined(KWE_DIALOGS_H) && !defined(KWE_KWEDIALOGS_H)
#include "KWEDialogs.h"
#endif
