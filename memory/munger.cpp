// Munger: find, replace, insert and delete bytes inside a handle.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>

#include "Memory.h"
#include "TextUtils.h"
#include "frame/low_memory.h"

namespace {

constexpr SInt32 kNotFound = -1;

const char* DataOf(Handle h, SInt32 size) { return size > 0 ? *h : nullptr; }

// Resizes h, answering whether it worked; a size the 32-bit Size cannot
// hold fails as an allocation would.
bool Resize(Handle h, int64_t newSize) {
  if (newSize > INT32_MAX) {
    kwe::lowmem::MemErr() = memFullErr;
    return false;
  }
  SetHandleSize(h, static_cast<Size>(newSize));
  return kwe::lowmem::MemErr() == noErr;
}

// The replacement bytes, copied aside when they lie inside h itself: a
// resize may move the data under them.
const char* StableSource(Handle h, SInt32 size, const void* bytes, SInt32 count,
                         std::vector<char>& copy) {
  const char* p = static_cast<const char*>(bytes);
  const char* data = DataOf(h, size);
  if (count > 0 && data && p + count > data && p < data + size) {
    copy.assign(p, p + count);
    return copy.data();
  }
  return p;
}

// Position of the first occurrence of pattern in h from offset on, relative
// to offset, or -1. An empty or null pattern is never found.
SInt32 Search(Handle h, SInt32 size, SInt32 offset, const void* pattern, SInt32 length) {
  if (!pattern || length <= 0 || offset >= size || length > size - offset) return kNotFound;
  const char* data = DataOf(h, size);
  const char* p = static_cast<const char*>(pattern);
  const char* found = std::search(data + offset, data + size, p, p + length);
  return found == data + size ? kNotFound : static_cast<SInt32>(found - (data + offset));
}

SInt32 Insert(Handle h, SInt32 size, SInt32 offset, const void* bytes, SInt32 count) {
  std::vector<char> aside;
  const char* source = StableSource(h, size, bytes, count, aside);
  if (!Resize(h, int64_t(std::max(size, offset)) + count)) return kNotFound;
  char* data = *h;
  if (offset < size) std::memmove(data + offset + count, data + offset, size - offset);
  std::memcpy(data + offset, source, count);
  return offset + count;
}

SInt32 Delete(Handle h, SInt32 size, SInt32 offset, SInt32 count) {
  if (offset + count < size) std::memmove(*h + offset, *h + offset + count, size - offset - count);
  Resize(h, size - count);
  return offset;
}

SInt32 Replace(Handle h, SInt32 size, SInt32 at, SInt32 oldCount, const void* bytes,
               SInt32 newCount) {
  std::vector<char> aside;
  const char* source = StableSource(h, size, bytes, newCount, aside);
  int64_t delta = int64_t(newCount) - oldCount;
  if (delta > 0 && !Resize(h, size + delta)) return kNotFound;
  SInt32 tail = size - at - oldCount;
  if (oldCount != newCount && tail > 0)
    std::memmove(*h + at + newCount, *h + at + oldCount, static_cast<size_t>(tail));
  if (newCount > 0) std::memcpy(*h + at, source, static_cast<size_t>(newCount));
  if (delta < 0) Resize(h, size + delta);
  return at + newCount;
}

}  // namespace

// A target given by offset and length (ptr1 null) is cut at the end of the
// handle: a negative len1, or one reaching past the end, means "to the end".
// A negative offset, or one past the end for anything but an insertion,
// finds nothing. MemError is that of the last Memory Manager call made.
KWE_API SInt32 KWE_CALL Munger(Handle h, SInt32 offset, const void* ptr1, SInt32 len1,
                               const void* ptr2, SInt32 len2) {
  SInt32 size = GetHandleSize(h);
  if (!h || offset < 0) return kNotFound;
  if (len2 < 0) len2 = 0;
  if (len1 == 0 && ptr2 && len2 >= 1) return Insert(h, size, offset, ptr2, len2);
  if (offset > size) return kNotFound;
  if (!ptr1 && (len1 < 0 || len1 > size - offset)) len1 = size - offset;
  if (!ptr1 && len1 != 0 && ptr2 && len2 == 0) return Delete(h, size, offset, len1);
  SInt32 position = ptr1 ? Search(h, size, offset, ptr1, len1) : 0;
  if (position == kNotFound) return kNotFound;
  if (!ptr2) return offset + position;
  return Replace(h, size, offset + position, len1, ptr2, len2);
}
