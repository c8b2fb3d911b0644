// InitResources with the files a host ships beside its program: the
// library's system file and the program's own ".RSR" file; and the
// Toolbox utilities' shortcuts reading from them.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "Memory.h"
#include "Resources.h"
#include "TextUtils.h"
#include "ToolUtils.h"
#include "files/files_fixture.h"

namespace {

using kwe_test::P;

std::string ProgramPathWithExtension(const char* extension) {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string s(path);
  return s.substr(0, s.rfind('.')) + extension;
}

Handle HandleOf(const std::string& bytes) {
  Handle h = NewHandle(Size(bytes.size()));
  std::memcpy(*h, bytes.data(), bytes.size());
  return h;
}

class InitResourcesTest : public kwe_test::FilesTest {
 protected:
  // The session keeps the pointer; the path is filled in once the
  // temporary directory exists.
  void FillRecord(KWESessionRecord& r) override { r.systemResourceFile = systemPath_; }
  void SetUp() override {
    FilesTest::SetUp();
    system_ = At("SYSTEM.RSR");
    lstrcpynA(systemPath_, system_.c_str(), MAX_PATH);
  }
  // Makes a resource file at an absolute path with the given resources.
  static void MakeFile(const std::string& path,
                       std::initializer_list<std::pair<ResType, std::string>> resources,
                       SInt16 id) {
    DeleteFileA(path.c_str());
    CreateResFile(P(path));
    SInt16 ref = OpenResFile(P(path));
    ASSERT_GT(ref, 0) << path;
    for (const auto& [type, bytes] : resources) AddResource(HandleOf(bytes), type, id, nullptr);
    CloseResFile(ref);
    ASSERT_EQ(ResError(), noErr);
  }
  std::string system_;
  char systemPath_[MAX_PATH] = "";
};

TEST_F(InitResourcesTest, OpensTheSystemFileThenTheProgramsOwnAndSearchesBoth) {
  std::string app = ProgramPathWithExtension(".RSR");
  MakeFile(system_, {{'STR ', std::string("\x06system", 7)}, {'PAT ', std::string(8, '\x55')}},
           128);
  MakeFile(app, {{'STR ', std::string("\x0B" "application", 12)},
                 {'STR#', std::string("\x00\x02\x03one\x03two", 10)},
                 {'PAT#', std::string("\x00\x02", 2) + std::string(8, '\x11') +
                              std::string(8, '\x22')}},
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
  DeleteFileA(system_.c_str());
  EXPECT_EQ(InitResources(), 0);
  ASSERT_FALSE(capture.Reports().empty());
  EXPECT_NE(capture.Reports().back().find("No system resource file"), std::string::npos);
  EXPECT_EQ(CurResFile(), 0);
}

}  // namespace
