// Clearing a new block's bytes, which is most of what handing out a small
// block costs. The C runtime's memset, reached through msvcrt, takes about
// twice as long as the processor's own string store for the few hundred to
// few thousand bytes of a typical handle. The string store is used for every
// length: choosing something else for short runs costs a mispredicted branch
// whenever lengths come in no particular order, which is more than the
// string store's start-up saves.
#pragma once
#include <cstddef>
#include <cstring>

namespace kwe::memory {

inline void ZeroBytes(void* destination, size_t n) {
#if defined(__i386__) || defined(__x86_64__)
  asm volatile("rep stosb" : "+D"(destination), "+c"(n) : "a"(0) : "memory");
#else
  std::memset(destination, 0, n);
#endif
}

}  // namespace kwe::memory
