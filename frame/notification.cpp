// The Notification Manager's one visible effect: the request's icon in the
// main window's title bar, drawn by the frame code while the bitmap exists.
#include "frame/notification.h"

#include <windows.h>

#include <cstring>

#include "OSUtils.h"
#include "frame/session.h"

namespace kwe {
namespace {

NMRecPtr g_request = nullptr;
HBITMAP g_iconBitmap = nullptr;

void RepaintMainFrame() {
  HWND main = TheSession().mainWindow;
  if (main)
    SetWindowPos(main, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
}

}  // namespace

HBITMAP NotificationIcon() { return g_iconBitmap; }

}  // namespace kwe

KWE_API OSErr KWE_CALL NMInstall(NMRecPtr nmReqPtr) {
  using namespace kwe;
  g_request = nmReqPtr;
  if (!nmReqPtr || !nmReqPtr->nmIcon || !*nmReqPtr->nmIcon) return nmTypErr;
  // The first 16 rows of 16 bits of the 'ICN#'/'SICN' data, in stored order:
  // the same word-aligned rows CreateBitmap expects.
  if (g_iconBitmap) DeleteObject(g_iconBitmap);
  g_iconBitmap = CreateBitmap(16, 16, 1, 1, *nmReqPtr->nmIcon);
  RepaintMainFrame();
  return noErr;
}

KWE_API OSErr KWE_CALL NMRemove(NMRecPtr) {
  using namespace kwe;
  g_request = nullptr;
  if (!g_iconBitmap) return -1;
  DeleteObject(g_iconBitmap);
  g_iconBitmap = nullptr;
  RepaintMainFrame();
  return noErr;
}
