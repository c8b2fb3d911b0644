// Host procedures standing in for code resources: the Menu, Control, Window
// and List Managers ask here for the procedure that plays a 'MDEF', 'CDEF',
// 'WDEF' or 'LDEF' of a given ID, since no 68K code can run.
#include <array>

#include "Resources.h"
#include "frame/host_procedures.h"

namespace {

struct CodeResourceEntry {
  ResType type = 0;
  SInt16 id = 0;
  ProcPtr procedure = nullptr;  // null: a free entry
};

std::array<CodeResourceEntry, 64> g_registry;

enum CodeResourceOp : SInt16 {
  kRelease = 0,
  kRegister = 1,
  kClearAll = 2,
  kLookUp = 3,
  kReleaseAtEnd = 4,
  kIsRegistered = 5
};

}  // namespace

KWE_API ProcPtr KWE_CALL KWE_CodeResource(SInt16 op, ResType theType, SInt16 theID,
                                          ProcPtr procedure) {
  switch (op) {
    case kRelease:
    case kReleaseAtEnd:
      for (CodeResourceEntry& entry : g_registry) {
        if (!entry.procedure || entry.type != theType || entry.id != theID) continue;
        kwe::ReleaseHostProcedure(entry.procedure);
        entry = CodeResourceEntry{};
      }
      return nullptr;
    case kRegister:
      for (CodeResourceEntry& entry : g_registry) {
        if (entry.procedure) continue;
        ProcPtr stored = kwe::WrapHostProcedure(procedure);
        if (stored) entry = CodeResourceEntry{theType, theID, stored};
        return stored;
      }
      return nullptr;
    case kClearAll: g_registry.fill(CodeResourceEntry{}); return nullptr;
    case kLookUp:
      for (const CodeResourceEntry& entry : g_registry)
        if (entry.procedure && entry.type == theType && entry.id == theID) return entry.procedure;
      return nullptr;
    case kIsRegistered:
      for (const CodeResourceEntry& entry : g_registry)
        if (entry.procedure && entry.type == theType && entry.procedure == procedure)
          return procedure;
      return nullptr;
    default: return nullptr;
  }
}

namespace kwe::resources {

// At session end every registered procedure is given back to the host, as
// the session's other wrapped callbacks are: a registration under a real
// type would otherwise never be released.
void ReleaseAllCodeResources() {
  for (CodeResourceEntry& entry : g_registry) {
    if (entry.procedure) kwe::ReleaseHostProcedure(entry.procedure);
    entry = CodeResourceEntry{};
  }
}

}  // namespace kwe::resources
