// Toolbox calls with no Windows counterpart keep their published names and
// parameters, report themselves and return the fixed value of their family.
#pragma once
#include "frame/diagnostics.h"

namespace kwe {

template <class Result>
inline Result Unsupported(const char* message, Result result) {
  Report(message);
  return result;
}

inline void Unsupported(const char* message) { Report(message); }

}  // namespace kwe
