// A resource file's header and map as the Resource Manager keeps them in
// memory. Parsing refuses every map whose counts and offsets do not fit the
// bytes it was read from, so later look-ups never step outside them; writing
// packs the live references back into the file's big-endian layout.
#pragma once
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "MacTypes.h"

namespace kwe::resources {

constexpr uint32_t kHeaderSize = 256;
constexpr uint32_t kShortestFile = 286;  // header + the 30-byte empty map
constexpr uint32_t kShortestMap = 30;
constexpr uint32_t kMapHeaderSize = 28;
constexpr uint32_t kTypeEntrySize = 8;
constexpr uint32_t kReferenceSize = 12;
constexpr uint32_t kLargestDataOffset = 0x00FFFFFF;  // 24 bits beside the attributes

// Attribute bits of a reference. The file uses 0x02-0x40; in memory 0x80
// and 0x01 are the library's own marks and never reach a file.
enum : uint8_t {
  kAttrChanged = 0x02,
  kAttrPreload = 0x04,
  kMarkRemoved = 0x01,
  kMarkShrunk = 0x80,  // the data block shrank in place: the file has unused bytes
  kPrivateMarks = kMarkRemoved | kMarkShrunk
};

struct FileHeader {
  uint32_t dataOffset = 0;
  uint32_t mapOffset = 0;
  uint32_t dataLength = 0;
  uint32_t mapLength = 0;
};

FileHeader ReadFileHeader(const uint8_t* sixteenBytes);
void WriteFileHeader(const FileHeader& header, uint8_t* sixteenBytes);
// Data at 256, the map right behind the data (up to 16 bytes of slack), the
// map inside the file and long enough for its own header and type count.
bool HeaderIsSound(const FileHeader& header, uint64_t fileLength);
// The header of a file whose data is dataLength bytes and map mapLength.
FileHeader PackedHeader(uint32_t dataLength, uint32_t mapLength);

struct Reference {
  int16_t id = 0;
  int16_t nameOffset = -1;  // into the name list; -1: no name
  uint8_t attributes = 0;
  uint32_t dataOffset = 0;  // from the start of the data area
  // False for a reference AddResource made and nothing wrote yet: its data
  // offset (0) names no block of its own, though 0 is also where the first
  // block of every file lies.
  bool hasBlock = true;
  // The file's 32-bit handle slot cannot hold a 64-bit Handle, so the loaded
  // handle lives here beside the reference, pointer-wide, in every build.
  Handle handle = nullptr;

  bool Live() const { return !(attributes & kMarkRemoved); }
};

struct ResourceTypeEntry {
  ResType type = 0;
  std::vector<Reference> references;
  // ID -> index of its first live reference; built on demand, dropped when
  // the references change.
  std::unordered_map<int16_t, uint32_t> firstById;
  bool indexed = false;
};

// Where a reference is in the map: indices stay valid until the map is
// parsed again (references are only ever appended or marked removed).
struct ReferencePlace {
  uint32_t type = 0;
  uint32_t reference = 0;
};

class ResourceMap {
 public:
  // Takes the map's bytes as read from the file. False (mapReadErr) when a
  // count or offset reaches outside them.
  bool Parse(const uint8_t* map, size_t length);

  // The map's bytes for the live references, their data offsets as they are
  // now; data is the length of the data area in front of it. False when the
  // live references no longer fit the format's 16-bit offsets.
  bool Build(uint32_t dataLength, std::vector<uint8_t>* out) const;

  // Whether one more reference, of a new type or not, with a name of
  // nameLength characters still fits the format.
  bool RoomFor(bool newType, size_t nameLength) const;

  std::vector<ResourceTypeEntry>& Types() { return types_; }
  const std::vector<ResourceTypeEntry>& Types() const { return types_; }
  ResourceTypeEntry* FindType(ResType type);
  // First live reference with this ID, or null.
  Reference* FindById(ResourceTypeEntry& entry, int16_t id);
  Reference& At(ReferencePlace place) { return types_[place.type].references[place.reference]; }
  // Drops the ID index of a type whose IDs changed.
  void Forget(ResourceTypeEntry& entry) {
    entry.indexed = false;
    entry.firstById.clear();
  }

  // The reference's name as a Pascal string (length byte first); empty
  // string when it has none.
  const uint8_t* NameOf(const Reference& ref) const;
  bool NameEquals(const Reference& ref, const uint8_t* pascalName) const;
  // Replaces the name: in place when the new one is not longer, else the old
  // name's place is widened and the names behind it move up. A reference
  // without a name gets the new one at the end of the list. Answers whether
  // the name list grew in the middle (which marks the map changed).
  bool Rename(Reference& ref, const uint8_t* pascalName);
  // Adds a name at the end of the list; its offset, or -1 (no name) when
  // even a packed list has no room left below the 15-bit offset limit.
  int16_t AppendName(const uint8_t* pascalName);

  ReferencePlace Add(ResType type, const Reference& ref);

 private:
  struct LiveTotals {
    size_t types = 0;  // types with at least one live reference
    size_t references = 0;
    size_t nameBytes = 0;  // the live names with their length bytes
  };
  // Totals over the live references; perType, when given, gets each
  // type's count of live references in order.
  LiveTotals CountLive(std::vector<size_t>* perType) const;
  // Packs the names of the live references, dropping the others.
  void CompactNames();

  // Map bytes 16-23 (next-map handle, file reference number, attributes):
  // kept from the file and written back as they were.
  uint8_t kept_[8] = {};
  uint16_t typeListOffset_ = kMapHeaderSize;
  std::vector<ResourceTypeEntry> types_;
  std::vector<uint8_t> names_;  // the name list: packed Pascal strings
};

}  // namespace kwe::resources
