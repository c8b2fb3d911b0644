#include "resources/resource_map.h"

#include <algorithm>
#include <cstring>

#include "resources/big_endian.h"

namespace kwe::resources {

namespace {

const uint8_t kNoName[1] = {0};

struct Span {
  size_t begin;
  size_t end;
};

bool Overlaps(const Span& a, const Span& b) { return a.begin < b.end && b.begin < a.end; }

}  // namespace

FileHeader ReadFileHeader(const uint8_t* p) {
  return FileHeader{ReadBig32(p), ReadBig32(p + 4), ReadBig32(p + 8), ReadBig32(p + 12)};
}

void WriteFileHeader(const FileHeader& h, uint8_t* p) {
  WriteBig32(p, h.dataOffset);
  WriteBig32(p + 4, h.mapOffset);
  WriteBig32(p + 8, h.dataLength);
  WriteBig32(p + 12, h.mapLength);
}

bool HeaderIsSound(const FileHeader& h, uint64_t fileLength) {
  uint64_t dataEnd = uint64_t(h.dataLength) + kHeaderSize;
  return h.dataOffset == kHeaderSize && h.mapOffset >= dataEnd && h.mapOffset <= dataEnd + 16 &&
         uint64_t(h.mapOffset) + h.mapLength <= fileLength && h.mapLength >= kShortestMap;
}

FileHeader PackedHeader(uint32_t dataLength, uint32_t mapLength) {
  return FileHeader{kHeaderSize, kHeaderSize + dataLength, dataLength, mapLength};
}

bool ResourceMap::Parse(const uint8_t* map, size_t length) {
  types_.clear();
  names_.clear();
  if (length < kShortestMap) return false;
  std::memcpy(kept_, map + 16, sizeof kept_);
  typeListOffset_ = ReadBig16(map + 24);
  size_t nameListOffset = ReadBig16(map + 26);
  if (size_t(typeListOffset_) + 2 > length || nameListOffset > length) return false;

  int typeCount = int16_t(ReadBig16(map + typeListOffset_)) + 1;
  if (typeCount < 0) return false;
  const size_t typeListEnd = size_t(typeListOffset_) + 2 + kTypeEntrySize * size_t(typeCount);
  if (typeListEnd > length) return false;

  // Every list must lie inside the map and clear of the type list and of
  // each other: a list that overlaps another would let one damaged entry be
  // read as two things at once.
  std::vector<Span> lists;
  lists.push_back(Span{typeListOffset_, typeListEnd});
  types_.resize(size_t(typeCount));
  for (int t = 0; t < typeCount; ++t) {
    const uint8_t* entry = map + typeListOffset_ + 2 + kTypeEntrySize * size_t(t);
    ResourceTypeEntry& type = types_[size_t(t)];
    type.type = ReadBig32(entry);
    int referenceCount = int16_t(ReadBig16(entry + 4)) + 1;
    uint16_t listOffset = ReadBig16(entry + 6);
    if (referenceCount < 0) return false;
    if (listOffset == 0xFFFF || referenceCount == 0) continue;
    Span list{size_t(typeListOffset_) + listOffset,
              size_t(typeListOffset_) + listOffset + kReferenceSize * size_t(referenceCount)};
    if (list.end > length) return false;
    for (const Span& other : lists)
      if (Overlaps(list, other)) return false;
    lists.push_back(list);

    type.references.resize(size_t(referenceCount));
    for (int r = 0; r < referenceCount; ++r) {
      const uint8_t* p = map + list.begin + kReferenceSize * size_t(r);
      Reference& ref = type.references[size_t(r)];
      ref.id = int16_t(ReadBig16(p));
      ref.nameOffset = int16_t(ReadBig16(p + 2));
      uint32_t combined = ReadBig32(p + 4);
      ref.attributes = uint8_t((combined >> 24) & ~kPrivateMarks);
      ref.dataOffset = combined & kLargestDataOffset;
      if (ref.nameOffset < -1) return false;
      if (ref.nameOffset >= 0) {
        size_t at = nameListOffset + size_t(ref.nameOffset);
        if (at >= length || at + 1 + map[at] > length) return false;
      }
    }
  }
  names_.assign(map + nameListOffset, map + length);
  return true;
}

namespace {}  // namespace

ResourceMap::LiveTotals ResourceMap::CountLive(std::vector<size_t>* perType) const {
  LiveTotals live;
  for (const ResourceTypeEntry& type : types_) {
    size_t count = 0;
    for (const Reference& ref : type.references) {
      if (!ref.Live()) continue;
      ++count;
      if (ref.nameOffset >= 0) live.nameBytes += size_t(NameOf(ref)[0]) + 1;
    }
    if (count) ++live.types;
    live.references += count;
    if (perType) perType->push_back(count);
  }
  return live;
}

bool ResourceMap::RoomFor(bool newType, size_t nameLength) const {
  LiveTotals live = CountLive(nullptr);
  live.types += newType ? 1 : 0;
  live.references += 1;
  live.nameBytes += nameLength ? nameLength + 1 : 0;
  size_t lastListOffset = 2 + kTypeEntrySize * live.types + kReferenceSize * live.references;
  return kMapHeaderSize + lastListOffset <= 0xFFFF && live.nameBytes <= 0x7FFF &&
         live.types <= 0x8000 && live.references <= 0x8000;
}

bool ResourceMap::Build(uint32_t dataLength, std::vector<uint8_t>* out) const {
  // Only types with a live reference are written; removed references and
  // their names are left behind.
  std::vector<size_t> counts;
  const LiveTotals live = CountLive(&counts);
  std::vector<const ResourceTypeEntry*> liveTypes;
  std::vector<uint16_t> liveCounts;
  for (size_t t = 0; t < types_.size(); ++t) {
    if (!counts[t]) continue;
    if (counts[t] > 0x8000) return false;
    liveTypes.push_back(&types_[t]);
    liveCounts.push_back(uint16_t(counts[t]));
  }
  const size_t referencesStart = 2 + kTypeEntrySize * live.types;  // from the type list
  const size_t listsLength = referencesStart + kReferenceSize * live.references;
  // The type list stays where the file had it, unless that was inside the
  // map header or too far out for the lists behind it.
  size_t typeListOffset = typeListOffset_;
  if (typeListOffset < kMapHeaderSize || typeListOffset + listsLength > 0xFFFF)
    typeListOffset = kMapHeaderSize;
  const size_t nameListOffset = typeListOffset + listsLength;
  const size_t mapLength = nameListOffset + live.nameBytes;
  if (nameListOffset > 0xFFFF || live.nameBytes > 0x7FFF || live.types > 0x8000 ||
      mapLength > 0xFFFFFF)
    return false;

  out->assign(mapLength, 0);
  uint8_t* map = out->data();
  WriteFileHeader(PackedHeader(dataLength, uint32_t(mapLength)), map);
  std::memcpy(map + 16, kept_, sizeof kept_);
  WriteBig16(map + 24, uint32_t(typeListOffset));
  WriteBig16(map + 26, uint32_t(nameListOffset));
  WriteBig16(map + typeListOffset, uint32_t(live.types) - 1);

  size_t listOffset = referencesStart;
  size_t nameOffset = 0;
  for (size_t t = 0; t < liveTypes.size(); ++t) {
    uint8_t* entry = map + typeListOffset + 2 + kTypeEntrySize * t;
    WriteBig32(entry, liveTypes[t]->type);
    WriteBig16(entry + 4, uint32_t(liveCounts[t]) - 1);
    WriteBig16(entry + 6, uint32_t(listOffset));
    uint8_t* p = map + typeListOffset + listOffset;
    for (const Reference& ref : liveTypes[t]->references) {
      if (!ref.Live()) continue;
      WriteBig16(p, uint16_t(ref.id));
      if (ref.nameOffset >= 0) {
        const uint8_t* name = NameOf(ref);
        WriteBig16(p + 2, uint32_t(nameOffset));
        std::memcpy(map + nameListOffset + nameOffset, name, size_t(name[0]) + 1);
        nameOffset += size_t(name[0]) + 1;
      } else {
        WriteBig16(p + 2, 0xFFFF);
      }
      WriteBig32(p + 4, uint32_t(ref.attributes & ~kPrivateMarks) << 24 |
                            (ref.dataOffset & kLargestDataOffset));
      // The handle slot holds the handle where a handle is 32 bits; a 64-bit
      // one does not fit, so there it stays 0. Nothing reads it back:
      // reopening after a rebuild carries the handles over in memory.
      WriteBig32(p + 8,
                 sizeof(Handle) == 4 ? uint32_t(reinterpret_cast<uintptr_t>(ref.handle)) : 0);
      p += kReferenceSize;
    }
    listOffset += kReferenceSize * liveCounts[t];
  }
  return true;
}

ResourceTypeEntry* ResourceMap::FindType(ResType type) {
  for (ResourceTypeEntry& entry : types_)
    if (entry.type == type) return &entry;
  return nullptr;
}

Reference* ResourceMap::FindById(ResourceTypeEntry& entry, int16_t id) {
  if (entry.references.size() < 16) {
    for (Reference& ref : entry.references)
      if (ref.Live() && ref.id == id) return &ref;
    return nullptr;
  }
  if (!entry.indexed) {
    entry.firstById.clear();
    for (uint32_t i = 0; i < entry.references.size(); ++i)
      if (entry.references[i].Live()) entry.firstById.emplace(entry.references[i].id, i);
    entry.indexed = true;
  }
  auto found = entry.firstById.find(id);
  return found == entry.firstById.end() ? nullptr : &entry.references[found->second];
}

const uint8_t* ResourceMap::NameOf(const Reference& ref) const {
  if (ref.nameOffset < 0) return kNoName;
  size_t at = size_t(ref.nameOffset);
  if (at >= names_.size() || at + 1 + names_[at] > names_.size()) return kNoName;
  return names_.data() + at;
}

bool ResourceMap::NameEquals(const Reference& ref, const uint8_t* pascalName) const {
  if (ref.nameOffset < 0) return false;
  const uint8_t* name = NameOf(ref);
  return name[0] == pascalName[0] && std::memcmp(name + 1, pascalName + 1, name[0]) == 0;
}

void ResourceMap::CompactNames() {
  std::vector<uint8_t> packed;
  for (ResourceTypeEntry& type : types_)
    for (Reference& ref : type.references) {
      if (ref.nameOffset < 0) continue;
      if (!ref.Live()) {
        ref.nameOffset = -1;
        continue;
      }
      const uint8_t* name = NameOf(ref);
      ref.nameOffset = int16_t(packed.size());
      packed.insert(packed.end(), name, name + 1 + name[0]);
    }
  names_.swap(packed);
}

int16_t ResourceMap::AppendName(const uint8_t* pascalName) {
  // Name offsets are 15 bits; names left behind by earlier renames and
  // removals make room when the list would pass them.
  const size_t needed = size_t(pascalName[0]) + 1;
  if (names_.size() + needed > 0x7FFF) CompactNames();
  if (names_.size() + needed > 0x7FFF) return -1;
  size_t at = names_.size();
  names_.insert(names_.end(), pascalName, pascalName + 1 + pascalName[0]);
  return int16_t(at);
}

bool ResourceMap::Rename(Reference& ref, const uint8_t* pascalName) {
  if (ref.nameOffset < 0 || size_t(ref.nameOffset) >= names_.size()) {
    ref.nameOffset = AppendName(pascalName);
    return false;
  }
  size_t at = size_t(ref.nameOffset);
  size_t oldLength = std::min<size_t>(names_[at], names_.size() - at - 1);
  size_t newLength = pascalName[0];
  if (newLength > oldLength && names_.size() + (newLength - oldLength) > 0x7FFF) {
    ref.nameOffset = AppendName(pascalName);
    return true;
  }
  if (newLength > oldLength) {
    // Widen the old place; every name behind it moves up.
    size_t grow = newLength - oldLength;
    names_.insert(names_.begin() + ptrdiff_t(at + 1 + oldLength), grow, 0);
    for (ResourceTypeEntry& type : types_)
      for (Reference& other : type.references)
        if (other.nameOffset > ref.nameOffset) other.nameOffset = int16_t(other.nameOffset + grow);
  }
  std::memcpy(names_.data() + at, pascalName, newLength + 1);
  return newLength > oldLength;
}

ReferencePlace ResourceMap::Add(ResType type, const Reference& ref) {
  ResourceTypeEntry* entry = FindType(type);
  if (!entry) {
    types_.push_back(ResourceTypeEntry{});
    entry = &types_.back();
    entry->type = type;
  }
  entry->references.push_back(ref);
  Forget(*entry);
  return ReferencePlace{uint32_t(entry - types_.data()), uint32_t(entry->references.size() - 1)};
}

}  // namespace kwe::resources
