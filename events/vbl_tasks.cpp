// VBL tasks and the capture depth. A Macintosh application installs a VBL
// task to animate while it tracks the mouse; here the tasks run from the pump
// while the button is down, and from the host's own timer through
// KWE_VBL_Interrupt. The main window holds the mouse capture while any task
// is installed, so the button's release reaches the library.
#include <windows.h>

#include "KWEEvents.h"
#include "Retrace.h"
#include "events/capture_depth.h"
#include "events/message_pump.h"
#include "frame/host_procedures.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe::events {
namespace {

constexpr OSErr kNotInstalled = -1;  // qErr

int g_captureDepth = 0;
VBLTask* g_firstTask = nullptr;
VBLTask* g_lastTask = nullptr;
bool g_runningTasks = false;
unsigned g_taskRuns = 0;
SInt32 g_playBack = 0;

VBLTask* NextTask(const VBLTask* t) { return reinterpret_cast<VBLTask*>(t->qLink); }

bool Installed(const VBLTask* task) {
  for (VBLTask* t = g_firstTask; t; t = NextTask(t))
    if (t == task) return true;
  return false;
}

}  // namespace

int CaptureDepth() { return g_captureDepth; }

int RaiseCapture(HWND window) {
  int old = g_captureDepth++;
  if (old == 0 && window) SetCapture(window);
  return old;
}

int LowerCapture() {
  int old = g_captureDepth;
  if (g_captureDepth > 0 && --g_captureDepth == 0) ReleaseCapture();
  return old;
}

int SetCaptureDepth(int depth) {
  int old = g_captureDepth;
  HWND captured = GetCapture();
  if (depth && !old && !captured && TheSession().mainWindow) SetCapture(TheSession().mainWindow);
  if (!depth && old && captured) {
    char className[16] = "";
    GetClassNameA(captured, className, sizeof className);
    if (captured == TheSession().mainWindow || lstrcmpiA(className, "Edit") == 0) ReleaseCapture();
  }
  g_captureDepth = depth;
  return old;
}

bool HaveVblTasks() { return g_firstTask != nullptr; }

void RunVblTasks() {
  if (g_runningTasks) return;
  g_runningTasks = true;
  ++g_taskRuns;
  for (VBLTask* t = g_firstTask; t; t = NextTask(t)) {
    if (t->vblCount <= 0) continue;
    // A task that wants to run again sets vblCount itself.
    if (--t->vblCount == 0 && t->vblAddr) t->vblAddr();
  }
  g_runningTasks = false;
}

}  // namespace kwe::events

using namespace kwe;
using namespace kwe::events;

KWE_API OSErr KWE_CALL VInstall(VBLTaskPtr task) {
  if (!task || Installed(task)) return kNotInstalled;
  RaiseCapture(TheSession().mainWindow);
  task->qLink = nullptr;
  if (g_lastTask)
    g_lastTask->qLink = reinterpret_cast<QElemPtr>(task);
  else
    g_firstTask = task;
  g_lastTask = task;
  task->vblAddr =
      reinterpret_cast<VBLProcPtr>(WrapHostProcedure(reinterpret_cast<ProcPtr>(task->vblAddr)));
  return noErr;
}

KWE_API OSErr KWE_CALL VRemove(VBLTaskPtr task) {
  if (!task || !Installed(task)) return kNotInstalled;
  VBLTask* previous = nullptr;
  for (VBLTask* t = g_firstTask; t != task; t = NextTask(t)) previous = t;
  if (previous)
    previous->qLink = task->qLink;
  else
    g_firstTask = NextTask(task);
  if (g_lastTask == task) g_lastTask = previous;
  task->qLink = nullptr;
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(task->vblAddr));
  LowerCapture();
  return noErr;
}

KWE_API void KWE_CALL KWE_VBL_Interrupt(void) {
  if (!HaveVblTasks()) return;
  unsigned runs = g_taskRuns;
  PumpPass(1, nullptr, 0);
  // The pass runs the tasks only while the button is down.
  if (runs == g_taskRuns) RunVblTasks();
}

KWE_API SInt32 KWE_CALL KWE_SetCapture(Boolean on) {
  return on ? RaiseCapture(TheSession().mainWindow) : LowerCapture();
}

KWE_API SInt32 KWE_CALL KWE_SetWinCapture(WindowPtr window, Boolean on) {
  return on ? RaiseCapture(windows::WindowHandleOf(window)) : LowerCapture();
}

KWE_API SInt16 KWE_CALL KWE_ForceCapture(SInt16 depth) {
  return static_cast<SInt16>(SetCaptureDepth(depth));
}

KWE_API SInt32 KWE_CALL KWE_PlayBack(SInt32 value) {
  SInt32 old = g_playBack;
  g_playBack = value;
  return old;
}
