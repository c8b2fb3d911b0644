// The Resource Manager through the DLL: files made, changed and reread in a
// temporary directory, the chain, loading, and the calls that take handles.
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

  // A new file in the temporary directory holding the given TEXT resources,
  // closed again; its full path.
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

TEST_F(ResourceManagerTest, CreateResFileWritesTheEmptyFileAndOpensWithNoTypes) {
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
  // A second CreateResFile leaves a file with data alone.
  CloseResFile(ref);
  std::string before = ReadRaw(At("EMPTY.RSR"));
  CreateResFile(P(At("EMPTY.RSR")));
  EXPECT_EQ(ReadRaw(At("EMPTY.RSR")), before);
}

TEST_F(ResourceManagerTest, BareNamesGetTheResourceExtensionInTheCurrentDirectory) {
  CreateResFile(P("MYAPP"));
  EXPECT_TRUE(kwe_test::Exists(At("MYAPP.rsr")));
  CreateResFile(P("a long name.dat"));
  EXPECT_TRUE(kwe_test::Exists(At("alongnam.rsr")));
  CreateResFile(P("DATA.RES"));
  EXPECT_TRUE(kwe_test::Exists(At("DATA.RES")));
  SInt16 ref = OpenResFile(P("MYAPP"));
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
  Handle again = GetResource(kText, 129);
  ASSERT_NE(again, nullptr);
  EXPECT_EQ(Bytes(again), "world!");
  CloseResFile(ref);
  EXPECT_EQ(ResError(), noErr);
}

TEST_F(ResourceManagerTest, TheChainIsSearchedFromTheCurrentFileTowardOlderOnes) {
  std::string older = MakeFile("OLDER.RSR", {{1, "older one"}, {2, "older two"}});
  std::string newer = MakeFile("NEWER.RSR", {{1, "newer one"}});
  SInt16 olderRef = OpenResFile(P(older));
  SInt16 newerRef = OpenResFile(P(newer));
  ASSERT_GT(olderRef, 0);
  ASSERT_GT(newerRef, 0);
  EXPECT_EQ(Bytes(GetResource(kText, 1)), "newer one");
  EXPECT_EQ(Bytes(GetResource(kText, 2)), "older two");
  EXPECT_EQ(Get1Resource(kText, 2), nullptr);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(CountResources(kText), 3);
  EXPECT_EQ(CountTypes(), 2);
  EXPECT_EQ(Bytes(GetIndResource(kText, 3)), "older two");

  UseResFile(olderRef);
  EXPECT_EQ(Bytes(GetResource(kText, 1)), "older one") << "the newer file is not searched";
  UseResFile(12345);
  EXPECT_EQ(ResError(), resFNotFound);
  EXPECT_EQ(CurResFile(), olderRef);

  EXPECT_EQ(GetResource(kText, 77), nullptr);
  EXPECT_EQ(ResError(), resNotFound);
  EXPECT_EQ(GetResource('PACK', 3), reinterpret_cast<Handle>(intptr_t(-1)));

  UseResFile(newerRef);
  CloseResFile(newerRef);
  EXPECT_EQ(CurResFile(), olderRef) << "the next older file becomes current";
  EXPECT_EQ(GetResFileAttrs(newerRef), 0);
  EXPECT_EQ(ResError(), resFNotFound);
}

