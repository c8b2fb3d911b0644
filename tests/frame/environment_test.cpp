// What the application learns of its machine, its time and its documents
// (the Segment Loader), and the library's system values.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <string>

#include "Files.h"
#include "Gestalt.h"
#include "OSUtils.h"
#include "Processes.h"
#include "SegLoad.h"
#include "support/temp_tree.h"
#include "support/test_host.h"

namespace {

class EnvironmentTest : public kwe_test::SessionTest {};

// The three ways of asking tell one story; unknown selectors are refused
// with a zero response.
TEST_F(EnvironmentTest, GestaltSysEnvironsAndEnvironsAgree) {
  SysEnvRec world{};
  EXPECT_EQ(SysEnvirons(2, &world), noErr);
  EXPECT_EQ(world.environsVersion, 2);
  EXPECT_EQ(SysEnvirons(2, nullptr), paramErr);
  SInt16 rom = 0, machine = 0;
  Environs(&rom, &machine);
  SInt32 version = 0, fpu = 0;
  EXPECT_EQ(Gestalt(0x73797376 /* 'sysv' */, &version), noErr);
  EXPECT_EQ(Gestalt(0x66707520 /* 'fpu ' */, &fpu), noErr);
  EXPECT_EQ(version, 0x0605);
  EXPECT_EQ(world.systemVersion, version);
  EXPECT_EQ(rom, version);
  EXPECT_EQ(world.hasFPU, fpu != 0);
  for (OSType unknown : {OSType(0x61626364) /* 'abcd' */, OSType(0)}) {
    SInt32 response = 0x5A5A5A5A;
    EXPECT_EQ(Gestalt(unknown, &response), -5550) << std::hex << unknown;
    EXPECT_EQ(response, 0);
  }
}

// Lengths first, then the bytes; case only when asked, diacriticals always.
TEST_F(EnvironmentTest, EqualStringComparesLengthThenBytes) {
  const unsigned char abc[] = "\003abc", ABC[] = "\003ABC", abcd[] = "\004abcd",
                      accented[] = "\003ab\x8E", empty[] = "\000";
  const struct {
    const unsigned char *a, *b;
    bool caseSensitive, equal;
  } cases[] = {{abc, ABC, false, true},       {abc, ABC, true, false},
               {abc, abcd, false, false},     {abcd, abc, false, false},
               {abc, accented, false, false}, {empty, empty, true, true},
               {abc, nullptr, false, false},  {nullptr, nullptr, true, true}};
  for (const auto& c : cases)
    EXPECT_EQ(EqualString(c.a, c.b, c.caseSensitive, false), c.equal) << "case " << &c - cases;
}

// Seconds from 1601 to 1904, to read the local clock by another route.
constexpr uint64_t kSeconds1601To1904 = 9561628800ull;

TEST_F(EnvironmentTest, DateTimeIsLocalSecondsSince1904) {
  SYSTEMTIME local;
  GetLocalTime(&local);
  FILETIME file;
  SystemTimeToFileTime(&local, &file);
  uint64_t seconds = ((uint64_t(file.dwHighDateTime) << 32) | file.dwLowDateTime) / 10000000ull;
  UInt32 secs = 0;
  GetDateTime(&secs);
  EXPECT_NEAR(double(secs), double(seconds - kSeconds1601To1904), 2.0);

  DateTimeRec d;
  GetTime(&d);
  GetLocalTime(&local);
  EXPECT_EQ(d.year, local.wYear);
  EXPECT_EQ(d.month, local.wMonth);
  EXPECT_EQ(d.day, local.wDay);
  EXPECT_EQ(d.dayOfWeek, local.wDayOfWeek + 1) << "Sunday is 1";
}

// A window of the host's whose procedure counts the WM_USER messages.
int g_dispatched;
UINT g_lastMessage;
LRESULT CALLBACK ProbeProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m >= WM_USER) {
    ++g_dispatched;
    g_lastMessage = m;
  }
  return DefWindowProcA(w, m, wp, lp);
}

