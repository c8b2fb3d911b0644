// Resource files made by the tests' own builder in a temporary directory,
// opened through the DLL by their full path, and read back from disk by the
// tests' own reader: the library is never asked to check itself.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Memory.h"
#include "Resources.h"
#include "files/files_fixture.h"
#include "resource_builder/resource_image.h"
#include "resource_builder/resource_reader.h"

namespace kwe_test {

using resource_builder::Bytes;
using resource_builder::MakeResource;
using resource_builder::Resource;
using resource_builder::TypeCode;
using resource_builder::TypeText;

inline std::string AsString(const Bytes& bytes) { return std::string(bytes.begin(), bytes.end()); }
inline Bytes AsBytes(const std::string& bytes) { return Bytes(bytes.begin(), bytes.end()); }

// The bytes of a handle as the application sees them; empty for none.
inline Bytes HandleBytes(Handle h) {
  if (!h || !*h) return {};
  const std::uint8_t* p = reinterpret_cast<const std::uint8_t*>(*h);
  return Bytes(p, p + GetHandleSize(h));
}

// A new handle holding these bytes.
inline Handle HandleWith(const Bytes& bytes) {
  Handle h = NewHandle(static_cast<Size>(bytes.size()));
  if (h && !bytes.empty()) std::memcpy(*h, bytes.data(), bytes.size());
  return h;
}

// The data as a loaded handle holds it: a 'STR#' count word in native order.
inline Bytes InMemory(std::uint32_t type, Bytes data) {
  if (type == TypeCode("STR#") && data.size() >= 2) std::swap(data[0], data[1]);
  return data;
}

// What a file should hold, by (type, ID): the data in Macintosh order, as it
// lies on disk.
using ExpectedFile = std::map<std::pair<std::uint32_t, std::int16_t>, Resource>;

class ResourceFileTest : public FilesTest {
 protected:
  void SetUp() override {
    FilesTest::SetUp();
    // The tests open their files themselves rather than through InitResources,
    // which is what turns ResLoad on; the host's variable starts at 0.
    SetResLoad(true);
  }

  // Writes the bytes into the test directory; the file's full path.
  std::string Put(const std::string& name, const Bytes& bytes) {
    WriteRaw(At(name), AsString(bytes));
    return At(name);
  }

  // The builder's file of these resources, put in the test directory.
  std::string Make(const std::string& name, const std::vector<Resource>& resources) {
    return Put(name, resource_builder::BuildResourceImage(resources));
  }

  // OpenResFile of a full path (used as it is, no ".rsr" added).
  SInt16 Open(const std::string& path) { return OpenResFile(P(path)); }

  // The file as the tests' reader lists it; a refused file fails the test.
  resource_builder::ResourceListing ListOnDisk(const std::string& path) {
    resource_builder::ResourceListing listing;
    std::string problem;
    EXPECT_TRUE(resource_builder::ReadResourceImage(AsBytes(ReadRaw(path)), listing, problem))
        << path << ": " << problem;
    return listing;
  }

  // Compares the file on disk, through the tests' reader, with what it should hold.
  void ExpectOnDisk(const std::string& path, const ExpectedFile& expected) {
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
};

}  // namespace kwe_test
