// The print and print-setup dialog hooks the host names in its session record.
#pragma once
#include "MacTypes.h"

namespace kwe {

// Each keeps the host's hook as a procedure instance, releasing the previous one.
void SetPrintDialogHook(ProcPtr hook);
void SetPrintSetupDialogHook(ProcPtr hook);

}  // namespace kwe
