// The demonstration host: its WinMain is the whole Windows side. It starts
// the session, runs the Macintosh code, shows the results in its window,
// saves a screenshot and ends the session.
//   demo_host.exe [screenshot.png]
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "KWEWindows.h"
#include "demo_dialogs.h"
#include "demo_menu_messages.h"
#include "demo_menus.h"
#include "demo_today.h"
#include "document_windows.h"
#include "host_shell.h"
#include "notes_window.h"
#include "quickdraw_scene.h"
#include "toolbox_tour.h"

namespace {
std::vector<Pattern> g_patterns;
void PaintScene(HDC dc, int top) { DrawScene(dc, top, g_patterns); }
}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
  std::string screenshot = commandLine && commandLine[0] ? commandLine : "demo-screenshot.png";
  HWND main = StartHost(instance, nullptr);

  StartQuickDraw(HostGlobals());
  InitWindows();
  TourResult tour = RunToolboxTour();
  std::vector<std::string> today = TodayAndScrapLines();
  tour.lines.insert(tour.lines.end() - 1, today.begin(), today.end());
  SetUpMenuBar();  // from the application's resource file, open now
  // The document windows stand to the right of the tour's lines.
  OpenDocumentWindows(560, 20);
  OpenNotesWindow(Rect{470, 560, 690, 990});
  PostMenuInput(main);
  PostDemoInput(main, KWE_GethWnd(DocumentWindow(0)), POINT{40, 110});
  // The event loop's lines go above the patterns' line and its swatches.
  std::vector<std::string> events = RunEventLoop();
  events.push_back("About alert answered with item " + std::to_string(ShowAboutAlert()));
  for (const std::string& line : RunSettingsDialog("demo-dialog.png")) events.push_back(line);
  tour.lines.insert(tour.lines.end() - 1, events.begin(), events.end());
  for (const std::string& line : tour.lines) std::printf("%s\n", line.c_str());
  SetWindowLines(tour.lines);
  g_patterns = tour.patterns;
  SetScenePainter(PaintScene);
  InvalidateRect(main, nullptr, TRUE);
  KeepRunning(30);

  bool saved = SaveWindowScreenshot(main, screenshot);
  std::printf("%s %s\n", saved ? "Screenshot saved to" : "Could not save", screenshot.c_str());
  std::fflush(stdout);
  SetScenePainter(nullptr);
  CloseNotesWindow();
  CloseDocumentWindows();
  EndQuickDraw();
  EndHost(main);
  return saved ? 0 : 1;
}
