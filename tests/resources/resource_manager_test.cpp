// The Resource Manager through the DLL on files the tests' builder made: new
// files and their names, the chain, the calls that take handles,
// permissions, and InitResources with the files a host ships beside its
// program. Writing never loses data: resources changed (grown, shrunk,
// rewritten in place), added, renamed and removed come back byte for byte
// after UpdateResFile, CloseResFile and a reopen, read both through the
// library and from disk by the tests' own reader; a write-back that cannot
// finish leaves a file that still holds every resource it held. And
// KWE_ByteSwap in a session: the host's procedure and type list, the
// reports through DebugStr (the table itself is tested natively,
// byte_swap_table_test.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include "KWEByteSwap.h"
#include "Memory.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "resources/resource_file_fixture.h"

namespace {

using namespace kwe_test;

constexpr ResType kText = 'TEXT';

// A 'TEXT' resource named "t<id>".
Resource TextResource(SInt16 id, const std::string& text) {
  return MakeResource("TEXT", id, AsBytes(text), "t" + std::to_string(id));
}

std::string Str(Handle h) { return h ? AsString(HandleBytes(h)) : "<none>"; }

// What a call answered: the data of its handle and ResError after it.
std::string Got(Handle h) { return Str(h) + " / " + std::to_string(ResError()); }
std::string Answer(const std::string& data, OSErr err) {
  return data + " / " + std::to_string(err);
}

using ResourceManager = ResourceFileTest;

// CreateResFile writes the empty file once; a bare name is squeezed to 8.3
// with ".rsr" in the current directory, and opens again by the same name.
TEST_F(ResourceManager, CreateResFileWritesTheEmptyFileOnce) {
  for (const char* name : {"MYAPP", "a long name.dat", "notes.backup", "DATA.RES", "ABC."})
    CreateResFile(P(name));
  EXPECT_EQ(Listing(Dir()), "ABC DATA.RES MYAPP.rsr alongnam.rsr notes.rsr");
  const std::string empty = AsString(resource_builder::BuildResourceImage({}));
  EXPECT_EQ(ReadRaw(At("MYAPP.rsr")), empty);
  const SInt16 ref = OpenResFile(P("a long name.dat"));
  EXPECT_EQ(Open(At("ALONGNAM.RSR")), ref) << "the same file opens once";
  AddResource(HandleWith({1, 2}), kText, 1, nullptr);
  CloseResFile(ref);
  const std::string written = ReadRaw(At("alongnam.rsr"));
  CreateResFile(P("a long name.dat"));
  HCreateResFile(0, DirID(), P("alongnam.rsr"));
  EXPECT_EQ(ReadRaw(At("alongnam.rsr")), written) << "a file with data is left alone";
  EXPECT_EQ(OpenResFile(P("NOSUCH")), -1);
  EXPECT_EQ(ResError(), fnfErr);
}

// Handles that are no live resources are refused (resNotFound, nothing
// disposed); AddResource takes only a handle that is no resource yet; a
// detached or disposed resource leaves its file as it was.
TEST_F(ResourceManager, HandlesThatAreNoLiveResourcesAreRefused) {
  Handle plain = NewHandle(4);
  for (const auto& [what, call] : std::initializer_list<std::pair<const char*, void (*)(Handle)>>{
           {"ChangedResource", ChangedResource},
           {"ReleaseResource", ReleaseResource},
           {"GetResAttrs", [](Handle h) { EXPECT_EQ(GetResAttrs(h), 0); }},
           {"SizeRsrc", [](Handle h) { EXPECT_EQ(SizeRsrc(h), -1); }},
           {"HomeResFile", [](Handle h) { EXPECT_EQ(HomeResFile(h), -1); }}}) {
    Count1Resources(kText);  // ResError back to noErr
    call(plain);
    EXPECT_EQ(ResError(), resNotFound) << what;
  }
  EXPECT_EQ(GetHandleSize(plain), 4) << "not disposed";
  AddResource(nullptr, kText, 1, nullptr);
  EXPECT_EQ(ResError(), addResFailed);

  const std::string path = Make("detach.rsr", {TextResource(1, "one"), TextResource(2, "two")});
  const std::string before = ReadRaw(path);
  SInt16 ref = Open(path);
  AddResource(GetResource(kText, 2), kText, 3, nullptr);
  EXPECT_EQ(ResError(), addResFailed) << "already a resource";
  EXPECT_EQ(Count1Resources(kText), 2);
  Handle one = GetResource(kText, 1);
  DetachResource(one);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_NE(GetResource(kText, 1), one) << "a detached handle is the application's own";
  EXPECT_EQ(Str(one), "one");
  DisposeHandle(one);
  DisposeHandle(GetResource(kText, 2));  // disposing a resource handle detaches it first
  EXPECT_EQ(Str(GetResource(kText, 2)), "two");
  CloseResFile(ref);
  EXPECT_EQ(ReadRaw(path), before);
}

// A removed resource leaves the counts and indexes at once; the next
// write-back compacts the file in place, growth is appended, and a resource
// written by WriteResource is not written again: bytes put in its handle
// afterwards without ChangedResource stay in memory.
TEST_F(ResourceManager, RemovalsCompactTheFileAndWrittenResourcesStayWritten) {
  const std::string path =
      Make("compact.rsr", {TextResource(1, std::string(400, 'a')), TextResource(2, "REMOVED-BYTES"),
                           TextResource(3, "second")});
  SInt16 ref = Open(path);
  Handle doomed = Get1IndResource(kText, 2);
  RemoveResource(doomed);
  EXPECT_EQ(ResError(), noErr);
  DisposeHandle(doomed);
  EXPECT_EQ(Count1Resources(kText), 2);
  EXPECT_EQ(Str(Get1IndResource(kText, 2)), "second");
  EXPECT_EQ(Get1IndResource(kText, 3), nullptr);
  Handle first = GetResource(kText, 1), second = GetResource(kText, 3);
  SetHandleSize(first, 10);
  ChangedResource(first);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(GetResource(kText, 3), second) << "loaded handles stay connected";
  const std::string bytes = ReadRaw(path);
  EXPECT_EQ(bytes.size(), 256u + (4 + 10) + (4 + 6) + 28 + 2 + 8 + 2 * 12 + 2 * 3);
  EXPECT_EQ(bytes.find("REMOVED-BYTES"), std::string::npos);
  EXPECT_EQ(Listing(Dir()), "compact.rsr") << "no sibling left";

  const std::string longer(300, 'z');
  SetHandleSize(second, Size(longer.size()));
  std::memcpy(*second, longer.data(), longer.size());
  ChangedResource(second);
  WriteResource(second);
  EXPECT_EQ(ResError(), noErr);
  std::memset(*second, 'q', longer.size());
  CloseResFile(ref);
  ExpectOnDisk(path, {{{kText, 1}, TextResource(1, std::string(10, 'a'))},
                      {{kText, 3}, TextResource(3, longer)}});
}

TEST_F(ResourceManager, PermissionsReachTheSameFileAndReadOnlyRefusesWrites) {
  const std::string path = Make("PERM.RSR", {TextResource(1, "perm")});
  SInt16 ref = OpenRFPerm(P(path), 0, fsRdPerm);
  ASSERT_GT(ref, 0);
  EXPECT_EQ(GetResFileAttrs(ref) & mapReadOnly, mapReadOnly);
  // Asking again for writing reopens the same file writable.
  EXPECT_EQ(HOpenResFile(0, DirID(), P("PERM.RSR"), fsRdWrPerm), ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(GetResFileAttrs(ref) & mapReadOnly, 0);
  CloseResFile(ref);

  const std::string before = ReadRaw(path);
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  ref = Open(path);
  EXPECT_EQ(GetResFileAttrs(ref) & mapReadOnly, mapReadOnly);
  Handle h = GetResource(kText, 1);
  ChangedResource(h);
  WriteResource(h);
  EXPECT_EQ(ResError(), mapReadErr);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), mapReadErr);
  CloseResFile(ref);
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(ReadRaw(path), before);
}

