// Memory Manager against the local heap it is built on: handles of mixed
// sizes, handles from the small-block heaps, and a handle growing 16 bytes
// at a time. Each line: library figure, raw Win32 figure, ratio.
//
// Two raw figures are given for handles: LocalAlloc(LPTR), the cheapest
// zero-filled block Windows has, and LocalAlloc(LHND) with LocalLock, the
// zero-filled movable block and address that a handle is made of.
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <random>
#include <vector>

#include "Memory.h"
#include "bench_support.h"

namespace {

// --- The three ways of getting a zero-filled block and touching it. ---

struct LibraryHandles {
  using Block = Handle;
  static Block Make(Size size) {
    Handle h = NewHandle(size);
    **h = 1;
    return h;
  }
  static void Free(Block h) { DisposeHandle(h); }
};

struct FixedBlocks {
  using Block = HLOCAL;
  static Block Make(Size size) {
    HLOCAL block = LocalAlloc(LPTR, static_cast<SIZE_T>(size));
    *static_cast<char*>(block) = 1;
    return block;
  }
  static void Free(Block block) { LocalFree(block); }
};

struct MovableBlocks {
  using Block = HLOCAL;
  static Block Make(Size size) {
    HLOCAL block = LocalAlloc(LHND, static_cast<SIZE_T>(size));
    *static_cast<char*>(LocalLock(block)) = 1;
    return block;
  }
  static void Free(Block block) {
    LocalUnlock(block);
    LocalFree(block);
  }
};

// --- Two workloads over the same fixed sequence of sizes. ---

struct Workload {
  std::vector<Size> sizes;
  std::vector<int> victims;
};

constexpr int kPool = 1000;
constexpr int kReplacements = 50000;
constexpr int kBatch = 100;
constexpr int kBatches = 500;

// Sizes spread evenly over the powers of two from 8 bytes to largest.
Workload MakeWorkload(double largest, unsigned seed) {
  std::mt19937 random(seed);
  std::uniform_real_distribution<double> exponent(3.0, std::log2(largest));
  Workload w;
  w.sizes.resize(kPool + kReplacements);
  for (Size& s : w.sizes) s = static_cast<Size>(std::pow(2.0, exponent(random)));
  for (int i = 0; i < kReplacements; ++i) w.victims.push_back(static_cast<int>(random() % kPool));
  return w;
}

// The steady state of an application's heap: 1,000 blocks alive, one at a
// time (picked at random) freed and replaced.
template <class Kind>
double Pool(const Workload& w) {
  std::vector<typename Kind::Block> pool(kPool);
  for (int i = 0; i < kPool; ++i) pool[i] = Kind::Make(w.sizes[i]);
  double start = kwe_bench::Now();
  for (int i = 0; i < kReplacements; ++i) {
    auto& slot = pool[w.victims[i]];
    Kind::Free(slot);
    slot = Kind::Make(w.sizes[kPool + i]);
  }
  double elapsed = kwe_bench::Now() - start;
  for (auto block : pool) Kind::Free(block);
  return elapsed / kReplacements;
}

// Short-lived work: 100 blocks made, then all freed.
template <class Kind>
double Batches(const Workload& w) {
  std::vector<typename Kind::Block> batch(kBatch);
  double start = kwe_bench::Now();
  for (int b = 0; b < kBatches; ++b) {
    for (int i = 0; i < kBatch; ++i) batch[i] = Kind::Make(w.sizes[b * kBatch + i]);
    for (int i = 0; i < kBatch; ++i) Kind::Free(batch[i]);
  }
  return (kwe_bench::Now() - start) / (kBatches * kBatch);
}

// Each block freed as soon as it is made, while the pool's first 1,000
// blocks stay alive as an application's data would (an empty small-block
// heap is given back, so without them every pair would make a heap).
template <class Kind>
double Pairs(const Workload& w) {
  std::vector<typename Kind::Block> alive(kPool);
  for (int i = 0; i < kPool; ++i) alive[i] = Kind::Make(w.sizes[i]);
  double start = kwe_bench::Now();
  for (int i = kPool; i < kPool + kReplacements; ++i) Kind::Free(Kind::Make(w.sizes[i]));
  double elapsed = kwe_bench::Now() - start;
  for (auto block : alive) Kind::Free(block);
  return elapsed / kReplacements;
}

enum class Shape { Pool, Batches, Pairs };

template <class Kind>
double Run(Shape shape, const Workload& w) {
  switch (shape) {
    case Shape::Pool: return Pool<Kind>(w);
    case Shape::Batches: return Batches<Kind>(w);
    case Shape::Pairs: return Pairs<Kind>(w);
  }
  return 0;
}

// Library and raw runs alternate, so that both meet the same heap state and
// machine load; the best of seven is kept.
template <class Raw>
void Compare(const char* what, const Workload& w, Shape shape) {
  double library = 1e30, raw = 1e30;
  for (int run = 0; run < 7; ++run) {
    library = std::min(library, Run<LibraryHandles>(shape, w));
    raw = std::min(raw, Run<Raw>(shape, w));
  }
  kwe_bench::PrintRatio(what, library * 1e9, raw * 1e9, "ns/pair");
}

// Every shape against both raw kinds; prefix names the sizes.
void CompareAllShapes(const char* prefix, const Workload& w) {
  struct Line {
    const char* shape;
    Shape value;
  };
  const Line lines[] = {
      {"pairs", Shape::Pairs}, {"pool", Shape::Pool}, {"batches", Shape::Batches}};
  for (const Line& line : lines) {
    char what[96];
    std::snprintf(what, sizeof what, "%s %s, vs LocalAlloc(LPTR)", prefix, line.shape);
    Compare<FixedBlocks>(what, w, line.value);
    std::snprintf(what, sizeof what, "%s %s, vs LocalAlloc(LHND)", prefix, line.shape);
    Compare<MovableBlocks>(what, w, line.value);
  }
}

// Said once, above the figures it qualifies.
void SayWhatIsCompared() {
  std::printf(
      "Handles against raw blocks: both sides make and free the same sizes in the same order\n"
      "and touch each new block once; every block is zero-filled on both sides. LHND lines add\n"
      "the LocalLock that a handle's address costs; LPTR lines, the cheapest raw block, do not.\n"
      "pairs: each block freed at once; pool: 1,000 blocks alive, one at random replaced;\n"
      "batches: 100 blocks made, then all freed.\n");
}

void HandlesOfMixedSizes() {
  SayWhatIsCompared();
  CompareAllShapes("8 B-64 KB", MakeWorkload(65536, 1));
}

// NewHandle/DisposeHandle with session flag 0x00000008, every size below the
// small-block limit; the raw side is unchanged.
void HandlesFromSmallBlockHeaps() {
  KWE_SetFlags(kweFlagSmallBlocks, kweFlagSmallBlocks, 0, 0);
  CompareAllShapes("small blocks 8 B-8 KB", MakeWorkload(8191, 2));
  KWE_SetFlags(kweFlagSmallBlocks, 0, 0, 0);
}

// One block grown 16 bytes at a time, 100,000 times; the time per call is
// printed for stretches of 10,000 calls, so that growth with size shows.
void GrowingOneHandle() {
  constexpr int kCalls = 100000, kStretch = 10000, kStretches = kCalls / kStretch;
  std::vector<double> library(kStretches, 1e30), raw(kStretches, 1e30);
  for (int run = 0; run < 5; ++run) {
    Handle h = NewHandle(16);
    HLOCAL block = LocalAlloc(LHND, 16);
    for (int stretch = 0; stretch < kStretches; ++stretch) {
      double start = kwe_bench::Now();
      for (int i = 0; i < kStretch; ++i) SetHandleSize(h, GetHandleSize(h) + 16);
      library[stretch] = std::min(library[stretch], kwe_bench::Now() - start);
      start = kwe_bench::Now();
      for (int i = 0; i < kStretch; ++i) {
        block = LocalReAlloc(block, LocalSize(block) + 16, LHND);
      }
      raw[stretch] = std::min(raw[stretch], kwe_bench::Now() - start);
    }
    DisposeHandle(h);
    LocalFree(block);
  }
  for (int stretch = 0; stretch < kStretches; stretch += 3) {
    char what[80];
    std::snprintf(what, sizeof what, "SetHandleSize +16 B near %4d KB vs LocalReAlloc",
                  (stretch + 1) * kStretch * 16 / 1024);
    kwe_bench::PrintRatio(what, library[stretch] / kStretch * 1e9, raw[stretch] / kStretch * 1e9,
                          "ns/call");
  }
}

}  // namespace

int main() {
  kwe_bench::Session session;
  HandlesOfMixedSizes();
  HandlesFromSmallBlockHeaps();
  GrowingOneHandle();
  return 0;
}
