// The library's own calls on the open-file table (the KWE_FH layer).
#include "Files.h"
#include "files/file_slots.h"
#include "frame/handle_slots.h"

using namespace kwe::files;
using kwe::HandleFromSlot;
using kwe::HandleToSlot;

KWE_API SInt16 KWE_CALL KWE_FHOpen(const char* path, UInt16 mode, OSErr* err) {
  return OpenSlot(path, mode, err);
}

KWE_API SInt16 KWE_CALL KWE_FHCreate(const char* path, SInt16 attributes) {
  return CreateSlot(path, attributes);
}

KWE_API SInt16 KWE_CALL KWE_FHClose(SInt16 slot) { return CloseSlot(slot) ? 0 : -1; }

KWE_API SInt32 KWE_CALL KWE_FHRead(SInt16 slot, void* buffer, SInt32 count) {
  return ReadSlot(slot, buffer, count);
}

KWE_API SInt32 KWE_CALL KWE_FHWrite(SInt16 slot, const void* buffer, SInt32 count) {
  return WriteSlot(slot, buffer, count);
}

KWE_API SInt32 KWE_CALL KWE_FHLSeek(SInt16 slot, SInt32 offset, UInt16 origin) {
  return SeekSlot(slot, offset, origin);
}

KWE_API Boolean KWE_CALL KWE_FHReOpen(Boolean reopen, SInt16 slot) {
  return reopen ? ReopenSlot(slot) : ParkSlot(slot);
}

KWE_API void KWE_CALL KWE_FHReOpenAll(Boolean reopen) {
  for (SInt16 slot = kFirstSlot; slot < kSlotCount; ++slot) KWE_FHReOpen(reopen, slot);
}

KWE_API SInt32 KWE_CALL KWE_FHMap(SInt16 slot) {
  HANDLE h = SlotHandleNow(slot);
  return h ? HandleToSlot(h) : -1;
}

KWE_API SInt16 KWE_CALL KWE_FHUnMap(SInt32 handle) {
  return handle == -1 ? SInt16(-1) : SlotOfHandle(HandleFromSlot<HANDLE>(handle));
}

KWE_API SInt16 KWE_CALL KWE_FHGetAttr(SInt16 slot) { return SlotAttributes(slot); }

KWE_API OSErr KWE_CALL KWE_FHSetEOF0(SInt16 slot) { return EmptySlotFile(slot); }
