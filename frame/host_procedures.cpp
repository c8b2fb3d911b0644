#include "frame/host_procedures.h"

#include "frame/session.h"

namespace kwe {

ProcPtr WrapHostProcedure(ProcPtr procedure) {
  Session& s = TheSession();
  if (!procedure || !s.makeProcedure || SessionFlag(kweFlagNoProcInstances)) return procedure;
  return s.makeProcedure(procedure, s.instance);
}

void ReleaseHostProcedure(ProcPtr callable) {
  Session& s = TheSession();
  if (!callable || !s.freeProcedure || SessionFlag(kweFlagNoProcInstances)) return;
  s.freeProcedure(callable);
}

}  // namespace kwe
