// The application's grow-zone procedure: asked, from inside an allocation,
// to free the bytes the allocation still lacks.
#include "Memory.h"
#include "frame/host_procedures.h"
#include "memory/purging.h"

namespace kwe::memory {
namespace {

ProcPtr g_growZone = nullptr;  // as wrapped by the host's make procedure
bool g_growZoneRunning = false;

}  // namespace

bool AskGrowZone(Size needed, SInt32* freed) {
  // An allocation made by the procedure itself does not ask it again.
  if (!g_growZone || g_growZoneRunning) return false;
  g_growZoneRunning = true;
  *freed = reinterpret_cast<GrowZoneProcPtr>(g_growZone)(needed);
  g_growZoneRunning = false;
  return true;
}

void ReleaseGrowZone() {
  ReleaseHostProcedure(g_growZone);
  g_growZone = nullptr;
}

}  // namespace kwe::memory

KWE_API void KWE_CALL SetGrowZone(GrowZoneProcPtr growZone) {
  using namespace kwe;
  memory::ReleaseGrowZone();
  if (growZone) memory::g_growZone = WrapHostProcedure(reinterpret_cast<ProcPtr>(growZone));
}
