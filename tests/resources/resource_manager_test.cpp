// The Resource Manager through the DLL: files made, changed and reread in a
// temporary directory, the chain, loading, the calls that take handles, and
// InitResources with the files a host ships beside its program.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "Memory.h"
#include "OSUtils.h"
#include "Resources.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::P;
using kwe_test::ReadRaw;

constexpr ResType kText = 'TEXT';
constexpr ResType kStrList = 'STR#';

Handle HandleOf(const std::string& bytes) {
  Handle h = NewHandle(Size(bytes.size()));
  std::memcpy(*h, bytes.data(), bytes.size());
  return h;
}

std::string Bytes(Handle h) { return std::string(*h, size_t(GetHandleSize(h))); }

class ResourceManagerTest : public kwe_test::FilesTest {
 protected:
  // InitResources would turn loading on; these tests open their own files.
  void SetUp() override {
    FilesTest::SetUp();
    SetResLoad(true);
  }

  // A new file at a path holding the given resources, closed again.
  static void MakeAt(const std::string& path,
                     std::initializer_list<std::pair<ResType, std::string>> resources, SInt16 id) {
    CreateResFile(P(path));
    SInt16 ref = OpenResFile(P(path));
    ASSERT_GT(ref, 0) << path;
    for (const auto& [type, bytes] : resources) AddResource(HandleOf(bytes), type, id, nullptr);
    CloseResFile(ref);
    ASSERT_EQ(ResError(), noErr);
  }

  // A new file in the temporary directory holding TEXT resources named
  // "t<id>", closed again; its full path.
  std::string MakeFile(const std::string& name,
                       std::initializer_list<std::pair<SInt16, std::string>> texts) {
    CreateResFile(P(At(name)));
    SInt16 ref = OpenResFile(P(At(name)));
    EXPECT_GT(ref, 0) << name;
    for (const auto& [id, text] : texts) {
      AddResource(HandleOf(text), kText, id, P("t" + std::to_string(id)));
      EXPECT_EQ(ResError(), noErr);
    }
    CloseResFile(ref);
    return At(name);
  }
};

TEST_F(ResourceManagerTest, CreateResFileWritesTheEmptyFileOnceAndBareNamesGetAnExtension) {
  CreateResFile(P(At("EMPTY.RSR")));
  std::string bytes = ReadRaw(At("EMPTY.RSR"));
  ASSERT_EQ(bytes.size(), 286u);
  const unsigned char head[16] = {0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 30};
  EXPECT_EQ(bytes.substr(0, 16), std::string(reinterpret_cast<const char*>(head), 16));
  EXPECT_EQ(bytes.substr(256, 16), bytes.substr(0, 16));
  EXPECT_EQ(bytes.substr(280, 6), std::string("\x00\x1C\x00\x1E\xFF\xFF", 6));
  SInt16 ref = OpenResFile(P(At("EMPTY.RSR")));
  ASSERT_GT(ref, 0);
  EXPECT_EQ(CurResFile(), ref);
  EXPECT_EQ(Count1Types(), 0);
  EXPECT_EQ(OpenResFile(P(At("empty.rsr"))), ref) << "the same path opens once";
  AddResource(HandleOf("data"), kText, 1, nullptr);
  CloseResFile(ref);
  std::string before = ReadRaw(At("EMPTY.RSR"));
  CreateResFile(P(At("EMPTY.RSR")));
  HCreateResFile(0, DirID(), P("EMPTY.RSR"));
  EXPECT_EQ(ReadRaw(At("EMPTY.RSR")), before) << "a file with data is left alone";
  HCreateResFile(0, DirID(), P("H.RSR"));
  EXPECT_EQ(ReadRaw(At("H.RSR")).size(), 286u);

  CreateResFile(P("MYAPP"));
  CreateResFile(P("a long name.dat"));
  CreateResFile(P("DATA.RES"));
  EXPECT_EQ(kwe_test::Listing(Dir()), "DATA.RES EMPTY.RSR H.RSR MYAPP.rsr alongnam.rsr");
  ref = OpenResFile(P("MYAPP"));
  EXPECT_GT(ref, 0);
  EXPECT_EQ(OpenResFile(P("NOSUCH")), -1);
  EXPECT_EQ(ResError(), fnfErr);
  EXPECT_EQ(CurResFile(), ref);
}

