// The input a user makes, as Windows delivers it: the real mouse through
// SendInput, keys as the keyboard hands them to a window, presses on a
// window's frame; and a driver that plays such input one step per timer
// tick while a modal call runs (a dialog's, a menu's, Windows' move and
// size loops), so input can be posted before the call and answered from
// inside it.
#pragma once
#include <windows.h>

#include <functional>
#include <vector>

namespace kwe_test {

// Real mouse input through SendInput, at a screen point for moves.
void SendMouse(DWORD flags, POINT at = {});
// A key pressed and released, posted to the window with the modifiers the
// keyboard state says are down; Alt makes them system keys.
void PostKey(HWND to, UINT vk, bool shift = false, bool ctrl = false, bool alt = false);
// A point of the window's frame whose hit test is hit, as a user aims at it.
POINT FrameSpot(HWND hwnd, LRESULT hit);
// That spot pressed and released, as posted input.
void PostFrameClick(HWND hwnd, LRESULT hit);

// Whether a window belongs to this process (another test's program may
// hold the activation on the shared desktop).
bool InThisProcess(HWND hwnd);

// Runs call while the steps play one per timer tick (the first after
// interval milliseconds); steps still left when it returns never run, so
// a loop that ends too early misses them. A tick on which another program
// has the foreground brings this one back and waits. A call still running
// a second after the last step gets Escape on the foreground window, again
// every second, so a broken modal loop fails instead of hanging.
void WhileModal(std::vector<std::function<void()>> steps, const std::function<void()>& call,
                UINT interval = 30);

}  // namespace kwe_test
