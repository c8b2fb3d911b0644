// The published layout of the print record, which programs save with their
// documents. Checked where pointers are 32 bits wide; the 64-bit build
// widens the job's two pointers in place.
#include <cstdint>

#include "Printing.h"
#include "frame/layout_check.h"

static_assert(sizeof(TPrInfo) == 14, "TPrInfo");
static_assert(sizeof(TPrStl) == 8, "TPrStl");
static_assert(sizeof(TPrXInfo) == 16, "TPrXInfo");
KWE_FIELD(TPrint, prInfo, 2);
KWE_FIELD(TPrint, rPaper, 16);
KWE_FIELD(TPrint, prStl, 24);
KWE_FIELD(TPrint, prInfoPT, 32);
KWE_FIELD(TPrint, prXInfo, 46);
KWE_FIELD(TPrint, prJob, 62);
#if UINTPTR_MAX == 0xFFFFFFFFu
static_assert(sizeof(TPrJob) == 20, "TPrJob");
static_assert(sizeof(TPrint) == 120, "TPrint");
KWE_FIELD(TPrint, printX, 82);
KWE_FIELD(TPrJob, pIdleProc, 8);
KWE_FIELD(TPrJob, iFileVol, 16);
#endif
