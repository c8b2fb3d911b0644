// Stand-ins for managers that are not built yet. The patchable calls report
// themselves like unsupported calls, so a porting developer sees each use;
// the start-up and shut-down steps do the least that keeps a session whole.
// Each manager removes its entries here as it takes them over.
#include <windows.h>

#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "frame/unsupported.h"
