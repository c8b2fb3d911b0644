#include "files/file_slots.h"

#include "files/dos_path.h"

namespace kwe::files {
namespace {

struct Slot {
  enum State { kFree, kParked, kOpen } state = kFree;
  HANDLE handle = nullptr;
  std::string path;  // full ANSI path
  std::string key;   // the path folded for comparison
  UInt16 mode = 0;
  LONGLONG savedPosition = -1;  // where a parked file was
};

Slot g_slots[kSlotCount];
SInt16 g_preferredSlot = 0;

Slot* InUse(SInt16 slot) {
  if (slot < kFirstSlot || slot >= kSlotCount) return nullptr;
  Slot& s = g_slots[slot];
  return s.state == Slot::kFree ? nullptr : &s;
}

bool Writes(UInt16 mode) { return (mode & kOpenAccessMask) != kOpenRead; }

// OpenFile's mode bits as CreateFileA's access, sharing and disposition.
HANDLE CreateForMode(const std::string& path, UInt16 mode) {
  DWORD access = GENERIC_READ;
  switch (mode & kOpenAccessMask) {
    case kOpenRead: access = GENERIC_READ; break;
    case kOpenWrite: access = GENERIC_WRITE; break;
    default: access = GENERIC_READ | GENERIC_WRITE; break;
  }
  DWORD share = FILE_SHARE_READ | FILE_SHARE_WRITE;  // compatibility and deny-none
  switch (mode & kOpenShareMask) {
    case 0x10: share = 0; break;                 // OF_SHARE_EXCLUSIVE
    case 0x20: share = FILE_SHARE_READ; break;   // OF_SHARE_DENY_WRITE
    case 0x30: share = FILE_SHARE_WRITE; break;  // OF_SHARE_DENY_READ
  }
  DWORD disposition = (mode & kOpenCreate) ? CREATE_ALWAYS : OPEN_EXISTING;
  HANDLE h = CreateFileA(path.c_str(), access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL,
                         nullptr);
  return h == INVALID_HANDLE_VALUE ? nullptr : h;
}

OSErr OpenError(DWORD error) {
  switch (error) {
    case ERROR_PATH_NOT_FOUND: return dirNFErr;
    case ERROR_TOO_MANY_OPEN_FILES: return tmfoErr;
    case ERROR_ACCESS_DENIED: return permErr;
    case ERROR_WRITE_PROTECT: return wPrErr;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return opWrErr;
    default: return fnfErr;
  }
}

LONGLONG Position(HANDLE h) {
  LARGE_INTEGER zero{}, at{};
  return SetFilePointerEx(h, zero, &at, FILE_CURRENT) ? at.QuadPart : -1;
}

void Free(Slot& s) {
  if (s.handle) CloseHandle(s.handle);
  s = Slot{};
}

// The handle to work on, reopening a parked file first.
HANDLE Ready(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return nullptr;
  if (s->state == Slot::kParked && !ReopenSlot(slot)) return nullptr;
  return s->handle;
}

SInt16 TakeSlot() {
  SInt16 preferred = g_preferredSlot;
  g_preferredSlot = 0;
  if (preferred >= kFirstSlot && preferred < kSlotCount && g_slots[preferred].state == Slot::kFree)
    return preferred;
  for (SInt16 i = kFirstSlot; i < kSlotCount; ++i)
    if (g_slots[i].state == Slot::kFree) return i;
  return -1;
}

}  // namespace

std::string FullDosPath(const char* path) {
  char full[MAX_PATH * 2];
  DWORD n = GetFullPathNameA(path, sizeof full, full, nullptr);
  if (n == 0 || n >= sizeof full) return ReduceDoubledBackslashes(path);
  return ReduceDoubledBackslashes(full);
}

void ClearSlots() {
  for (Slot& s : g_slots) Free(s);
  g_preferredSlot = 0;
}

void CloseSlots() {
  for (SInt16 i = kFirstSlot; i < kSlotCount; ++i) Free(g_slots[i]);
}

SInt16 OpenSlot(const char* path, UInt16 mode, OSErr* err) {
  OSErr dummy;
  if (!err) err = &dummy;
  SInt16 slot = TakeSlot();
  if (slot < 0) {
    *err = tmfoErr;
    return -1;
  }
  if (!path || !path[0]) {
    *err = fnfErr;
    return -1;
  }
  std::string full = FullDosPath(path);
  std::string key = FoldedForCompare(full);
  // Two writers of one file through compatibility-mode opens would both
  // succeed on Windows; the Toolbox allows one. Opens with share bits are
  // left to Windows' own sharing rules.
  bool writer = mode == kOpenWrite || mode == kOpenReadWrite;
  if (writer) {
    for (const Slot& other : g_slots) {
      if (other.state == Slot::kFree || other.key != key) continue;
      if (other.mode == kOpenWrite || other.mode == kOpenReadWrite) {
        *err = opWrErr;
        return -1;
      }
    }
  }
  // Windows never lets a read-only file be opened for writing; the check is
  // made here too so that a file system that lets a privileged user do it
  // (Wine run as root) answers the same.
  if (Writes(mode)) {
    DWORD attributes = GetFileAttributesA(full.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY)) {
      *err = permErr;
      return -1;
    }
  }
  HANDLE h = CreateForMode(full, mode);
  if (!h) {
    *err = OpenError(GetLastError());
    return -1;
  }
  Slot& s = g_slots[slot];
  s.state = Slot::kOpen;
  s.handle = h;
  s.path = full;
  s.key = key;
  s.mode = mode & ~(kOpenCreate | kOpenReopen);
  s.savedPosition = -1;
  *err = noErr;
  return slot;
}

