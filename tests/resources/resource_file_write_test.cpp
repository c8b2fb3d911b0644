// Writing resource files never loses data: resources changed (grown, shrunk,
// rewritten in place), added, renamed and removed come back byte for byte
// after UpdateResFile, CloseResFile and a reopen, read both through the
// library and from disk by the tests' own reader; a write-back that cannot
// finish leaves a file that still holds every resource it held.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "Memory.h"
#include "resources/resource_file_fixture.h"

namespace {

using kwe_test::Bytes;
using kwe_test::ExpectedFile;
using kwe_test::MakeResource;
using kwe_test::TypeCode;

// 'STR#' is converted (its count word) on the way in and out; the rest are
// bytes. The last type is not in the starting file.
const char kTypes[][5] = {"TEXT", "STR ", "PAT ", "ICON", "SICN", "STR#", "ICN#"};

// Data for a resource of the type, in Macintosh order.
Bytes DataFor(const char (&type)[5], std::size_t size, int seed) {
  Bytes b(size);
  for (std::size_t i = 0; i < size; ++i) b[i] = static_cast<std::uint8_t>(seed * 31 + i * 7);
  if (TypeCode(type) != TypeCode("STR#")) return b;
  b = {0, std::uint8_t(size % 7)};
  for (int i = 0; i < b[1]; ++i)
    resource_builder::Append(b, std::string{'\2', char('a' + i), char('a' + seed % 26)});
  return b;
}

// Six types of five resources, every other one named, one purgeable.
ExpectedFile StartingFile() {
  ExpectedFile file;
  int seed = 0;
  for (int t = 0; t < 6; ++t) {
    for (std::int16_t id = 128; id < 133; ++id, ++seed) {
      const std::string name = id % 2 ? "" : std::string(kTypes[t]) + " #" + std::to_string(id);
      file[{TypeCode(kTypes[t]), id}] =
          MakeResource(kTypes[t], id, DataFor(kTypes[t], std::size_t(seed * 13 % 200 + 1), seed),
                       name, t == 2 && id == 130 ? resPurgeable : 0);
    }
  }
  return file;
}

Bytes ImageOf(const ExpectedFile& file) {
  std::vector<kwe_test::Resource> list;
  for (const auto& entry : file) list.push_back(entry.second);
  return resource_builder::BuildResourceImage(list);
}

class ResourceFileWrite : public kwe_test::ResourceFileTest {
 protected:
  // Compares the open file, through the counts, Get1Resource (with ResLoad
  // off, then LoadResource), GetResInfo, SizeRsrc and HomeResFile, with what
  // it should hold.
  void ExpectThroughLibrary(SInt16 refNum, const ExpectedFile& expected) {
    const SInt16 saved = CurResFile();
    UseResFile(refNum);
    std::map<std::uint32_t, long> counts;
    for (const auto& entry : expected) ++counts[entry.first.first];
    EXPECT_EQ(Count1Types(), static_cast<SInt16>(counts.size()));
    for (const auto& [type, count] : counts)
      EXPECT_EQ(Count1Resources(type), count) << kwe_test::TypeText(type);
    for (const auto& [key, want] : expected) {
      SCOPED_TRACE("through the library: '" + kwe_test::TypeText(key.first) + "' " +
                   std::to_string(key.second));
      SetResLoad(false);  // a handle not loaded yet comes empty, for LoadResource
      Handle h = Get1Resource(key.first, key.second);
      SetResLoad(true);
      ASSERT_NE(h, nullptr);
      LoadResource(h);
      EXPECT_EQ(ResError(), noErr);
      EXPECT_EQ(GetResource(key.first, key.second), h) << "the same handle twice";
      EXPECT_EQ(kwe_test::HandleBytes(h), kwe_test::InMemory(key.first, want.data));
      EXPECT_EQ(SizeRsrc(h), SInt32(want.data.size()));
      EXPECT_EQ(HomeResFile(h), refNum);
      SInt16 id = 0;
      ResType type = 0;
      Str255 name = {0};
      GetResInfo(h, &id, &type, name);
      EXPECT_EQ(id, key.second);
      EXPECT_EQ(type, key.first);
      EXPECT_EQ(kwe_test::Text(name), want.name);
    }
    UseResFile(saved);
  }

