// Copies into and between handles. Each call sets MemErr once, at its end,
// and returns it; a failed resize leaves the destination as it was.
#include <cstdint>
#include <cstring>

#include "Memory.h"
#include "frame/low_memory.h"
#include "memory/handle_storage.h"
#include "memory/master_record.h"

namespace kwe::memory {
namespace {

OSErr Finish(OSErr error) {
  lowmem::MemErr() = error;
  return error;
}

bool HasData(Handle h) { return *h && *h != kNoBlock; }

// Grows h by count bytes and copies count bytes behind its old end, from
// sourceHandle's data (read after the resize: it may be h itself) or from
// sourcePointer.
OSErr Append(Handle h, Handle sourceHandle, const void* sourcePointer, Size count) {
  Size oldSize = RecordOf(h)->size;
  if (count < 0 || count > INT32_MAX - oldSize) return memFullErr;
  OSErr error = ResizeHandleData(h, oldSize + count);
  if (error != noErr || count == 0) return error;
  const void* source = sourceHandle ? *sourceHandle : sourcePointer;
  std::memmove(*h + oldSize, source, static_cast<size_t>(count));
  return noErr;
}

}  // namespace
}  // namespace kwe::memory

using namespace kwe;
using namespace kwe::memory;

// nilHandleErr for a null handle. On memFullErr *theHndl becomes null (the
// original handle is not disposed).
KWE_API OSErr KWE_CALL HandToHand(Handle* theHndl) {
  if (!theHndl || !*theHndl) return Finish(nilHandleErr);
  Handle original = *theHndl;
  Size size = RecordOf(original)->size;
  Handle copy = MakeHandle(size);
  if (copy && size > 0 && HasData(original)) {
    std::memcpy(*copy, *original, static_cast<size_t>(size));
  }
  *theHndl = copy;
  return Finish(copy ? noErr : memFullErr);
}

KWE_API OSErr KWE_CALL PtrToHand(const void* srcPtr, Handle* dstHndl, SInt32 size) {
  Handle h = MakeHandle(size);
  if (h && size > 0 && srcPtr) std::memcpy(*h, srcPtr, static_cast<size_t>(size));
  if (dstHndl) *dstHndl = h;
  return Finish(h ? noErr : memFullErr);
}

KWE_API OSErr KWE_CALL PtrToXHand(const void* srcPtr, Handle dstHndl, SInt32 size) {
  if (!dstHndl) return Finish(noErr);
  if (size < 0) return Finish(memFullErr);
  OSErr error = ResizeHandleData(dstHndl, size);
  if (error == noErr && size > 0 && srcPtr) {
    std::memmove(*dstHndl, srcPtr, static_cast<size_t>(size));
  }
  return Finish(error);
}

// hand2 grows by hand1's size; hand1 may be hand2 itself.
KWE_API OSErr KWE_CALL HandAndHand(Handle hand1, Handle hand2) {
  if (!hand1 || !hand2 || !HasData(hand1)) return Finish(noErr);
  return Finish(Append(hand2, hand1, nullptr, RecordOf(hand1)->size));
}

KWE_API OSErr KWE_CALL PtrAndHand(const void* ptr1, Handle hand2, SInt32 size) {
  if (!ptr1 || !hand2) return Finish(noErr);
  return Finish(Append(hand2, nullptr, ptr1, size));
}
