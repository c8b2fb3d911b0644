// Getting resources by type and ID, by name and by index, from the current
// file or along the chain toward older files; counting resources and types.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/handle_slots.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "memory/master_flags.h"
#include "resources/resource_file_io.h"
#include "resources/resource_lookup.h"

namespace kwe::resources {

namespace {

constexpr ResType kPackageType = 0x5041434B;  // 'PACK'
constexpr ResType kIconType = 0x49434F4E;     // 'ICON'
constexpr ResType kStringType = 0x53545220;   // 'STR '
constexpr SInt16 kSystemNameStringID = -16096;

bool ResLoadOn() { return lowmem::At<UInt8>(lowmem::Slot::ResLoad) != 0; }

// A resource handle not tied to any file, holding the given bytes.
Handle DetachedResource(const void* bytes, Size size) {
  Handle h = NewHandle(size);
  if (!h) return nullptr;
  std::memcpy(*h, bytes, size_t(size));
  memory::SetResourceBit(h);
  return h;
}

// What GetResource answers when no file holds the resource: the system's
// alert icons and, on Windows 3.x, the machine's name.
Handle StandInResource(ResType type, SInt16 id) {
  if (type == kIconType && id >= 0 && id <= 2) {
    static const LPCSTR kIcons[] = {IDI_HAND, IDI_ASTERISK, IDI_QUESTION};
    // The 4-byte resource holds the icon handle's 32 significant bits.
    SInt32 icon = HandleToSlot(LoadIconA(nullptr, kIcons[id]));
    return DetachedResource(&icon, sizeof icon);
  }
  if (type == kStringType && id == kSystemNameStringID &&
      TheSession().version.versionWord == 0x0A03) {
    HMODULE user = GetModuleHandleA("USER.EXE");
    char text[257] = "";
    int n = user ? LoadStringA(user, 514, text, 256) : 0;
    while (n > 0 && text[n - 1] == ' ') --n;
    if (n > 0) {
      unsigned char name[258];
      name[0] = UInt8(n);
      std::memcpy(name + 1, text, size_t(n));
      name[n + 1] = 0;
      return DetachedResource(name, n + 2);
    }
  }
  return nullptr;
}

// Chain positions from the current file toward the oldest.
size_t CurrentChainPosition() {
  ResourceFile* current = CurrentFile();
  const std::vector<int>& chain = Chain();
  if (!current) return chain.size();
  return size_t(std::find(chain.begin(), chain.end(), current->slot) - chain.begin());
}

// Stops at the first file that answers, or whose resource could not be
// loaded (ResErr set): an older file's resource of the same ID does not
// stand in for a damaged one.
template <class Visit>
Handle SearchFromCurrent(Visit visit) {
  const std::vector<int>& chain = Chain();
  for (size_t i = CurrentChainPosition(); i < chain.size(); ++i) {
    if (Handle h = visit(*FileInSlot(chain[i]))) return h;
    if (lowmem::ResErr() != noErr) break;
  }
  return nullptr;
}

}  // namespace

Handle HandleForReference(ResourceFile& file, ReferencePlace place) {
  Reference& ref = file.map.At(place);
  if (!ref.handle) {
    Handle h = NewResourceHandle(file);
    if (!h) {
      lowmem::ResErr() = memFullErr;
      return nullptr;
    }
    SetReferenceHandle(file, place, h);
  }
  if (ResLoadOn() && GetHandleSize(ref.handle) == 0) {
    OSErr err = ReadResourceData(file, place, true);
    if (err != noErr) {
      lowmem::ResErr() = err;
      return nullptr;
    }
  }
  return file.map.At(place).handle;
}

Handle Get1ById(ResourceFile& file, ResType type, SInt16 id) {
  ReferencePlace place;
  return FindById(file, type, id, &place) ? HandleForReference(file, place) : nullptr;
}

}  // namespace kwe::resources

using namespace kwe::resources;
namespace lowmem = kwe::lowmem;

KWE_API Handle KWE_CALL GetResource(ResType theType, SInt16 theID) {
  lowmem::ResErr() = noErr;
  if (Handle cached = LastFound(theType, theID)) return cached;
  if (theType == kPackageType) return reinterpret_cast<Handle>(intptr_t(-1));
  Handle h = SearchFromCurrent([&](ResourceFile& file) { return Get1ById(file, theType, theID); });
  if (h) {
    RememberLastFound(theType, theID, h);
    return h;
  }
  if (lowmem::ResErr() != noErr) return nullptr;
  h = StandInResource(theType, theID);
  if (!h) lowmem::ResErr() = resNotFound;
  return h;
}

