// String handles: a Pascal string, length byte included, in a handle.
#include "Memory.h"
#include "TextUtils.h"

namespace {
const unsigned char kEmptyString[1] = {0};
}

// Null, with MemError memFullErr, when the handle cannot be made.
KWE_API StringHandle KWE_CALL NewString(ConstStr255Param theString) {
  if (!theString) theString = kEmptyString;
  Handle h = nullptr;
  PtrToHand(theString, &h, theString[0] + 1);
  return reinterpret_cast<StringHandle>(h);
}

// The handle is resized to the string; on failure it keeps its old string.
KWE_API void KWE_CALL SetString(StringHandle theString, ConstStr255Param strNew) {
  if (!strNew) strNew = kEmptyString;
  PtrToXHand(strNew, reinterpret_cast<Handle>(theString), strNew[0] + 1);
}
