// FSpExchangeFiles: DOS files have no catalog entries to swap, so the two
// files trade names through a temporary one.
#include <windows.h>

#include <vector>

#include "Files.h"
#include "files/call_support.h"
#include "files/dos_path.h"
#include "files/file_slots.h"

using namespace kwe::files;

namespace {

struct HeldSlot {
  SInt16 slot;
  bool first;   // holds the first file (else the second)
  bool parked;  // parked here, to be reopened
};

// The slots holding either file; those open are parked so Windows lets the
// files be renamed.
std::vector<HeldSlot> ParkHolders(const std::string& a, const std::string& b) {
  std::string keyA = FoldedForCompare(FullDosPath(a.c_str()));
  std::string keyB = FoldedForCompare(FullDosPath(b.c_str()));
  std::vector<HeldSlot> held;
  for (SInt16 slot = kFirstSlot; slot < kSlotCount; ++slot) {
    const std::string* path = SlotPath(slot);
    if (!path) continue;
    std::string key = FoldedForCompare(*path);
    if (key != keyA && key != keyB) continue;
    bool open = IsSlotOpenNow(slot);
    held.push_back({slot, key == keyA, open && ParkSlot(slot)});
  }
  return held;
}

void ReopenHolders(const std::vector<HeldSlot>& held) {
  for (const HeldSlot& h : held)
    if (h.parked) ReopenSlot(h.slot);
}

// The first file under its temporary name; the name tried moves on while
// the one tried exists.
OSErr MoveAside(const std::string& path, std::string* temporary) {
  size_t position;
  *temporary = ExchangeTemporaryName(path, &position);
  for (;;) {
    if (MoveFileA(path.c_str(), temporary->c_str())) return noErr;
    DWORD error = GetLastError();
    if (PathExists(*temporary)) {
      if (!NextExchangeName(*temporary, position)) return paramErr;
      continue;
    }
    switch (error) {
      case ERROR_FILE_NOT_FOUND:
      case ERROR_PATH_NOT_FOUND: return fnfErr;
      case ERROR_NOT_SAME_DEVICE: return diffVolErr;
      default: return paramErr;
    }
  }
}

}  // namespace

KWE_API OSErr KWE_CALL FSpExchangeFiles(const FSSpec* source, const FSSpec* dest) {
  std::string a, b;
  OSErr err = PathOfSpec(source, &a);
  if (err == noErr) err = PathOfSpec(dest, &b);
  if (err != noErr) return err;
  std::vector<HeldSlot> held = ParkHolders(a, b);
  std::string temporary;
  err = MoveAside(a, &temporary);
  if (err == noErr && !MoveFileA(b.c_str(), a.c_str())) {
    MoveFileA(temporary.c_str(), a.c_str());
    err = paramErr;
  }
  if (err == noErr && !MoveFileA(temporary.c_str(), b.c_str())) {
    MoveFileA(a.c_str(), b.c_str());
    MoveFileA(temporary.c_str(), a.c_str());
    err = paramErr;
  }
  if (err == noErr) {
    // Each open file follows its data to the other name.
    std::string fullA = FullDosPath(a.c_str()), fullB = FullDosPath(b.c_str());
    for (const HeldSlot& h : held) SetSlotPath(h.slot, h.first ? fullB : fullA);
  }
  ReopenHolders(held);
  return err;
}