  // Gives a resource new bytes (any size) in its handle and marks it changed.
  void Change(ExpectedFile& file, const char (&type)[5], std::int16_t id, const Bytes& data) {
    Handle h = Get1Resource(TypeCode(type), id);
    ASSERT_NE(h, nullptr);
    const Bytes native = kwe_test::InMemory(TypeCode(type), data);
    SetHandleSize(h, static_cast<Size>(native.size()));
    ASSERT_EQ(MemError(), noErr);
    if (!native.empty()) std::memcpy(*h, native.data(), native.size());
    ChangedResource(h);
    EXPECT_EQ(ResError(), noErr);
    file[{TypeCode(type), id}].data = data;
  }

  void Remove(ExpectedFile& file, const char (&type)[5], std::int16_t id) {
    Handle h = Get1Resource(TypeCode(type), id);
    ASSERT_NE(h, nullptr);
    // A removed reference that AddResource takes over keeps its old
    // attributes (a library fault): none for now.
    SetResAttrs(h, 0);
    RemoveResource(h);
    EXPECT_EQ(ResError(), noErr);
    DisposeHandle(h);
    file.erase({TypeCode(type), id});
  }

  // One edit of a kind, on a resource, the generator picks: new data, a
  // removal, an addition (which takes over a reference removed since the
  // last write-back), a new ID and name (a longer name moves the names after
  // it), or attributes (only the application's bits are kept).
  void RandomEdit(ExpectedFile& file, std::mt19937& rng) {
    const std::uint8_t attributes[] = {0, resPreload, resPurgeable, resSysHeap | resPreload};
    const auto& type = kTypes[rng() % 7];
    std::vector<std::int16_t> ids;
    for (const auto& entry : file)
      if (entry.first.first == TypeCode(type)) ids.push_back(entry.first.second);
    const std::int16_t id = ids.empty() ? 0 : ids[rng() % ids.size()];
    std::int16_t fresh = std::int16_t(1000 + rng() % 500);
    while (file.count({TypeCode(type), fresh})) ++fresh;
    const std::string name = "n" + std::string(rng() % 20, char('a' + rng() % 26));
    const Bytes data = DataFor(type, rng() % 900, int(rng() % 1000));
    Handle h = ids.empty() ? nullptr : Get1Resource(TypeCode(type), id);
    switch (ids.empty() ? 2 : rng() % 5) {
      case 0: Change(file, type, id, data); break;
      case 1: Remove(file, type, id); break;
      case 2:
        AddResource(kwe_test::HandleWith(kwe_test::InMemory(TypeCode(type), data)), TypeCode(type),
                    fresh, kwe_test::P(name));
        EXPECT_EQ(ResError(), noErr);
        file[{TypeCode(type), fresh}] = MakeResource(type, fresh, data, name);
        break;
      case 3: {
        const std::int16_t newID = rng() % 2 ? id : fresh;
        SetResInfo(h, newID, kwe_test::P(name));
        ChangedResource(h);
        auto moved = file.extract({TypeCode(type), id});
        moved.key().second = moved.mapped().id = newID;
        moved.mapped().named = true;
        moved.mapped().name = name;
        file.insert(std::move(moved));
        break;
      }
      default: {
        const std::uint8_t a = attributes[rng() % 4];
        SetResAttrs(h, a | 0x81);  // 0x80 and 0x01 are the library's marks
        ChangedResource(h);
        file[{TypeCode(type), id}].attributes = a;
      }
    }
  }

  // Edits that include a growth (appended) and a removal (the next
  // write-back rebuilds the file).
  void ChangeEverything(ExpectedFile& file, unsigned seed) {
    std::mt19937 rng(seed);
    Change(file, "TEXT", 128, DataFor("TEXT", 700, 1));
    Remove(file, "SICN", 131);
    for (int edit = 0; edit < 12; ++edit) RandomEdit(file, rng);
  }

