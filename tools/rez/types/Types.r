/* The standard resource declarations, written for this library from the
   published layouts of the Toolbox resources. A source that includes this
   file can compile every type the Toolbox managers read. */
#include "MacTypes.r"
#include "SysTypes.r"
#include "Menus.r"
#include "MacWindows.r"
#include "Controls.r"
#include "Dialogs.r"
#include "Quickdraw.r"
#include "Icons.r"
#include "Palettes.r"
#include "Finder.r"
#include "Processes.r"
#include "KWETypes.r"
