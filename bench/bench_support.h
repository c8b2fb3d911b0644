// What every benchmark shares: a clock, the ratio line, and a session to run in.
#pragma once
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

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

// A repeatable stream of numbers, the same on every run and platform.
class Numbers {
 public:
  explicit Numbers(unsigned seed) : seed_(seed) {}
  int Below(int n) {
    seed_ = seed_ * 1103515245u + 12345u;
    return static_cast<int>((seed_ >> 16) % static_cast<unsigned>(n));
  }

 private:
  unsigned seed_;
};

// Words and blanks with a return now and then, as someone types prose; the
// same on every run.
inline std::string Prose(int length) {
  Numbers numbers(7);
  static const char* const words[] = {"the",  "quick", "brown", "fox",    "jumps", "over",
                                      "lazy", "dogs",  "while", "typing", "into",  "TextEdit"};
  std::string text;
  while (int(text.size()) < length) {
    text += words[numbers.Below(12)];
    text += numbers.Below(15) == 0 ? '\r' : ' ';
  }
  text.resize(size_t(length));
  return text;
}

// The best of rounds runs of each side, per call in unit (seconds x scale).
// The runs alternate, so that neither side always runs on what the other
// has left behind.
template <typename Library, typename Raw>
void CompareBest(const char* what, int rounds, int calls, double scale, const char* unit,
                 Library library, Raw raw) {
  double best[2] = {1e30, 1e30};
  for (int round = 0; round < 2 * rounds; ++round) {
    double start = Now();
    if (round % 2 == 0)
      library();
    else
      raw();
    GdiFlush();
    double elapsed = Now() - start;
    if (elapsed < best[round % 2]) best[round % 2] = elapsed;
  }
  PrintRatio(what, best[0] * scale / calls, best[1] * scale / calls, unit);
}

// For work whose cost swings with what Wine and the X server do in the
// background (window surfaces flushed on a timer): each round runs both
// sides back to back, in alternating order, each side answering the seconds
// its own work took, and the figures printed are the medians of each side
// and of the round-by-round ratios. Work that must leave something running
// after the part it times (a program started and then stopped) times
// itself this way.
template <typename Library, typename Raw>
void CompareTimedByRound(const char* what, int rounds, int calls, double scale, const char* unit,
                         Library library, Raw raw) {
  std::vector<double> times[2], ratios;
  for (int round = 0; round < rounds; ++round) {
    double elapsed[2];
    for (int turn = 0; turn < 2; ++turn) {
      int side = (round + turn) % 2;
      elapsed[side] = side == 0 ? library() : raw();
    }
    for (int side = 0; side < 2; ++side) times[side].push_back(elapsed[side]);
    ratios.push_back(elapsed[0] / elapsed[1]);
  }
  auto median = [](std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v[v.size() / 2];
  };
  std::printf("%-52s library %9.2f %s, raw %9.2f %s, ratio %.2f\n", what,
              median(times[0]) * scale / calls, unit, median(times[1]) * scale / calls, unit,
              median(ratios));
  std::fflush(stdout);
}

// The same, timing each side's whole call.
template <typename Library, typename Raw>
void CompareByRound(const char* what, int rounds, int calls, double scale, const char* unit,
                    Library library, Raw raw) {
  auto timed = [](auto work) {
    return [work]() mutable {
      double start = Now();
      work();
      GdiFlush();
      return Now() - start;
    };
  };
  CompareTimedByRound(what, rounds, calls, scale, unit, timed(library), timed(raw));
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
