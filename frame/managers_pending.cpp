// Stand-ins for managers that are not built yet. The patchable calls report
// themselves like unsupported calls, so a porting developer sees each use;
// the start-up and shut-down steps do the least that keeps a session whole.
// Each manager removes its entries here as it takes them over.
#include <windows.h>

#include <cstring>

#include "frame/host_tables.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "frame/trap_defaults.h"
#include "frame/unsupported.h"

namespace kwe::memory {
namespace {
struct StandInMaster {
  Ptr data;
};
}  // namespace

void StartMemoryManager() {}
THz ApplicationZone() { return nullptr; }
Ptr NewClearedPointer(Size size) {
  return static_cast<Ptr>(LocalAlloc(LPTR, static_cast<SIZE_T>(size)));
}
void DisposePointer(Ptr p) {
  if (p) LocalFree(p);
}
Handle NewHandleOfSize(Size size) {
  auto* master = static_cast<StandInMaster*>(LocalAlloc(LPTR, sizeof(StandInMaster)));
  if (!master) return nullptr;
  master->data = static_cast<Ptr>(LocalAlloc(LPTR, static_cast<SIZE_T>(size ? size : 1)));
  if (!master->data) {
    LocalFree(master);
    return nullptr;
  }
  return &master->data;
}
bool SetHandleSizeTo(Handle h, Size size) {
  if (!h) return false;
  HLOCAL grown = LocalReAlloc(*h, static_cast<SIZE_T>(size ? size : 1), LMEM_MOVEABLE);
  if (!grown) return false;
  *h = static_cast<Ptr>(grown);
  return true;
}
void ReleaseSmallBlockHeaps() {}
void ReleaseAllBlocks() {}
}  // namespace kwe::memory

namespace kwe::resources {
void StartResourceLayer() {}
void EndResourceLayer() {}
void CloseResourceChain() {}
SInt16 ApplicationResourceFile() { return 0; }
}  // namespace kwe::resources

namespace kwe::files {
void ClearFileSlots() {}
void CloseFileSlots() {}
void StartVolumeTable() {}
void SetStartupVolumeGlobals() {}

bool DocumentFromDosPath(const char* path, SInt16* vRefNum, OSType* fileType,
                         unsigned char name[64]) {
  DWORD attributes = GetFileAttributesA(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY))
    return false;
  const char* leaf = path;
  for (const char* p = path; *p; ++p)
    if (*p == '\\' || *p == ':' || *p == '/') leaf = p + 1;
  const char* dot = std::strrchr(leaf, '.');
  *vRefNum = 0;
  *fileType = FileTypeForExtension(dot ? dot + 1 : "");
  size_t n = std::strlen(leaf);
  if (n > 63) n = 63;
  name[0] = static_cast<unsigned char>(n);
  std::memcpy(name + 1, leaf, n);
  return true;
}

OSErr DosPathFromSpec(const FSSpec* spec, char path[MAX_PATH]) {
  if (!spec) return paramErr;
  size_t n = spec->name[0];
  std::memcpy(path, spec->name + 1, n);
  path[n] = 0;
  return noErr;
}
}  // namespace kwe::files

