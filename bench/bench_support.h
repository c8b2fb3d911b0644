// What every benchmark shares: a clock, the ratio line, and a session to run in.
#pragma once
#include <windows.h>

#include <cstdio>

#include "KWESession.h"

namespace kwe_bench {

// Seconds on the performance counter.
inline double Now() {
  static const LARGE_INTEGER frequency = [] {
    LARGE_INTEGER f;
    QueryPerformanceFrequency(&f);
    return f;
  }();
  LARGE_INTEGER t;
  QueryPerformanceCounter(&t);
  return static_cast<double>(t.QuadPart) / static_cast<double>(frequency.QuadPart);
}

// One figure of the library beside the raw figure for the same work.
inline void PrintRatio(const char* what, double library, double raw, const char* unit) {
  std::printf("%-52s library %9.2f %s, raw %9.2f %s, ratio %.2f\n", what, library, unit, raw, unit,
              library / raw);
}

// A session with no main window and every low-memory global in a library
// cell: enough for the managers that need one.
struct Session {
  Session() {
    KWESessionRecord record{};
    record.size = sizeof record;
    record.instance = GetModuleHandleA(nullptr);
    KWE_InitSession(&record);
    KWEGlobalsRecord globals{};
    globals.size = 4;
    KWE_InitGlobals(&globals);
  }
  ~Session() { KWE_ExitSession(); }
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
};

}  // namespace kwe_bench
