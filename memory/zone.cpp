// The one zone: its record, the session's start and end of the Memory
// Manager, and the zone calls that a heap of Windows leaves little to do.
#include "memory/zone.h"

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstring>

#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "frame/unsupported.h"
#include "memory/allocation_ladder.h"
#include "memory/master_blocks.h"
#include "memory/memory_figures.h"
#include "memory/purging.h"

namespace kwe::memory {
namespace {

constexpr SInt16 kDefaultMoreMasters = 64;

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(Zone) == 54, "the published zone record");
static_assert(offsetof(Zone, gzProc) == 16 && offsetof(Zone, moreMast) == 20 &&
                  offsetof(Zone, heapType) == 30 && offsetof(Zone, minCBFree) == 36 &&
                  offsetof(Zone, heapData) == 52,
              "zone record fields at their published offsets");
#endif

Zone g_zone;

}  // namespace

Zone& TheZone() { return g_zone; }

// There is no master block until the first handle is made.
void StartMemoryManager() {
  SampleMemoryStatus();
  ResetAccounting();
  std::memset(&g_zone, 0, sizeof g_zone);
  g_zone.moreMast = kDefaultMoreMasters;
}

THz ApplicationZone() { return &g_zone; }

// The data blocks of handles and pointers still alive are not freed one by
// one: they go with the process.
void ReleaseAllBlocks() {
  ReleaseAllMasterBlocks();
  ReleaseGrowZone();
}

}  // namespace kwe::memory

using namespace kwe;

namespace {
THz ZoneGlobal() { return lowmem::At<THz>(lowmem::Slot::ApplZone); }
}  // namespace

// All three answer the low-memory global ApplZone, which KWE_InitGlobals
// sets to the library's zone; the handle is not looked at.
KWE_API THz KWE_CALL HandleZone(Handle) { return ZoneGlobal(); }
KWE_API THz KWE_CALL GetZone(void) { return ZoneGlobal(); }
KWE_API THz KWE_CALL ApplicationZone(void) { return ZoneGlobal(); }

KWE_API THz KWE_CALL SystemZone(void) { return Unsupported("SystemZone", THz(nullptr)); }
KWE_API Ptr KWE_CALL TopMem(void) { return Unsupported("TopMem", Ptr(nullptr)); }
KWE_API Handle KWE_CALL GZSaveHnd(void) { return Unsupported("GZSaveHnd", Handle(nullptr)); }
KWE_API SInt32 KWE_CALL TempFreeMem(void) { return Unsupported("TempFreeMem", SInt32(0)); }

// One zone, grown by Windows: nothing to set up, reserve or limit.
KWE_API void KWE_CALL InitZone(GrowZoneProcPtr, SInt16, void*, void*) {}
KWE_API void KWE_CALL SetZone(THz) {}
KWE_API void KWE_CALL ReserveMem(Size) {}
KWE_API void KWE_CALL SetApplLimit(void*) {}
KWE_API void KWE_CALL MaxApplZone(void) {}

// Windows pages memory in and out as it likes.
KWE_API OSErr KWE_CALL HoldMemory(void*, UInt32) { return noErr; }
KWE_API OSErr KWE_CALL UnholdMemory(void*, UInt32) { return noErr; }

KWE_API SInt32 KWE_CALL StackSpace(void) { return 2048; }

// The zone's address plus the memory limit, or plus the platform heap's
// largest free block when there is no limit.
KWE_API Ptr KWE_CALL GetApplLimit(void) {
  const memory::MemoryLimits& limits = memory::Limits();
  SIZE_T room = limits.enabled ? limits.limit : LocalCompact(0);
  return reinterpret_cast<Ptr>(reinterpret_cast<uintptr_t>(ZoneGlobal()) + room);
}
