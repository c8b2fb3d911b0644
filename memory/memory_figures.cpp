// FreeMem and its relatives, purging on request, the memory limit and the
// library's memory figures.
#include "memory/memory_figures.h"

#include <algorithm>
#include <cstdint>

#include "Memory.h"
#include "frame/session.h"
#include "memory/allocation_ladder.h"
#include "memory/purging.h"

namespace kwe::memory {
namespace {

constexpr SInt32 kLargestContiguous = 65536;
constexpr SIZE_T kPageFileReserve = 32768;

MEMORYSTATUS g_status{};

UInt32 Saturate32(uint64_t value) {
  return value > UINT32_MAX ? UINT32_MAX : static_cast<UInt32>(value);
}

SInt32 SaturateSigned(int64_t value) {
  return static_cast<SInt32>(std::clamp<int64_t>(value, 0, INT32_MAX));
}

// What the page file has left, less a reserve for Windows itself; on a
// system without a page file, the free physical memory.
SInt32 FreeFigure() {
  const MemoryLimits& limits = Limits();
  if (limits.enabled) {
    return SaturateSigned(static_cast<int64_t>(limits.limit) - AllocatedBytes());
  }
  MEMORYSTATUS status = SampleMemoryStatus();
  if (status.dwTotalPageFile == 0) return SaturateSigned(status.dwAvailPhys);
  if (status.dwAvailPageFile < kPageFileReserve) return 0;
  SIZE_T available = status.dwAvailPageFile - kPageFileReserve;
  return available > status.dwTotalPageFile ? 0 : SaturateSigned(available);
}

// Signed: every caller here is a Toolbox Size.
SIZE_T Compact(Size needed) { return LocalCompact(static_cast<UINT>(needed > 0 ? needed : 0)); }

}  // namespace

MEMORYSTATUS SampleMemoryStatus() {
  g_status = MEMORYSTATUS{};
  g_status.dwLength = sizeof g_status;
  GlobalMemoryStatus(&g_status);
  return g_status;
}

}  // namespace kwe::memory

using namespace kwe;
using namespace kwe::memory;

KWE_API SInt32 KWE_CALL FreeMem(void) { return FreeFigure(); }

KWE_API Size KWE_CALL MaxBlock(void) { return FreeFigure(); }

KWE_API Size KWE_CALL MaxMem(Size*) { return SaturateSigned(LocalCompact(0)); }

KWE_API void KWE_CALL PurgeSpace(SInt32* total, SInt32* contig) {
  SInt32 free = FreeFigure();
  if (total) *total = free;
  if (contig) *contig = std::min(free, kLargestContiguous);
}

// cbNeeded when purging frees that much, else what compacting reports.
KWE_API Size KWE_CALL CompactMem(Size cbNeeded) {
  if (PurgePass(cbNeeded)) return cbNeeded;
  return SaturateSigned(Compact(cbNeeded));
}

// Requests of 64 KB or more purge nothing.
KWE_API void KWE_CALL PurgeMem(Size cbNeeded) {
  if (cbNeeded >= kLargestContiguous) return;
  if (!PurgePass(cbNeeded)) Compact(cbNeeded);
}

KWE_API void KWE_CALL KWE_SetMemoryLimits(UInt8 enable, UInt32 limit, UInt32 checkSize,
                                          SInt16 maxBlocks) {
  MemoryLimits& limits = Limits();
  limits.enabled = enable != 0;
  limits.limit = enable ? limit : 0;
  limits.checkSize = enable ? checkSize : 0;
  limits.maxBlocks = (enable && maxBlocks != 0) ? maxBlocks : SInt16(32767);
}

KWE_API void KWE_CALL KWE_ComputeMemorySize(UInt32* totalPageFile, UInt32* availPageFile,
                                            UInt32* totalPhys, UInt32* availPhys,
                                            UInt32* allocated) {
  MEMORYSTATUS status = SampleMemoryStatus();
  if (totalPageFile) *totalPageFile = Saturate32(status.dwTotalPageFile);
  if (availPageFile) *availPageFile = Saturate32(status.dwAvailPageFile);
  if (totalPhys) *totalPhys = Saturate32(status.dwTotalPhys);
  if (availPhys) *availPhys = Saturate32(status.dwAvailPhys);
  if (allocated) *allocated = AllocatedBytes();
}

// Only Windows 3.x kept GDI and USER in small heaps worth watching; it
// answers through KERNEL's GETHEAPSPACES (free in the low word, total in
// the high word).
KWE_API UInt32 KWE_CALL KWE_GetFreeSystemResources(UInt16 which) {
  if (which > 2) return which;
  if (TheSession().version.versionWord != 3) return 100;
  using HeapSpaces = DWORD(WINAPI*)(HMODULE);
  HMODULE kernel = GetModuleHandleA("KERNEL");
  auto heapSpaces = kernel ? reinterpret_cast<HeapSpaces>(reinterpret_cast<void (*)()>(
                                 GetProcAddress(kernel, "GETHEAPSPACES")))
                           : nullptr;
  if (!heapSpaces) return 100;
  auto percentFree = [heapSpaces](const char* module) -> UInt32 {
    DWORD spaces = heapSpaces(GetModuleHandleA(module));
    DWORD total = HIWORD(spaces);
    return total ? LOWORD(spaces) * 100u / total : 100u;
  };
  if (which == 1) return percentFree("GDI");
  if (which == 2) return percentFree("USER");
  return std::min(percentFree("GDI"), percentFree("USER"));
}
