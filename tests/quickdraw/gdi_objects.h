// Live GDI objects of this process, counted in the GDI handle table that the
// PEB shares with user mode: GetGuiResources is a stub under Wine. In Wine's
// table and Windows' alike an entry is 24 bytes on x86_64 and its type byte
// sits at offset 14.
#pragma once
#include <windows.h>
#include <winternl.h>

namespace kwe_test {

constexpr int kGdiAnyType = -1;
constexpr int kGdiRegion = 4;

// -1 when there is no table to count in (a 32-bit build).
inline int LiveGdiObjects(int type = kGdiAnyType) {
  using Query = LONG(WINAPI*)(HANDLE, PROCESSINFOCLASS, void*, ULONG, ULONG*);
  auto query = reinterpret_cast<Query>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleA("ntdll"), "NtQueryInformationProcess")));
  PROCESS_BASIC_INFORMATION basic{};
  if (sizeof(void*) != 8 || !query ||
      query(GetCurrentProcess(), ProcessBasicInformation, &basic, sizeof basic, nullptr) != 0)
    return -1;
  auto* peb = reinterpret_cast<const unsigned char*>(basic.PebBaseAddress);
  auto* table = *reinterpret_cast<const unsigned char* const*>(peb + 0xF8);
  if (!table) return -1;
  int live = 0;
  for (int i = 0; i < 0x10000; ++i) {
    unsigned char t = table[i * 24 + 14];
    live += type == kGdiAnyType ? t != 0 : t == type;
  }
  return live;
}

}  // namespace kwe_test