namespace kwe::events {
namespace {
LRESULT CALLBACK PassKeysOn(int code, WPARAM wParam, LPARAM lParam) {
  return CallNextHookEx(nullptr, code, wParam, lParam);
}
}  // namespace

void StartEventManager() { lowmem::At<SInt16>(lowmem::Slot::SysEvtMask) = SInt16(0xFFEF); }

UInt32 CurrentTicks() {
  UInt32 ticks = GetTickCount() >> 4;
  lowmem::Ticks() = ticks;
  return ticks;
}

void PumpOnePass(SInt16, UInt32 sleepMilliseconds) {
  MsgWaitForMultipleObjectsEx(0, nullptr, sleepMilliseconds, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
  MSG msg;
  while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) {
    TranslateMessage(&msg);
    DispatchMessageA(&msg);
  }
}

void ExpirePumpCountdown() {}
HOOKPROC KeyboardHookProcedure() { return PassKeysOn; }

Boolean KWE_CALL GetNextEventDefault(EventMask, EventRecord* event) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("GetNextEvent", Boolean(false));
}
Boolean KWE_CALL WaitNextEventDefault(EventMask, EventRecord* event, UInt32, RgnHandle) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("WaitNextEvent", Boolean(false));
}
Boolean KWE_CALL EventAvailDefault(EventMask, EventRecord* event) {
  if (event) std::memset(event, 0, sizeof *event);
  return Unsupported("EventAvail", Boolean(false));
}
void KWE_CALL SystemTaskDefault() { Unsupported("SystemTask"); }
Boolean KWE_CALL StillDownDefault() { return Unsupported("StillDown", Boolean(false)); }
Boolean KWE_CALL WaitMouseUpDefault() { return Unsupported("WaitMouseUp", Boolean(false)); }
Boolean ButtonWork() { return Unsupported("Button", Boolean(false)); }
void GetMouseWork(Point* where) {
  if (where) *where = Point{0, 0};
  Unsupported("GetMouse");
}
}  // namespace kwe::events

namespace kwe::quickdraw {
void CloseQuickDraw() {}
void SetCurrentPortSwitch(bool) {}
void KWE_CALL SetOriginDefault(SInt16, SInt16) { Unsupported("SetOrigin"); }
void KWE_CALL SetCursorDefault(const Cursor*) { Unsupported("SetCursor"); }
}  // namespace kwe::quickdraw

namespace kwe::windows {
void DisposeAllWindows() {}
void KWE_CALL BeginUpdateDefault(WindowPtr) { Unsupported("BeginUpdate"); }
void KWE_CALL EndUpdateDefault(WindowPtr) { Unsupported("EndUpdate"); }
void KWE_CALL InvalRectDefault(const Rect*) { Unsupported("InvalRect"); }
void KWE_CALL InvalRgnDefault(RgnHandle) { Unsupported("InvalRgn"); }
WindowPtr KWE_CALL NewWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                    WindowPtr, Boolean, SInt32) {
  return Unsupported("NewWindow", WindowPtr(nullptr));
}
WindowPtr KWE_CALL NewCWindowDefault(void*, const Rect*, ConstStr255Param, Boolean, SInt16,
                                     WindowPtr, Boolean, SInt32) {
  return Unsupported("NewCWindow", WindowPtr(nullptr));
}
void KWE_CALL ShowWindowDefault(WindowPtr) { Unsupported("ShowWindow"); }
void KWE_CALL HideWindowDefault(WindowPtr) { Unsupported("HideWindow"); }
void KWE_CALL SelectWindowDefault(WindowPtr) { Unsupported("SelectWindow"); }
void KWE_CALL CloseWindowDefault(WindowPtr) { Unsupported("CloseWindow"); }
WindowPtr KWE_CALL FrontWindowDefault() { return Unsupported("FrontWindow", WindowPtr(nullptr)); }
}  // namespace kwe::windows

namespace kwe::dialogs {
void ResetErrorSound() {}
void KWE_CALL ModalDialogDefault(ModalFilterProcPtr, SInt16* itemHit) {
  if (itemHit) *itemHit = 0;
  Unsupported("ModalDialog");
}
}  // namespace kwe::dialogs

namespace kwe::menus {
void DestroyAllMenus() {}
void KWE_CALL DrawMenuBarDefault() { Unsupported("DrawMenuBar"); }
void KWE_CALL HiliteMenuDefault(SInt16) { Unsupported("HiliteMenu"); }
SInt32 PopUpMenuSelectWork(MenuHandle, SInt16, SInt16, SInt16) {
  return Unsupported("PopUpMenuSelect", SInt32(0));
}
}  // namespace kwe::menus
