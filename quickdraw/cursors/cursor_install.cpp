// Installing a cursor: SetCursor's standard procedure and InitCursor.
#include "quickdraw/cursors/cursor_install.h"

#include "KWECursors.h"
#include "frame/session.h"
#include "frame/trap_defaults.h"
#include "quickdraw/cursors/cursor_cache.h"
#include "quickdraw/cursors/cursor_conversion.h"
#include "quickdraw/cursors/cursor_library_windows.h"
#include "quickdraw/cursors/cursor_visibility.h"

namespace kwe::quickdraw {
namespace {

HCURSOR g_installed = nullptr;  // what the application asked for last
HCURSOR g_shown = nullptr;      // what the library's window classes hold

void DropIfUnused(HCURSOR cursor) {
  if (cursor && cursor != g_installed && cursor != g_shown && !IsCachedCursor(cursor))
    DestroyCursor(cursor);
}

// The class cursor is what DefWindowProc puts up on WM_SETCURSOR, so the
// cursor stays when the mouse leaves a window and comes back.
void ShowOverLibraryWindows(HCURSOR cursor) {
  ::SetCursor(cursor);
  for (int i = 0; i < kLibraryWindowClassCount; ++i)
    if (HWND window = RememberedLibraryWindow(i))
      SetClassLongPtrA(window, GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(cursor));
  HCURSOR before = g_shown;
  g_shown = cursor;
  DropIfUnused(before);
}

}  // namespace

// Away from the library's windows the cursor is only recorded; the same
// cursor installed again once the mouse is over one of them is shown then.
void InstallCursor(HCURSOR cursor) {
  if (!cursor) return;
  HWND under = LibraryWindowUnderMouse();
  if (cursor == g_installed && (!under || cursor == g_shown)) return;
  HCURSOR before = g_installed;
  g_installed = cursor;
  if (under) ShowOverLibraryWindows(cursor);
  DropIfUnused(before);
}

void DestroyCursorWhenUnused(HCURSOR cursor) { DropIfUnused(cursor); }

void StartCursorInstall() {
  g_installed = g_shown = nullptr;
  NoticeLibraryWindow(TheSession().mainWindow);
}

void EndCursorInstall() {
  HCURSOR arrow = LoadCursorA(nullptr, IDC_ARROW);
  for (int i = 0; i < kLibraryWindowClassCount; ++i) {
    HWND window = RememberedLibraryWindow(i);
    if (window && g_shown &&
        GetClassLongPtrA(window, GCLP_HCURSOR) == reinterpret_cast<ULONG_PTR>(g_shown))
      SetClassLongPtrA(window, GCLP_HCURSOR, reinterpret_cast<LONG_PTR>(arrow));
  }
  HCURSOR current = GetCursor();
  if (current && (current == g_shown || current == g_installed)) ::SetCursor(arrow);
  HCURSOR installed = g_installed, shown = g_shown;
  g_installed = g_shown = nullptr;
  DropIfUnused(installed);
  DropIfUnused(shown);
  ForgetLibraryWindows();
  ResetCursorLevel();
}

// A cursor that carries a cache slot is shown from the cache; any other is
// converted for this one use and destroyed when the next replaces it.
void KWE_CALL SetCursorDefault(const Cursor* crsr) {
  if (!crsr) return;
  HCURSOR cursor = CachedCursorOf(crsr);
  InstallCursor(cursor ? cursor : MakeUncachedCursor(crsr, false));
}

}  // namespace kwe::quickdraw

// The arrow from the cache, and the cursor level back to 0 (visible), as
// the Toolbox's InitCursor does.
KWE_API void KWE_CALL InitCursor(void) {
  using namespace kwe::quickdraw;
  InstallCursor(CachedCursor(kArrowCursorSlot));
  ResetCursorLevel();
}
