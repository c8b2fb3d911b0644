#include "quickdraw/cursors/cursor_cache.h"

#include <cstring>

#include "Memory.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "memory/resource_shortcut_hook.h"
#include "quickdraw/cursors/cursor_install.h"

namespace kwe::quickdraw {
namespace {

struct CacheSlot {
  HCURSOR cursor = nullptr;
  bool parked = false;
  CursorImage image{};
};

CacheSlot g_slots[kCursorCacheSlots];
// GetCursor(0 to 4): records that stand for the standard cursors only
// through their marked hot spots.
Cursor** g_standardRecords[kStandardCursorCount] = {};
HCURSOR g_dragCursors[2] = {};
bool g_doubleSize = false;

bool ReadDoubleSizeSetting() {
  char directory[MAX_PATH];
  DWORD n = GetEnvironmentVariableA("MOUSE", directory, sizeof directory);
  if (n == 0 || n >= sizeof directory - 12) return false;
  char path[MAX_PATH];
  const char* separator = (directory[n - 1] == '\\' || directory[n - 1] == '/') ? "" : "\\";
  wsprintfA(path, "%s%sMOUSE.INI", directory, separator);
  char size[16] = "";
  GetPrivateProfileStringA("WindowsPointer", "PointerSize", "Small", size, sizeof size, path);
  return lstrcmpiA(size, "Large") == 0;
}

HCURSOR LibraryCursor(const char* name, LPCSTR fallback) {
  HCURSOR cursor = LoadCursorA(TheSession().libraryModule, name);
  return cursor ? cursor : LoadCursorA(nullptr, fallback);
}

bool SameImage(const CursorImage& a, const CursorImage& b) {
  return std::memcmp(a.bits, b.bits, sizeof a.bits) == 0 && a.hotSpot.v == b.hotSpot.v &&
         a.hotSpot.h == b.hotSpot.h;
}

bool IsMadeSlot(int slot) { return slot >= kStandardCursorCount && slot < kCursorCacheSlots; }

}  // namespace

bool DoubleSizeCursors() { return g_doubleSize; }

HCURSOR CachedCursor(int slot) {
  return slot >= 0 && slot < kCursorCacheSlots ? g_slots[slot].cursor : nullptr;
}

bool IsCachedCursor(HCURSOR cursor) {
  if (!cursor) return false;
  for (const CacheSlot& s : g_slots)
    if (s.cursor == cursor) return true;
  return false;
}

bool CursorCacheHasRoom() {
  for (int slot = kStandardCursorCount; slot < kCursorCacheSlots; ++slot)
    if (!g_slots[slot].cursor) return true;
  return false;
}

int CacheMadeCursor(HCURSOR cursor, const CursorImage& image) {
  for (int slot = kStandardCursorCount; slot < kCursorCacheSlots; ++slot) {
    if (g_slots[slot].cursor) continue;
    g_slots[slot] = CacheSlot{cursor, false, image};
    return slot;
  }
  return -1;
}

void ReleaseCachedCursor(int slot) {
  if (!IsMadeSlot(slot) || !g_slots[slot].cursor) return;
  HCURSOR cursor = g_slots[slot].cursor;
  g_slots[slot] = CacheSlot{};
  DestroyCursorWhenUnused(cursor);
}

void ParkCachedCursor(int slot, const CursorImage& image) {
  if (!IsMadeSlot(slot) || !g_slots[slot].cursor) return;
  // A record changed since its cursor was made will come back as a new
  // cursor; the old one is of no more use.
  if (SameImage(g_slots[slot].image, image))
    g_slots[slot].parked = true;
  else
    ReleaseCachedCursor(slot);
}

int TakeParkedCursor(const CursorImage& image) {
  for (int slot = kStandardCursorCount; slot < kCursorCacheSlots; ++slot) {
    CacheSlot& s = g_slots[slot];
    if (s.cursor && s.parked && SameImage(s.image, image)) {
      s.parked = false;
      return slot;
    }
  }
  return -1;
}

HCURSOR DragCursor(bool multiple) { return g_dragCursors[multiple ? 1 : 0]; }

void FillArrowGlobal() {
  if (Cursor** arrow = g_standardRecords[kArrowCursorSlot])
    lowmem::At<Cursor>(lowmem::Slot::Arrow) = **arrow;
}

void StartCursors() {
  g_doubleSize = ReadDoubleSizeSetting();
  // Shared cursors (LoadCursor's), never destroyed.
  g_slots[0].cursor = LoadCursorA(nullptr, IDC_ARROW);
  g_slots[1].cursor = LoadCursorA(nullptr, IDC_IBEAM);
  g_slots[2].cursor = LibraryCursor("CrossCursor", IDC_CROSS);
  g_slots[3].cursor = LibraryCursor("PlusCursor", IDC_CROSS);
  g_slots[4].cursor = LoadCursorA(nullptr, IDC_WAIT);
  g_dragCursors[0] = LibraryCursor("DragSingleCursor", IDC_ARROW);
  g_dragCursors[1] = LibraryCursor("DragMultipleCursor", IDC_ARROW);
  for (int slot = 0; slot < kStandardCursorCount; ++slot) {
    auto record = reinterpret_cast<Cursor**>(NewHandleClear(sizeof(Cursor)));
    if (!record) continue;
    (*record)->hotSpot.v = SInt16(0xFFFF);
    (*record)->hotSpot.h = SInt16(0x00FF + slot * 256);
    g_standardRecords[slot] = record;
  }
  FillArrowGlobal();
  StartCursorInstall();
}

void EndCursors() {
  EndCursorInstall();
  for (int slot = kStandardCursorCount; slot < kCursorCacheSlots; ++slot)
    if (g_slots[slot].cursor) DestroyCursor(g_slots[slot].cursor);
  for (CacheSlot& s : g_slots) s = CacheSlot{};
  for (Cursor**& record : g_standardRecords) {
    if (record) DisposeHandle(reinterpret_cast<Handle>(record));
    record = nullptr;
  }
  g_dragCursors[0] = g_dragCursors[1] = nullptr;
  g_doubleSize = false;
}

Cursor** BuiltInCursorHandle(SInt16 id) {
  return id >= 0 && id < kStandardCursorCount ? g_standardRecords[id] : nullptr;
}

}  // namespace kwe::quickdraw
