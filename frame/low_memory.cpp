#include "frame/low_memory.h"

#include <windows.h>

#include <cstring>
#include <utility>

#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::lowmem {
namespace {

// A cell holds any global (the largest, Cursor, is 68 bytes), so a host that
// leaves even screenBits or arrow null is never written past.
struct alignas(8) Cell {
  unsigned char bytes[72];
};

Cell g_slotCells[kSlotCount];  // stand-ins until the host binds, and past the spares
Cell g_spareCells[kSpareCellCount];
int g_sparesUsed = 0;  // not reset by a later session

template <std::size_t... I>
constexpr BoundAddresses OwnCells(std::index_sequence<I...>) {
  return BoundAddresses{{&g_slotCells[I]...}};
}

// The 16 spare cells go to the first null pointers in binding order. A record
// with more null pointers than that is outside what a 16-bit-era host could
// rely on; rather than fail, each further slot keeps its own library cell.
void* SpareCellFor(int index) {
  if (g_sparesUsed < kSpareCellCount) {
    Cell* cell = &g_spareCells[g_sparesUsed++];
    std::memset(cell, 0, sizeof *cell);
    return cell;
  }
  return &g_slotCells[index];
}

constexpr int kBindingOrder[] = {
    20,  28,  40,  32,  16,  36,  8,   4,   12,  24,  44,  48,  52,  56,  68,  60,  64,  72,  76,
    80,  84,  88,  92,  96,  100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140, 144, 148, 152,
    156, 160, 164, 168, 172, 176, 180, 184, 188, 192, 196, 200, 204, 208, 212, 216, 220, 224};
static_assert(sizeof kBindingOrder / sizeof kBindingOrder[0] == kSlotCount,
              "every slot is bound exactly once");

void* const* RecordPointers(const KWEGlobalsRecord& record) {
  static_assert(offsetof(KWEGlobalsRecord, TEStyleScrap) ==
                    offsetof(KWEGlobalsRecord, SFSaveDisk) + (kSlotCount - 1) * sizeof(void*),
                "the globals record is a run of 56 pointers");
  return reinterpret_cast<void* const*>(reinterpret_cast<const char*>(&record) +
                                        offsetof(KWEGlobalsRecord, SFSaveDisk));
}

template <class T>
void Set(Slot slot, T value) {
  At<T>(slot) = value;
}

// Initial values written as each slot is bound.
void InitialiseSlot(int offset) {
  switch (static_cast<Slot>(offset)) {
    case Slot::GrayRgn: Set<RgnHandle>(Slot::GrayRgn, nullptr); break;
    case Slot::Unused32: Set<SInt16>(Slot::Unused32, 0); break;
    case Slot::MemErr: Set<OSErr>(Slot::MemErr, noErr); break;
    case Slot::PrintErr:
      Set<SInt16>(Slot::PrintErr, 0);
      LoadStringA(TheSession().instance, 1026, TheSession().printDocumentName,
                  sizeof TheSession().printDocumentName);
      break;
    case Slot::Ticks: Set<UInt32>(Slot::Ticks, GetTickCount() >> 4); break;
    case Slot::CaretTime: Set<UInt32>(Slot::CaretTime, GetCaretBlinkTime() >> 4); break;
    case Slot::PendingActivation: Set<WindowPtr>(Slot::PendingActivation, nullptr); break;
    case Slot::HiliteMode: Set<UInt8>(Slot::HiliteMode, 0x80); break;
    case Slot::ResErr: Set<OSErr>(Slot::ResErr, noErr); break;
    case Slot::Unused132: Set<UInt8>(Slot::Unused132, 0); break;
    case Slot::HiliteRGB: {
      COLORREF c = GetSysColor(COLOR_HIGHLIGHT);
      RGBColor rgb = {static_cast<UInt16>(GetRValue(c) * 256),
                      static_cast<UInt16>(GetGValue(c) * 256),
                      static_cast<UInt16>(GetBValue(c) * 256)};
      Set<RGBColor>(Slot::HiliteRGB, rgb);
      break;
    }
    case Slot::TheMenu: Set<SInt16>(Slot::TheMenu, 0); break;
    case Slot::ApplZone: Set<THz>(Slot::ApplZone, memory::ApplicationZone()); break;
    case Slot::PendingDeactivation: Set<WindowPtr>(Slot::PendingDeactivation, nullptr); break;
    default: break;
  }
}

}  // namespace

// Every slot starts at its own cell, bound at compile time, so that a global
// read or written before KWE_InitGlobals (even from a static constructor)
// needs no check on the way.
BoundAddresses g_bound = OwnCells(std::make_index_sequence<kSlotCount>());

void BindMemErrToLibraryCell() {
  int index = IndexOf(static_cast<int>(Slot::MemErr));
  g_bound.at[index] = &g_slotCells[index];
  MemErr() = noErr;
}

void BindFromRecord(const KWEGlobalsRecord& record) {
  void* const* pointers = RecordPointers(record);
  for (int offset : kBindingOrder) {
    int index = IndexOf(offset);
    void* address = pointers[index] ? pointers[index] : SpareCellFor(index);
    // Offset 216 is bound (it may take a spare cell) but its variable is never used.
    if (offset != 216) g_bound.at[index] = address;
    InitialiseSlot(offset);
  }
}

}  // namespace kwe::lowmem
