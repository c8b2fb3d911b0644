// Drives a classic program linked into this executable as a user would,
// from a second thread: it waits for what the program shows, posts the
// clicks, menu commands and system commands a user makes, and checks what
// USER and the screen then hold. The program runs unchanged on the main
// thread. When the process ends, every failed check has been printed and a
// failure, or a script that did not reach its end, makes the exit code 1.
#pragma once
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

namespace kwe_drive {

using Script = void (*)();

// Starts script on its own thread; returns true so that a file can start it
// from a namespace-scope initialiser.
bool StartScript(Script script);
// The script's last step calls this before the command that ends the program.
void Finished();

void Check(bool ok, const std::string& what);
// Polls condition every 20 ms for up to ms; a timeout fails the check and
// ends the process, since later steps would only wait again.
void WaitFor(const std::function<bool()>& condition, const std::string& what, int ms = 15000);
// Polls condition every 20 ms for up to ms; false when it never held.
bool PollFor(const std::function<bool()>& condition, int ms);

HWND MainWindow();
// USER's view of the program's thread (capture, menu and move loops); all
// zero, cbSize too, when USER cannot say.
GUITHREADINFO ProgramThreadInfo();
// The MSGF_ code (MSGF_MENU, MSGF_DIALOGBOX...) of the Windows modal loop
// that took the program's latest input, as its message filter saw it; -1
// when the program's own event loop took it.
int LoopTakingInput();
// The visible windows of class KWESubWndClass (documents and dialogs), in
// the z-order of their parent.
std::vector<HWND> LibraryWindows();
std::string TextOf(HWND window);
HWND ChildWithText(HWND parent, const char* text);
std::string MenuText(HMENU menu, int position);

// The menu bar's item at (menu, item), chosen as a click in the menu would
// choose it: WM_COMMAND with the item's identifier to the main window.
void ChooseMenuItem(int menu, int item);
void ClickClient(HWND window, int x, int y);
COLORREF ClientPixel(HWND window, int x, int y);
SIZE ClientSize(HWND window);

// Waits until the program has taken every message posted to it so far,
// drawn what that made it draw and come back for more: a marker message
// seen by a hook on its thread, the windows' update regions empty, and a
// second marker behind them.
void Settle(const std::string& step);
// Real mouse input (SendInput), in screen coordinates: what TrackControl,
// TEClick and Windows' own frame loops read.
void MouseTo(POINT at);
void MouseButton(bool down);
// Presses at from, moves to to and releases, settling in between.
void Drag(POINT from, POINT to, const std::string& step);
// A frame spot of window whose hit test is hit (HTCAPTION, HTMAXBUTTON,
// HTCLOSE), in screen coordinates; {-1, -1} when the frame has none.
POINT FrameSpot(HWND window, LRESULT hit);
// The window's top-level and child windows of this process; what USER
// still holds once the program's windows are closed.
int CountProcessWindows();
// The window's pixels as 8-bit RGB rows, frame and all.
std::vector<unsigned char> CaptureWindow(HWND window, SIZE* size);

// The visible library window titled title, or null.
HWND WindowTitled(const std::string& title);
// Characters typed as the keyboard's WM_CHAR to the main window, which the
// library hands to the front window.
void Type(const std::string& text);
// A button of a dialog or alert clicked (BN_CLICKED to the dialog); the
// named one must be there.
void PressButton(HWND dialog, HWND button);
HWND ClickButton(HWND dialog, const char* title);
// The first library window with a child whose text holds text.
HWND WaitForDialogWith(const char* text, const std::string& what);
// The common open or save dialog the program shows, or null; and its
// file-name field.
HWND FileDialog();
HWND FileNameField(HWND dialog);
// The common file dialog answered with a full path typed into its field.
void AnswerFileDialog(const std::string& path, const std::string& step);

// The clipboard's text as another program reads it ("" while the program
// has it open: ask again), and text put there as another program puts it.
std::string ClipboardText();
void PutClipboardText(const std::string& text);

// A new folder in the temporary folder, named for prefix and the process.
std::string TempFolder(const std::string& prefix);
std::string ReadFile(const std::string& path);

}  // namespace kwe_drive
