// SANE: the elementary-functions package, the extended conversions and the
// library's extended sine, cosine, tangent and exponential. None computes.
#include <windows.h>

#include "UnsupportedCalls.h"
#include "frame/unsupported.h"

static_assert(sizeof(extended80) == 10, "SANE's extended is 10 bytes");
static_assert(sizeof(extended96) == 12, "the 68881's extended is 12 bytes");

namespace {

// These four bypass the report channel and tell the user directly in a box
// with no owner, which the silence flag does not suppress: a result that is
// just the argument must not pass unnoticed.
extended80 RefuseElementaryFunction(const wchar_t* text, extended80 x) {
  MessageBoxW(nullptr, text, L"KWENTPPC.DLL Error", 0);
  return x;
}

}  // namespace

KWE_API void KWE_CALL elems68k(void*, SInt16) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL x80tox96(const extended80*, extended96*) { kwe::Unsupported(__func__); }
KWE_API void KWE_CALL x96tox80(const extended96*, extended80*) { kwe::Unsupported(__func__); }

// Published as a function; answers 0.
KWE_API long double KWE_CALL x80told(const extended80*) { return kwe::Unsupported(__func__, 0.0L); }

KWE_API extended80 KWE_CALL KWE_Sin(extended80 x) {
  return RefuseElementaryFunction(L"KWE_Sin not supported.", x);
}

KWE_API extended80 KWE_CALL KWE_Cos(extended80 x) {
  return RefuseElementaryFunction(L"KWE_Cos not supported.", x);
}

KWE_API extended80 KWE_CALL KWE_Tan(extended80 x) {
  return RefuseElementaryFunction(L"KWE_Tan not supported.", x);
}

KWE_API extended80 KWE_CALL KWE_Exp(extended80 x) {
  return RefuseElementaryFunction(L"KWE_Exp not supported.", x);
}
