// SetStdProcs, SetStdCProcs and KWE_StdProcFix.
#include "KWESession.h"
#include "Quickdraw.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/ports/standard_procedures.h"

using namespace kwe::quickdraw;

KWE_API void KWE_CALL SetStdProcs(QDProcs* procs) {
  if (!procs) return;
  ProcPtr* slots = &procs->textProc;
  for (int i = 0; i < kPlainProcCount; ++i) slots[i] = StandardProcs()[i];
}

KWE_API void KWE_CALL SetStdCProcs(CQDProcs* procs) {
  if (!procs) return;
  ProcPtr* slots = &procs->textProc;
  for (int i = 0; i < kPlainProcCount; ++i) slots[i] = StandardProcs()[i];
  for (int i = kPlainProcCount; i < kColourProcCount; ++i) slots[i] = nullptr;
}

// The application's own procedures in the current port's record become
// callable through the host's make procedure (wrap), or are released and
// replaced by the standard ones.
KWE_API void KWE_CALL KWE_StdProcFix(Boolean wrap) {
  GrafPtr port = CurrentPort();
  if (!CurrentAttr() || !port->grafProcs || kwe::SessionFlag(kweFlagNoProcInstances)) return;
  ProcPtr* slots = &port->grafProcs->textProc;
  int count = IsColourPort(port) ? kColourProcCount : kPlainProcCount;
  for (int i = 0; i < count; ++i) {
    ProcPtr standard = i < kPlainProcCount ? StandardProcs()[i] : nullptr;
    if (slots[i] == standard) continue;
    if (wrap) {
      slots[i] = kwe::WrapHostProcedure(slots[i]);
    } else {
      kwe::ReleaseHostProcedure(slots[i]);
      slots[i] = standard;
    }
  }
}