TEST_F(ResourceManagerTest, WithResLoadOffHandlesComeEmptyUntilLoadResource) {
  std::string path = MakeFile("LOAD.RSR", {{7, "seven"}});
  SetResLoad(false);
  SInt16 ref = OpenResFile(P(path));
  Handle h = GetResource(kText, 7);
  SetResLoad(true);
  ASSERT_NE(h, nullptr);
  EXPECT_EQ(GetHandleSize(h), 0);
  LoadResource(h);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(Bytes(h), "seven");
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, RemovedResourcesLeaveTheCountsAndTheFile) {
  std::string path = MakeFile("REMOVE.RSR", {{1, "keep me"}, {2, "REMOVED-BYTES"}, {3, "me too"}});
  SInt16 ref = OpenResFile(P(path));
  Handle doomed = GetResource(kText, 2);
  RemoveResource(doomed);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(HGetState(doomed) & kHandleResourceMask, 0) << "an ordinary handle now";
  DisposeHandle(doomed);
  EXPECT_EQ(Count1Resources(kText), 2);
  EXPECT_EQ(Bytes(Get1IndResource(kText, 2)), "me too");
  EXPECT_EQ(GetResFileAttrs(ref) & mapChanged, mapChanged);
  CloseResFile(ref);
  EXPECT_EQ(ReadRaw(path).find("REMOVED-BYTES"), std::string::npos);

  ref = OpenResFile(P(path));
  EXPECT_EQ(Count1Resources(kText), 2);
  EXPECT_EQ(Bytes(GetResource(kText, 3)), "me too");
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, ShrinkingCompactsInPlaceAndKeepsHandlesAndNumber) {
  std::string path = MakeFile("SHRINK.RSR", {{1, std::string(400, 'a')}, {2, "second"}});
  SInt16 ref = OpenResFile(P(path));
  Handle first = GetResource(kText, 1);
  Handle second = GetResource(kText, 2);
  SetHandleSize(first, 10);
  ChangedResource(first);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(CurResFile(), ref);
  EXPECT_EQ(GetResource(kText, 2), second) << "loaded handles stay connected";
  EXPECT_EQ(HomeResFile(second), ref);
  EXPECT_EQ(Bytes(second), "second");
  EXPECT_EQ(SizeRsrc(first), 10);
  EXPECT_EQ(ReadRaw(path).size(), 256u + (4 + 10) + (4 + 6) + 28 + 2 + 8 + 2 * 12 + 2 * 3);
  EXPECT_FALSE(kwe_test::Exists(path.substr(0, path.size() - 1) + "2")) << "no sibling left";
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, GrownResourcesAreAppendedAndTheMapFollows) {
  std::string path = MakeFile("GROW.RSR", {{1, "short"}, {2, "other"}});
  SInt16 ref = OpenResFile(P(path));
  Handle h = GetResource(kText, 1);
  std::string longer(300, 'z');
  SetHandleSize(h, Size(longer.size()));
  std::memcpy(*h, longer.data(), longer.size());
  ChangedResource(h);
  WriteResource(h);
  EXPECT_EQ(ResError(), noErr);
  UpdateResFile(ref);
  CloseResFile(ref);
  ref = OpenResFile(P(path));
  EXPECT_EQ(Bytes(GetResource(kText, 1)), longer);
  EXPECT_EQ(Bytes(GetResource(kText, 2)), "other");
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, ListedTypesAreNativeInMemoryAndBigEndianOnDisk) {
  CreateResFile(P(At("SWAP.RSR")));
  SInt16 ref = OpenResFile(P(At("SWAP.RSR")));
  // A 'STR#' list: native count 2, then "ab" and "c".
  std::string list("\x02\x00\x02" "ab\x01" "c", 7);
  AddResource(HandleOf(list), kStrList, 300, nullptr);
  CloseResFile(ref);
  EXPECT_NE(ReadRaw(At("SWAP.RSR")).find(std::string("\x00\x02\x02" "ab", 5)), std::string::npos);

  ref = OpenResFile(P(At("SWAP.RSR")));
  Str255 text;
  GetIndString(text, 300, 2);
  EXPECT_EQ(kwe_test::Text(text), "c");
  Handle h = GetResource(kStrList, 300);
  EXPECT_EQ(*reinterpret_cast<SInt16*>(*h), 2);
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, HandleCallsOnNonResourcesReportResNotFound) {
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
}

