// The program's QuickDraw globals, for programs that only declare qd (as
// Quickdraw.h does); a program that defines qd itself keeps its own, and the
// linker leaves this file out.
#include "Quickdraw.h"

QDGlobals qd;
