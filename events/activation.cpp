// Switching applications: a suspend or resume osEvt, and the keyboard hook
// taken off while another application has the keyboard.
#include <windows.h>

#include "KWEEvents.h"
#include "events/event_queue.h"
#include "events/translation_state.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::events {
namespace {

constexpr UInt32 kSuspend = 0x01000000;
constexpr UInt32 kResume = 0x01000001;
constexpr UInt32 kResumeAndConvert = 0x01000003;

bool g_active = true;
bool g_hookRemoved = false;
HWND g_focusAtDeactivation = nullptr;
bool g_scrapCountSaved = false;
SInt16 g_savedScrapCount = 0;

}  // namespace

bool ApplicationActive() { return g_active; }

}  // namespace kwe::events

using namespace kwe;
using namespace kwe::events;

// On resume the palettes are realised again and the osEvt asks the
// application to convert the clipboard when the scrap count moved while it
// was switched away from; on suspend the palettes go to the background.
KWE_API void KWE_CALL KWE_ActivateApp(Boolean active) {
  // Giving the focus back may activate the application again from inside.
  static bool activating = false;
  if (!EventManagerStarted() || activating) return;
  activating = true;
  Session& s = TheSession();
  g_active = active != 0;
  quickdraw::RealisePalettesOnActivation(g_active);
  UInt32 message = kSuspend;
  SInt16 scrapCount = scrap::ScrapCount();
  if (g_active) {
    message = g_scrapCountSaved && scrapCount != g_savedScrapCount ? kResumeAndConvert : kResume;
    quickdraw::ShowObscuredCursor();
    if (g_hookRemoved && !s.keyboardHook)
      s.keyboardHook =
          SetWindowsHookExA(WH_KEYBOARD, KeyboardHookProcedure(), nullptr, GetCurrentThreadId());
    g_hookRemoved = false;
    HWND focus = g_focusAtDeactivation && IsWindow(g_focusAtDeactivation) ? g_focusAtDeactivation
                                                                          : s.mainWindow;
    if (focus && GetFocus() != focus) SetFocus(focus);
  } else {
    g_focusAtDeactivation = GetFocus();
    if (s.keyboardHook) {
      UnhookWindowsHookEx(s.keyboardHook);
      s.keyboardHook = nullptr;
      g_hookRemoved = true;
    }
  }
  g_savedScrapCount = scrapCount;
  g_scrapCountSaved = true;
  scrap::ApplicationSwitched(g_active, message == kResumeAndConvert);
  Post(osEvt, message);
  lowmem::At<UInt32>(lowmem::Slot::DoubleTime) = GetDoubleClickTime() >> 4;
  activating = false;
}
