// The two host tables of KWE_Set_Tovel, used in place for the session.
#pragma once
#include "KWESession.h"

namespace kwe {

// The file type the host's table gives a DOS extension (the last matching
// record wins); '????' without a match.
OSType FileTypeForExtension(const char* extension);

const void* MenuOverrideTable();

}  // namespace kwe
