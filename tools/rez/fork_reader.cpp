// Finding the resource fork inside the container formats, then reading it
// with the resource builder's bounds-checked reader.
#include "rez/fork_reader.h"

#include <cstdint>
#include <set>

#include "resource_builder/resource_reader.h"

namespace rez {

namespace {

constexpr std::uint32_t kAppleSingleMagic = 0x00051600;
constexpr std::uint32_t kAppleDoubleMagic = 0x00051607;
constexpr std::uint32_t kResourceForkEntry = 2;
constexpr std::size_t kMacBinaryHeader = 128;

std::uint32_t Big32(const std::string& s, std::size_t at) {
  return resource_builder::Load32(reinterpret_cast<const std::uint8_t*>(s.data() + at));
}
std::uint16_t Big16(const std::string& s, std::size_t at) {
  return resource_builder::Load16(reinterpret_cast<const std::uint8_t*>(s.data() + at));
}

bool Fail(std::string& problem, const std::string& why) {
  problem = why;
  return false;
}

// The CRC that MacBinary II and III keep of the first 124 header bytes
// (CCITT polynomial 0x1021, starting from 0).
std::uint16_t MacBinaryCrc(const std::string& file) {
  std::uint16_t crc = 0;
  for (std::size_t i = 0; i < 124; ++i) {
    crc = static_cast<std::uint16_t>(crc ^ (static_cast<unsigned char>(file[i]) << 8));
    for (int bit = 0; bit < 8; ++bit)
      crc = static_cast<std::uint16_t>(crc & 0x8000 ? (crc << 1) ^ 0x1021 : crc << 1);
  }
  return crc;
}

bool LooksLikeMacBinary(const std::string& file) {
  return file.size() >= kMacBinaryHeader && file[0] == 0 && file[1] >= 1 && file[1] <= 63 &&
         file[74] == 0 && file[82] == 0;
}

// Where the fork lies: [start, start + length) of file, checked.
bool AppleDoubleFork(const std::string& file, std::uint64_t& start, std::uint64_t& length,
                     std::string& problem) {
  if (file.size() < 26) return Fail(problem, "the AppleDouble header is cut short");
  std::uint64_t entries = Big16(file, 24);
  if (26 + 12 * entries > file.size())
    return Fail(problem, "the AppleDouble entry list runs past the end of the file");
  for (std::uint64_t e = 0; e < entries; ++e) {
    std::size_t at = static_cast<std::size_t>(26 + 12 * e);
    if (Big32(file, at) != kResourceForkEntry) continue;
    start = Big32(file, at + 4);
    length = Big32(file, at + 8);
    if (start + length > file.size())
      return Fail(problem, "the AppleDouble resource fork entry points past the end of the file");
    return true;
  }
  start = length = 0;  // no resource fork: no resources
  return true;
}

bool MacBinaryFork(const std::string& file, std::uint64_t& start, std::uint64_t& length,
                   std::string& problem) {
  std::uint16_t crc = Big16(file, 124);
  if (crc != 0 && crc != MacBinaryCrc(file))
    return Fail(problem, "the MacBinary header's CRC does not match it");
  std::uint64_t dataLength = Big32(file, 83), secondary = Big16(file, 120);
  length = Big32(file, 87);
  auto padded = [](std::uint64_t n) { return (n + 127) / 128 * 128; };
  start = kMacBinaryHeader + padded(secondary) + padded(dataLength);
  if (start + length > file.size())
    return Fail(problem, "the MacBinary fork lengths run past the end of the file");
  return true;
}

}  // namespace

bool ReadResourceFork(const std::string& file, std::vector<CompiledResource>& resources,
                      std::string& problem, ForkFormat* format) {
  resources.clear();
  std::uint64_t start = 0, length = file.size();
  ForkFormat found = ForkFormat::ResourceFile;
  std::uint32_t magic = file.size() >= 4 ? Big32(file, 0) : 0;
  std::string plainProblem;
  resource_builder::ResourceListing listing;
  const auto* bytes = reinterpret_cast<const std::uint8_t*>(file.data());
  if (magic == kAppleDoubleMagic || magic == kAppleSingleMagic) {
    found = magic == kAppleDoubleMagic ? ForkFormat::AppleDouble : ForkFormat::AppleSingle;
    if (!AppleDoubleFork(file, start, length, problem)) return false;
  } else if (!resource_builder::ReadResourceImage(bytes, file.size(), 0, listing, plainProblem)) {
    if (!LooksLikeMacBinary(file))
      return Fail(problem, "not a resource file (" + plainProblem +
                               "), nor an AppleDouble, AppleSingle or MacBinary file");
    found = ForkFormat::MacBinary;
    if (!MacBinaryFork(file, start, length, problem)) return false;
  }
  if (format) *format = found;
  if (found != ForkFormat::ResourceFile) {
    if (length == 0) return true;
    if (!resource_builder::ReadResourceImage(bytes + start, static_cast<std::size_t>(length), 0,
                                             listing, problem)) {
      problem = "the resource fork is damaged: " + problem;
      return false;
    }
  }
  std::set<std::pair<std::uint32_t, std::int16_t>> seen;
  for (resource_builder::ListedResource& r : listing.resources) {
    if (!seen.insert({r.type, r.id}).second) {
      resources.clear();
      return Fail(problem,
                  "the map lists " + QuoteType(r.type) + " (" + std::to_string(r.id) + ") twice");
    }
    CompiledResource c;
    c.type = r.type;
    c.id = r.id;
    c.named = r.named;
    c.name = std::move(r.name);
    c.attributes = r.attributes;
    c.data.assign(r.data.begin(), r.data.end());
    resources.push_back(std::move(c));
  }
  return true;
}

}  // namespace rez