KWE_API Handle KWE_CALL RGetResource(ResType theType, SInt16 theID) {
  return GetResource(theType, theID);
}

KWE_API Handle KWE_CALL Get1Resource(ResType theType, SInt16 theID) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  return file ? Get1ById(*file, theType, theID) : nullptr;
}

namespace {
Handle Get1Named(ResourceFile& file, ResType type, ConstStr255Param name) {
  ReferencePlace place;
  return name && FindByName(file, type, name, &place) ? HandleForReference(file, place) : nullptr;
}
}  // namespace

KWE_API Handle KWE_CALL GetNamedResource(ResType theType, ConstStr255Param name) {
  lowmem::ResErr() = noErr;
  Handle h = SearchFromCurrent([&](ResourceFile& file) { return Get1Named(file, theType, name); });
  if (!h && lowmem::ResErr() == noErr) lowmem::ResErr() = resNotFound;
  return h;
}

KWE_API Handle KWE_CALL Get1NamedResource(ResType theType, ConstStr255Param name) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  return file ? Get1Named(*file, theType, name) : nullptr;
}

KWE_API Handle KWE_CALL Get1IndResource(ResType theType, SInt16 index) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  ReferencePlace place;
  if (!file || !FindByIndex(*file, theType, index, &place)) return nullptr;
  return HandleForReference(*file, place);
}

KWE_API Handle KWE_CALL GetIndResource(ResType theType, SInt16 index) {
  lowmem::ResErr() = noErr;
  int remaining = index;
  for (int slot : Chain()) {
    ResourceFile& file = *FileInSlot(slot);
    int count = CountLive(file, theType);
    if (remaining >= 1 && remaining <= count) {
      ReferencePlace place;
      FindByIndex(file, theType, SInt16(remaining), &place);
      Handle h = HandleForReference(file, place);
      if (!h) lowmem::ResErr() = resNotFound;
      return h;
    }
    remaining -= count;
  }
  lowmem::ResErr() = resNotFound;
  return nullptr;
}

KWE_API SInt16 KWE_CALL Count1Resources(ResType theType) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  return file ? SInt16(CountLive(*file, theType)) : 0;
}

KWE_API SInt16 KWE_CALL CountResources(ResType theType) {
  // 'FONT' and 'sfnt' are the Font Manager's to count once it maps Windows
  // fonts; until then the files' own resources are counted.
  lowmem::ResErr() = noErr;
  int total = 0;
  for (int slot : Chain()) total += CountLive(*FileInSlot(slot), theType);
  return SInt16(total);
}

KWE_API SInt16 KWE_CALL Count1Types(void) {
  lowmem::ResErr() = noErr;
  ResourceFile* file = CurrentFile();
  return file ? SInt16(file->map.Types().size()) : 0;
}

KWE_API SInt16 KWE_CALL CountTypes(void) {
  lowmem::ResErr() = noErr;
  size_t total = 0;
  for (int slot : Chain()) total += FileInSlot(slot)->map.Types().size();
  return SInt16(total);
}

KWE_API void KWE_CALL Get1IndType(ResType* theType, SInt16 index) {
  lowmem::ResErr() = noErr;
  if (!theType) return;
  ResourceFile* file = CurrentFile();
  *theType = 0;
  if (file && index >= 1 && size_t(index) <= file->map.Types().size())
    *theType = file->map.Types()[size_t(index - 1)].type;
}

KWE_API void KWE_CALL GetIndType(ResType* theType, SInt16 index) {
  lowmem::ResErr() = noErr;
  if (!theType || index < 1) return;
  size_t remaining = size_t(index);
  for (int slot : Chain()) {
    const auto& types = FileInSlot(slot)->map.Types();
    if (remaining <= types.size()) {
      *theType = types[remaining - 1].type;
      return;
    }
    remaining -= types.size();
  }
}

KWE_API void KWE_CALL LoadResourc(Handle theResource) {
  ResourceFile* file = nullptr;
  ReferencePlace place;
  if (!LocateResource(theResource, &file, &place)) return;
  if (GetHandleSize(theResource) == 0) lowmem::ResErr() = ReadResourceData(*file, place, false);
}

KWE_API void KWE_CALL SetResLoad(Boolean load) { lowmem::At<UInt8>(lowmem::Slot::ResLoad) = load; }