TEST_F(ResourceManagerTest, AddedResourcesSurviveCloseAndReopenWithNamesAndData) {
  std::string path = MakeFile("ADD.RSR", {{128, "hello"}, {129, "world!"}, {-5, ""}});
  SInt16 ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
  EXPECT_EQ(Count1Resources(kText), 3);
  Handle h = Get1Resource(kText, 129);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(Bytes(h), "world!");
  EXPECT_EQ(GetResource(kText, 129), h) << "the same handle twice";
  SInt16 id = 0;
  ResType type = 0;
  Str255 name;
  GetResInfo(h, &id, &type, name);
  EXPECT_EQ(id, 129);
  EXPECT_EQ(type, kText);
  EXPECT_EQ(kwe_test::Text(name), "t129");
  EXPECT_EQ(GetNamedResource(kText, P("t128")), Get1Resource(kText, 128));
  EXPECT_EQ(SizeRsrc(h), 6);
  EXPECT_EQ(HomeResFile(h), ref);
  Handle empty = Get1Resource(kText, -5);
  ASSERT_NE(empty, nullptr);
  EXPECT_EQ(GetHandleSize(empty), 0);
  ReleaseResource(h);
  EXPECT_EQ(Bytes(GetResource(kText, 129)), "world!");
  CloseResFile(ref);
  EXPECT_EQ(ResError(), noErr);

  // With ResLoad off handles come empty until LoadResource.
  SetResLoad(false);
  ref = OpenResFile(P(path));
  h = GetResource(kText, 128);
  SetResLoad(true);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(GetHandleSize(h), 0);
  LoadResource(h);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(Bytes(h), "hello");
}

TEST_F(ResourceManagerTest, TheChainIsSearchedFromTheCurrentFileTowardOlderOnes) {
  std::string older = MakeFile("OLDER.RSR", {{1, "older one"}, {2, "older two"}});
  SInt16 olderRef = OpenResFile(P(older));
  AddResource(HandleOf("bb"), 'PICT', 1, nullptr);
  SInt16 newerRef = OpenResFile(P(MakeFile("NEWER.RSR", {{1, "newer one"}})));
  ASSERT_GT(olderRef, 0);
  ASSERT_GT(newerRef, 0);
  EXPECT_EQ(Bytes(GetResource(kText, 1)), "newer one");
  EXPECT_EQ(Bytes(GetResource(kText, 2)), "older two");
  EXPECT_EQ(Get1Resource(kText, 2), nullptr);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(CountResources(kText), 3);
  EXPECT_EQ(CountTypes(), 3) << "every file's types";
  EXPECT_EQ(Bytes(GetIndResource(kText, 3)), "older two");
  ResType type = 'none';
  Get1IndType(&type, 1);
  EXPECT_EQ(type, kText);
  Get1IndType(&type, 2);
  EXPECT_EQ(type, 0u) << "out of range in the current file";
  GetIndType(&type, 3);
  EXPECT_EQ(type, ResType('PICT')) << "counted from the newest file on";
  GetIndType(&type, 4);
  EXPECT_EQ(type, ResType('PICT')) << "out of range leaves the type";
  EXPECT_EQ(GetResource(kText, 77), nullptr);
  EXPECT_EQ(ResError(), resNotFound);
  EXPECT_EQ(GetResource('PACK', 3), reinterpret_cast<Handle>(intptr_t(-1)));

  UseResFile(olderRef);
  EXPECT_EQ(Bytes(GetResource(kText, 1)), "older one") << "the newer file is not searched";
  UseResFile(12345);
  EXPECT_EQ(ResError(), resFNotFound);
  EXPECT_EQ(CurResFile(), olderRef);
  UseResFile(newerRef);
  CloseResFile(newerRef);
  EXPECT_EQ(CurResFile(), olderRef) << "the next older file becomes current";
  EXPECT_EQ(GetResFileAttrs(newerRef), 0);
  EXPECT_EQ(ResError(), resFNotFound);
}

