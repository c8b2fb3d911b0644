// The Win32 style, parent and frame of a window, from its procID.
#pragma once
#include <windows.h>

#include "MacTypes.h"

namespace kwe::windows {

enum class ParentKind { MainWindow, MdiClient, Desktop };
enum class FrameKind { Sizing, Dialog, Border, Thin };  // Thin: 1 x 1
enum class CaptionKind { None, Normal, Small };

struct WindowStyle {
  DWORD style = 0;
  DWORD exStyle = 0;
  ParentKind parent = ParentKind::MainWindow;
  FrameKind frame = FrameKind::Border;
  CaptionKind caption = CaptionKind::None;
  bool growBox = false;
  bool toolWindow = false;
};

struct StyleContext {
  bool dialogCreation = false;  // the Dialog Manager is making this window
  bool dialogChild = false;     // system value 2: dialog windows stay children
  bool popUpDocument = false;   // system value 32: documents are pop-ups
  bool mdi = false;             // session flag 0x00000001
};

WindowStyle StyleForProcId(SInt16 procID, const StyleContext& context);

// The one-shot modifiers of system value 31.
constexpr UInt16 kModNotTool = 0x0001;
constexpr UInt16 kModTool = 0x0002;
constexpr UInt16 kModNormalCaption = 0x0004;
constexpr UInt16 kModSmallCaption = 0x0008;
constexpr UInt16 kModDialogChild = 0x0010;
constexpr UInt16 kModClearPopUpPlacement = 0x0040;
constexpr UInt16 kModSetPopUpPlacement = 0x0080;
constexpr UInt16 kModNoCloseItem = 0x0100;
constexpr UInt16 kModMaximize = 0x0200;

// Frame width and height in pixels for a frame kind.
SIZE FrameSize(FrameKind frame);
// The small caption's height: the small system font's height + 2, odd.
int SmallCaptionHeight();

}  // namespace kwe::windows
