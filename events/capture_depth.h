// The depth of the library's mouse tracking: VBL tasks and KWE_SetCapture
// raise it, and while it is above 0 the main window holds the capture and
// the pump runs nested.
#pragma once
#include <windows.h>

namespace kwe::events {

int CaptureDepth();
// Raises or lowers the depth by one, taking the capture for window when it
// leaves 0 and giving it up when it returns there. Answers the old depth.
int RaiseCapture(HWND window);
int LowerCapture();
int SetCaptureDepth(int depth);

bool HaveVblTasks();
// Runs each installed task whose count reaches 0; not re-entered when a task
// itself pumps (Delay in a task).
void RunVblTasks();

}  // namespace kwe::events
