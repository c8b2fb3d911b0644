// Documents named on the host's command line, as the Segment Loader hands
// them to the application; and ExitToShell's farewell to the host.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>

#include "KWESession.h"
#include "SegLoad.h"
#include "support/test_host.h"

namespace {

using kwe_test::TestInstance;

constexpr OSType kText = 0x54455854;  // 'TEXT'

std::string MakeTempDirectory() {
  char base[MAX_PATH];
  GetTempPathA(sizeof base, base);
  std::string dir = std::string(base) + "kwe_docs_" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(dir.c_str(), nullptr);
  return dir;
}

void Touch(const std::string& path) {
  HANDLE f = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  CloseHandle(f);
}

std::string Name(const Str255 s) { return std::string(reinterpret_cast<const char*>(s) + 1, s[0]); }

class SegmentLoaderTest : public ::testing::Test {
 protected:
  void Start(const char* commandLine) {
    record.size = sizeof record;
    record.instance = TestInstance();
    record.commandLine = commandLine;
    record.documentDirectory = dir.c_str();
    KWE_InitSession(&record);
    // TXT is listed twice: the last record that has an extension wins.
    static const KWEFileTypeEntry types[] = {
        {0x58585858, {'T', 'X', 'T'}, "Old text"}, {kText, {'T', 'X', 'T'}, "Text"}, {0, {}, ""}};
    KWE_Set_Tovel(types, nullptr);
    KWEGlobalsRecord g = kwe_test::GlobalsFor(vars);
    KWE_InitGlobals(&g);
  }
  void TearDown() override {
    KWE_ExitSession();
    for (const char* f : {"\\a.txt", "\\b.txt", "\\c.dat"}) DeleteFileA((dir + f).c_str());
    RemoveDirectoryA(dir.c_str());
  }
  std::string dir = MakeTempDirectory();
  KWESessionRecord record{};
  kwe_test::HostVariables vars{};
};

TEST_F(SegmentLoaderTest, CommandLineNamesBecomeUpperCaseDocuments) {
  Touch(dir + "\\a.txt");
  Touch(dir + "\\b.txt");
  Touch(dir + "\\c.dat");
  Start("a.txt,b.txt missing.txt c.dat");
  SInt16 message = -1, count = -1;
  CountAppFiles(&message, &count);
  EXPECT_EQ(message, appOpen);
  ASSERT_EQ(count, 3);  // the missing one is dropped

  AppFile file;
  GetAppFiles(1, &file);
  EXPECT_EQ(Name(file.fName), "A.TXT");
  EXPECT_EQ(file.fType, kText);
  EXPECT_EQ(file.versNum, 0);
  GetAppFiles(2, &file);
  EXPECT_EQ(Name(file.fName), "B.TXT");
  GetAppFiles(3, &file);
  EXPECT_EQ(Name(file.fName), "C.DAT");
  EXPECT_EQ(file.fType, 0x3F3F3F3Fu);  // no entry in the host's table

  AppFile untouched;
  std::memset(&untouched, 0x5A, sizeof untouched);
  AppFile probe = untouched;
  GetAppFiles(0, &probe);
  GetAppFiles(4, &probe);
  EXPECT_EQ(std::memcmp(&probe, &untouched, sizeof probe), 0);
  ClrAppFiles(1);
  CountAppFiles(&message, &count);
  EXPECT_EQ(count, 3);
}

TEST_F(SegmentLoaderTest, AppParmsNameTheApplicationAndNoCommandLineNoDocuments) {
  Start(nullptr);
  SInt16 message = -1, count = -1;
  CountAppFiles(&message, &count);
  EXPECT_EQ(message, 0);
  EXPECT_EQ(count, 0);
  Str255 name;
  SInt16 refNum = -1;
  Handle parameters = nullptr;
  GetAppParms(name, &refNum, &parameters);
  char module[MAX_PATH];
  GetModuleFileNameA(TestInstance(), module, sizeof module);
  std::string leaf = module;
  leaf = leaf.substr(leaf.find_last_of("\\:") + 1);
  EXPECT_EQ(Name(name), leaf);
  ASSERT_NE(parameters, nullptr);
  SInt16 header[2];
  std::memcpy(header, *parameters, sizeof header);
  EXPECT_EQ(header[0], 0);
  EXPECT_EQ(header[1], 0);
}

UINT g_farewell;
LRESULT CALLBACK HostMainProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_USER + 1) g_farewell = m;
  return DefWindowProcA(w, m, wp, lp);
}

TEST(ExitToShell, TellsTheHostsWindowProcedureAndPostsQuit) {
  WNDCLASSA wc{};
  wc.lpfnWndProc = HostMainProc;
  wc.hInstance = TestInstance();
  wc.lpszClassName = "KWEExitProbe";
  RegisterClassA(&wc);
  HWND main =
      CreateWindowA("KWEExitProbe", "", 0, 0, 0, 1, 1, nullptr, nullptr, wc.hInstance, nullptr);
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = TestInstance();
  r.mainWindow = main;
  KWE_InitSession(&r);
  g_farewell = 0;
  ExitToShell();
  EXPECT_EQ(g_farewell, WM_USER + 1u);
  MSG msg;
  EXPECT_TRUE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  KWE_ExitSession();
  DestroyWindow(main);
}

}  // namespace
