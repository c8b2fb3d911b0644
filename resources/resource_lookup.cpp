#include "resources/resource_lookup.h"

namespace kwe::resources {

namespace {

bool TypeIndex(ResourceFile& file, ResType type, uint32_t* index) {
  ResourceTypeEntry* entry = file.map.FindType(type);
  if (!entry) return false;
  *index = uint32_t(entry - file.map.Types().data());
  return true;
}

}  // namespace

bool FindById(ResourceFile& file, ResType type, SInt16 id, ReferencePlace* place) {
  uint32_t t;
  if (!TypeIndex(file, type, &t)) return false;
  ResourceTypeEntry& entry = file.map.Types()[t];
  Reference* ref = file.map.FindById(entry, id);
  if (!ref) return false;
  *place = ReferencePlace{t, uint32_t(ref - entry.references.data())};
  return true;
}

bool FindByName(ResourceFile& file, ResType type, ConstStr255Param name, ReferencePlace* place) {
  uint32_t t;
  if (!TypeIndex(file, type, &t)) return false;
  const auto& refs = file.map.Types()[t].references;
  for (uint32_t r = 0; r < refs.size(); ++r) {
    if (refs[r].Live() && file.map.NameEquals(refs[r], name)) {
      *place = ReferencePlace{t, r};
      return true;
    }
  }
  return false;
}

bool FindByIndex(ResourceFile& file, ResType type, SInt16 index, ReferencePlace* place) {
  uint32_t t;
  if (index < 1 || !TypeIndex(file, type, &t)) return false;
  const auto& refs = file.map.Types()[t].references;
  int seen = 0;
  for (uint32_t r = 0; r < refs.size(); ++r) {
    if (refs[r].Live() && ++seen == index) {
      *place = ReferencePlace{t, r};
      return true;
    }
  }
  return false;
}

int CountLive(ResourceFile& file, ResType type) {
  ResourceTypeEntry* entry = file.map.FindType(type);
  if (!entry) return 0;
  int count = 0;
  for (const Reference& ref : entry->references) count += ref.Live() ? 1 : 0;
  return count;
}

bool IdInUse(ResourceFile& file, ResType type, SInt16 id) {
  ReferencePlace place;
  return FindById(file, type, id, &place);
}

}  // namespace kwe::resources
