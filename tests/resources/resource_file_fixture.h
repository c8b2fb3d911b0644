// Resource files made by the tests' own builder in a temporary directory,
// opened through the DLL by their full path, and read back from disk by the
// tests' own reader: the library is never asked to check itself.
#pragma once
#include <gtest/gtest.h>
#include <windows.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "Resources.h"
#include "files/files_fixture.h"
#include "resource_builder/resource_image.h"
#include "resource_builder/resource_reader.h"

namespace kwe_test {

using resource_builder::Bytes;
using resource_builder::MakeResource;
using resource_builder::Resource;
using resource_builder::TypeCode;

std::string AsString(const Bytes& bytes);
Bytes AsBytes(const std::string& bytes);
// The bytes of a handle as the application sees them; empty for none.
Bytes HandleBytes(Handle h);
// A new handle holding these bytes.
Handle HandleWith(const Bytes& bytes);

// The data as a loaded handle holds it: a 'STR#' count word in native order.
Bytes InMemory(std::uint32_t type, Bytes data);

// What a file should hold, by (type, ID): the data in Macintosh order, as it
// lies on disk.
using ExpectedFile = std::map<std::pair<std::uint32_t, std::int16_t>, Resource>;

class ResourceFileTest : public FilesTest {
 protected:
  void SetUp() override;
  // Writes the bytes into the test directory; the file's full path.
  std::string Put(const std::string& name, const Bytes& bytes);
  // The builder's file of these resources, put in the test directory.
  std::string Make(const std::string& name, const std::vector<Resource>& resources);
  // OpenResFile of a full path (used as it is, no ".rsr" added).
  SInt16 Open(const std::string& path);
  // The file as the tests' reader lists it; a refused file fails the test.
  resource_builder::ResourceListing ListOnDisk(const std::string& path);
  // Compares the file on disk, through the tests' reader, with what it should hold.
  void ExpectOnDisk(const std::string& path, const ExpectedFile& expected);
  // Compares the open file, through the counts, Get1Resource, GetResInfo,
  // SizeRsrc and HomeResFile, with what it should hold (the data as InMemory
  // makes it).
  void ExpectThroughLibrary(SInt16 refNum, const ExpectedFile& expected);
};

}  // namespace kwe_test
