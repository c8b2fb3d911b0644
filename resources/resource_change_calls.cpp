// Changing resources: adding, marking changed, removing, detaching,
// releasing and writing them; unique IDs.
#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "memory/master_flags.h"
#include "resources/resource_file_io.h"
#include "resources/resource_lookup.h"

namespace kwe::resources {

namespace {

ResourceTypeEntry& TypeOf(ResourceFile& file, ReferencePlace place) {
  return file.map.Types()[place.type];
}

// A removed reference of the type, which AddResource takes over.
bool FindRemoved(ResourceFile& file, ResType type, ReferencePlace* place) {
  ResourceTypeEntry* entry = file.map.FindType(type);
  if (!entry) return false;
  for (uint32_t r = 0; r < entry->references.size(); ++r) {
    if (!entry->references[r].Live()) {
      *place = ReferencePlace{uint32_t(entry - file.map.Types().data()), r};
      return true;
    }
  }
  return false;
}

void Untie(ResourceFile& file, ReferencePlace place, Handle h) {
  SetReferenceHandle(file, place, nullptr);
  memory::ClearResourceBit(h);
  ForgetLastFound();
}

uint32_t g_seed = 1;

// The draw of UniqueID: a Park-Miller step plus the tick count.
SInt16 DrawID() {
  g_seed = uint32_t((uint64_t(g_seed) * 16807) % 0x7FFFFFFF);
  return SInt16((g_seed + lowmem::Ticks()) & 0x7FFF);
}

template <class InUse>
SInt16 UniqueIDWhere(InUse inUse) {
  for (int tries = 0; tries < 0x10000; ++tries) {
    SInt16 id = DrawID();
    if (!inUse(id)) return id;
  }
  for (SInt16 id = 0; id >= 0; ++id)
    if (!inUse(id)) return id;
  return 0;
}

}  // namespace

// What EmptyHandle and DisposeHandle do to a resource handle: it leaves its
// map, as DetachResource would.
void DetachOnEmpty(Handle h) {
  ResourceFile* file = nullptr;
  ReferencePlace place;
  if (LocateHandle(h, &file, &place)) Untie(*file, place, h);
}

}  // namespace kwe::resources

using namespace kwe::resources;
namespace lowmem = kwe::lowmem;

KWE_API void KWE_CALL AddResource(Handle theData, ResType theType, SInt16 theID,
                                  ConstStr255Param name) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  if (!theData || kwe::memory::HasResourceBit(theData) || !file) {
    lowmem::ResErr() = addResFailed;
    return;
  }
  const UInt8 nameLength = name ? name[0] : 0;
  ReferencePlace place;
  if (FindRemoved(*file, theType, &place)) {
    Reference& ref = file->map.At(place);
    ref.id = theID;
    // A new resource: none of the removed one's attributes, only the mark
    // that its old block is dead until the file is packed.
    ref.attributes = UInt8((ref.attributes & kMarkShrunk) | kAttrChanged);
    if (!nameLength) {
      ref.nameOffset = -1;
    } else if (ref.nameOffset >= 0 && file->map.NameOf(ref)[0] >= nameLength) {
      file->map.Rename(ref, name);
    } else {
      ref.nameOffset = file->map.AppendName(name);
    }
  } else {
    if (!file->map.RoomFor(!file->map.FindType(theType), nameLength)) {
      lowmem::ResErr() = addResFailed;
      return;
    }
    Reference ref;
    ref.id = theID;
    ref.nameOffset = nameLength ? file->map.AppendName(name) : SInt16(-1);
    ref.attributes = kAttrChanged;
    ref.hasBlock = false;
    place = file->map.Add(theType, ref);
  }
  file->map.Forget(file->map.Types()[place.type]);
  kwe::memory::SetResourceBit(theData);
  kwe::memory::SetHomeFileIndex(theData, file->slot);
  SetReferenceHandle(*file, place, theData);
  file->mapChanged = true;
}

KWE_API void KWE_CALL ChangedResource(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  file->map.At(place).attributes |= kAttrChanged;
  file->mapChanged = true;
}

KWE_API void KWE_CALL RemoveResource(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  file->map.At(place).attributes |= kMarkRemoved;
  file->map.Forget(TypeOf(*file, place));
  // The data stays with the application, as an ordinary handle it may
  // dispose of or add again.
  Untie(*file, place, theResource);
  file->mapChanged = true;
}

KWE_API void KWE_CALL DetachResource(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (LocateResource(theResource, &file, &place)) Untie(*file, place, theResource);
}

KWE_API void KWE_CALL ReleaseResource(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (LocateResource(theResource, &file, &place)) ReleaseReference(*file, place, true);
}

KWE_API void KWE_CALL WriteResource(Handle theResource) {
  ResourceFile* file;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  if (file->readOnly) {
    lowmem::ResErr() = mapReadErr;
    return;
  }
  lowmem::ResErr() = WriteResourceData(*file, place);
}

KWE_API SInt16 KWE_CALL Unique1ID(ResType theType) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  return UniqueIDWhere([&](SInt16 id) { return file && IdInUse(*file, theType, id); });
}

KWE_API SInt16 KWE_CALL UniqueID(ResType theType) {
  lowmem::ResErr() = noErr;
  ResourceFile* current = CurrentFile();
  return UniqueIDWhere([&](SInt16 id) {
    bool reached = false;
    for (int slot : Chain()) {
      ResourceFile* file = FileInSlot(slot);
      reached = reached || file == current;
      if (reached && IdInUse(*file, theType, id)) return true;
    }
    return false;
  });
}

KWE_API OSErr KWE_CALL ResError(void) { return lowmem::ResErr(); }
