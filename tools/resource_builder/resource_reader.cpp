#include "resource_builder/resource_reader.h"

#include <cstring>
#include <utility>

namespace resource_builder {

namespace {

constexpr std::uint64_t kHeaderSize = 256;
constexpr std::uint64_t kSmallestMap = 30;
constexpr std::uint64_t kMostGapBeforeMap = 16;

// All arithmetic on offsets from the file is done in 64 bits, where no sum
// of two 32-bit fields can wrap.
class Reader {
 public:
  Reader(const std::uint8_t* file, std::uint64_t size, std::uint64_t base)
      : file_(file), size_(size), base_(base) {}

  bool Read(ResourceListing& out) {
    if (base_ > size_ || size_ - base_ < kHeaderSize)
      return Fail("the file is shorter than its 256-byte header");
    const std::uint8_t* header = file_ + base_;
    const std::uint64_t length = size_ - base_;
    dataOffset_ = Load32(header);
    mapOffset_ = Load32(header + 4);
    dataLength_ = Load32(header + 8);
    mapLength_ = Load32(header + 12);
    if (dataOffset_ != kHeaderSize) return Fail("the data offset is not 256");
    if (mapOffset_ < kHeaderSize + dataLength_ ||
        mapOffset_ > kHeaderSize + dataLength_ + kMostGapBeforeMap)
      return Fail("the map does not follow the data area");
    if (mapLength_ < kSmallestMap) return Fail("the map is shorter than 30 bytes");
    if (mapOffset_ + mapLength_ > length) return Fail("the map runs past the end of the file");
    map_ = header + mapOffset_;
    out.mapRepeatsHeader = std::memcmp(map_, header, 16) == 0;
    out.fileAttributes = Load16(map_ + 22);
    return ReadTypes(out);
  }

  const std::string& problem() const { return problem_; }

 private:
  bool Fail(const std::string& why) {
    problem_ = why;
    return false;
  }

  bool ReadTypes(ResourceListing& out) {
    const std::uint64_t typeList = Load16(map_ + 24);
    nameList_ = Load16(map_ + 26);
    if (typeList + 2 > mapLength_) return Fail("the type list offset leaves no room for its count");
    if (nameList_ > mapLength_) return Fail("the name list starts past the map");
    const std::int64_t typeCount = static_cast<std::int16_t>(Load16(map_ + typeList)) + 1;
    if (typeCount < 0) return Fail("the type count is below -1");
    if (typeList + 2 + 8 * static_cast<std::uint64_t>(typeCount) > mapLength_)
      return Fail("the type list runs past the map");
    for (std::int64_t t = 0; t < typeCount; ++t) {
      const std::uint8_t* entry = map_ + typeList + 2 + 8 * t;
      const std::uint32_t type = Load32(entry);
      const std::int64_t count = static_cast<std::int16_t>(Load16(entry + 4)) + 1;
      const std::uint64_t list = typeList + Load16(entry + 6);
      if (count < 0) return Fail(TypeText(type) + ": the resource count is below -1");
      if (list + 12 * static_cast<std::uint64_t>(count) > mapLength_)
        return Fail(TypeText(type) + ": the reference list runs past the map");
      out.types.push_back(type);
      for (std::int64_t r = 0; r < count; ++r) {
        ListedResource resource;
        resource.type = type;
        if (!ReadReference(map_ + list + 12 * r, resource)) return false;
        out.resources.push_back(std::move(resource));
      }
    }
    return true;
  }

  bool ReadReference(const std::uint8_t* reference, ListedResource& out) {
    out.id = static_cast<std::int16_t>(Load16(reference));
    const std::int16_t nameOffset = static_cast<std::int16_t>(Load16(reference + 2));
    const std::uint32_t attributesAndOffset = Load32(reference + 4);
    out.attributes = static_cast<std::uint8_t>(attributesAndOffset >> 24);
    out.dataOffset = attributesAndOffset & 0xFFFFFF;
    const std::string which = TypeText(out.type) + " " + std::to_string(out.id);
    if (nameOffset != -1) {
      if (nameOffset < 0) return Fail(which + ": a negative name offset");
      const std::uint64_t at = nameList_ + static_cast<std::uint64_t>(nameOffset);
      if (at >= mapLength_) return Fail(which + ": the name starts past the map");
      const std::uint64_t nameLength = map_[at];
      if (at + 1 + nameLength > mapLength_) return Fail(which + ": the name runs past the map");
      out.named = true;
      out.name.assign(reinterpret_cast<const char*>(map_ + at + 1), nameLength);
    }
    if (std::uint64_t{out.dataOffset} + 4 > dataLength_)
      return Fail(which + ": the data block starts past the data area");
    const std::uint8_t* block = file_ + base_ + kHeaderSize + out.dataOffset;
    const std::uint64_t blockLength = Load32(block);
    if (out.dataOffset + 4 + blockLength > dataLength_)
      return Fail(which + ": the data block runs past the data area");
    out.data.assign(block + 4, block + 4 + blockLength);
    return true;
  }

  const std::uint8_t* file_;
  std::uint64_t size_, base_;
  std::uint64_t dataOffset_ = 0, mapOffset_ = 0, dataLength_ = 0, mapLength_ = 0;
  std::uint64_t nameList_ = 0;
  const std::uint8_t* map_ = nullptr;
  std::string problem_;
};

}  // namespace

bool ReadResourceImage(const std::uint8_t* file, std::size_t size, std::size_t base,
                       ResourceListing& listing, std::string& problem) {
  listing = ResourceListing{};
  Reader reader(file, size, base);
  if (reader.Read(listing)) {
    problem.clear();
    return true;
  }
  listing = ResourceListing{};
  problem = reader.problem();
  return false;
}

const ListedResource* FindListed(const ResourceListing& listing, std::uint32_t type,
                                 std::int16_t id) {
  for (const ListedResource& r : listing.resources)
    if (r.type == type && r.id == id) return &r;
  return nullptr;
}

}  // namespace resource_builder
