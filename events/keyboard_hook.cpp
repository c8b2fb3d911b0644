// The keyboard hooks. In a dialog built from Windows controls, Windows hands
// every key to the focused control; the Toolbox application expects Tab,
// Return, Escape and its Command-key shortcuts to reach the dialog. The hook
// decides, key by key and by the kind of control, which of the two gets it.
#include <windows.h>

#include "KWEEvents.h"
#include "events/key_translation.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::events {
namespace {

constexpr LPARAM kAltHeld = LPARAM(1) << 29;
constexpr LPARAM kExtendedKey = LPARAM(1) << 24;
constexpr LPARAM kKeyReleased = LPARAM(1) << 31;

KWEDialogKeyProc g_dialogKeyProcedure = nullptr;
bool g_endingSession = false;
KWEHelpProc g_helpProcedure = nullptr;
HHOOK g_helpHook = nullptr;

struct Route {
  bool control;
  bool dialog;
};

bool IsKeypadDigit(unsigned vk) { return vk >= VK_NUMPAD0 && vk <= VK_NUMPAD9; }
bool IsArrow(unsigned vk) {
  return (vk >= VK_LEFT && vk <= VK_DOWN) || vk == VK_NUMPAD2 || vk == VK_NUMPAD4 ||
         vk == VK_NUMPAD6 || vk == VK_NUMPAD8;
}

bool IsMultiLineEdit(HWND control) {
  char className[8] = "";
  GetClassNameA(control, className, sizeof className);
  return lstrcmpiA(className, "Edit") == 0 &&
         (GetWindowLongA(control, GWL_STYLE) & ES_MULTILINE) != 0;
}

Route RouteOf(unsigned vk, LPARAM lParam, int kind, HWND control) {
  bool ctrl = GetKeyState(VK_CONTROL) < 0;
  if (lParam & kAltHeld) {
    if (vk == VK_MENU) return {true, true};
    if (ctrl || vk == VK_TAB || vk == VK_BACK || vk == VK_SPACE || vk == VK_F4 ||
        IsKeypadDigit(vk) ||
        (kind == dialogs::kComboBoxControl &&
         (vk == VK_UP || vk == VK_DOWN || vk == VK_NUMPAD8 || vk == VK_NUMPAD2)))
      return {true, false};
    return {false, true};
  }
  if (vk == VK_TAB || vk == VK_ESCAPE || vk == VK_F1) return {false, true};
  if (vk == VK_RETURN)
    return {kind == dialogs::kEditControl && IsMultiLineEdit(control) && !(lParam & kExtendedKey),
            true};
  if (IsArrow(vk))
    return {true, kind != dialogs::kListBoxControl && kind != dialogs::kComboBoxControl};
  // Command-key shortcuts typed in an edit field belong to the dialog.
  if (kind == dialogs::kEditControl && ctrl && (vk == VK_SPACE || (vk >= 'A' && vk <= 'Z')))
    return {false, true};
  return {true, true};
}

// Ctrl+F4 closes a library window, as it closes an MDI child.
bool ClosedByControlF4(unsigned vk, LPARAM lParam) {
  if (vk != VK_F4 || GetKeyState(VK_CONTROL) >= 0 || SessionFlag(kweFlagMDI)) return false;
  HWND window = GetAncestor(GetFocus(), GA_ROOT);
  char className[64] = "";
  if (!window || !GetClassNameA(window, className, sizeof className)) return false;
  if (lstrcmpA(className, WindowClassName()) != 0) return false;
  if ((GetWindowLongA(window, GWL_STYLE) & WS_CAPTION) != WS_CAPTION) return false;
  if (lParam & kKeyReleased) SendMessageA(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  return true;
}

}  // namespace

HOOKPROC KeyboardHookProcedure() { return K_DlgKeyHook; }

}  // namespace kwe::events

using namespace kwe;
using namespace kwe::events;

KWE_API LRESULT KWE_CALL KWE_DlgKeyHook(int code, WPARAM wParam, LPARAM lParam) {
  if (code != HC_ACTION) return CallNextHookEx(nullptr, code, wParam, lParam);
  if (g_endingSession) return 1;
  unsigned vk = static_cast<unsigned>(wParam);
  Route route{true, false};
  HWND focus = GetFocus();
  HWND dialog = nullptr;
  int kind = GetCapture() ? dialogs::kNotDialogControl : dialogs::DialogControlKind(focus, &dialog);
  if (kind != dialogs::kNotDialogControl) {
    route = RouteOf(vk, lParam, kind, focus);
    if (g_dialogKeyProcedure) {
      EventRecord event{};
      if (!(lParam & kKeyReleased)) {
        RefreshModifiersFromKeyboard(false);
        TranslateKey(WM_KEYDOWN, wParam, lParam, false, &event);
      }
      SInt32 spare1 = 0, spare2 = 0;
      g_dialogKeyProcedure(dialog, static_cast<SInt16>(GetDlgCtrlID(focus)),
                           static_cast<SInt16>(kind), 0, &event, &spare1, &spare2);
    }
    if (route.dialog)
      SendMessageA(dialog, (lParam & kKeyReleased) ? WM_KEYUP : WM_KEYDOWN, wParam, lParam);
  }
  if (ClosedByControlF4(vk, lParam)) return 1;
  if (!route.control) return 1;
  return CallNextHookEx(nullptr, code, wParam, lParam);
}

KWE_API LRESULT CALLBACK K_DlgKeyHook(int code, WPARAM vk, LPARAM lParam) {
  return KWE_DlgKeyHook(code, vk, lParam);
}

KWE_API void KWE_CALL KWE_SetDlgKBHook(KWEDialogKeyProc procedure) {
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(g_dialogKeyProcedure));
  g_dialogKeyProcedure =
      reinterpret_cast<KWEDialogKeyProc>(WrapHostProcedure(reinterpret_cast<ProcPtr>(procedure)));
}

KWE_API void KWE_CALL KWE_EndSession(SInt32 flag) { g_endingSession = flag != 0; }

KWE_API LRESULT CALLBACK K_HelpKeyHook(int code, WPARAM vk, LPARAM lParam) {
  if (code == HC_ACTION && vk == VK_F1 && (lParam & kKeyReleased) && g_helpProcedure) {
    g_helpProcedure();
    return 1;
  }
  return CallNextHookEx(g_helpHook, code, vk, lParam);
}

KWE_API void KWE_CALL KWE_EnableHelpHook(KWEHelpProc procedure) {
  KWE_DisableHelpHook();
  g_helpProcedure =
      reinterpret_cast<KWEHelpProc>(WrapHostProcedure(reinterpret_cast<ProcPtr>(procedure)));
  g_helpHook =
      SetWindowsHookExA(WH_KEYBOARD, K_HelpKeyHook, TheSession().instance, GetCurrentThreadId());
}

KWE_API void KWE_CALL KWE_DisableHelpHook(void) {
  if (g_helpHook) UnhookWindowsHookEx(g_helpHook);
  g_helpHook = nullptr;
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(g_helpProcedure));
  g_helpProcedure = nullptr;
}
