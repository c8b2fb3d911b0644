// The demonstration host: a Macintosh program on the host shell, whose
// WinMain starts the session and calls main(). It runs the Macintosh code,
// shows the results in the shell's main window and saves a screenshot.
//   demo_host.exe [screenshot.png]
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "KWEHost.h"
#include "KWEWindows.h"
#include "demo_dialogs.h"
#include "demo_documents.h"
#include "demo_main_window.h"
#include "demo_menu_messages.h"
#include "demo_menus.h"
#include "demo_today.h"
#include "document_windows.h"
#include "notes_window.h"
#include "quickdraw_scene.h"
#include "toolbox_tour.h"

namespace {
std::vector<Pattern> g_patterns;
void PaintScene(HDC dc, int top) { DrawScene(dc, top, g_patterns); }
}  // namespace

// The Toolbox windows are the main window's children: it paints around them.
const KWEApplication KWEHostApplication = {"Toolbox Tour", 0,   nullptr,        nullptr, 0,
                                           1012,           760, PaintMainWindow};

int main(int argc, char** argv) {
  std::string screenshot = argc > 1 ? argv[1] : "demo-screenshot.png";
  HWND main = KWEHostMainWindow();

  StartQuickDraw();
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
  for (const std::string& line : RunDocumentsDemo("demo-save-dialog.png")) events.push_back(line);
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
  return saved ? 0 : 1;
}