// Removing and shrinking make the next write-back compact the file in place
// (no sibling left, the removed bytes gone); growth is appended.
TEST_F(ResourceManagerTest, WriteBackCompactsRemovalsAndAppendsGrowth) {
  std::string path =
      MakeFile("COMPACT.RSR", {{1, std::string(400, 'a')}, {2, "REMOVED-BYTES"}, {3, "second"}});
  SInt16 ref = OpenResFile(P(path));
  Handle doomed = GetResource(kText, 2);
  RemoveResource(doomed);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(HGetState(doomed) & kHandleResourceMask, 0) << "an ordinary handle now";
  DisposeHandle(doomed);
  EXPECT_EQ(Count1Resources(kText), 2);
  EXPECT_EQ(GetResFileAttrs(ref) & mapChanged, mapChanged);
  Handle first = GetResource(kText, 1), second = GetResource(kText, 3);
  SetHandleSize(first, 10);
  ChangedResource(first);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(CurResFile(), ref);
  EXPECT_EQ(GetResource(kText, 3), second) << "loaded handles stay connected";
  EXPECT_EQ(HomeResFile(second), ref);
  EXPECT_EQ(SizeRsrc(first), 10);
  std::string bytes = ReadRaw(path);
  EXPECT_EQ(bytes.size(), 256u + (4 + 10) + (4 + 6) + 28 + 2 + 8 + 2 * 12 + 2 * 3);
  EXPECT_EQ(bytes.find("REMOVED-BYTES"), std::string::npos);
  EXPECT_FALSE(kwe_test::Exists(path.substr(0, path.size() - 1) + "2")) << "no sibling left";

  std::string longer(300, 'z');
  SetHandleSize(second, Size(longer.size()));
  std::memcpy(*second, longer.data(), longer.size());
  ChangedResource(second);
  WriteResource(second);
  EXPECT_EQ(ResError(), noErr);
  CloseResFile(ref);
  ref = OpenResFile(P(path));
  EXPECT_EQ(Bytes(GetResource(kText, 3)), longer);
  EXPECT_EQ(Bytes(GetResource(kText, 1)), std::string(10, 'a'));
  CloseResFile(ref);
}

// Types the library converts are native in memory and big-endian on disk;
// a menu's definition field is marked for the library's own procedure.
TEST_F(ResourceManagerTest, LoadedDataIsConvertedAndMarked) {
  CreateResFile(P(At("SWAP.RSR")));
  SInt16 ref = OpenResFile(P(At("SWAP.RSR")));
  // A list with its count in native order, then "ab" and "c".
  AddResource(HandleOf(std::string("\002\000\002ab\001c", 7)), kStrList, 300, nullptr);
  std::string menu(16, '\0');
  const SInt32 definition = 0x00C80000;  // 'MDEF' 200 in the upper half
  std::memcpy(&menu[6], &definition, 4);
  AddResource(HandleOf(menu), 'MENU', 128, nullptr);
  CloseResFile(ref);
  EXPECT_NE(ReadRaw(At("SWAP.RSR")).find(std::string("\000\002\002ab", 5)), std::string::npos);

  ref = OpenResFile(P(At("SWAP.RSR")));
  Str255 text;
  GetIndString(text, 300, 2);
  EXPECT_EQ(kwe_test::Text(text), "c");
  EXPECT_EQ(*reinterpret_cast<SInt16*>(*GetResource(kStrList, 300)), 2);
  SInt32 field;
  std::memcpy(&field, *GetResource('MENU', 128) + 6, 4);
  EXPECT_EQ(UInt32(field), 0x00C8FFFFu);
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, HandlesThatAreNoLiveResourcesAreRefusedOrLeaveTheirMaps) {
  Handle plain = NewHandle(4);
  ChangedResource(plain);
  EXPECT_EQ(ResError(), resNotFound);
  EXPECT_EQ(GetResAttrs(plain), 0);
  EXPECT_EQ(ResError(), resNotFound);
  EXPECT_EQ(SizeRsrc(plain), -1);
  EXPECT_EQ(HomeResFile(plain), -1);
  ReleaseResource(plain);
  EXPECT_EQ(ResError(), resNotFound);
  EXPECT_EQ(GetHandleSize(plain), 4) << "not disposed";
  AddResource(nullptr, kText, 1, nullptr);
  EXPECT_EQ(ResError(), addResFailed);
  DisposeHandle(plain);

  std::string path = MakeFile("DETACH.RSR", {{1, "one"}, {2, "two"}});
  std::string before = ReadRaw(path);
  SInt16 ref = OpenResFile(P(path));
  Handle one = GetResource(kText, 1);
  DetachResource(one);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(HGetState(one) & kHandleResourceMask, 0);
  EXPECT_NE(GetResource(kText, 1), one) << "a detached handle is the application's own";
  DisposeHandle(one);
  DisposeHandle(GetResource(kText, 2));  // disposing a resource handle detaches it first
  EXPECT_EQ(Bytes(GetResource(kText, 2)), "two");
  CloseResFile(ref);
  EXPECT_EQ(ReadRaw(path), before);
}

