// The Resource Manager through the DLL on files the tests' builder made: new
// files and their names, the chain, loading, the calls that take handles,
// permissions, the stand-ins, and InitResources with the files a host ships
// beside its program; and KWE_ByteSwap in a session: the host's procedure
// and type list, the reports through DebugStr (the table itself is tested
// natively, byte_swap_table_test.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <vector>

#include "KWEByteSwap.h"
#include "Memory.h"
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

// What a call answered: the data of its handle and ResError after it.
std::string Got(Handle h) { return Str(h) + " / " + std::to_string(ResError()); }
std::string Answer(const std::string& data, OSErr err) {
  return data + " / " + std::to_string(err);
}

using ResourceManager = kwe_test::ResourceFileTest;

// CreateResFile writes the empty file once; a bare name is squeezed to 8.3
// with ".rsr" in the current directory, and opens again by the same name.
TEST_F(ResourceManager, CreateResFileWritesTheEmptyFileOnce) {
  for (const char* name : {"MYAPP", "a long name.dat", "notes.backup", "DATA.RES", "ABC."})
    CreateResFile(P(name));
  HCreateResFile(0, DirID(), P("H.RSR"));
  EXPECT_EQ(kwe_test::Listing(Dir()), "ABC DATA.RES H.RSR MYAPP.rsr alongnam.rsr notes.rsr");
  const std::string empty = kwe_test::AsString(resource_builder::BuildResourceImage({}));
  EXPECT_EQ(ReadRaw(At("MYAPP.rsr")), empty);
  EXPECT_EQ(ReadRaw(At("H.RSR")), empty);
  const SInt16 ref = OpenResFile(P("a long name.dat"));
  EXPECT_EQ(Open(At("ALONGNAM.RSR")), ref) << "the same file opens once";
  AddResource(kwe_test::HandleWith({1, 2}), kText, 1, nullptr);
  CloseResFile(ref);
  const std::string written = ReadRaw(At("alongnam.rsr"));
  EXPECT_NE(written, empty);
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
  EXPECT_EQ(HomeResFile(doomed), -1) << "an ordinary handle now";
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
// shortcuts read from the chain. Without a system file InitResources reports
// the host's string and opens nothing.
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
                      MakeResource("PAT ", 128, kwe_test::Bytes(8, 0x55))});
  kwe_test::WriteRaw(
      app, kwe_test::AsString(resource_builder::BuildResourceImage({
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
  Get1IndType(&type, 5);
  EXPECT_EQ(type, 0u) << "out of range in the current file";
  GetIndType(&type, 7);
  EXPECT_EQ(type, ResType('PAT ')) << "counted from the newest file on";
  GetIndType(&type, 8);
  EXPECT_EQ(type, ResType('PAT ')) << "out of range leaves the type";
  EXPECT_EQ(kwe_test::Text(*GetString(128)), "application");
  Str255 item;
  GetIndString(item, 128, 2);
  EXPECT_EQ(kwe_test::Text(item), "two");
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
  EXPECT_EQ(kwe_test::Text(*GetString(128)), "system");
  EXPECT_EQ(GetResFileAttrs(newer), 0);
  EXPECT_EQ(ResError(), resFNotFound);
}

TEST_F(InitResourcesTest, AMissingSystemFileIsReportedWithTheHostsString) {
  EXPECT_EQ(InitResources(), 0);
  ASSERT_FALSE(capture.Reports().empty());
  EXPECT_NE(capture.Reports().back().find("No system resource file"), std::string::npos);
  EXPECT_EQ(CurResFile(), 0);
}

// KWE_ByteSwap in a session.
using kwe_test::Bytes;
using Calls = std::vector<std::vector<SInt32>>;  // direction, index, ID (-1: not given), size

const UInt32 kHostTypes[] = {'AAAA', 'BBBB', 'HOST', 0};
Calls g_calls;

// The host converts its own types: one 32-bit field at the start.
void KWE_CALL HostProcedure(UInt32 direction, SInt32 index, SInt32 size, void* data) {
  g_calls.push_back({SInt32(direction), index, -1, size});
  KWE_ByteSwapLONG(data);
}

void KWE_CALL ExtendedHostProcedure(UInt32 direction, SInt32 index, SInt32 id, SInt32 size, void*) {
  g_calls.push_back({SInt32(direction), index, id, size});
}

class ByteSwapSession : public kwe_test::SessionTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    g_calls.clear();
    r.flags |= extended ? kweFlagExtendedByteSwap : 0;
    r.byteSwapProcedure = extended ? reinterpret_cast<ProcPtr>(ExtendedHostProcedure)
                                   : reinterpret_cast<ProcPtr>(HostProcedure);
    r.byteSwapTypes = kHostTypes;
  }
  bool extended = false;
};

// Host types reach the procedure with their index in the list (and, with
// the extended argument list, the resource ID widened with its sign);
// unknown and damaged data are reported through DebugStr. ('CURS' goes to
// QuickDraw's cursor conversion: see the cursor tests.)
TEST_F(ByteSwapSession, HostTypesAndReports) {
  Bytes data{1, 2, 3, 4, 5};
  KWE_ByteSwap(kweSwapToNative, 'HOST', 300, 5, data.data());
  EXPECT_EQ(data, (Bytes{4, 3, 2, 1, 5}));
  KWE_ByteSwap(kweSwapToMac, 'AAAA', 300, 5, data.data());
  EXPECT_EQ(g_calls, (Calls{{1, 2, -1, 5}, {0, 0, -1, 5}}));

  Bytes unknown{9, 8, 7, 6};
  KWE_ByteSwap(kweSwapToNative, 'XYZW', 128, 4, unknown.data());
  EXPECT_EQ(unknown, (Bytes{9, 8, 7, 6}));
  // A 'DITL' that claims 32,768 items in 20 bytes.
  Bytes ditl{0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0};
  KWE_ByteSwap(kweSwapToNative, 'DITL', 128, SInt32(ditl.size()), ditl.data());
  EXPECT_EQ(capture.Reports(),
            (std::vector<std::string>{"XYZW unknown byteswap type", "DITL damaged byteswap data"}));

  TearDown();  // a new session, with the extended argument list
  extended = true;
  SetUp();
  KWE_ByteSwap(kweSwapToNative, 'BBBB', -2, 8, data.data());
  EXPECT_EQ(g_calls, (Calls{{1, 1, -2, 8}}));
}

}  // namespace
