// The description a program gets when it brings none of its own: the linker
// takes this file from the library only then.
#include "KWEHost.h"

const KWEApplication KWEHostApplication = {nullptr, 0, nullptr, nullptr, 0, 0, 0, nullptr};
