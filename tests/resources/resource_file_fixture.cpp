#include "resources/resource_file_fixture.h"

#include <cstring>

#include "Memory.h"

namespace kwe_test {

using resource_builder::TypeText;

std::string AsString(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }
Bytes AsBytes(const std::string& bytes) { return Bytes(bytes.begin(), bytes.end()); }

Bytes HandleBytes(Handle h) {
  if (!h || !*h) return {};
  const std::uint8_t* p = reinterpret_cast<const std::uint8_t*>(*h);
  return Bytes(p, p + GetHandleSize(h));
}

Handle HandleWith(const Bytes& bytes) {
  Handle h = NewHandle(static_cast<Size>(bytes.size()));
  if (h && !bytes.empty()) std::memcpy(*h, bytes.data(), bytes.size());
  return h;
}

Bytes InMemory(std::uint32_t type, Bytes data) {
  if (type == TypeCode("STR#") && data.size() >= 2) std::swap(data[0], data[1]);
  return data;
}

void ResourceFileTest::SetUp() {
  FilesTest::SetUp();
  // The tests open their files themselves rather than through InitResources,
  // which is what turns ResLoad on; the host's variable starts at 0.
  SetResLoad(true);
}

std::string ResourceFileTest::Put(const std::string& name, const Bytes& bytes) {
  WriteRaw(At(name), AsString(bytes));
  return At(name);
}

std::string ResourceFileTest::Make(const std::string& name,
                                   const std::vector<Resource>& resources) {
  return Put(name, resource_builder::BuildResourceImage(resources));
}

SInt16 ResourceFileTest::Open(const std::string& path) { return OpenResFile(P(path)); }

resource_builder::ResourceListing ResourceFileTest::ListOnDisk(const std::string& path) {
  resource_builder::ResourceListing listing;
  std::string problem;
  EXPECT_TRUE(resource_builder::ReadResourceImage(AsBytes(ReadRaw(path)), listing, problem))
      << path << ": " << problem;
  return listing;
}

void ResourceFileTest::ExpectOnDisk(const std::string& path, const ExpectedFile& expected) {
  resource_builder::ResourceListing listing = ListOnDisk(path);
  EXPECT_TRUE(listing.mapRepeatsHeader);
  EXPECT_EQ(listing.resources.size(), expected.size());
  for (const auto& [key, want] : expected) {
    SCOPED_TRACE("on disk: '" + TypeText(key.first) + "' " + std::to_string(key.second));
    const resource_builder::ListedResource* got =
        resource_builder::FindListed(listing, key.first, key.second);
    ASSERT_NE(got, nullptr);
    EXPECT_EQ(got->named, want.named);
    EXPECT_EQ(got->name, want.name);
    EXPECT_EQ(got->attributes, want.attributes);
    EXPECT_EQ(got->data, want.data);
  }
}

void ResourceFileTest::ExpectThroughLibrary(SInt16 refNum, const ExpectedFile& expected) {
  SInt16 saved = CurResFile();
  UseResFile(refNum);
  std::map<std::uint32_t, long> counts;
  for (const auto& entry : expected) ++counts[entry.first.first];
  EXPECT_EQ(Count1Types(), static_cast<SInt16>(counts.size()));
  for (const auto& [type, count] : counts)
    EXPECT_EQ(Count1Resources(type), count) << TypeText(type);
  for (const auto& [key, want] : expected) {
    SCOPED_TRACE("through the library: '" + TypeText(key.first) + "' " +
                 std::to_string(key.second));
    Handle h = Get1Resource(key.first, key.second);
    ASSERT_NE(h, nullptr);
    EXPECT_EQ(GetResource(key.first, key.second), h) << "the same handle twice";
    EXPECT_EQ(HandleBytes(h), InMemory(key.first, want.data));
    EXPECT_EQ(SizeRsrc(h), SInt32(want.data.size()));
    EXPECT_EQ(HomeResFile(h), refNum);
    SInt16 id = 0;
    ResType type = 0;
    Str255 name = {0};
    GetResInfo(h, &id, &type, name);
    EXPECT_EQ(id, key.second);
    EXPECT_EQ(type, key.first);
    EXPECT_EQ(Text(name), want.name);
  }
  UseResFile(saved);
}

}  // namespace kwe_test
