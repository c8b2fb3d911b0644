// Lists what a resource file holds without the library: the tests' way of
// checking, byte for byte, the files the Resource Manager wrote. It checks
// every count, offset and length against the file before using it, so a
// damaged file is refused with a reason, never read out of bounds.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "resource_builder/resource_image.h"

namespace resource_builder {

struct ListedResource {
  std::uint32_t type = 0;
  std::int16_t id = 0;
  bool named = false;
  std::string name;
  std::uint8_t attributes = 0;
  std::uint32_t dataOffset = 0;  // from the start of the data area
  Bytes data;
};

struct ResourceListing {
  std::uint16_t fileAttributes = 0;
  // The first 16 bytes of the map repeat the header's, as the writer leaves them.
  bool mapRepeatsHeader = false;
  std::vector<std::uint32_t> types;       // in type-list order
  std::vector<ListedResource> resources;  // by type, then reference-list order
};

// Reads the resource file that starts at base inside file. False, with what
// is wrong in problem, when the header, the map or any data block does not
// hold together; the listing is then empty.
bool ReadResourceImage(const std::uint8_t* file, std::size_t size, std::size_t base,
                       ResourceListing& listing, std::string& problem);
inline bool ReadResourceImage(const Bytes& file, ResourceListing& listing, std::string& problem) {
  return ReadResourceImage(file.data(), file.size(), 0, listing, problem);
}

// The resource of this type and ID, or null.
const ListedResource* FindListed(const ResourceListing& listing, std::uint32_t type,
                                 std::int16_t id);

}  // namespace resource_builder
