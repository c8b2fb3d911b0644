// GetColor over the common colour dialog: the prompt is the dialog's title,
// the starting colour is chosen, and the dialog's custom colours are kept
// for the rest of the session as the Color Picker keeps its own.
#include <windows.h>

#include "KWECharacters.h"
#include "KWEPalettes.h"
#include "QuickdrawColour.h"
#include "frame/session.h"

namespace {

COLORREF g_customColours[16] = {0};

COLORREF ColourRefOf(const RGBColor& c) { return RGB(c.red >> 8, c.green >> 8, c.blue >> 8); }

UInt16 Widened(BYTE b) { return static_cast<UInt16>(b * 0x0101); }

}  // namespace

KWE_API UINT_PTR CALLBACK K_ChooseColorHookProc(HWND dialog, UINT message, WPARAM, LPARAM lParam) {
  if (message != WM_INITDIALOG) return 0;
  auto* choose = reinterpret_cast<CHOOSECOLORA*>(lParam);
  auto prompt = reinterpret_cast<const UInt8*>(choose->lCustData);
  if (prompt && prompt[0]) {
    UInt8 title[256 * 3] = {0};
    SInt32 n = KWE_MacToAnsiBuf(prompt + 1, title, prompt[0], 0);
    title[n < 0 ? 0 : n] = 0;
    SetWindowTextA(dialog, reinterpret_cast<const char*>(title));
  }
  return 0;
}

// The dialog is placed by Windows over the host's main window; where is not
// used. A colour chosen unchanged keeps inColor's low bytes.
KWE_API Boolean KWE_CALL GetColor(Point where, ConstStr255Param prompt, const RGBColor* inColor,
                                  RGBColor* outColor) {
  (void)where;
  if (!inColor || !outColor) return false;
  CHOOSECOLORA choose{};
  choose.lStructSize = sizeof choose;
  choose.hwndOwner = kwe::TheSession().mainWindow;
  choose.rgbResult = ColourRefOf(*inColor);
  choose.lpCustColors = g_customColours;
  choose.Flags = CC_RGBINIT | CC_FULLOPEN | CC_ENABLEHOOK;
  choose.lCustData = reinterpret_cast<LPARAM>(prompt);
  choose.lpfnHook = K_ChooseColorHookProc;
  if (!ChooseColorA(&choose)) return false;
  if (choose.rgbResult == ColourRefOf(*inColor)) {
    *outColor = *inColor;
  } else {
    *outColor = RGBColor{Widened(GetRValue(choose.rgbResult)), Widened(GetGValue(choose.rgbResult)),
                         Widened(GetBValue(choose.rgbResult))};
  }
  return true;
}
