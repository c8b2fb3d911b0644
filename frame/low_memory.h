// Macintosh low-memory globals, living in the host's own variables. Every
// read and write goes through the address bound by KWE_InitGlobals, so the
// host's code sees the values directly.
#pragma once
#include <cstddef>

#include "KWESession.h"

namespace kwe::lowmem {

// Byte offset of each slot in the 32-bit globals record.
enum class Slot : int {
  SFSaveDisk = 4,
  CurDirStore = 8,
  CurrentVolume = 12,
  MainDevice = 16,
  DeviceList = 20,
  WMgrPort = 24,
  EventQueue = 28,
  Unused32 = 32,
  MemErr = 36,
  GrayRgn = 40,
  WindowList = 44,
  ThePort = 48,
  White = 52,
  Black = 56,
  Gray = 60,
  DkGray = 64,
  LtGray = 68,
  Arrow = 72,
  ScreenBits = 76,
  ScrapInfo = 84,
  PrintErr = 88,
  Ticks = 92,
  CaretTime = 112,
  PendingActivation = 116,
  HiliteMode = 120,
  TheGDevice = 124,
  ResErr = 128,
  Unused132 = 132,
  HiliteRGB = 136,
  ButtonState = 140,
  FractEnable = 156,
  WidthTabHandle = 160,
  TheMenu = 164,
  ResumeProc = 168,
  SysEvtMask = 172,
  DoubleTime = 176,
  ApplZone = 180,
  MenuList = 184,
  MenuFlash = 188,
  TEScrpLength = 192,
  TEScrpHandle = 196,
  ResLoad = 200,
  PendingDeactivation = 212,
  TEStyleScrapFlag = 220,
  TEStyleScrap = 224,
};

constexpr int kSlotCount = 56;
constexpr int kSpareCellCount = 16;

// A slot's place among the bound addresses: the globals record's pointers
// start at offset 4.
constexpr int IndexOf(int offset) { return (offset - 4) / 4; }

// The addresses currently standing for the globals, by slot.
struct BoundAddresses {
  void* at[kSlotCount];
};
extern BoundAddresses g_bound;

// The address currently standing for a global. Before KWE_InitGlobals every
// slot points at a zeroed library cell, so no call ever writes through null.
inline void* Address(Slot slot) { return g_bound.at[IndexOf(static_cast<int>(slot))]; }

template <class T>
T& At(Slot slot) {
  return *static_cast<T*>(Address(slot));
}

// Binds every slot from the host's record (binding order and initial values
// of the session start-up); null pointers get library spare cells.
void BindFromRecord(const KWEGlobalsRecord& record);

// Points MemErr at a library cell and clears it, so the Memory Manager works
// before the host binds its globals.
void BindMemErrToLibraryCell();

inline OSErr& MemErr() { return At<OSErr>(Slot::MemErr); }
inline OSErr& ResErr() { return At<OSErr>(Slot::ResErr); }
inline UInt32& Ticks() { return At<UInt32>(Slot::Ticks); }

}  // namespace kwe::lowmem