// InitResources opens the system file the session record names, then the
// program's own file (its module path with ".RSR"), which becomes current.
// Searches run from the current file toward older ones; Get1 calls and the
// counts and indexes of one file see only the current one; the utilities'
// shortcuts read from the chain.
class InitResourcesTest : public ResourceManager {
 protected:
  void FillRecord(KWESessionRecord& r) override { r.systemResourceFile = systemPath_; }
  void SetUp() override {
    ResourceManager::SetUp();
    lstrcpynA(systemPath_, At("SYSTEM.RSR").c_str(), MAX_PATH);
  }
  char systemPath_[MAX_PATH] = "";  // the session keeps the pointer
};

TEST_F(InitResourcesTest, TheChainRunsFromTheProgramsOwnFileToTheSystemFile) {
  char module[MAX_PATH];
  GetModuleFileNameA(nullptr, module, MAX_PATH);
  const std::string app = std::string(module, std::strrchr(module, '.')) + ".RSR";
  Make("SYSTEM.RSR", {TextResource(1, "older one"), TextResource(2, "older two"),
                      MakeResource("STR ", 128, AsBytes("\x06system")),
                      MakeResource("PAT ", 128, Bytes(8, 0x55))});
  WriteRaw(app,
           AsString(resource_builder::BuildResourceImage({
               TextResource(1, "newer one"),
               MakeResource("STR ", 128, AsBytes("\013application")),
               MakeResource("STR#", 128, AsBytes(std::string("\0\2\3one\3two", 10))),
               MakeResource("PAT#", 128, {0, 2, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 2}),
           })));
  const SInt16 older = InitResources();
  ASSERT_GT(older, 0);
  const SInt16 newer = CurResFile();
  EXPECT_NE(newer, older);
  EXPECT_EQ(Got(GetResource(kText, 1)), Answer("newer one", noErr));
  EXPECT_EQ(Got(GetResource(kText, 2)), Answer("older two", noErr));
  EXPECT_EQ(Got(GetResource(kText, 77)), Answer("<none>", resNotFound));
  EXPECT_EQ(Got(Get1Resource(kText, 2)), Answer("<none>", noErr));
  EXPECT_EQ(Got(GetNamedResource(kText, P("t2"))), Answer("older two", noErr));
  EXPECT_EQ(Got(Get1NamedResource(kText, P("t2"))), Answer("<none>", noErr));
  EXPECT_EQ(Got(GetIndResource(kText, 1)), Answer("newer one", noErr));
  EXPECT_EQ(Got(GetIndResource(kText, 3)), Answer("older two", noErr));
  EXPECT_EQ(Got(GetIndResource(kText, 4)), Answer("<none>", resNotFound));
  EXPECT_EQ(Got(Get1IndResource(kText, 2)), Answer("<none>", noErr));
  EXPECT_EQ(Count1Resources(kText), 1);
  EXPECT_EQ(CountResources(kText), 3);
  EXPECT_EQ(CountTypes(), 7) << "every file's types";
  ResType type = 'none';
  GetIndType(&type, 7);
  EXPECT_EQ(type, ResType('PAT ')) << "counted from the newest file on";
  EXPECT_EQ(Text(*GetString(128)), "application");
  Str255 item;
  GetIndString(item, 128, 2);
  EXPECT_EQ(Text(item), "two");
  Pattern pattern;
  GetIndPattern(&pattern, 128, 2);
  EXPECT_EQ(pattern.pat[7], 2);
  EXPECT_EQ((**GetPattern(128)).pat[0], 0x55);

  UseResFile(older);
  EXPECT_EQ(Str(GetResource(kText, 1)), "older one") << "the newer file is not searched";
  UseResFile(12345);
  EXPECT_EQ(ResError(), resFNotFound);
  EXPECT_EQ(CurResFile(), older);
  UseResFile(newer);
  CloseResFile(newer);
  DeleteFileA(app.c_str());
  EXPECT_EQ(CurResFile(), older) << "the next older file becomes current";
  EXPECT_EQ(Text(*GetString(128)), "system");
  EXPECT_EQ(GetResFileAttrs(newer), 0);
  EXPECT_EQ(ResError(), resFNotFound);
}

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
  std::vector<Resource> list;
  for (const auto& entry : file) list.push_back(entry.second);
  return resource_builder::BuildResourceImage(list);
}