SInt16 CreateSlot(const char* path, SInt16 attributes) {
  if (!path || !IsParsableDosPath(path)) return -1;
  DWORD dosAttributes =
      static_cast<DWORD>(attributes) & (FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                        FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE);
  HANDLE h =
      CreateFileA(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, CREATE_ALWAYS,
                  dosAttributes ? dosAttributes : FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE) return -1;
  CloseHandle(h);
  OSErr err;
  return OpenSlot(path, (attributes & 1) ? kOpenRead : kOpenReadWrite, &err);
}

bool CloseSlot(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return false;
  bool closed = !s->handle || CloseHandle(s->handle);
  *s = Slot{};
  return closed;
}

SInt32 ReadSlot(SInt16 slot, void* buffer, SInt32 count) {
  HANDLE h = Ready(slot);
  if (!h || count < 0 || (count > 0 && !buffer)) return -1;
  // Windows takes the whole count at once; the 28,672-byte pieces of the
  // 16-bit calls are not needed.
  DWORD moved = 0;
  if (!ReadFile(h, buffer, static_cast<DWORD>(count), &moved, nullptr)) return -1;
  return static_cast<SInt32>(moved);
}

SInt32 WriteSlot(SInt16 slot, const void* buffer, SInt32 count) {
  HANDLE h = Ready(slot);
  if (!h || count < 0) return -1;
  if (count == 0) return SetEndOfFile(h) ? 0 : -1;
  if (!buffer) return -1;
  DWORD moved = 0;
  if (!WriteFile(h, buffer, static_cast<DWORD>(count), &moved, nullptr)) return -1;
  return static_cast<SInt32>(moved);
}

SInt32 SeekSlot(SInt16 slot, SInt32 offset, UInt16 origin) {
  HANDLE h = Ready(slot);
  if (!h || origin > 2) return -1;
  static const DWORD kMethods[] = {FILE_BEGIN, FILE_CURRENT, FILE_END};
  LARGE_INTEGER move, at;
  move.QuadPart = offset;
  LONGLONG before = Position(h);
  if (!SetFilePointerEx(h, move, &at, kMethods[origin])) return -1;
  if (at.QuadPart > 0x7FFFFFFF) {
    // Past what a 32-bit mark can say: stay where the file was.
    move.QuadPart = before;
    SetFilePointerEx(h, move, nullptr, FILE_BEGIN);
    return -1;
  }
  return static_cast<SInt32>(at.QuadPart);
}

bool FlushSlot(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return false;
  return s->state != Slot::kOpen || FlushFileBuffers(s->handle);
}

