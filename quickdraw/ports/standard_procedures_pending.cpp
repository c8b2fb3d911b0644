// Standard bottleneck procedures whose drawing comes with QuickDraw's bits
// and pictures. Until then each reports itself like an unsupported call,
// with the argument list an application's procedure has. Each comes out of
// this file when its drawing is built.
#include "Quickdraw.h"
#include "frame/unsupported.h"

using kwe::Unsupported;

KWE_API void KWE_CALL StdComment(SInt16, SInt16, Handle) { Unsupported("StdComment"); }
KWE_API void KWE_CALL StdGetPic(void*, SInt16) { Unsupported("StdGetPic"); }
KWE_API void KWE_CALL StdPutPic(const void*, SInt16) { Unsupported("StdPutPic"); }