TEST_F(ResourceManagerTest, DetachedAndDisposedResourcesLeaveTheirMaps) {
  std::string path = MakeFile("DETACH.RSR", {{1, "one"}, {2, "two"}});
  std::string before = ReadRaw(path);
  SInt16 ref = OpenResFile(P(path));
  Handle one = GetResource(kText, 1);
  DetachResource(one);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(HGetState(one) & kHandleResourceMask, 0);
  Handle fresh = GetResource(kText, 1);
  EXPECT_NE(fresh, one) << "a detached handle is the application's own";
  DisposeHandle(one);
  // Disposing a resource handle directly detaches it first.
  DisposeHandle(GetResource(kText, 2));
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
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, UniqueIDsAreFreeAndNeverNegative) {
  std::string path = MakeFile("UNIQUE.RSR", {{0, "a"}, {1, "b"}, {2, "c"}});
  SInt16 ref = OpenResFile(P(path));
  for (int i = 0; i < 200; ++i) {
    SInt16 id = UniqueID(kText);
    ASSERT_GE(id, 0);
    ASSERT_EQ(Get1Resource(kText, id), nullptr) << id;
    ASSERT_GE(Unique1ID(kText), 0);
  }
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, ReadOnlyFilesOpenButRefuseWrites) {
  std::string path = MakeFile("LOCKED.RSR", {{1, "locked"}});
  std::string before = ReadRaw(path);
  SetFileAttributesA(path.c_str(), FILE_ATTRIBUTE_READONLY);
  SInt16 ref = OpenResFile(P(path));
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

TEST_F(ResourceManagerTest, PermissionsAndVolumeNamesReachTheSameFile) {
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
}

TEST_F(ResourceManagerTest, TypesByIndexAndTheCallsThatShareAnswers) {
  HCreateResFile(0, DirID(), P("TYPES.RSR"));
  EXPECT_EQ(kwe_test::ReadRaw(At("TYPES.RSR")).size(), 286u);
  SInt16 older = OpenResFile(P(At("TYPES.RSR")));
  AddResource(HandleOf("a"), kText, 1, nullptr);
  AddResource(HandleOf("bb"), 'PICT', 1, nullptr);
  std::string newerPath = MakeFile("NEWTYPES.RSR", {{5, "five"}});
  SInt16 newer = OpenResFile(P(newerPath));
  ResType type = 'none';
  Get1IndType(&type, 1);
  EXPECT_EQ(type, kText);
  Get1IndType(&type, 2);
  EXPECT_EQ(type, 0u) << "out of range in the current file";
  type = 'none';
  GetIndType(&type, 3);
  EXPECT_EQ(type, ResType('PICT')) << "counted from the newest file on";
  GetIndType(&type, 4);
  EXPECT_EQ(type, ResType('PICT')) << "out of range leaves the type";

  Handle five = RGetResource(kText, 5);
  ASSERT_NE(five, nullptr);
  EXPECT_EQ(GetResourceSizeOnDisk(five), 4);
  EXPECT_EQ(GetMaxResourceSize(five), 4);
  SetResPurge(true);
  EXPECT_EQ(ResError(), noErr);
  CloseResFile(newer);
  CloseResFile(older);
}

TEST_F(ResourceManagerTest, MenusGetTheirDefinitionFieldMarked) {
  CreateResFile(P(At("MENU.RSR")));
  SInt16 ref = OpenResFile(P(At("MENU.RSR")));
  std::string menu(16, '\0');
  const SInt32 definition = 0x00C80000;  // 'MDEF' 200 in the upper half
  std::memcpy(&menu[6], &definition, 4);
  AddResource(HandleOf(menu), 'MENU', 128, nullptr);
  CloseResFile(ref);
  ref = OpenResFile(P(At("MENU.RSR")));
  Handle h = GetResource('MENU', 128);
  SInt32 field;
  std::memcpy(&field, *h + 6, 4);
  EXPECT_EQ(UInt32(field), 0x00C8FFFFu);
  CloseResFile(ref);
}

TEST_F(ResourceManagerTest, CodeResourceRegistryStandsInForDefinitions) {
  ProcPtr procedure = reinterpret_cast<ProcPtr>(&ResError);
  EXPECT_EQ(KWE_CodeResource(1, 'MDEF', 200, procedure), procedure);
  EXPECT_EQ(KWE_CodeResource(3, 'MDEF', 200, nullptr), procedure);
  EXPECT_EQ(KWE_CodeResource(5, 'MDEF', 0, procedure), procedure);
  EXPECT_EQ(KWE_CodeResource(5, 'WDEF', 0, procedure), nullptr);
  KWE_CodeResource(0, 'MDEF', 200, nullptr);
  EXPECT_EQ(KWE_CodeResource(3, 'MDEF', 200, nullptr), nullptr);
  for (int i = 0; i < 64; ++i) ASSERT_NE(KWE_CodeResource(1, 'CDEF', SInt16(i), procedure), nullptr);
  EXPECT_EQ(KWE_CodeResource(1, 'CDEF', 64, procedure), nullptr) << "64 entries";
}

}  // namespace