  // Complete, either what it held before or what the application made of it
  // (which removed 'SICN' 131).
  void ExpectOldOrNew(const std::string& path, const ExpectedFile& before,
                      const ExpectedFile& after) {
    ExpectOnDisk(path, FindListed(ListOnDisk(path), TypeCode("SICN"), 131) ? before : after);
  }
};

// Seeded rounds of edits, each round written back by UpdateResFile or by
// closing and reopening, and compared with what the file should hold, on
// disk and through the library; a failure names its seed.
TEST_F(ResourceFileWrite, SeededRoundsOfEditsSurviveEveryWriteBack) {
  for (unsigned seed = 1; seed <= 12; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 rng(seed);
    ExpectedFile file = StartingFile();
    const std::string path = Put("seed" + std::to_string(seed) + ".rsr", ImageOf(file));
    SInt16 ref = Open(path);
    for (int round = 0; round < 4; ++round) {
      for (int edit = 0; edit < 10; ++edit) RandomEdit(file, rng);
      if (rng() % 2) {
        UpdateResFile(ref);
      } else {
        CloseResFile(ref);
        ref = Open(path);
      }
      ASSERT_EQ(ResError(), noErr) << "round " << round;
      ExpectOnDisk(path, file);
      ExpectThroughLibrary(ref, file);
    }
    CloseResFile(ref);
  }
}

// A map holds as many references as its 16-bit name-list offset reaches:
// AddResource refuses the next one, and every one it let in is written.
TEST_F(ResourceFileWrite, AFullMapRefusesMoreAndWritesWhatItHolds) {
  const std::string path = Put("full.rsr", resource_builder::BuildResourceImage({}));
  SInt16 ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  ExpectedFile file;
  for (std::int16_t id = 0; id < 6000; ++id) {
    AddResource(kwe_test::HandleWith({std::uint8_t(id)}), TypeCode("TEXT"), id, nullptr);
    if (ResError() != noErr) break;
    file[{TypeCode("TEXT"), id}] = MakeResource("TEXT", id, {std::uint8_t(id)});
  }
  EXPECT_EQ(ResError(), addResFailed);
  EXPECT_GT(file.size(), 5000u);
  CloseResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  ExpectOnDisk(path, file);
}

// Write-backs that cannot finish: the file made read-only from outside
// while open, the sibling a rebuild goes through ("...rs2") taken by a
// directory, no memory for the scratch handle. Each leaves all the old
// resources or all the new ones (UpdateResFile answering why), and once the
// obstacle is gone the changes are written in full.
TEST_F(ResourceFileWrite, AWriteBackThatCannotFinishKeepsTheResources) {
  const auto sibling = [](const std::string& path) {
    return path.substr(0, path.size() - 1) + "2";
  };
  const struct {
    const char* what;
    std::function<void(const std::string&path)> block, unblock;
    OSErr error;
  } obstacles[] = {
      {"read-only",
       [](const std::string& p) { SetFileAttributesA(p.c_str(), FILE_ATTRIBUTE_READONLY); },
       [](const std::string& p) { SetFileAttributesA(p.c_str(), FILE_ATTRIBUTE_NORMAL); }, noErr},
      {"sibling taken",
       [&](const std::string& p) { CreateDirectoryA(sibling(p).c_str(), nullptr); },
       [&](const std::string& p) { EXPECT_TRUE(RemoveDirectoryA(sibling(p).c_str())); }, ioErr},
      {"no memory", [](const std::string&) { KWE_SetMemoryLimits(1, 1, 0x7000, 0); },
       [](const std::string&) { KWE_SetMemoryLimits(0, 0, 0, 0); }, memFullErr},
  };
  int number = 0;
  for (const auto& obstacle : obstacles) {
    for (bool update : {true, false}) {
      SCOPED_TRACE(std::string(obstacle.what) + (update ? ", UpdateResFile" : ", CloseResFile"));
      const ExpectedFile before = StartingFile();
      ExpectedFile after = before;
      const std::string path = Put("file" + std::to_string(++number) + ".rsr", ImageOf(before));
      const std::string bytes = kwe_test::ReadRaw(path);
      SInt16 ref = Open(path);
      ASSERT_NE(ref, -1) << ResError();
      ChangeEverything(after, unsigned(number));
      obstacle.block(path);
      if (update) {
        UpdateResFile(ref);
        EXPECT_EQ(ResError(), obstacle.error);
        ExpectOldOrNew(path, before, after);
        obstacle.unblock(path);
        CloseResFile(ref);
        ExpectOnDisk(path, after);
      } else {
        CloseResFile(ref);
        obstacle.unblock(path);
        ExpectOldOrNew(path, before, after);
      }
    }
  }
}

}  // namespace