HWND ProbeWindow() {
  WNDCLASSA wc{};
  wc.lpfnWndProc = ProbeProc;
  wc.hInstance = kwe_test::TestInstance();
  wc.lpszClassName = "KWEProbe";
  RegisterClassA(&wc);
  return CreateWindowA("KWEProbe", "", 0, 0, 0, 1, 1, nullptr, nullptr, wc.hInstance, nullptr);
}

// Under 21 ticks Delay only watches the clock; from 21 on it keeps the
// windows alive, without messages stretching the wait.
TEST_F(EnvironmentTest, DelayPumpsMessagesOnlyWhenLong) {
  HWND probe = ProbeWindow();
  g_dispatched = 0;
  PostMessageA(probe, WM_USER + 7, 0, 0);
  DWORD before = GetTickCount();
  SInt32 final = 0;
  Delay(10, &final);
  DWORD elapsed = GetTickCount() - before;
  EXPECT_GE(elapsed, 9u * 16);
  EXPECT_LT(elapsed, 1000u);
  EXPECT_EQ(g_dispatched, 0);
  EXPECT_NEAR(double(final), double(GetTickCount() >> 4), 2.0);
  EXPECT_EQ(vars.Ticks, static_cast<UInt32>(final));

  before = GetTickCount();
  Delay(30, nullptr);
  elapsed = GetTickCount() - before;
  EXPECT_EQ(g_dispatched, 1);
  EXPECT_GE(elapsed, 29u * 16);
  EXPECT_LT(elapsed, 2000u);
  DestroyWindow(probe);
  before = GetTickCount();
  SysBeep(3);
  EXPECT_GE(GetTickCount() - before, 2u * 16) << "SysBeep waits its duration";
}

TEST_F(EnvironmentTest, NotificationNeedsAnIcon) {
  NMRec request{};
  EXPECT_EQ(NMInstall(&request), -299);
  EXPECT_EQ(NMRemove(&request), -1);

  UInt16 icon[16];
  for (int i = 0; i < 16; ++i) icon[i] = UInt16(0x8001 | (1 << i));
  Ptr data = reinterpret_cast<Ptr>(icon);
  request.nmIcon = &data;
  EXPECT_EQ(NMInstall(&request), noErr);
  EXPECT_EQ(NMRemove(&request), noErr);
  EXPECT_EQ(NMRemove(&request), -1);  // the bitmap went with the first remove
}

TEST_F(EnvironmentTest, ProcessCallsKnowOneProcess) {
  ProcessSerialNumber current{7, 7}, front{9, 9}, other{0, 1};
  EXPECT_EQ(GetCurrentProces(&current), noErr);
  EXPECT_EQ(current.highLongOfPSN, 0u);
  EXPECT_EQ(current.lowLongOfPSN,
            static_cast<UInt32>(reinterpret_cast<std::uintptr_t>(kwe_test::TestInstance())));
  EXPECT_EQ(GetFrontProcess(&front), noErr);
  Boolean same = false;
  EXPECT_EQ(SameProcess(&current, &front, &same), noErr);
  EXPECT_TRUE(same);
  EXPECT_EQ(SameProcess(&current, &other, &same), noErr);
  EXPECT_FALSE(same);
  EXPECT_EQ(GetNextProcess(&other), -600);
  FSSpec spec{};
  const char name[] = "NOSUCHAP.EXE";
  spec.name[0] = sizeof name - 1;
  std::memcpy(spec.name + 1, name, sizeof name - 1);
  LaunchParamBlockRec block{};
  block.launchAppSpec = &spec;
  EXPECT_EQ(LaunchApplication(&block), fnfErr);
}

constexpr OSType kText = 0x54455854;  // 'TEXT'

std::string MakeTempDirectory() {
  char base[MAX_PATH];
  GetTempPathA(sizeof base, base);
  std::string dir = std::string(base) + "kwe_docs_" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(dir.c_str(), nullptr);
  return dir;
}

std::string Name(const Str255 s) { return std::string(reinterpret_cast<const char*>(s) + 1, s[0]); }

class SegmentLoaderTest : public ::testing::Test {
 protected:
  void Start(const char* commandLine) {
    record.size = sizeof record;
    record.instance = kwe_test::TestInstance();
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
    kwe_test::RemoveTree(dir + "\\");
  }
  std::string dir = MakeTempDirectory();
  KWESessionRecord record{};
  kwe_test::HostVariables vars{};
};