TEST_F(ResourceManagerTest, InfoAndAttributesChangeWithoutTouchingTheLibraryMarks) {
  std::string path = MakeFile("INFO.RSR", {{1, "x"}, {2, "y"}});
  SInt16 ref = OpenResFile(P(path));
  Handle h = GetResource(kText, 1);
  SetResAttrs(h, resPurgeable | 0x81);
  EXPECT_EQ(GetResAttrs(h), resPurgeable);
  EXPECT_EQ(Count1Resources(kText), 2) << "0x01 never marks a resource removed";
  SetResInfo(h, 10, P("a much longer name"));
  ChangedResource(h);
  for (int i = 0; i < 200; ++i) {
    SInt16 id = UniqueID(kText);
    ASSERT_GE(id, 0);
    ASSERT_EQ(Get1Resource(kText, id), nullptr) << id;
    ASSERT_GE(Unique1ID(kText), 0);
  }
  CloseResFile(ref);
  ref = OpenResFile(P(path));
  Handle renamed = Get1NamedResource(kText, P("a much longer name"));
  ASSERT_NE(renamed, nullptr);
  SInt16 id = 0;
  GetResInfo(renamed, &id, nullptr, nullptr);
  EXPECT_EQ(id, 10);
  Str255 name;
  GetResInfo(Get1Resource(kText, 2), nullptr, nullptr, name);
  EXPECT_EQ(kwe_test::Text(name), "t2");
  EXPECT_EQ(GetResourceSizeOnDisk(renamed), 1);
  EXPECT_EQ(GetMaxResourceSize(RGetResource(kText, 2)), 1);
  SetResPurge(true);
  EXPECT_EQ(ResError(), noErr);
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, PermissionsReachTheSameFileAndReadOnlyRefusesWrites) {
  std::string path = MakeFile("PERM.RSR", {{1, "perm"}});
  SInt16 ref = OpenRFPerm(P(path), 0, fsRdPerm);
  ASSERT_GT(ref, 0);
  EXPECT_EQ(GetResFileAttrs(ref) & mapReadOnly, mapReadOnly);
  // Asking again for writing reopens the same file writable.
  EXPECT_EQ(HOpenResFile(0, DirID(), P("PERM.RSR"), fsRdWrPerm), ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(GetResFileAttrs(ref) & mapReadOnly, 0);
  EXPECT_EQ(OpenRFPerm(P("PERM.RSR"), WDRefNum(), fsRdWrPerm), ref) << "no extension added";
  EXPECT_EQ(HOpenResFile(0, DirID(), P("NOPE.RSR"), fsRdPerm), -1);
  EXPECT_EQ(ResError(), fnfErr);
  CloseResFile(ref);

  std::string before = ReadRaw(path);
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
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

// With no file holding them, 'ICON' 0-2 are the system's alert icons: each a
// 4-byte resource whose handle comes back whole.
TEST_F(ResourceManagerTest, SystemAlertIconsStandInForMissingIcons) {
  const LPCSTR icons[] = {IDI_HAND, IDI_ASTERISK, IDI_QUESTION};
  for (SInt16 id = 0; id < 3; ++id) {
    Handle h = GetResource('ICON', id);
    ASSERT_NE(h, nullptr) << id;
    ASSERT_EQ(GetHandleSize(h), 4);
    SInt32 slot;
    std::memcpy(&slot, *h, 4);
    EXPECT_EQ(static_cast<HICON>(LongToHandle(slot)), LoadIconA(nullptr, icons[id]));
  }
  EXPECT_EQ(GetResource('ICON', 3), nullptr);
}

TEST_F(ResourceManagerTest, CodeResourceRegistryStandsInForDefinitions) {
  ProcPtr procedure = reinterpret_cast<ProcPtr>(&ResError);
  EXPECT_EQ(KWE_CodeResource(1, 'MDEF', 200, procedure), procedure);
  EXPECT_EQ(KWE_CodeResource(3, 'MDEF', 200, nullptr), procedure);
  EXPECT_EQ(KWE_CodeResource(5, 'MDEF', 0, procedure), procedure);
  EXPECT_EQ(KWE_CodeResource(5, 'WDEF', 0, procedure), nullptr);
  KWE_CodeResource(0, 'MDEF', 200, nullptr);
  EXPECT_EQ(KWE_CodeResource(3, 'MDEF', 200, nullptr), nullptr);
  for (int i = 0; i < 64; ++i)
    ASSERT_NE(KWE_CodeResource(1, 'CDEF', SInt16(i), procedure), nullptr);
  EXPECT_EQ(KWE_CodeResource(1, 'CDEF', 64, procedure), nullptr) << "64 entries";
}

// The system file named by the session record, then the program's own file
// (its module path with ".RSR"); the utilities' shortcuts read from both.
class InitResourcesTest : public ResourceManagerTest {
 protected:
  void FillRecord(KWESessionRecord& r) override { r.systemResourceFile = systemPath_; }
  void SetUp() override {
    ResourceManagerTest::SetUp();
    lstrcpynA(systemPath_, At("SYSTEM.RSR").c_str(), MAX_PATH);
  }
  char systemPath_[MAX_PATH] = "";  // the session keeps the pointer
};

TEST_F(InitResourcesTest, OpensTheSystemFileThenTheProgramsOwnAndSearchesBoth) {
  char module[MAX_PATH];
  GetModuleFileNameA(nullptr, module, MAX_PATH);
  std::string app = module;
  app = app.substr(0, app.rfind('.')) + ".RSR";
  DeleteFileA(app.c_str());
  MakeAt(systemPath_, {{'STR ', std::string("\x06system", 7)}, {'PAT ', std::string(8, '\x55')}},
         128);
  MakeAt(app,
         {{'STR ', std::string("\013application", 12)},
          {'STR#', std::string("\x00\x02\x03one\x03two", 10)},
          {'PAT#', std::string("\x00\x02", 2) + std::string(8, '\x11') + std::string(8, '\x22')}},
         128);
  SInt16 first = InitResources();
  ASSERT_GT(first, 0);
  EXPECT_EQ(HomeResFile(GetResource('PAT ', 128)), first);
  SInt16 appRef = CurResFile();
  EXPECT_NE(appRef, first) << "the application file is current";
  StringHandle s = GetString(128);
  ASSERT_NE(s, nullptr);
  EXPECT_EQ(kwe_test::Text(*s), "application");
  UseResFile(first);
  EXPECT_EQ(kwe_test::Text(*GetString(128)), "system");
  UseResFile(appRef);
  Str255 item;
  GetIndString(item, 128, 2);
  EXPECT_EQ(kwe_test::Text(item), "two");
  Pattern pattern;
  GetIndPattern(&pattern, 128, 2);
  EXPECT_EQ(pattern.pat[7], 0x22);
  PatHandle plain = GetPattern(128);
  ASSERT_NE(plain, nullptr);
  EXPECT_EQ((**plain).pat[0], 0x55);
  CloseResFile(appRef);
  DeleteFileA(app.c_str());
}

TEST_F(InitResourcesTest, AMissingSystemFileIsReportedWithTheHostsString) {
  EXPECT_EQ(InitResources(), 0);
  ASSERT_FALSE(capture.Reports().empty());
  EXPECT_NE(capture.Reports().back().find("No system resource file"), std::string::npos);
  EXPECT_EQ(CurResFile(), 0);
}

}  // namespace
