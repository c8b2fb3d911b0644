// Random: the library's own seed, not the application's randSeed.
#include "Quickdraw.h"

namespace {

int32_t g_seed = 0x01234567;

// The minimal standard generator (16807 x seed mod 2^31 - 1) by Schrage's
// method, which never overflows 32 bits; the seed never becomes 0.
int32_t NextSeed(int32_t seed) {
  int32_t next = 16807 * (seed % 127773) - 2836 * (seed / 127773);
  return next <= 0 ? next + 0x7FFFFFFF : next;
}

}  // namespace

KWE_API SInt16 KWE_CALL Random(void) {
  g_seed = NextSeed(g_seed);
  return static_cast<SInt16>(g_seed >> 14);
}
