// The host shell's side of the demonstration's menus: the main window's menu
// messages forwarded to the library, and a user's input to the bar.
#pragma once
#include <windows.h>

// The host main window's menu messages, handed to the library; true when
// msg was one of them (*result is then the answer).
bool ForwardMenuMessage(HWND window, UINT msg, WPARAM wParam, LPARAM lParam, LRESULT* result);

// What a user does with the bar: chooses Bold in the Style menu and presses
// Ctrl+N.
void PostMenuInput(HWND mainWindow);
