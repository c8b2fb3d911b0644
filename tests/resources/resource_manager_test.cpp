// The Resource Manager through the DLL on files the tests' builder made: new
// files and their names, the chain, loading, the calls that take handles,
// permissions, the stand-ins, and InitResources with the files a host ships
// beside its program.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <functional>
#include <string>

#include "Memory.h"
#include "OSUtils.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "resources/resource_file_fixture.h"

namespace {

using kwe_test::AsBytes;
using kwe_test::MakeResource;
using kwe_test::P;
using kwe_test::ReadRaw;

constexpr ResType kText = 'TEXT';

// A 'TEXT' resource named "t<id>".
kwe_test::Resource TextResource(SInt16 id, const std::string& text) {
  return MakeResource("TEXT", id, AsBytes(text), "t" + std::to_string(id));
}

std::string Str(Handle h) { return h ? kwe_test::AsString(kwe_test::HandleBytes(h)) : "<none>"; }

std::string NameOf(Handle h) {
  Str255 name = {0};
  GetResInfo(h, nullptr, nullptr, name);
  return kwe_test::Text(name);
}

// Calls made in turn: the data of the handle each answers and ResError after it.
struct Call {
  const char* what;
  std::function<Handle()> call;
  std::string data;
  OSErr err;
};
void ExpectCalls(std::initializer_list<Call> calls) {
  for (const Call& c : calls) {
    EXPECT_EQ(Str(c.call()), c.data) << c.what;
    EXPECT_EQ(ResError(), c.err) << c.what;
  }
}

using ResourceManager = kwe_test::ResourceFileTest;

// CreateResFile writes the empty file once; a bare name is squeezed to 8.3
// with ".rsr" in the current directory.
TEST_F(ResourceManager, CreateResFileWritesTheEmptyFileOnce) {
  const std::string empty = kwe_test::AsString(resource_builder::BuildResourceImage({}));
  CreateResFile(P(At("EMPTY.RSR")));
  HCreateResFile(0, DirID(), P("H.RSR"));
  EXPECT_EQ(ReadRaw(At("EMPTY.RSR")), empty);
  EXPECT_EQ(ReadRaw(At("H.RSR")), empty);
  SInt16 ref = Open(At("EMPTY.RSR"));
  ASSERT_GT(ref, 0);
  EXPECT_EQ(Count1Types(), 0);
  EXPECT_EQ(Open(At("empty.rsr")), ref) << "the same path opens once";
  AddResource(kwe_test::HandleWith({1, 2}), kText, 1, nullptr);
  CloseResFile(ref);
  const std::string written = ReadRaw(At("EMPTY.RSR"));
  CreateResFile(P(At("EMPTY.RSR")));
  HCreateResFile(0, DirID(), P("EMPTY.RSR"));
  EXPECT_EQ(ReadRaw(At("EMPTY.RSR")), written) << "a file with data is left alone";

  for (const char* name : {"MYAPP", "a long name.dat", "notes.backup", "DATA.RES", "ABC."})
    CreateResFile(P(name));
  EXPECT_EQ(kwe_test::Listing(Dir()),
            "ABC DATA.RES EMPTY.RSR H.RSR MYAPP.rsr alongnam.rsr notes.rsr");
  ref = OpenResFile(P("a long name.dat"));
  EXPECT_EQ(ref, Open(At("alongnam.rsr")));
  EXPECT_EQ(OpenResFile(P("NOSUCH")), -1);
  EXPECT_EQ(ResError(), fnfErr);
  EXPECT_EQ(CurResFile(), ref);
}

// Searches run from the current file toward older ones; Get1 calls and the
// counts and indexes of one file see only the current one.
TEST_F(ResourceManager, TheChainIsSearchedFromTheCurrentFileTowardOlderOnes) {
  const SInt16 older =
      Open(Make("older.rsr", {TextResource(1, "older one"), TextResource(2, "older two"),
                              MakeResource("PICT", 1, {1, 2})}));
  const SInt16 newer = Open(Make("newer.rsr", {TextResource(1, "newer one")}));
  ASSERT_TRUE(older > 0 && newer > 0);
  ExpectCalls({
      {"GetResource 1", [] { return GetResource(kText, 1); }, "newer one", noErr},
      {"GetResource 2", [] { return GetResource(kText, 2); }, "older two", noErr},
      {"GetResource 77", [] { return GetResource(kText, 77); }, "<none>", resNotFound},
      {"Get1Resource 2", [] { return Get1Resource(kText, 2); }, "<none>", noErr},
      {"GetNamedResource", [] { return GetNamedResource(kText, P("t2")); }, "older two", noErr},
      {"Get1NamedResource", [] { return Get1NamedResource(kText, P("t2")); }, "<none>", noErr},
      {"GetIndResource 1", [] { return GetIndResource(kText, 1); }, "newer one", noErr},
      {"GetIndResource 3", [] { return GetIndResource(kText, 3); }, "older two", noErr},
      {"GetIndResource 4", [] { return GetIndResource(kText, 4); }, "<none>", resNotFound},
      {"Get1IndResource 2", [] { return Get1IndResource(kText, 2); }, "<none>", noErr},
  });
  EXPECT_EQ(Count1Resources(kText), 1);
  EXPECT_EQ(CountResources(kText), 3);
  EXPECT_EQ(CountTypes(), 3) << "every file's types";
  ResType type = 'none';
  Get1IndType(&type, 2);
  EXPECT_EQ(type, 0u) << "out of range in the current file";
  GetIndType(&type, 3);
  EXPECT_EQ(type, ResType('PICT')) << "counted from the newest file on";
  GetIndType(&type, 4);
  EXPECT_EQ(type, ResType('PICT')) << "out of range leaves the type";
  EXPECT_EQ(GetResource('PACK', 3), reinterpret_cast<Handle>(intptr_t(-1)));

  UseResFile(older);
  EXPECT_EQ(Str(GetResource(kText, 1)), "older one") << "the newer file is not searched";
  UseResFile(12345);
  EXPECT_EQ(ResError(), resFNotFound);
  EXPECT_EQ(CurResFile(), older);
  UseResFile(newer);
  CloseResFile(newer);
  EXPECT_EQ(CurResFile(), older) << "the next older file becomes current";
  EXPECT_EQ(GetResFileAttrs(newer), 0);
  EXPECT_EQ(ResError(), resFNotFound);
}

// A resource is loaded once and its handle describes it; released, it is
// read again; with ResLoad off its handle comes empty until LoadResource.
// Types the library converts are native in memory: a menu's definition
// field is also marked for the library's own procedure.
TEST_F(ResourceManager, HandlesComeLoadedOnceAndDescribeTheirResource) {
  const std::string path =
      Make("load.rsr",
           {TextResource(128, "hello"), TextResource(129, "world!"), MakeResource("TEXT", -5, {}),
            MakeResource("MENU", 128, {0, 1, 0, 0, 0, 0, 0, 0xC8, 0, 0, 0, 0, 0, 0, 0, 0})});
  SInt16 ref = Open(path);
  Handle h = Get1Resource(kText, 129);
  EXPECT_EQ(Str(h), "world!");
  EXPECT_EQ(GetResource(kText, 129), h) << "the same handle twice";
  SInt16 id = 0;
  ResType type = 0;
  GetResInfo(h, &id, &type, nullptr);
  EXPECT_EQ(id, 129);
  EXPECT_EQ(type, kText);
  EXPECT_EQ(NameOf(h), "t129");
  EXPECT_EQ(SizeRsrc(h), 6);
  EXPECT_EQ(HomeResFile(h), ref);
  EXPECT_EQ(Str(Get1Resource(kText, -5)), "");
  ReleaseResource(h);
  EXPECT_EQ(Str(GetResource(kText, 129)), "world!");
  SInt32 field;
  std::memcpy(&field, *GetResource('MENU', 128) + 6, 4);
  EXPECT_EQ(UInt32(field), 0x00C8FFFFu);
  CloseResFile(ref);
  EXPECT_EQ(ResError(), noErr);

  SetResLoad(false);
  ref = Open(path);
  h = GetResource(kText, 128);
  SetResLoad(true);
  EXPECT_EQ(Str(h), "");
  LoadResource(h);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(Str(h), "hello");
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
  EXPECT_EQ(HomeResFile(doomed), -1) << "an ordinary handle now";
  DisposeHandle(doomed);
  EXPECT_EQ(Count1Resources(kText), 2);
  EXPECT_EQ(Str(Get1IndResource(kText, 2)), "second");
  EXPECT_EQ(Get1IndResource(kText, 3), nullptr);
  EXPECT_EQ(GetResFileAttrs(ref) & mapChanged, mapChanged);
  Handle first = GetResource(kText, 1), second = GetResource(kText, 3);
  SetHandleSize(first, 10);
  ChangedResource(first);
  UpdateResFile(ref);
  EXPECT_EQ(ResError(), noErr);
  EXPECT_EQ(GetResource(kText, 3), second) << "loaded handles stay connected";
  const std::string bytes = ReadRaw(path);
  EXPECT_EQ(bytes.size(), 256u + (4 + 10) + (4 + 6) + 28 + 2 + 8 + 2 * 12 + 2 * 3);
  EXPECT_EQ(bytes.find("REMOVED-BYTES"), std::string::npos);
  EXPECT_EQ(kwe_test::Listing(Dir()), "compact.rsr") << "no sibling left";

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

// Attributes keep only the Toolbox's bits; a new ID and a longer name are
// written back, and the names after it stay where they belong.
TEST_F(ResourceManager, InfoAndAttributesAreWrittenBack) {
  const std::string path = Make("info.rsr", {TextResource(1, "x"), TextResource(2, "y")});
  SInt16 ref = Open(path);
  Handle h = GetResource(kText, 1);
  SetResAttrs(h, resPurgeable | 0x81);
  EXPECT_EQ(GetResAttrs(h), resPurgeable);
  EXPECT_EQ(Count1Resources(kText), 2) << "0x01 never marks a resource removed";
  SetResInfo(h, 10, P("a much longer name"));
  EXPECT_EQ(NameOf(h), "a much longer name");
  EXPECT_EQ(NameOf(GetResource(kText, 2)), "t2");
  ChangedResource(h);
  for (int i = 0; i < 200; ++i) {
    SInt16 id = UniqueID(kText);
    ASSERT_GE(id, 0);
    ASSERT_EQ(Get1Resource(kText, id), nullptr) << id;
    ASSERT_GE(Unique1ID(kText), 0);
  }
  EXPECT_EQ(GetResourceSizeOnDisk(h), 1);
  EXPECT_EQ(GetMaxResourceSize(h), 1);
  CloseResFile(ref);
  ExpectOnDisk(path, {{{kText, 10}, MakeResource("TEXT", 10, {'x'}, "a much longer name", 0x20)},
                      {{kText, 2}, TextResource(2, "y")}});
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
  EXPECT_EQ(OpenRFPerm(P("PERM.RSR"), WDRefNum(), fsRdWrPerm), ref) << "no extension added";
  EXPECT_EQ(HOpenResFile(0, DirID(), P("NOPE.RSR"), fsRdPerm), -1);
  EXPECT_EQ(ResError(), fnfErr);
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

// With no file holding them, 'ICON' 0-2 are the system's alert icons (a
// 4-byte resource holding the icon); definitions registered by the host
// stand in for code resources, 64 at most.
TEST_F(ResourceManager, SystemIconsAndRegisteredDefinitionsStandIn) {
  const LPCSTR icons[] = {IDI_HAND, IDI_ASTERISK, IDI_QUESTION};
  for (SInt16 id = 0; id < 3; ++id) {
    Handle h = GetResource('ICON', id);
    ASSERT_EQ(GetHandleSize(h), 4) << id;
    SInt32 slot;
    std::memcpy(&slot, *h, 4);
    EXPECT_EQ(static_cast<HICON>(LongToHandle(slot)), LoadIconA(nullptr, icons[id]));
  }
  EXPECT_EQ(GetResource('ICON', 3), nullptr);

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
class InitResourcesTest : public ResourceManager {
 protected:
  void FillRecord(KWESessionRecord& r) override { r.systemResourceFile = systemPath_; }
  void SetUp() override {
    ResourceManager::SetUp();
    lstrcpynA(systemPath_, At("SYSTEM.RSR").c_str(), MAX_PATH);
  }
  char systemPath_[MAX_PATH] = "";  // the session keeps the pointer
};

TEST_F(InitResourcesTest, OpensTheSystemFileThenTheProgramsOwnAndSearchesBoth) {
  char module[MAX_PATH];
  GetModuleFileNameA(nullptr, module, MAX_PATH);
  std::string app = module;
  app = app.substr(0, app.rfind('.')) + ".RSR";
  Make("SYSTEM.RSR", {MakeResource("STR ", 128, AsBytes("\x06system")),
                      MakeResource("PAT ", 128, kwe_test::Bytes(8, 0x55))});
  kwe_test::WriteRaw(
      app, kwe_test::AsString(resource_builder::BuildResourceImage({
               MakeResource("STR ", 128, AsBytes("\013application")),
               MakeResource("STR#", 128, AsBytes(std::string("\0\2\3one\3two", 10))),
               MakeResource("PAT#", 128, {0, 2, 1, 1, 1, 1, 1, 1, 1, 1, 2, 2, 2, 2, 2, 2, 2, 2}),
           })));
  SInt16 first = InitResources();
  ASSERT_GT(first, 0);
  EXPECT_EQ(HomeResFile(GetResource('PAT ', 128)), first);
  SInt16 appRef = CurResFile();
  EXPECT_NE(appRef, first) << "the application file is current";
  EXPECT_EQ(kwe_test::Text(*GetString(128)), "application");
  UseResFile(first);
  EXPECT_EQ(kwe_test::Text(*GetString(128)), "system");
  UseResFile(appRef);
  Str255 item;
  GetIndString(item, 128, 2);
  EXPECT_EQ(kwe_test::Text(item), "two");
  Pattern pattern;
  GetIndPattern(&pattern, 128, 2);
  EXPECT_EQ(pattern.pat[7], 2);
  EXPECT_EQ((**GetPattern(128)).pat[0], 0x55);
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
