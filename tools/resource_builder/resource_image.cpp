#include "resource_builder/resource_image.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

namespace resource_builder {

Resource MakeResource(const char (&type)[5], std::int16_t id, Bytes data, const std::string& name,
                      std::uint8_t attributes) {
  Resource r;
  r.type = TypeCode(type);
  r.id = id;
  r.data = std::move(data);
  r.named = !name.empty();
  r.name = name;
  r.attributes = attributes;
  return r;
}

namespace {

constexpr std::size_t kHeaderSize = 256;
constexpr std::size_t kMapHeaderSize = 28;  // up to the type count word
constexpr std::size_t kTypeEntrySize = 8;
constexpr std::size_t kReferenceSize = 12;

void Append16(Bytes& out, std::uint16_t value) {
  out.push_back(static_cast<std::uint8_t>(value >> 8));
  out.push_back(static_cast<std::uint8_t>(value));
}

void Append32(Bytes& out, std::uint32_t value) {
  Append16(out, static_cast<std::uint16_t>(value >> 16));
  Append16(out, static_cast<std::uint16_t>(value));
}

[[noreturn]] void Refuse(const std::string& why) { throw std::length_error(why); }

// The types in order of first appearance, each with the indexes of its
// resources in list order.
struct TypeGroup {
  std::uint32_t type;
  std::vector<std::size_t> members;
};

std::vector<TypeGroup> GroupByType(const std::vector<Resource>& resources) {
  std::vector<TypeGroup> groups;
  for (std::size_t i = 0; i < resources.size(); ++i) {
    TypeGroup* group = nullptr;
    for (TypeGroup& g : groups)
      if (g.type == resources[i].type) group = &g;
    if (!group) {
      groups.push_back({resources[i].type, {}});
      group = &groups.back();
    }
    group->members.push_back(i);
  }
  return groups;
}

}  // namespace

std::uint32_t TypeCode(const char (&four)[5]) {
  std::uint32_t code = 0;
  for (int i = 0; i < 4; ++i) code = code << 8 | static_cast<std::uint8_t>(four[i]);
  return code;
}

std::string TypeText(std::uint32_t type) {
  std::string text;
  for (int shift = 24; shift >= 0; shift -= 8) text += static_cast<char>(type >> shift);
  return text;
}

void Store16(Bytes& bytes, std::size_t at, std::uint16_t value) {
  bytes.at(at + 1) = static_cast<std::uint8_t>(value);
  bytes.at(at) = static_cast<std::uint8_t>(value >> 8);
}

void Store32(Bytes& bytes, std::size_t at, std::uint32_t value) {
  Store16(bytes, at + 2, static_cast<std::uint16_t>(value));
  Store16(bytes, at, static_cast<std::uint16_t>(value >> 16));
}

std::uint16_t Load16(const std::uint8_t* p) { return static_cast<std::uint16_t>(p[0] << 8 | p[1]); }

std::uint32_t Load32(const std::uint8_t* p) {
  return static_cast<std::uint32_t>(Load16(p)) << 16 | Load16(p + 2);
}

namespace {

void AppendRaw(Bytes& out, const void* bytes, std::size_t count) {
  if (count == 0) return;
  const std::size_t at = out.size();
  out.resize(at + count);
  std::memcpy(&out[at], bytes, count);
}

}  // namespace

void Append(Bytes& out, const std::string& bytes) { AppendRaw(out, bytes.data(), bytes.size()); }
void Append(Bytes& out, const Bytes& bytes) { AppendRaw(out, bytes.data(), bytes.size()); }

Bytes BuildResourceImage(const std::vector<Resource>& resources, const ImageOptions& options,
                         ImageLayout* layoutOut) {
  ImageLayout layout;
  const std::size_t n = resources.size();
  layout.references.assign(n, 0);
  layout.dataBlocks.assign(n, 0);
  layout.names.assign(n, std::string::npos);

  // Data area: one length-prefixed block per resource that owns its data.
  Bytes data;
  std::vector<std::uint32_t> dataOffsets(n, 0);
  for (std::size_t i = 0; i < n; ++i) {
    const Resource& r = resources[i];
    if (r.sharesDataOf >= 0) {
      if (static_cast<std::size_t>(r.sharesDataOf) >= i)
        Refuse("a resource can only share the data block of an earlier one");
      dataOffsets[i] = dataOffsets[static_cast<std::size_t>(r.sharesDataOf)];
      continue;
    }
    dataOffsets[i] = static_cast<std::uint32_t>(data.size());
    if (data.size() > 0xFFFFFF) Refuse("the data area is past the 16 MB a data offset can reach");
    Append32(data, static_cast<std::uint32_t>(r.data.size()));
    Append(data, r.data);
  }

  // Names, in list order of their resources.
  Bytes names;
  std::vector<std::int16_t> nameOffsets(n, -1);
  for (std::size_t i = 0; i < n; ++i) {
    if (!resources[i].named) continue;
    if (resources[i].name.size() > 255) Refuse("a resource name is longer than 255 bytes");
    if (names.size() > 0x7FFF) Refuse("the name list is past the 32 KB a name offset can reach");
    nameOffsets[i] = static_cast<std::int16_t>(names.size());
    names.push_back(static_cast<std::uint8_t>(resources[i].name.size()));
    Append(names, resources[i].name);
  }

  // Map: header, type list, reference lists, name list.
  std::vector<TypeGroup> groups = GroupByType(resources);
  Bytes map(kMapHeaderSize, 0);
  const std::size_t typeListBytes = 2 + kTypeEntrySize * groups.size();
  std::size_t listOffset = typeListBytes;  // from the type count word
  Append16(map, static_cast<std::uint16_t>(groups.size() - 1));
  for (const TypeGroup& g : groups) {
    Append32(map, g.type);
    Append16(map, static_cast<std::uint16_t>(g.members.size() - 1));
    Append16(map, static_cast<std::uint16_t>(listOffset));
    listOffset += kReferenceSize * g.members.size();
  }
  std::vector<std::size_t> referenceInMap(n, 0);
  for (const TypeGroup& g : groups) {
    for (std::size_t i : g.members) {
      referenceInMap[i] = map.size();
      Append16(map, static_cast<std::uint16_t>(resources[i].id));
      Append16(map, static_cast<std::uint16_t>(nameOffsets[i]));
      Append32(map, static_cast<std::uint32_t>(resources[i].attributes) << 24 | dataOffsets[i]);
      Append32(map, 0);  // handle slot, filled in memory only
    }
  }
  const std::size_t nameListOffset = map.size();
  // Every offset of the map is 16 bits wide, the name list's from the start
  // of the map included: this caps a file at about 5,400 references.
  if (nameListOffset > 0xFFFF) Refuse("the name list starts 64 KB or more past the map");
  Append(map, names);

  // Header, and its copy at the start of the map.
  const std::size_t mapOffset = kHeaderSize + data.size() + options.gapBeforeMap;
  Bytes header;
  Append32(header, kHeaderSize);
  Append32(header, static_cast<std::uint32_t>(mapOffset));
  Append32(header, static_cast<std::uint32_t>(data.size()));
  Append32(header, static_cast<std::uint32_t>(map.size()));
  std::copy(header.begin(), header.end(), map.begin());
  Store16(map, 22, options.fileAttributes);
  Store16(map, 24, kMapHeaderSize);
  Store16(map, 26, static_cast<std::uint16_t>(nameListOffset));
  header.resize(kHeaderSize, 0);

  Bytes file(options.baseOffset, options.baseFill);
  Append(file, header);
  Append(file, data);
  file.resize(file.size() + options.gapBeforeMap, 0);
  Append(file, map);
  file.resize(file.size() + options.trailingBytes, 0);

  const std::size_t base = options.baseOffset;
  layout.base = base;
  layout.header = base;
  layout.data = base + kHeaderSize;
  layout.dataLength = data.size();
  layout.map = base + mapOffset;
  layout.mapLength = map.size();
  layout.typeList = layout.map + kMapHeaderSize;
  layout.nameList = layout.map + nameListOffset;
  layout.nameListLength = names.size();
  layout.fileSize = file.size();
  std::size_t list = layout.typeList + typeListBytes;
  for (std::size_t t = 0; t < groups.size(); ++t) {
    layout.types.push_back(groups[t].type);
    layout.typeEntries.push_back(layout.typeList + 2 + kTypeEntrySize * t);
    layout.referenceLists.push_back(list);
    list += kReferenceSize * groups[t].members.size();
  }
  for (std::size_t i = 0; i < n; ++i) {
    layout.references[i] = layout.map + referenceInMap[i];
    layout.dataBlocks[i] = layout.data + dataOffsets[i];
    if (nameOffsets[i] >= 0)
      layout.names[i] = layout.nameList + static_cast<std::size_t>(nameOffsets[i]);
  }
  if (layoutOut) *layoutOut = layout;
  return file;
}

}  // namespace resource_builder
