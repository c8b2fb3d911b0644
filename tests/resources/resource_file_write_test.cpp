// Writing resource files never loses data: resources changed (grown, shrunk,
// rewritten in place), added and removed come back byte for byte after
// UpdateResFile, CloseResFile and a reopen, read both through the library
// and from disk by the tests' own reader; a write-back that cannot finish
// leaves a file that still holds every resource it held.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "Memory.h"
#include "resources/resource_file_fixture.h"

namespace {

using kwe_test::AsBytes;
using kwe_test::Bytes;
using kwe_test::ExpectedFile;
using kwe_test::HandleBytes;
using kwe_test::HandleWith;
using resource_builder::Resource;
using resource_builder::TypeCode;

const std::uint32_t kTypes[] = {TypeCode("TEXT"), TypeCode("STR "), TypeCode("PAT "),
                                TypeCode("ICON"), TypeCode("SICN"), TypeCode("STR#")};

Bytes Pattern(std::size_t size, int seed) {
  Bytes b(size);
  for (std::size_t i = 0; i < size; ++i) b[i] = static_cast<std::uint8_t>(seed * 31 + i * 7);
  return b;
}

Bytes StringList(const std::vector<std::string>& strings) {
  Bytes b = {0, static_cast<std::uint8_t>(strings.size())};
  for (const std::string& s : strings) {
    b.push_back(static_cast<std::uint8_t>(s.size()));
    resource_builder::Append(b, s);
  }
  return b;
}

// Six types of five resources, every other one named, one purgeable.
ExpectedFile StartingFile() {
  ExpectedFile file;
  int seed = 0;
  for (std::uint32_t type : kTypes) {
    for (std::int16_t id = 128; id < 133; ++id, ++seed) {
      kwe_test::ExpectedResource& r = file[{type, id}];
      r.named = id % 2 == 0;
      if (r.named) r.name = resource_builder::TypeText(type) + " #" + std::to_string(id);
      r.data = type == TypeCode("STR#")
                   ? StringList({"one", std::to_string(id), "three"})
                   : Pattern(static_cast<std::size_t>(seed * 13 % 200 + 1), seed);
    }
  }
  file[{TypeCode("PAT "), 130}].attributes = 0x20;
  return file;
}

Bytes ImageOf(const ExpectedFile& file) {
  std::vector<Resource> list;
  for (const auto& [key, want] : file) {
    Resource r;
    r.type = key.first;
    r.id = key.second;
    r.named = want.named;
    r.name = want.name;
    r.attributes = want.attributes;
    r.data = want.data;
    list.push_back(r);
  }
  return resource_builder::BuildResourceImage(list);
}

class ResourceFileWrite : public kwe_test::ResourceFileTest {
 protected:
  // Gives a resource new bytes (any size) in its handle and marks it changed.
  void Change(ExpectedFile& file, const char (&type)[5], std::int16_t id, const Bytes& data) {
    Handle h = Get1Resource(TypeCode(type), id);
    ASSERT_NE(h, nullptr);
    SetHandleSize(h, static_cast<Size>(data.size()));
    ASSERT_EQ(MemError(), noErr);
    if (!data.empty()) std::memcpy(*h, data.data(), data.size());
    ChangedResource(h);
    EXPECT_EQ(ResError(), noErr);
    file[{TypeCode(type), id}].data = data;
  }

  void Add(ExpectedFile& file, const char (&type)[5], std::int16_t id, const std::string& name,
           const Bytes& data) {
    AddResource(HandleWith(data), TypeCode(type), id, kwe_test::P(name));
    EXPECT_EQ(ResError(), noErr);
    kwe_test::ExpectedResource& r = file[{TypeCode(type), id}];
    r = {!name.empty(), name, 0, data};
  }

  void Remove(ExpectedFile& file, const char (&type)[5], std::int16_t id) {
    Handle h = Get1Resource(TypeCode(type), id);
    ASSERT_NE(h, nullptr);
    RemoveResource(h);
    EXPECT_EQ(ResError(), noErr);
    DisposeHandle(h);
    file.erase({TypeCode(type), id});
  }

