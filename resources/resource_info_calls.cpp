// A resource's ID, type, name, attributes and size on disk.
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "resources/resource_file_io.h"

using namespace kwe::resources;
namespace lowmem = kwe::lowmem;

namespace {

SInt32 SizeOnDisk(Handle h) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(h, &file, &place)) return -1;
  const Reference& ref = file->map.At(place);
  // Added or changed and not yet written: the block in the file (if any) is
  // not this data's, so the handle's size is the truthful answer.
  if (ref.attributes & kAttrChanged) return GetHandleSize(h);
  SInt32 length = StoredDataLength(*file, ref);
  if (length < 0) lowmem::ResErr() = mapReadErr;
  return length;
}

}  // namespace

KWE_API void KWE_CALL GetResInfo(Handle theResource, SInt16* theID, ResType* theType, Str255 name) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  const Reference& ref = file->map.At(place);
  if (theID) *theID = ref.id;
  if (theType) *theType = file->map.Types()[place.type].type;
  if (name) {
    const UInt8* stored = file->map.NameOf(ref);
    std::memcpy(name, stored, size_t(stored[0]) + 1);
  }
}

KWE_API void KWE_CALL SetResInfo(Handle theResource, SInt16 theID, ConstStr255Param name) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  Reference& ref = file->map.At(place);
  ref.id = theID;
  file->map.Forget(file->map.Types()[place.type]);
  // A null name keeps the old one. A name given to a resource that had none
  // goes to the end of the name list, which the map must then carry.
  if (!name) return;
  bool hadName = ref.nameOffset >= 0;
  if (file->map.Rename(ref, name) || !hadName) file->mapChanged = true;
}

KWE_API SInt16 KWE_CALL GetResAttrs(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return 0;
  return SInt16(file->map.At(place).attributes & ~kPrivateMarks);
}

KWE_API void KWE_CALL SetResAttrs(Handle theResource, SInt16 attrs) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  // The library's own marks share the byte; the application cannot set them.
  UInt8& attributes = file->map.At(place).attributes;
  attributes = UInt8((attrs & ~kPrivateMarks) | (attributes & kPrivateMarks));
}

KWE_API SInt32 KWE_CALL SizeRsrc(Handle theResource) { return SizeOnDisk(theResource); }
KWE_API SInt32 KWE_CALL GetResourceSizeOnDisk(Handle theResource) {
  return SizeOnDisk(theResource);
}
KWE_API SInt32 KWE_CALL GetMaxResourceSize(Handle theResource) { return SizeOnDisk(theResource); }

KWE_API void KWE_CALL SetResPurge(Boolean) { lowmem::ResErr() = noErr; }