// Names that exist become documents, upper-cased, typed by the host's
// table; indexes outside the list leave the record alone.
TEST_F(SegmentLoaderTest, CommandLineNamesBecomeUpperCaseDocuments) {
  for (const char* name : {"\\a.txt", "\\b.txt", "\\c.dat"})
    CloseHandle(
        CreateFileA((dir + name).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
  Start("a.txt,b.txt missing.txt c.dat");
  SInt16 message = -1, count = -1;
  CountAppFiles(&message, &count);
  EXPECT_EQ(message, appOpen);
  ASSERT_EQ(count, 3);  // the missing one is dropped
  const struct {
    const char* name;
    OSType type;
  } documents[] = {{"A.TXT", kText}, {"B.TXT", kText}, {"C.DAT", 0x3F3F3F3F}};
  for (SInt16 i = 1; i <= 3; ++i) {
    AppFile file;
    GetAppFiles(i, &file);
    EXPECT_EQ(Name(file.fName), documents[i - 1].name);
    EXPECT_EQ(file.fType, documents[i - 1].type) << i;
    EXPECT_EQ(file.versNum, 0);
  }
  AppFile untouched, probe;
  std::memset(&untouched, 0x5A, sizeof untouched);
  probe = untouched;
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
  GetModuleFileNameA(kwe_test::TestInstance(), module, sizeof module);
  std::string leaf = module;
  leaf = leaf.substr(leaf.find_last_of("\\:") + 1);
  EXPECT_EQ(Name(name), leaf);
  ASSERT_NE(parameters, nullptr);
  EXPECT_EQ(std::memcmp(*parameters, "\0\0\0\0", 4), 0) << "message and count are 0";
}

TEST(ExitToShell, TellsTheHostsWindowProcedureAndPostsQuit) {
  HWND main = ProbeWindow();
  KWESessionRecord r{};
  r.size = sizeof r;
  r.instance = kwe_test::TestInstance();
  r.mainWindow = main;
  KWE_InitSession(&r);
  ExitToShell();
  EXPECT_EQ(g_lastMessage, WM_USER + 1u);
  MSG msg;
  EXPECT_TRUE(PeekMessageA(&msg, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  KWE_ExitSession();
  DestroyWindow(main);
}

// Setting answers the previous value (any other operation only reads) and
// stores it as the index's kind holds it; indexes outside the table or
// unassigned answer zero, and the scroll bar sizes follow the system.
TEST(SystemValues, SetAnswersThePreviousValueAndKeepsWhatTheKindHolds) {
  enum { kGet = 0, kSet = 1, kMetric = 0x7FFF };
  const struct {
    SInt16 index;
    SInt32 set, before, after;
  } cases[] = {
      {15, 4096, 0x2000, 4096},         // the small-block limit, a long
      {36, 7, 0x3F3F3F3F, 7},           // '????' by default
      {5, 0x18000, 0x20, -32768},       // a word, sign-extended
      {32, -1, 0, 0xFFFF},              // a low word
      {39, 0x12345678, 0, 0x12345678},  // a long
      {3, 99, kMetric, kMetric},        // the scroll bars: read only
      {21, 99, 0, 0},                   // read only
      {0, 1234, 0, 0},                  // outside the table or unassigned
      {47, 1234, 0, 0},
      {25, 1234, 0, 0},
  };
  for (const auto& c : cases) {
    SInt32 metric = GetSystemMetrics(SM_CXVSCROLL);
    auto want = [&](SInt32 v) { return v == kMetric ? metric : v; };
    EXPECT_EQ(KWE_SystemValue(kSet, c.index, c.set), want(c.before)) << c.index;
    EXPECT_EQ(KWE_SystemValue(kGet, c.index, 0), want(c.after)) << c.index;
    EXPECT_EQ(KWE_SystemValue(2, c.index, 77), want(c.after)) << c.index;
  }
  EXPECT_EQ(KWE_SystemValue(kGet, 4, 0), GetSystemMetrics(SM_CYHSCROLL));
}

}  // namespace
