// The standard bottleneck procedures in the order of a QDProcs record.
#include "quickdraw/ports/standard_procedures.h"

namespace kwe::quickdraw {

const ProcPtr* StandardProcs() {
  static const ProcPtr procs[kPlainProcCount] = {
      reinterpret_cast<ProcPtr>(&StdText),   reinterpret_cast<ProcPtr>(&StdLine),
      reinterpret_cast<ProcPtr>(&StdRect),   reinterpret_cast<ProcPtr>(&StdRRect),
      reinterpret_cast<ProcPtr>(&StdOval),   reinterpret_cast<ProcPtr>(&StdArc),
      reinterpret_cast<ProcPtr>(&StdPoly),   reinterpret_cast<ProcPtr>(&StdRgn),
      reinterpret_cast<ProcPtr>(&StdBits),   reinterpret_cast<ProcPtr>(&StdComment),
      reinterpret_cast<ProcPtr>(&StdTxMeas), reinterpret_cast<ProcPtr>(&StdGetPic),
      reinterpret_cast<ProcPtr>(&StdPutPic)};
  return procs;
}

}  // namespace kwe::quickdraw
