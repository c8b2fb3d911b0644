// The session a ported program runs in: the record the library reads once,
// the low-memory globals bound to the shell's variables and to the
// program's qd, and the resource files the Macintosh had open before the
// program started.
#include <cstdio>
#include <cstdlib>

#include "KWESession.h"
#include "Resources.h"
#include "host/shell.h"

namespace kwe::host {
namespace {

KWELowMemoryGlobals g_globals;
HWND g_mainWindow = nullptr;
HACCEL g_accelerators = nullptr;
bool g_running = false;

// Every global the library keeps goes to a shell variable, except those the
// program reads through qd: thePort, the five patterns, arrow, screenBits.
KWEGlobalsRecord GlobalsRecord() {
  KWEGlobalsRecord record = KWEGlobalsRecordFor(&g_globals);
  record.thePort = &qd.thePort;
  record.white = &qd.white;
  record.black = &qd.black;
  record.gray = &qd.gray;
  record.dkGray = &qd.dkGray;
  record.ltGray = &qd.ltGray;
  record.arrow = &qd.arrow;
  record.screenBits = &qd.screenBits;
  return record;
}

void OpenResourceFiles(const KWEApplication& app) {
  InitResources();
  if (!app.resourceFile || !app.resourceFile[0]) return;
  Str255 name;
  size_t length = strlen(app.resourceFile);
  if (length > 255) return;
  name[0] = static_cast<UInt8>(length);
  memcpy(name + 1, app.resourceFile, length);
  OpenResFile(name);
}

}  // namespace

void StartSession(HINSTANCE instance, const char* commandLine, const KWEApplication& app,
                  HWND mainWindow, HWND mdiClient) {
  g_mainWindow = mainWindow;
  if (app.accelerators && app.acceleratorCount > 0)
    g_accelerators = CreateAcceleratorTableA(const_cast<ACCEL*>(app.accelerators),
                                             static_cast<int>(app.acceleratorCount));
  KWESessionRecord session{};
  session.size = sizeof session;
  session.instance = instance;
  session.mainWindow = mainWindow;
  session.mdiClient = mdiClient;
  session.flags = app.sessionFlags;
  session.accelerators = g_accelerators;
  session.commandLine = commandLine;
  session.clipboardProcedure = reinterpret_cast<ProcPtr>(ClipboardProc);
  KWE_InitSession(&session);
  KWEGlobalsRecord globals = GlobalsRecord();
  KWE_InitGlobals(&globals);
  g_running = true;
  AddClipboardFormatListener(mainWindow);
  OpenResourceFiles(app);
  ShowWindow(mainWindow, SW_SHOWNORMAL);
  UpdateWindow(mainWindow);
}

void EndSession() {
  if (!g_running) return;
  g_running = false;
  RemoveClipboardFormatListener(g_mainWindow);
  KWE_ExitSession();
  DestroyWindow(g_mainWindow);
  g_mainWindow = nullptr;
  if (g_accelerators) DestroyAcceleratorTable(g_accelerators);
  g_accelerators = nullptr;
}

void EndProgram(int code) {
  EndSession();
  std::fflush(nullptr);
  std::exit(code);
}

}  // namespace kwe::host

HWND KWEHostMainWindow(void) { return kwe::host::g_mainWindow; }
KWELowMemoryGlobals* KWEHostGlobals(void) { return &kwe::host::g_globals; }