bool ParkSlot(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s || s->state != Slot::kOpen) return false;
  s->savedPosition = Position(s->handle);
  CloseHandle(s->handle);
  s->handle = nullptr;
  s->state = Slot::kParked;
  return true;
}

bool ReopenSlot(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s || s->state != Slot::kParked) return false;
  HANDLE h = CreateForMode(s->path, s->mode | kOpenReopen);
  if (!h) {
    *s = Slot{};
    return false;
  }
  if (s->savedPosition > 0) {
    LARGE_INTEGER at;
    at.QuadPart = s->savedPosition;
    SetFilePointerEx(h, at, nullptr, FILE_BEGIN);
  }
  s->handle = h;
  s->state = Slot::kOpen;
  s->savedPosition = -1;
  return true;
}

bool IsSlotInUse(SInt16 slot) { return InUse(slot) != nullptr; }

bool IsSlotOpenNow(SInt16 slot) {
  Slot* s = InUse(slot);
  return s && s->state == Slot::kOpen;
}

bool SlotMayWrite(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s || !Writes(s->mode)) return false;
  SInt16 attributes = SlotAttributes(slot);
  return attributes == -1 || !(attributes & FILE_ATTRIBUTE_READONLY);
}

const std::string* SlotPath(SInt16 slot) {
  Slot* s = InUse(slot);
  return s ? &s->path : nullptr;
}

void SetSlotPath(SInt16 slot, const std::string& path) {
  Slot* s = InUse(slot);
  if (!s) return;
  s->path = path;
  s->key = FoldedForCompare(path);
}

SInt16 SlotOfPath(const std::string& path) {
  std::string key = FoldedForCompare(FullDosPath(path.c_str()));
  for (SInt16 i = kFirstSlot; i < kSlotCount; ++i)
    if (g_slots[i].state != Slot::kFree && g_slots[i].key == key) return i;
  return 0;
}

HANDLE SlotHandleNow(SInt16 slot) {
  Slot* s = InUse(slot);
  return s && s->state == Slot::kOpen ? s->handle : nullptr;
}

SInt16 SlotOfHandle(HANDLE handle) {
  if (!handle) return -1;
  for (SInt16 i = kFirstSlot; i < kSlotCount; ++i)
    if (g_slots[i].state == Slot::kOpen && g_slots[i].handle == handle) return i;
  return -1;
}

SInt16 SlotAttributes(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return -1;
  DWORD attributes = GetFileAttributesA(s->path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return -1;
  return static_cast<SInt16>(attributes & 0x3F);
}

OSErr EmptySlotFile(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return rfNumErr;
  SInt16 attributes = SlotAttributes(slot);
  if (attributes != -1 && (attributes & FILE_ATTRIBUTE_READONLY)) return wrPermErr;
  HANDLE h = Ready(slot);
  if (!h) return ioErr;
  if (Writes(s->mode)) {
    LARGE_INTEGER zero{};
    if (SetFilePointerEx(h, zero, nullptr, FILE_BEGIN) && SetEndOfFile(h)) return noErr;
    return ioErr;
  }
  // Opened for reading only: reopening with OF_CREATE is what empties it.
  CloseHandle(h);
  s->handle = CreateForMode(s->path, s->mode | kOpenCreate);
  if (!s->handle) {
    *s = Slot{};
    return ioErr;
  }
  return noErr;
}

OSErr ReopenSlotForWriting(SInt16 slot) {
  Slot* s = InUse(slot);
  if (!s) return rfNumErr;
  SInt16 attributes = SlotAttributes(slot);
  if (attributes != -1 && (attributes & FILE_ATTRIBUTE_READONLY)) return wrPermErr;
  if (Writes(s->mode)) return noErr;
  if (s->state == Slot::kOpen) ParkSlot(slot);
  Slot before = *s;
  s->mode = static_cast<UInt16>((s->mode & ~kOpenAccessMask) | kOpenReadWrite);
  if (ReopenSlot(slot)) return noErr;
  // Windows refused writing: the file goes back to how it was open.
  g_slots[slot] = before;
  ReopenSlot(slot);
  return wrPermErr;
}

void PreferSlot(SInt16 slot) { g_preferredSlot = slot; }

}  // namespace kwe::files
