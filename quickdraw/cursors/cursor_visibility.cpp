// HideCursor, ShowCursor and ObscureCursor. Windows keeps one display count
// for the thread; the library moves it only by what it hid itself, so the
// count never climbs above where the host left it: as on the Macintosh, a
// ShowCursor at level 0 does nothing and the next HideCursor hides.
#include "quickdraw/cursors/cursor_visibility.h"

#include <windows.h>

#include "KWECursors.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::quickdraw {
namespace {
int g_hiddenLevel = 0;  // HideCursor calls not yet balanced by ShowCursor
bool g_obscured = false;
}  // namespace

void ShowObscuredCursor() {
  if (!g_obscured) return;
  g_obscured = false;
  ::ShowCursor(TRUE);
}

void ResetCursorLevel() {
  ShowObscuredCursor();
  for (; g_hiddenLevel > 0; --g_hiddenLevel) ::ShowCursor(TRUE);
}

}  // namespace kwe::quickdraw

KWE_API void KWE_CALL HideCursor(void) {
  ++kwe::quickdraw::g_hiddenLevel;
  ::ShowCursor(FALSE);
}

KWE_API void KWE_CALL ShowCurso(void) {
  using namespace kwe::quickdraw;
  ShowObscuredCursor();
  if (g_hiddenLevel <= 0) return;
  --g_hiddenLevel;
  ::ShowCursor(TRUE);
}

// Only while the mouse is over the host's main window: the Event Manager
// shows the cursor again when the mouse next moves there, and a cursor
// hidden elsewhere would stay hidden.
KWE_API void KWE_CALL ObscureCursor(void) {
  using namespace kwe::quickdraw;
  HWND main = kwe::TheSession().mainWindow;
  POINT at;
  RECT frame;
  if (g_obscured || !main || !GetCursorPos(&at) || !GetWindowRect(main, &frame) ||
      !PtInRect(&frame, at))
    return;
  g_obscured = true;
  ::ShowCursor(FALSE);
}
