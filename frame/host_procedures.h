// Application procedures handed to the library go through the host's make and
// free procedures (the MakeProcInstance pair), unless the session says not to.
#pragma once
#include "MacTypes.h"

namespace kwe {

// The callable form of procedure: make(procedure, instance), or procedure
// itself when it is null, the host gave no make procedure, or flag
// 0x00000200 is set.
ProcPtr WrapHostProcedure(ProcPtr procedure);

// Releases what WrapHostProcedure returned, under the same conditions.
void ReleaseHostProcedure(ProcPtr callable);

}  // namespace kwe
