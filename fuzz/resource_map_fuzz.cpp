// The resource map parser and writer on arbitrary files. Whatever the bytes,
// parsing must stay inside them; a map that parses must survive a rename, an
// added reference and a write, and the written map must parse again with the
// same live references.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "resources/resource_map.h"

using namespace kwe::resources;

namespace {

struct Seen {
  ResType type;
  int16_t id;
  uint8_t attributes;
  uint32_t dataOffset;
  std::vector<uint8_t> name;
};

std::vector<Seen> LiveReferences(const ResourceMap& map) {
  std::vector<Seen> seen;
  for (const ResourceTypeEntry& type : map.Types())
    for (const Reference& ref : type.references) {
      if (!ref.Live()) continue;
      const uint8_t* name = map.NameOf(ref);
      seen.push_back(Seen{type.type, ref.id, uint8_t(ref.attributes & ~kPrivateMarks),
                          ref.dataOffset, std::vector<uint8_t>(name, name + 1 + name[0])});
    }
  return seen;
}

bool Same(const std::vector<Seen>& a, const std::vector<Seen>& b) {
  if (a.size() != b.size()) return false;
  for (size_t i = 0; i < a.size(); ++i)
    if (a[i].type != b[i].type || a[i].id != b[i].id || a[i].attributes != b[i].attributes ||
        a[i].dataOffset != b[i].dataOffset || a[i].name != b[i].name)
      return false;
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < kHeaderSize) return 0;
  FileHeader header = ReadFileHeader(data);
  if (!HeaderIsSound(header, size)) return 0;
  // The map in a block of exactly its own size, so any overrun is seen.
  std::vector<uint8_t> bytes(data + header.mapOffset, data + header.mapOffset + header.mapLength);
  ResourceMap map;
  if (!map.Parse(bytes.data(), bytes.size())) return 0;

  for (ResourceTypeEntry& type : map.Types())
    for (const Reference& ref : type.references) map.FindById(type, ref.id);

  const uint8_t longName[] =
      "\x0B"
      "longer name";
  if (!map.Types().empty() && !map.Types()[0].references.empty())
    map.Rename(map.Types()[0].references[0], longName);
  if (map.RoomFor(true, 4)) {
    Reference added;
    added.id = 128;
    added.nameOffset =
        map.AppendName(reinterpret_cast<const uint8_t*>("\x04"
                                                        "new!"));
    map.Add(0x54455854, added);
  }

  std::vector<Seen> before = LiveReferences(map);
  std::vector<uint8_t> written;
  if (!map.Build(header.dataLength, &written)) return 0;
  ResourceMap again;
  if (!again.Parse(written.data(), written.size()) || !Same(before, LiveReferences(again)))
    std::abort();
  return 0;
}
