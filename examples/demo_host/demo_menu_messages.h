// The host shell's side of the demonstration's menus: a user's input to the
// bar.
#pragma once
#include <windows.h>

// What a user does with the bar: chooses Bold in the Style menu and presses
// Ctrl+N.
void PostMenuInput(HWND mainWindow);