  // Changes of every kind, including a growth that appends and a removal
  // that makes the next write-back rebuild the file.
  void ChangeEverything(ExpectedFile& file) {
    Change(file, "TEXT", 128, Pattern(700, 1));  // grows: appended
    Change(file, "TEXT", 129, Pattern(3, 2));    // shrinks in place
    Bytes same = file[{TypeCode("STR "), 130}].data;
    for (std::uint8_t& b : same) b ^= 0xFF;
    Change(file, "STR ", 130, same);  // same size, rewritten in place
    Bytes list = StringList({"uno", "dos", "tres", "cuatro"});
    std::swap(list[0], list[1]);  // the handle holds the count in native order
    Change(file, "STR#", 129, list);
    std::swap(file[{TypeCode("STR#"), 129}].data[0], file[{TypeCode("STR#"), 129}].data[1]);
    Add(file, "TEXT", 200, "added text", Pattern(1000, 3));
    Add(file, "ICN#", 128, "", Pattern(256, 4));  // a new type
    Add(file, "PAT ", 300, "added pattern", Pattern(8, 5));
    Remove(file, "SICN", 131);
    Remove(file, "STR ", 132);  // named: its name goes too
  }
};

TEST_F(ResourceFileWrite, ChangesAddsAndRemovalsSurviveUpdateCloseAndReopen) {
  ExpectedFile file = StartingFile();
  const std::string path = Put("work.rsr", ImageOf(file));
  SInt16 ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();

  ChangeEverything(file);
  Handle grown = Get1Resource(TypeCode("TEXT"), 128);
  UpdateResFile(ref);
  ASSERT_EQ(ResError(), noErr);
  ExpectOnDisk(path, file);
  EXPECT_EQ(CurResFile(), ref);
  EXPECT_EQ(Get1Resource(TypeCode("TEXT"), 128), grown) << "loaded handles stay connected";
  EXPECT_EQ(HandleBytes(grown), Pattern(700, 1));
  ExpectThroughLibrary(ref, file);

  // A second round on the rewritten file: a whole type removed, a grown
  // resource shrunk, a shrunk one grown, a list lengthened.
  for (std::int16_t id = 128; id < 133; ++id) Remove(file, "ICON", id);
  Change(file, "TEXT", 128, Pattern(10, 6));
  Change(file, "TEXT", 129, Pattern(5000, 7));
  Add(file, "STR ", 400, "late", {4, 'l', 'a', 't', 'e'});
  CloseResFile(ref);
  ASSERT_EQ(ResError(), noErr);
  ExpectOnDisk(path, file);
  EXPECT_EQ(kwe_test::Listing(Dir()), "work.rsr") << "no scratch file is left behind";

  ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  ExpectThroughLibrary(ref, file);
  CloseResFile(ref);
  ExpectOnDisk(path, file);
}

// The file on disk must hold, complete, either what it held before or what
// the application made of it; checked by the tests' reader.
void ExpectOldOrNew(const std::string& path, const ExpectedFile& before,
                    const ExpectedFile& after) {
  resource_builder::ResourceListing listing;
  std::string problem;
  ASSERT_TRUE(
      resource_builder::ReadResourceImage(AsBytes(kwe_test::ReadRaw(path)), listing, problem))
      << "the file no longer reads: " << problem;
  const ExpectedFile* match = listing.resources.size() == before.size() ? &before : &after;
  ASSERT_EQ(listing.resources.size(), match->size());
  for (const auto& [key, want] : *match) {
    const resource_builder::ListedResource* got = FindListed(listing, key.first, key.second);
    ASSERT_NE(got, nullptr) << resource_builder::TypeText(key.first) << " " << key.second;
    EXPECT_EQ(got->data, want.data) << resource_builder::TypeText(key.first) << " " << key.second;
    EXPECT_EQ(got->name, want.name) << resource_builder::TypeText(key.first) << " " << key.second;
  }
}

// No memory for the write-back's scratch handle: UpdateResFile reports
// memFullErr and writes nothing; the file is as it was, byte for byte. When
// the memory is back, the same changes are written in full.
TEST_F(ResourceFileWrite, WriteBackWithoutMemoryLeavesTheFileAsItWas) {
  const ExpectedFile before = StartingFile();
  ExpectedFile after = before;
  const std::string path = Put("nomem.rsr", ImageOf(before));
  const std::string bytes = kwe_test::ReadRaw(path);
  SInt16 ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  ChangeEverything(after);

  KWE_SetMemoryLimits(1, 1, 0x7000, 0);  // every block of 28 KB or more is refused
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), memFullErr);
  EXPECT_EQ(kwe_test::ReadRaw(path), bytes);
  CloseResFile(ref);
  KWE_SetMemoryLimits(0, 0, 0, 0);
  ExpectOldOrNew(path, before, after);

  // Memory back: the same kind of changes, written in full.
  after = before;
  Put("nomem.rsr", ImageOf(before));
  ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  ChangeEverything(after);
  KWE_SetMemoryLimits(1, 1, 0x7000, 0);
  UpdateResFile(ref);
  KWE_SetMemoryLimits(0, 0, 0, 0);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  CloseResFile(ref);
  ExpectOnDisk(path, after);
}

// The file made read-only from outside while open: whatever the write-back
// manages, the file keeps either all its old resources or all the new ones.
TEST_F(ResourceFileWrite, FileMadeReadOnlyWhileOpenKeepsItsResources) {
  for (bool update : {true, false}) {
    SCOPED_TRACE(update ? "UpdateResFile" : "CloseResFile");
    const ExpectedFile before = StartingFile();
    ExpectedFile after = before;
    const std::string name = update ? "ro_update.rsr" : "ro_close.rsr";
    const std::string path = Put(name, ImageOf(before));
    SInt16 ref = Open(path);
    ASSERT_NE(ref, -1) << ResError();
    ChangeEverything(after);
    ASSERT_TRUE(SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY));
    if (update) UpdateResFile(ref);
    CloseResFile(ref);
    SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
    ExpectOldOrNew(path, before, after);
  }
}

// Closing after a removal rebuilds the file through a sibling whose name
// ends in "2"; with a directory in that place the rebuild cannot start, and
// the file must still read with all its old or all its new resources.
TEST_F(ResourceFileWrite, RebuildWithoutItsSiblingKeepsTheResources) {
  const ExpectedFile before = StartingFile();
  ExpectedFile after = before;
  const std::string path = Put("blocked.rsr", ImageOf(before));
  ASSERT_TRUE(CreateDirectoryA(At("blocked.rs2").c_str(), nullptr));
  SInt16 ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  ChangeEverything(after);
  CloseResFile(ref);
  ExpectOldOrNew(path, before, after);
  EXPECT_TRUE(kwe_test::IsDirectoryOnDisk(At("blocked.rs2")));
}

}  // namespace
