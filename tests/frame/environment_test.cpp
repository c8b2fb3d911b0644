// What the application learns of its machine and its time, and the
// library's system values.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdint>
#include <cstring>

#include "Files.h"
#include "Gestalt.h"
#include "OSUtils.h"
#include "Processes.h"
#include "support/test_host.h"

namespace {

constexpr OSType Code(const char (&s)[5]) {
  return (OSType(UInt8(s[0])) << 24) | (OSType(UInt8(s[1])) << 16) | (OSType(UInt8(s[2])) << 8) |
         OSType(UInt8(s[3]));
}

class EnvironmentTest : public kwe_test::SessionTest {};

TEST_F(EnvironmentTest, GestaltAnswersItsTableAndRefusesOtherSelectors) {
  struct {
    OSType selector;
    SInt32 response;
  } const answers[] = {
      {Code("vers"), 1},  {Code("mach"), 11},     {Code("sysv"), 0x0605}, {Code("proc"), 4},
      {Code("fpu "), -1}, {Code("qd  "), 0x0200}, {Code("kbd "), 4},      {Code("atlk"), 0},
      {Code("scri"), 1},  {Code("te  "), 1},      {Code("alis"), 0},
  };
  for (const auto& a : answers) {
    SInt32 response = 0x5A5A5A5A;
    EXPECT_EQ(Gestalt(a.selector, &response), noErr) << std::hex << a.selector;
    EXPECT_EQ(response, a.response) << std::hex << a.selector;
  }
  SInt32 response = 0x5A5A5A5A;
  EXPECT_EQ(Gestalt(Code("abcd"), &response), -5550);
  EXPECT_EQ(response, 0);
  EXPECT_EQ(Gestalt(0, &response), -5550);
}

TEST_F(EnvironmentTest, SysEnvironsAndEnvironsDescribeTheMachine) {
  SysEnvRec world;
  std::memset(&world, 0x5A, sizeof world);
  EXPECT_EQ(SysEnvirons(2, &world), noErr);
  EXPECT_EQ(world.environsVersion, 2);
  EXPECT_EQ(world.machineType, 4);
  EXPECT_EQ(world.systemVersion, 0x0605);
  EXPECT_EQ(world.processor, 0);
  EXPECT_EQ(world.hasFPU, 1);
  EXPECT_EQ(world.hasColorQD, 1);
  EXPECT_EQ(world.keyBoardType, 0);
  EXPECT_EQ(world.atDrvrVersNum, 0);
  EXPECT_EQ(world.sysVRefNum, 0);
  SInt16 rom = 0, machine = 0;
  Environs(&rom, &machine);
  EXPECT_EQ(rom, 0x0605);
  EXPECT_EQ(machine, 1);
  EXPECT_EQ(SetCurrentA5(), 0);
  EXPECT_EQ(SetA5(0x1234), 0);

  // EqualString compares the length, then the bytes; diacriticals always count.
  const unsigned char abc[] = "\003abc", ABC[] = "\003ABC", abcd[] = "\004abcd";
  const unsigned char accented[] = "\003ab\x8E", empty[] = "\000";
  EXPECT_TRUE(EqualString(abc, ABC, false, false));
  EXPECT_FALSE(EqualString(abc, ABC, true, false));
  EXPECT_FALSE(EqualString(abc, abcd, false, false));
  EXPECT_FALSE(EqualString(abc, accented, false, false));
  EXPECT_TRUE(EqualString(empty, empty, true, true));
}

// Seconds from 1601 to 1904, to read the local clock by another route.
constexpr uint64_t kSeconds1601To1904 = 9561628800ull;

TEST_F(EnvironmentTest, DateTimeIsLocalSecondsSince1904) {
  SYSTEMTIME local;
  GetLocalTime(&local);
  FILETIME file;
  SystemTimeToFileTime(&local, &file);
  uint64_t seconds = ((uint64_t(file.dwHighDateTime) << 32) | file.dwLowDateTime) / 10000000ull;
  UInt32 expected = static_cast<UInt32>(seconds - kSeconds1601To1904);
  UInt32 secs = 0;
  GetDateTime(&secs);
  EXPECT_NEAR(double(secs), double(expected), 2.0);

  DateTimeRec d;
  GetTime(&d);
  GetLocalTime(&local);
  EXPECT_EQ(d.year, local.wYear);
  EXPECT_EQ(d.month, local.wMonth);
  EXPECT_EQ(d.day, local.wDay);
  EXPECT_EQ(d.dayOfWeek, local.wDayOfWeek + 1);
  EXPECT_GE(d.dayOfWeek, 1);
  EXPECT_LE(d.dayOfWeek, 7);
}

int g_dispatched;
LRESULT CALLBACK CountingProc(HWND w, UINT m, WPARAM wp, LPARAM lp) {
  if (m == WM_USER + 7) ++g_dispatched;
  return DefWindowProcA(w, m, wp, lp);
}

HWND CountingWindow() {
  WNDCLASSA wc{};
  wc.lpfnWndProc = CountingProc;
  wc.hInstance = kwe_test::TestInstance();
  wc.lpszClassName = "KWEDelayProbe";
  RegisterClassA(&wc);
  return CreateWindowA("KWEDelayProbe", "", 0, 0, 0, 1, 1, nullptr, nullptr, wc.hInstance, nullptr);
}

TEST_F(EnvironmentTest, ShortDelayWaitsWithoutDispatching) {
  HWND probe = CountingWindow();
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
  DestroyWindow(probe);
}

TEST_F(EnvironmentTest, LongDelayKeepsWindowsAlive) {
  HWND probe = CountingWindow();
  g_dispatched = 0;
  PostMessageA(probe, WM_USER + 7, 0, 0);
  DWORD before = GetTickCount();
  Delay(30, nullptr);
  DWORD elapsed = GetTickCount() - before;
  EXPECT_EQ(g_dispatched, 1);
  EXPECT_GE(elapsed, 29u * 16);
  EXPECT_LT(elapsed, 2000u);  // messages arriving midway do not stretch it
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
  ProcessSerialNumber current{7, 7}, front{9, 9};
  EXPECT_EQ(GetCurrentProces(&current), noErr);
  EXPECT_EQ(current.highLongOfPSN, 0u);
  EXPECT_EQ(current.lowLongOfPSN,
            static_cast<UInt32>(reinterpret_cast<std::uintptr_t>(kwe_test::TestInstance())));
  EXPECT_EQ(GetFrontProcess(&front), noErr);
  Boolean same = false;
  EXPECT_EQ(SameProcess(&current, &front, &same), noErr);
  EXPECT_TRUE(same);
  ProcessSerialNumber other{0, 1};
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

enum { kGet = 0, kSet = 1 };

// Setting answers the previous value and any operation but set only reads;
// indexes outside the table and unassigned ones answer zero; the scroll bar
// sizes follow the system and cannot be set.
TEST(SystemValues, SetAnswersThePreviousValueAndOnlyAssignedIndexesHoldOne) {
  EXPECT_EQ(KWE_SystemValue(kSet, 15, 4096), 0x2000);  // the small-block limit
  EXPECT_EQ(KWE_SystemValue(kGet, 15, 0), 4096);
  EXPECT_EQ(KWE_SystemValue(2, 15, 77), 4096);
  EXPECT_EQ(KWE_SystemValue(kGet, 36, 0), 0x3F3F3F3F);  // '????'
  EXPECT_EQ(KWE_SystemValue(kGet, 8, 0), -1);
  for (SInt16 index : {0, -1, 47, 1000, 25, 40, 45}) {
    EXPECT_EQ(KWE_SystemValue(kSet, index, 1234), 0) << index;
    EXPECT_EQ(KWE_SystemValue(kGet, index, 0), 0) << index;
  }
  KWE_SystemValue(kSet, 21, 99);
  EXPECT_EQ(KWE_SystemValue(kGet, 21, 0), 0);
  KWE_SystemValue(kSet, 3, 99);
  EXPECT_EQ(KWE_SystemValue(kGet, 3, 0), GetSystemMetrics(SM_CXVSCROLL));
  EXPECT_EQ(KWE_SystemValue(kGet, 4, 0), GetSystemMetrics(SM_CYHSCROLL));
}

TEST(SystemValues, SixteenBitSettingsKeepTheLowWord) {
  KWE_SystemValue(kSet, 5, 0x18000);
  EXPECT_EQ(KWE_SystemValue(kGet, 5, 0), -32768);  // sign-extended
  KWE_SystemValue(kSet, 1, 0x12345);
  EXPECT_EQ(KWE_SystemValue(kGet, 1, 0), 0x2345);
  KWE_SystemValue(kSet, 32, -1);
  EXPECT_EQ(KWE_SystemValue(kGet, 32, 0), 0xFFFF);  // kept as value & 0xFFFF
  KWE_SystemValue(kSet, 39, 0x12345678);
  EXPECT_EQ(KWE_SystemValue(kGet, 39, 0), 0x12345678);
}

}  // namespace
