// procIDs to Win32 styles: the standard window definitions by their whole
// procID, custom definitions by their variant (procID & 15).
#include "windows/window_styles.h"

#include "frame/session.h"

namespace kwe::windows {
namespace {

constexpr DWORD kDocumentChild = 0x04CC0000;  // clip siblings, caption, system menu, sizing
constexpr DWORD kDialogPopUp = 0x84C800C0;    // pop-up, caption, system menu, dialog frame
constexpr DWORD kDialogChildDocument = 0x44CC0040;
constexpr DWORD kDialogPopUpDocument = 0x84C800C0;

WindowStyle Make(DWORD style, FrameKind frame, CaptionKind caption, bool grow = false) {
  WindowStyle s;
  s.style = style;
  s.frame = frame;
  s.caption = caption;
  s.growBox = grow;
  return s;
}

WindowStyle Standard(SInt16 procID, const StyleContext& c, bool* known) {
  *known = true;
  switch (procID) {
    case 0: {
      if (c.dialogCreation) {
        WindowStyle s = c.dialogChild
                            ? Make(kDialogChildDocument, FrameKind::Sizing, CaptionKind::Normal)
                            : Make(kDialogPopUpDocument, FrameKind::Dialog, CaptionKind::Normal);
        s.growBox = true;
        return s;
      }
      DWORD kind = c.popUpDocument ? WS_POPUP : WS_CHILD;
      WindowStyle s =
          Make(kind | kDocumentChild, c.popUpDocument ? FrameKind::Dialog : FrameKind::Sizing,
               CaptionKind::Normal, true);
      if (c.mdi && !c.popUpDocument) s.parent = ParentKind::MdiClient;
      return s;
    }
    case 1:
    case 5: {
      WindowStyle s = Make(kDialogPopUp, FrameKind::Dialog, CaptionKind::Normal);
      s.exStyle = WS_EX_DLGMODALFRAME;
      return s;
    }
    case 2:
      return Make(c.dialogCreation ? 0x80800000 : 0x44800000, FrameKind::Border, CaptionKind::None);
    case 3: return Make(0x80800000, FrameKind::Border, CaptionKind::None);
    case 4:
    case 16: {
      // Rounded windows (16) are not documents: they stay children of the main window.
      WindowStyle s = Make(0x44C80000, FrameKind::Border, CaptionKind::Normal);
      if (c.mdi && procID == 4) s.parent = ParentKind::MdiClient;
      return s;
    }
    case 8: {
      WindowStyle s = Make(0x44CD0000, FrameKind::Sizing, CaptionKind::Normal, true);
      if (c.mdi) s.parent = ParentKind::MdiClient;
      return s;
    }
    case 12: {
      WindowStyle s = Make(0x44C90000, FrameKind::Border, CaptionKind::Normal);
      if (c.mdi) s.parent = ParentKind::MdiClient;
      return s;
    }
    default: *known = false; return WindowStyle{};
  }
}

WindowStyle Custom(SInt16 procID) {
  WindowStyle s;
  switch (procID & 15) {
    case 0:
    case 8:
      s = Make(0x44C00000, FrameKind::Thin, CaptionKind::Small);
      s.toolWindow = true;
      break;
    case 1: s = Make(0x44C00000, FrameKind::Thin, CaptionKind::Small); break;
    case 2: s = Make(0x84800000, FrameKind::Border, CaptionKind::None); break;
    case 3:
    case 4: s = Make(0x44800000, FrameKind::Border, CaptionKind::None); break;
    case 5:
      s = Make(0x84C800C0, FrameKind::Dialog, CaptionKind::Normal);
      s.exStyle = WS_EX_DLGMODALFRAME;
      break;
    case 7:
    case 10:
      s = Make(0x44C40000, FrameKind::Sizing, CaptionKind::Small, (procID & 15) == 10);
      s.toolWindow = true;
      break;
    case 9:
      s = Make(0x44C40000, FrameKind::Sizing, CaptionKind::Normal, true);
      s.parent = ParentKind::MdiClient;
      break;
    case 15:
      s = Make(0x80800000, FrameKind::Thin, CaptionKind::None);
      s.toolWindow = true;
      s.parent = ParentKind::Desktop;
      break;
    default:  // 6, 11, 12, 13, 14
      s = Make(0, FrameKind::Border, CaptionKind::None);
      break;
  }
  return s;
}

}  // namespace

WindowStyle StyleForProcId(SInt16 procID, const StyleContext& context) {
  bool known = false;
  WindowStyle s = Standard(procID, context, &known);
  if (!known) s = Custom(procID);
  // Variant 9 asks for the MDI client, which only MDI mode has.
  if (s.parent == ParentKind::MdiClient && !TheSession().mdiClient)
    s.parent = ParentKind::MainWindow;
  return s;
}

SIZE FrameSize(FrameKind frame) {
  switch (frame) {
    case FrameKind::Sizing: return SIZE{GetSystemMetrics(SM_CXFRAME), GetSystemMetrics(SM_CYFRAME)};
    case FrameKind::Dialog:
      return SIZE{GetSystemMetrics(SM_CXDLGFRAME), GetSystemMetrics(SM_CYDLGFRAME)};
    case FrameKind::Border:
      return SIZE{GetSystemMetrics(SM_CXBORDER), GetSystemMetrics(SM_CYBORDER)};
    case FrameKind::Thin: return SIZE{1, 1};
  }
  return SIZE{1, 1};
}

int SmallCaptionHeight() {
  const LibraryFont& font = TheSession().fonts[kSmallSystemFont];
  int height = (font.ascent + font.descent) + 2;
  if (height <= 2) height = GetSystemMetrics(SM_CYSMCAPTION);
  return height | 1;
}

}  // namespace kwe::windows
