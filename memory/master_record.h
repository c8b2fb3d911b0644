// What a Handle points to: a master record inside a master block. The first
// field is the master pointer, so **h reaches the data as on the Macintosh.
#pragma once
#include <windows.h>

#include <cstddef>
#include <cstdint>

#include "MacTypes.h"

namespace kwe::memory {

// Flags word of a master record. Zero marks a free record.
enum MasterFlag : UInt16 {
  kLockCountMask = 0x003F,  // 1 = unlocked, n >= 2 = locked n - 1 times
  kHomeFileMask = 0x0FC0,   // resource file index, meaningful with kResourceBit
  kHomeFileShift = 6,
  kSmallBlockBit = 0x1000,  // the data lies in a small-block heap
  kCBit = 0x2000,           // HSetCBit; tested by DrawPicture
  kPurgeableBit = 0x4000,
  kResourceBit = 0x8000,
};

// A master pointer with no locked block behind it: a new handle of size 0,
// or one whose block was reallocated to size 0. EmptyHandle leaves 0 instead.
inline Ptr const kNoBlock = reinterpret_cast<Ptr>(static_cast<uintptr_t>(0xFFFF));
// The platform-block field of a handle whose data lies in a small-block heap.
inline HLOCAL const kSmallBlockMarker = reinterpret_cast<HLOCAL>(static_cast<uintptr_t>(0xFFFF));

// In the 32-bit build the master record is the packed 14-byte record that
// applications know. With 64-bit pointers the two pointer fields cannot fit
// 32-bit slots, so there the records (and the master-block header) widen to
// their natural alignment: 24 bytes, keeping every master pointer aligned.
#if UINTPTR_MAX == 0xFFFFFFFFu
#pragma pack(push, 2)
#else
#pragma pack(push, 8)
#endif
struct MasterRecord {
  Ptr masterPointer;
  HLOCAL platformBlock;  // 0: no storage; kSmallBlockMarker: small-block heap
  UInt16 flags;
  Size size;  // logical size, as given to NewHandle / SetHandleSize
};

struct MasterBlock {
  MasterBlock* next;
  HLOCAL platformBlock;
  UInt8 full;  // a scan found no free record since the last release
  UInt8 hint;  // where the next scan starts, modulo 256
  UInt16 count;
};

// Behind the last record of a master block.
struct MasterBlockEnd {
  SInt32 marker;  // -1
  UInt32 byteSize;
};
#pragma pack(pop)

#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(MasterRecord) == 14, "the master record applications know");
static_assert(offsetof(MasterRecord, platformBlock) == 4, "platform block at 4");
static_assert(offsetof(MasterRecord, flags) == 8, "flags word at 8");
static_assert(offsetof(MasterRecord, size) == 10, "size at 10");
static_assert(sizeof(MasterBlock) == 12, "master block header");
#else
static_assert(sizeof(MasterRecord) == 24 && offsetof(MasterRecord, flags) == 16,
              "widened master record");
static_assert(sizeof(MasterBlock) == 24, "widened master block header");
#endif
static_assert(offsetof(MasterRecord, masterPointer) == 0, "**h reaches the data");
static_assert(sizeof(MasterBlockEnd) == 8, "end marker");

// 4,678 records keep a 32-bit master block under 64 KB (4,678 x 14 + 20).
constexpr int kMaxRecordsPerBlock = 4678;

inline MasterRecord* RecordOf(Handle h) { return reinterpret_cast<MasterRecord*>(h); }
inline Handle HandleOf(MasterRecord* r) { return reinterpret_cast<Handle>(r); }

inline MasterRecord* RecordsOf(MasterBlock* block) {
  return reinterpret_cast<MasterRecord*>(block + 1);
}

inline int LockCount(const MasterRecord* r) { return r->flags & kLockCountMask; }

}  // namespace kwe::memory
