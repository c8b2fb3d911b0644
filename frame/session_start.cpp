// KWE_InitSession and KWE_ExitSession: the first and last calls of a host.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "KWESession.h"
#include "frame/host_procedures.h"
#include "frame/library_fonts.h"
#include "frame/low_memory.h"
#include "frame/printing_hooks.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "text/lists/list_manager.h"

namespace kwe {
namespace {

// The list table: 255 slots of 18 bytes in the 32-bit build.
constexpr Size kListWorkBlockSize = lists::kTableBytes;

Ptr g_listWorkBlock = nullptr;

void CopyRecord(const KWESessionRecord* host, KWESessionRecord& copy) {
  std::memset(&copy, 0, sizeof copy);
  if (!host) return;
  // The size is signed but compared without sign: a negative size copies all.
  size_t size = static_cast<UInt16>(host->size);
  std::memcpy(&copy, host, std::min(size, sizeof copy));
}

void FillDefaultNames(KWESessionRecord& r) {
  if (!r.mainWindowClass) r.mainWindowClass = "KWEMainWndClass";
  if (!r.windowClass) r.windowClass = "KWESubWndClass";
  if (!r.mdiWindowClass) r.mdiWindowClass = "KWESubMDIWndClass";
  if (!r.systemResourceFile) r.systemResourceFile = "KWEPORT.RSR";
  if (!r.dibDriverName) r.dibDriverName = "DIB";
}

void FillCommonDialogRecords(Session& s) {
  s.openFileRecord = OPENFILENAMEA{};
  s.openFileRecord.lStructSize = OPENFILENAME_SIZE_VERSION_400A;  // 76 bytes in the 32-bit build
  s.openFileRecord.hwndOwner = s.mainWindow;
  s.openFileRecord.lpstrFile = s.openFileName;
  s.openFileRecord.nMaxFile = sizeof s.openFileName;
  s.openFileRecord.lpstrFileTitle = s.openFileTitle;
  s.openFileRecord.nMaxFileTitle = sizeof s.openFileTitle;
  s.colourRecord = CHOOSECOLORA{};
  s.colourRecord.lStructSize = sizeof(CHOOSECOLORA);  // 36 bytes in the 32-bit build
  s.colourRecord.hwndOwner = s.mainWindow;
  s.colourRecord.hInstance = reinterpret_cast<HWND>(s.instance);
  s.colourRecord.lpCustColors = s.customColours;
  s.colourRecord.Flags = CC_RGBINIT | CC_FULLOPEN;
}

bool SystemLanguageIsJapanese() {
  char language[64] = "";
  int n = GetLocaleInfoA(LOCALE_SYSTEM_DEFAULT, LOCALE_SENGLANGUAGE, language, sizeof language);
  return n > 0 && std::strcmp(language, "Japanese") == 0;
}

void InstallKeyboardHook(Session& s) {
  // The hook is a thread hook of the host's thread; capture is dropped around
  // the call because installing it may disturb a drag in progress.
  HWND captured = GetCapture();
  if (captured) ReleaseCapture();
  s.keyboardHook = SetWindowsHookExA(WH_KEYBOARD, events::KeyboardHookProcedure(), nullptr,
                                     GetCurrentThreadId());
  if (captured) SetCapture(captured);
}

}  // namespace

Ptr ListManagerWorkBlock() { return g_listWorkBlock; }

}  // namespace kwe

using namespace kwe;

// A second call while a session is open is ignored: there is one session a
// process, and starting over would orphan the first one's fonts and blocks.
KWE_API void KWE_CALL KWE_InitSession(const KWESessionRecord* session) {
  Session& s = TheSession();
  if (s.open) return;
  s.open = true;
  CopyRecord(session, s.record);
  FillDefaultNames(s.record);

  s.version = ClassifyWindowsVersion(GetVersion());
  s.windowsFlags = 0x0421;
  s.windowFlagAtom = GlobalAddAtomA("KWE_wFlag");

  const KWESessionRecord& r = s.record;
  s.instance = r.instance;
  s.desktopWindow = GetDesktopWindow();
  s.mainWindow = r.mainWindow;
  s.mdiClient = r.mdiClient;
  s.flags = r.flags;
  s.hostMenuBar = s.mainWindow ? GetMenu(s.mainWindow) : nullptr;
  s.accelerators = r.accelerators;

  s.makeProcedure = r.makeProcedure;
  s.freeProcedure = r.freeProcedure;
  s.clipboardProcedure = WrapHostProcedure(r.clipboardProcedure);
  s.byteSwapProcedure = WrapHostProcedure(r.byteSwapProcedure);

  SetPrintDialogHook(r.printDialogHook);
  SetPrintSetupDialogHook(r.printSetupDialogHook);
  s.byteSwapTypes = r.byteSwapTypes;
  s.hostMainWindowProc =
      s.mainWindow ? reinterpret_cast<WNDPROC>(GetWindowLongPtrA(s.mainWindow, GWLP_WNDPROC))
                   : nullptr;

  lowmem::BindMemErrToLibraryCell();
  memory::StartMemoryManager();

  s.nullPen = static_cast<HPEN>(GetStockObject(NULL_PEN));
  resources::StartResourceLayer();
  g_listWorkBlock = memory::NewClearedPointer(kListWorkBlockSize);
  files::ClearFileSlots();
  quickdraw::StartCursors();

  UINT country = GetProfileIntA("intl", "iCountry", 1);
  s.dbcsMode = (country == 81 || country == 82 || country == 86) ? 1 : 0;

  KWE_InitColors();
  MakeLibraryFonts();
  FillCommonDialogRecords(s);

  if (s.mainWindow) InstallKeyboardHook(s);
  s.japanese = SystemLanguageIsJapanese();
}

KWE_API void KWE_CALL KWE_ExitSession(void) {
  Session& s = TheSession();
  menus::DestroyAllMenus();
  if (s.keyboardHook) UnhookWindowsHookEx(s.keyboardHook);
  s.keyboardHook = nullptr;

  if (s.open) {
    dialogs::ResetErrorSound();
    resources::CloseResourceChain();
    windows::DisposeAllWindows();
    quickdraw::CloseQuickDraw();
    quickdraw::EndCursors();
    DeleteLibraryFonts();
    DeleteLibraryBrushes();
    files::CloseFileSlots();
    memory::DisposePointer(g_listWorkBlock);
    g_listWorkBlock = nullptr;
    resources::EndResourceLayer();
    if (s.windowFlagAtom) GlobalDeleteAtom(s.windowFlagAtom);
    s.windowFlagAtom = 0;
    s.open = false;
  }

  SetPrintDialogHook(nullptr);
  SetPrintSetupDialogHook(nullptr);
  ReleaseHostProcedure(s.clipboardProcedure);
  ReleaseHostProcedure(s.byteSwapProcedure);
  s.clipboardProcedure = nullptr;
  s.byteSwapProcedure = nullptr;

  intl::EndInternational();
  memory::ReleaseSmallBlockHeaps();
  memory::ReleaseAllBlocks();
}
