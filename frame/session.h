// The one session of the process: the host's record as copied at start-up and
// everything the runtime frame derives from it.
#pragma once
// windows.h must come before the common dialogs' header.
// clang-format off
#include <windows.h>
#include <commdlg.h>
// clang-format on

#include "KWESession.h"
#include "frame/windows_version.h"

namespace kwe {

enum LibraryFontIndex {
  kStockSystemFont,
  kSystemFont,
  kBoldDialogFont,
  kSmallSystemFont,
  kMonoFont,
  kSmallMonoFont,
  kLibraryFontCount
};

struct LibraryFont {
  HFONT font = nullptr;
  int braceHeight = 0;  // height of "{" as GetTextExtentPointA measures it
  int ascent = 0;
  int descent = 0;
};

struct Session {
  bool open = false;
  KWESessionRecord record{};  // the host's record, min(size, sizeof) bytes of it

  WindowsVersion version;
  uint16_t windowsFlags = 0;
  ATOM windowFlagAtom = 0;

  HMODULE libraryModule = nullptr;  // kept at process attach
  HINSTANCE instance = nullptr;
  HWND desktopWindow = nullptr;
  HWND mainWindow = nullptr;
  HWND mdiClient = nullptr;
  HMENU hostMenuBar = nullptr;
  HACCEL accelerators = nullptr;
  WNDPROC hostMainWindowProc = nullptr;
  HHOOK keyboardHook = nullptr;
  HPEN nullPen = nullptr;

  uint32_t flags = 0;
  uint16_t drawingSwitches = 0;  // second pair of KWE_SetFlags

  KWEMakeProcedure makeProcedure = nullptr;
  KWEFreeProcedure freeProcedure = nullptr;
  ProcPtr clipboardProcedure = nullptr;  // as wrapped by the make procedure
  ProcPtr byteSwapProcedure = nullptr;
  ProcPtr printDialogHook = nullptr;
  ProcPtr printSetupDialogHook = nullptr;
  const UInt32* byteSwapTypes = nullptr;

  const KWEFileTypeEntry* fileTypeTable = nullptr;
  const void* menuOverrideTable = nullptr;

  uint16_t dbcsMode = 0;
  bool japanese = false;

  LibraryFont fonts[kLibraryFontCount];
  int dialogFont = kSystemFont;
  bool fontFileAdded = false;
  HBRUSH brushes[3] = {};  // window text, active caption, inactive caption

  OPENFILENAMEA openFileRecord{};
  char openFileName[256] = {};
  char openFileTitle[256] = {};
  CHOOSECOLORA colourRecord{};
  COLORREF customColours[16] = {};

  char printDocumentName[128] = {};
};

// Constant-initialised, so it is there before any static constructor runs.
extern Session g_session;
inline Session& TheSession() { return g_session; }

inline bool SessionFlag(uint32_t bit) { return (TheSession().flags & bit) != 0; }

// Names the host may leave null in its record.
const char* MainWindowClassName();
const char* WindowClassName();
const char* MdiWindowClassName();
const char* SystemResourceFileName();
const char* DibDriverName();

}  // namespace kwe
