#pragma once
#include <windows.h>

namespace kwe {

// The 16 x 16 bitmap of the installed notification's icon, or null.
HBITMAP NotificationIcon();

}  // namespace kwe