class ResourceFileWrite : public ResourceFileTest {
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
      EXPECT_EQ(Count1Resources(type), count) << TypeText(type);
    for (const auto& [key, want] : expected) {
      SCOPED_TRACE("through the library: '" + TypeText(key.first) + "' " +
                   std::to_string(key.second));
      SetResLoad(false);  // a handle not loaded yet comes empty, for LoadResource
      Handle h = Get1Resource(key.first, key.second);
      SetResLoad(true);
      ASSERT_NE(h, nullptr);
      LoadResource(h);
      EXPECT_EQ(ResError(), noErr);
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

  // Gives a resource new bytes (any size) in its handle and marks it changed.
  void Change(ExpectedFile& file, const char (&type)[5], std::int16_t id, const Bytes& data) {
    Handle h = Get1Resource(TypeCode(type), id);
    ASSERT_NE(h, nullptr);
    const Bytes native = InMemory(TypeCode(type), data);
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
        AddResource(HandleWith(InMemory(TypeCode(type), data)), TypeCode(type), fresh, P(name));
        EXPECT_EQ(ResError(), noErr);
        file[{TypeCode(type), fresh}] = MakeResource(type, fresh, data, name);
        break;
      case 3: {
        const std::int16_t newID = rng() % 2 ? id : fresh;
        SetResInfo(h, newID, P(name));
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
// disk and through the library; a failure names its seed. Seed 48 once
// caught a removed reference's attributes passing to the resource that took
// the reference over.
TEST_F(ResourceFileWrite, SeededRoundsOfEditsSurviveEveryWriteBack) {
  for (unsigned seed : {1u, 2u, 3u, 4u, 5u, 6u, 7u, 8u, 9u, 10u, 11u, 12u, 48u}) {
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
    AddResource(HandleWith({std::uint8_t(id)}), TypeCode("TEXT"), id, nullptr);
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
      const std::string bytes = ReadRaw(path);
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

// KWE_ByteSwap in a session.
using Calls = std::vector<std::vector<SInt32>>;  // direction, index, size

const UInt32 kHostTypes[] = {'AAAA', 'BBBB', 'HOST', 0};
Calls g_calls;

// The host converts its own types: one 32-bit field at the start.
void KWE_CALL HostProcedure(UInt32 direction, SInt32 index, SInt32 size, void* data) {
  g_calls.push_back({SInt32(direction), index, size});
  KWE_ByteSwapLONG(data);
}

class ByteSwapSession : public SessionTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    g_calls.clear();
    r.byteSwapProcedure = reinterpret_cast<ProcPtr>(HostProcedure);
    r.byteSwapTypes = kHostTypes;
  }
};

// Host types reach the procedure with their index in the list; unknown and
// damaged data are reported through DebugStr. ('CURS' goes to
// QuickDraw's cursor conversion: see the cursor tests.)
TEST_F(ByteSwapSession, HostTypesAndReports) {
  Bytes data{1, 2, 3, 4, 5};
  KWE_ByteSwap(kweSwapToNative, 'HOST', 300, 5, data.data());
  EXPECT_EQ(data, (Bytes{4, 3, 2, 1, 5}));
  KWE_ByteSwap(kweSwapToMac, 'AAAA', 300, 5, data.data());
  EXPECT_EQ(g_calls, (Calls{{1, 2, 5}, {0, 0, 5}}));

  Bytes unknown{9, 8, 7, 6};
  KWE_ByteSwap(kweSwapToNative, 'XYZW', 128, 4, unknown.data());
  EXPECT_EQ(unknown, (Bytes{9, 8, 7, 6}));
  // A 'DITL' that claims 32,768 items in 20 bytes.
  Bytes ditl{0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0};
  KWE_ByteSwap(kweSwapToNative, 'DITL', 128, SInt32(ditl.size()), ditl.data());
  EXPECT_EQ(capture.Reports(),
            (std::vector<std::string>{"XYZW unknown byteswap type", "DITL damaged byteswap data"}));
}

}  // namespace
