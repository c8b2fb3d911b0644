// The small-block heaps driven by arbitrary bytes, as the Memory Manager
// drives them: allocations (a new heap when none can serve), releases and
// resizes of intact blocks only, heap checks, and stray writes anywhere in
// a heap's bytes. Until the first stray write every block keeps its bytes
// and the check finds nothing; after it, whatever the damage, nothing is
// read or written outside the heaps (each heap is a block of its exact size,
// so the sanitizer sees any step past one) and every block handed out lies
// inside its heap.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "memory/seeded_block.h"
#include "memory/small_block_layout.h"

using namespace kwe::memory::small_heap;

namespace {

constexpr uint32_t kLimit = 8192;  // the default small-block limit

using Block = kwe_test::SeededBlock;
using kwe_test::FillBlock;
using kwe_test::Holds;

struct Platform {
  unsigned char* base;
  Heap* heap;
};

class Reader {
 public:
  Reader(const uint8_t* data, size_t size) : data_(data), size_(size) {}
  bool More() const { return at_ < size_; }
  uint32_t Byte() { return at_ < size_ ? data_[at_++] : 0; }
  uint32_t Word() { return Byte() << 8 | Byte(); }

 private:
  const uint8_t* data_;
  size_t size_;
  size_t at_ = 0;
};

void Check(bool condition) {
  if (!condition) std::abort();
}

struct Run {
  HeapSet set;
  std::vector<Platform> platform;
  std::vector<Block> live;
  bool damaged = false;

  ~Run() {
    set.WithdrawAll();
    for (const Platform& p : platform) {
      set.Remove(p.heap);
      std::free(p.base);
    }
  }

  void* NewHeapFor(uint32_t size) {
    uint32_t bytes = HeapBytesFor(kLimit, size);
    auto* base = static_cast<unsigned char*>(std::calloc(bytes, 1));
    if (!base) return nullptr;
    Heap* heap = set.Add(base, bytes);
    if (!heap) {
      std::free(base);
      return nullptr;
    }
    platform.push_back({base, heap});
    return set.AllocateInNew(heap, size);
  }

  Heap* IntactHeap(const Block& b) const {
    Heap* heap = set.HeapHolding(b.data);
    return heap && IsIntactUsedBlock(*heap, b.data) ? heap : nullptr;
  }

  void GiveBackIfEmpty(Heap* heap) {
    if (!HeapIsEmpty(*heap)) return;
    for (size_t i = 0; i < platform.size(); ++i) {
      if (platform[i].heap != heap) continue;
      set.Remove(heap);
      std::free(platform[i].base);
      platform.erase(platform.begin() + static_cast<long>(i));
      return;
    }
  }

  void Allocate(uint32_t size, unsigned char seed) {
    bool damageSeen = false;
    void* p = set.Allocate(size, &damageSeen);
    Check(damaged || !damageSeen);
    if (!p) p = NewHeapFor(size);
    if (!p) return;
    Block b{static_cast<unsigned char*>(p), size, seed};
    Heap* heap = set.HeapHolding(p);
    Check(heap != nullptr);
    Check(b.data + size <= heap->base + heap->end);
    if (!damaged) {
      for (uint32_t i = 0; i < size; ++i) Check(b.data[i] == 0);
      Check(RequestedSize(p) == size);
    }
    FillBlock(b);
    live.push_back(b);
  }

  void Release(size_t i) {
    Block b = live[i];
    live.erase(live.begin() + static_cast<long>(i));
    Heap* heap = IntactHeap(b);
    Check(damaged || heap != nullptr);
    if (!heap) return;  // a damaged block stays allocated
    Check(damaged || Holds(b, b.size));
    set.Release(heap, b.data);
    GiveBackIfEmpty(heap);
  }

  void Resize(size_t i, uint32_t size) {
    Block& b = live[i];
    Heap* heap = IntactHeap(b);
    if (!heap || !set.ResizeInPlace(heap, b.data, size)) return;
    uint32_t kept = b.size < size ? b.size : size;
    if (!damaged) {
      Check(Holds(b, kept));
      for (uint32_t k = kept; k < size; ++k) Check(b.data[k] == 0);
    }
    b.size = size;
    FillBlock(b);
  }

  void Scribble(uint32_t which, uint32_t where, uint32_t value) {
    if (platform.empty()) return;
    const Platform& p = platform[which % platform.size()];
    p.base[where % p.heap->end] = static_cast<unsigned char>(value);
    damaged = true;
  }

  void CheckHeaps() {
    Heap* found = set.FindDamage();
    Check(damaged || found == nullptr);
    if (found) set.Withdraw(found);
  }
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Reader in(data, size);
  Run run;
  for (int step = 0; step < 2000 && in.More(); ++step) {
    switch (in.Byte() % 8) {
      case 0:
      case 1:
      case 2: {
        uint32_t request = in.Word() % kLimit;
        run.Allocate(request, static_cast<unsigned char>(in.Byte()));
        break;
      }
      case 3:
      case 4:
        if (!run.live.empty()) run.Release(in.Word() % run.live.size());
        break;
      case 5:
        if (!run.live.empty()) {
          size_t i = in.Word() % run.live.size();
          run.Resize(i, in.Word() % kLimit);
        }
        break;
      case 6: run.CheckHeaps(); break;
      default: {
        uint32_t which = in.Byte(), where = in.Word(), value = in.Byte();
        run.Scribble(which, where, value);
        break;
      }
    }
  }
  if (!run.damaged) run.CheckHeaps();
  while (!run.live.empty()) run.Release(run.live.size() - 1);
  Check(run.damaged || run.platform.empty());
  return 0;
}
