// Builds the bytes of a Macintosh resource file (the resource-fork layout,
// every number big-endian) from a list of resources, and says where each
// region landed so that a test can damage exactly one of them.
//
// This is deliberately separate from the library's own reader and writer:
// tests, benches and the fuzz seeds use it as an independent second opinion.
// It needs nothing but the standard library, so the build machine's own
// compiler can build it for the make_resource_file tool.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace resource_builder {

using Bytes = std::vector<std::uint8_t>;

// The type code of a four-character literal: "STR#" -> 0x53545223.
std::uint32_t TypeCode(const char (&four)[5]);
std::string TypeText(std::uint32_t type);

struct Resource {
  std::uint32_t type = 0;
  std::int16_t id = 0;
  bool named = false;
  std::string name;  // without its length byte; at most 255 bytes
  std::uint8_t attributes = 0;
  Bytes data;  // in Macintosh order, stored as it is
  // Index of an earlier resource of the list whose data block this one's
  // reference points to (no block of its own), or -1.
  int sharesDataOf = -1;
};

// A resource with a name when name is not empty.
Resource MakeResource(const char (&type)[5], std::int16_t id, Bytes data,
                      const std::string& name = "", std::uint8_t attributes = 0);

struct ImageOptions {
  // Bytes before the resource file inside the bigger file; every offset in
  // the file stays relative to this base.
  std::size_t baseOffset = 0;
  std::uint8_t baseFill = 0xE5;
  // Unused bytes between the data area and the map (the Resource Manager
  // tolerates up to 16), and after the map at the end of the file.
  std::size_t gapBeforeMap = 0;
  std::size_t trailingBytes = 0;
  std::uint16_t fileAttributes = 0;
};

// Positions in the whole file (base included) of every region.
struct ImageLayout {
  std::size_t base = 0;
  std::size_t header = 0;  // 256 bytes: data offset, map offset, data length, map length
  std::size_t data = 0;    // the data area
  std::size_t dataLength = 0;
  std::size_t map = 0;
  std::size_t mapLength = 0;
  std::size_t typeList = 0;  // the type count word
  std::size_t nameList = 0;
  std::size_t nameListLength = 0;
  std::size_t fileSize = 0;
  // One per type, in file order (first appearance in the resource list).
  std::vector<std::uint32_t> types;
  std::vector<std::size_t> typeEntries;     // the 8-byte type entry
  std::vector<std::size_t> referenceLists;  // the first 12-byte reference
  // One per resource of the input list, by its index there.
  std::vector<std::size_t> references;  // its 12-byte reference entry
  std::vector<std::size_t> dataBlocks;  // its length word (shared blocks repeat)
  std::vector<std::size_t> names;       // its name's length byte, or npos
};

// Throws std::length_error when the resources cannot be expressed in the
// format: a name list starting 64 KB or more past the map's start (which
// caps a file at about 5,400 resources), names beyond the 32 KB a name
// offset reaches, a data area beyond 16 MB, a name longer than 255 bytes,
// or a sharesDataOf that does not name an earlier resource.
Bytes BuildResourceImage(const std::vector<Resource>& resources, const ImageOptions& options = {},
                         ImageLayout* layout = nullptr);

// Big-endian access for patching an image; positions must lie inside it.
void Store16(Bytes& bytes, std::size_t at, std::uint16_t value);
void Store32(Bytes& bytes, std::size_t at, std::uint32_t value);
std::uint16_t Load16(const std::uint8_t* p);
std::uint32_t Load32(const std::uint8_t* p);
// Appends the bytes of a string (a name, a text) or of another byte run.
void Append(Bytes& out, const std::string& bytes);
void Append(Bytes& out, const Bytes& bytes);

}  // namespace resource_builder
