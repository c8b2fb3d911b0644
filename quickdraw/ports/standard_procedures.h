// The standard bottleneck procedures, in the order of a QDProcs record.
#pragma once
#include "Quickdraw.h"

namespace kwe::quickdraw {

constexpr int kPlainProcCount = 13;
constexpr int kColourProcCount = 20;

// The 13 standard procedures, textProc first.
const ProcPtr* StandardProcs();

}  // namespace kwe::quickdraw
