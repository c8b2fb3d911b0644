#include "frame/printing_hooks.h"

#include "frame/host_procedures.h"
#include "frame/session.h"

namespace kwe {
namespace {

void Replace(ProcPtr& slot, ProcPtr hook) {
  ReleaseHostProcedure(slot);
  slot = WrapHostProcedure(hook);
}

}  // namespace

void SetPrintDialogHook(ProcPtr hook) { Replace(TheSession().printDialogHook, hook); }
void SetPrintSetupDialogHook(ProcPtr hook) { Replace(TheSession().printSetupDialogHook, hook); }

}  // namespace kwe

KWE_API void KWE_CALL KWE_SetupPrintDlgHook(ProcPtr hook) { kwe::SetPrintDialogHook(hook); }
KWE_API void KWE_CALL KWE_SetupPrSetupDlgHook(ProcPtr hook) { kwe::SetPrintSetupDialogHook(hook); }
