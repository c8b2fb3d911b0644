// One resource's data block: read into its handle and converted to native
// order, written back in Macintosh order, released.
#include <algorithm>
#include <cstring>

#include "KWEByteSwap.h"
#include "Memory.h"
#include "Resources.h"
#include "files/file_slots.h"
#include "memory/master_flags.h"
#include "resources/big_endian.h"
#include "resources/cursor_conversion_hook.h"
#include "resources/resource_file_io.h"

namespace kwe::resources {

namespace {

constexpr ResType kCursorType = 0x43555253;        // 'CURS'
constexpr ResType kColourCursorType = 0x63727372;  // 'crsr'

bool SeekDos(SInt16 refNum, uint64_t position) {
  return position <= 0x7FFFFFFF && files::SeekSlot(refNum, SInt32(position), 0) == SInt32(position);
}

bool Seek(const ResourceFile& file, uint32_t position) {
  return SeekDos(file.refNum, uint64_t(file.base) + position);
}

ResType TypeAt(ResourceFile& file, ReferencePlace place) {
  return file.map.Types()[place.type].type;
}

// Unties and frees a handle that could not be given its data.
void DropHandle(ResourceFile& file, ReferencePlace place) {
  Handle h = file.map.At(place).handle;
  SetReferenceHandle(file, place, nullptr);
  memory::ClearResourceBit(h);
  DisposeHandle(h);
}

// A block lies inside the data area the header names, or among the blocks
// appended since the file was opened, past the map on disk. A damaged
// reference whose length runs further would read bytes of the map as data.
bool BlockInDataArea(const ResourceFile& file, uint32_t dataOffset, uint32_t length) {
  uint64_t start = uint64_t(kHeaderSize) + dataOffset, end = start + 4 + length;
  if (end <= uint64_t(kHeaderSize) + file.layout.dataLength) return true;
  return start >= MapOnDiskEnd(file) && end <= file.endOfData;
}

}  // namespace

bool ReadDosAt(SInt16 refNum, uint64_t position, void* buffer, size_t count) {
  return SeekDos(refNum, position) &&
         files::ReadSlot(refNum, buffer, SInt32(count)) == SInt32(count);
}

bool WriteDosAt(SInt16 refNum, uint64_t position, const void* bytes, size_t count) {
  return SeekDos(refNum, position) &&
         (count == 0 || files::WriteSlot(refNum, bytes, SInt32(count)) == SInt32(count));
}

SInt32 StoredDataLength(ResourceFile& file, const Reference& ref) {
  uint8_t bytes[4];
  if (!Seek(file, kHeaderSize + ref.dataOffset) || files::ReadSlot(file.refNum, bytes, 4) != 4)
    return -1;
  uint32_t length = ReadBig32(bytes);
  if (length > 0x7FFFFFFF || !BlockInDataArea(file, ref.dataOffset, length)) return -1;
  return SInt32(length);
}

OSErr ReadResourceData(ResourceFile& file, ReferencePlace place, bool dropOnFailure) {
  Reference& ref = file.map.At(place);
  Handle h = ref.handle;
  auto fail = [&](OSErr err) {
    if (dropOnFailure) DropHandle(file, place);
    return err;
  };
  SInt32 length = StoredDataLength(file, ref);  // leaves the mark at the data
  if (length == 0) return noErr;                // an empty resource: the handle stays empty
  if (length < 0) return fail(mapReadErr);
  SetHandleSize(h, length);
  if (MemError() != noErr || GetHandleSize(h) != length) return fail(memFullErr);
  if (files::ReadSlot(file.refNum, *h, length) != length) {
    SetHandleSize(h, 0);
    return fail(ioErr);
  }
  ResType type = TypeAt(file, place);
  KWE_ByteSwap(1, type, ref.id, length, *h);
  if (type == kMenuType && length >= 10) {
    // The menu definition field holds the 'MDEF' ID in its upper half; the
    // lower half marks it as not yet a procedure.
    UInt32 field;
    std::memcpy(&field, *h + 6, 4);
    field = (field & 0xFFFF0000u) | 0xFFFF;
    std::memcpy(*h + 6, &field, 4);
  }
  return noErr;
}

OSErr WriteResourceData(ResourceFile& file, ReferencePlace place) {
  Reference& ref = file.map.At(place);
  if (!(ref.attributes & kAttrChanged)) return noErr;
  if (file.readOnly) return mapReadErr;
  Handle h = ref.handle;
  Size n = h ? GetHandleSize(h) : 0;
  // Always a new block, past the map the file's header still points to: the
  // old block and the old map stay whole until the new map and header are
  // written, so a write-back that fails half-way loses nothing. The old
  // block is left dead (the shrunk mark), for the next write-back to pack.
  uint32_t at = std::max(file.endOfData, MapOnDiskEnd(file));
  if (at - kHeaderSize > kLargestDataOffset) return ioErr;

  uint8_t lengthBytes[4];
  WriteBig32(lengthBytes, uint32_t(n));
  if (!Seek(file, at) || files::WriteSlot(file.refNum, lengthBytes, 4) != 4) return ioErr;
  if (n > 0) {
    ResType type = TypeAt(file, place);
    KWE_ByteSwap(0, type, ref.id, n, *h);
    SInt32 written = files::WriteSlot(file.refNum, *h, n);
    KWE_ByteSwap(1, type, ref.id, n, *h);
    if (written != n) return ioErr;
  }
  if (ref.hasBlock) ref.attributes |= kMarkShrunk;
  ref.dataOffset = at - kHeaderSize;
  ref.hasBlock = true;
  ref.attributes &= uint8_t(~kAttrChanged);
  file.mapChanged = true;
  file.holes = file.holes || at > file.endOfData;
  file.endOfData = at + uint32_t(n) + 4;
  if (file.endOfOldMap < file.endOfData) file.endOfOldMap = file.endOfData;
  return noErr;
}

void ReleaseReference(ResourceFile& file, ReferencePlace place, bool writeChanged) {
  Reference& ref = file.map.At(place);
  Handle h = ref.handle;
  if (!h) return;
  if (writeChanged) WriteResourceData(file, place);
  ResType type = TypeAt(file, place);
  if ((type == kCursorType || type == kColourCursorType) && GetHandleSize(h) > 0)
    quickdraw::ConvertCursorResource(false, type == kColourCursorType, *h, GetHandleSize(h), true,
                                     false);
  if (LastFound(type, ref.id) == h) ForgetLastFound();
  SetReferenceHandle(file, place, nullptr);
  memory::ClearResourceBit(h);
  DisposeHandle(h);
}

void ReleaseAndClose(ResourceFile& file, bool closeDosFile) {
  auto& types = file.map.Types();
  for (uint32_t t = 0; t < types.size(); ++t)
    for (uint32_t r = 0; r < types[t].references.size(); ++r)
      ReleaseReference(file, ReferencePlace{t, r}, false);
  if (closeDosFile && !file.embedded) files::CloseSlot(file.refNum);
  ForgetFile(&file);
}

}  // namespace kwe::resources
