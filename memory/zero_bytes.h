// Clearing a new block's bytes, which is most of what handing out a small
// block costs. The C runtime's memset, reached through msvcrt, takes about
// twice as long as the processor's own string store for the few hundred to
// few thousand bytes of a typical handle; short runs are cleared with a few
// overlapping stores instead, since the string store's start-up would
// outweigh them.
#pragma once
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kwe::memory {

inline void ZeroBytes(void* destination, size_t n) {
  auto* p = static_cast<unsigned char*>(destination);
  if (n >= 128) {
#if defined(__i386__) || defined(__x86_64__)
    asm volatile("rep stosb" : "+D"(p), "+c"(n) : "a"(0) : "memory");
#else
    std::memset(p, 0, n);
#endif
    return;
  }
  const uint64_t zero = 0;
  if (n >= 16) {
    for (size_t i = 0; i + 16 <= n; i += 16) {
      std::memcpy(p + i, &zero, 8);
      std::memcpy(p + i + 8, &zero, 8);
    }
    std::memcpy(p + n - 16, &zero, 8);
    std::memcpy(p + n - 8, &zero, 8);
  } else if (n >= 8) {
    std::memcpy(p, &zero, 8);
    std::memcpy(p + n - 8, &zero, 8);
  } else if (n >= 4) {
    std::memcpy(p, &zero, 4);
    std::memcpy(p + n - 4, &zero, 4);
  } else {
    for (size_t i = 0; i < n; ++i) p[i] = 0;
  }
}

}  // namespace kwe::memory
