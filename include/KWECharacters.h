/* Text between the Macintosh Roman character set of Toolbox strings and the
   Windows ANSI set of Win32 controls, menus and GDI text calls. Codes below
   0x80 pass unchanged; 0x80 to 0xFF go through a pair of tables that undo
   each other. System value 24 (KWE_SystemValue) switches the tables off. */
#ifndef KWE_CHARACTERS_H
#define KWE_CHARACTERS_H

#include "MacTypes.h"

/* KWE_MacToAnsiBuf flags. */
enum {
  kweKeepTypographic = 0x0001, /* no "...", plain quote or "(tm)" expansion */
  kweDropReturns = 0x0002,     /* every CR (13) is left out */
  kweMeasureText = 0x0004,     /* QuickDraw text measures what is written */
  kweNoTranslation = 0x0008    /* the tables are off for this call */
};

/* Converts count bytes and returns the number written: the ellipsis becomes
   "...", the curly double quotes a plain one and the trade mark "(tm)"
   (unless kweKeepTypographic), so dst needs up to 4 bytes a source byte.
   The expansions and kweDropReturns apply also while the tables are off. */
KWE_API SInt32 KWE_CALL KWE_MacToAnsiBuf(const UInt8* src, UInt8* dst, UInt16 count, SInt16 flags);
/* Converts up to count bytes, stopping before a NUL (which is not copied);
   returns the number written. */
KWE_API SInt32 KWE_CALL KWE_AnsiToMacBuf(const UInt8* src, UInt8* dst, SInt16 count);

#endif
