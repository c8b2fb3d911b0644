#include "standard_file/file_dialog_driver.h"

#include <commdlg.h>
#include <dlgs.h>

#include <chrono>

namespace kwe_test {
namespace {

HWND FindFileDialog(DWORD thread, HWND other) {
  struct Search {
    HWND found;
    HWND other;
  } search{nullptr, other};
  EnumThreadWindows(
      thread,
      [](HWND window, LPARAM param) -> BOOL {
        auto* s = reinterpret_cast<Search*>(param);
        char name[16] = "";
        GetClassNameA(window, name, sizeof name);
        if (window == s->other || std::string(name) != "#32770" || !IsWindowVisible(window))
          return TRUE;
        s->found = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&search));
  return search.found;
}

// The file-name field: an edit (edt1) or the edit inside a combo (cmb13).
HWND NameField(HWND dialog) {
  HWND field = GetDlgItem(dialog, edt1);
  if (field) return field;
  HWND combo = GetDlgItem(dialog, cmb13);
  return combo ? FindWindowExA(combo, nullptr, "Edit", nullptr) : nullptr;
}

std::string TextOf(HWND window) {
  char text[512] = "";
  if (window) SendMessageA(window, WM_GETTEXT, sizeof text, reinterpret_cast<LPARAM>(text));
  return text;
}

void Pause() { std::this_thread::sleep_for(std::chrono::milliseconds(300)); }

}  // namespace

FileDialogDriver::FileDialogDriver(std::vector<std::string> names,
                                   std::function<void()> duringDialog)
    : names_(std::move(names)),
      duringDialog_(std::move(duringDialog)),
      testThread_(GetCurrentThreadId()),
      thread_([this] { Run(); }) {}

FileDialogDriver::~FileDialogDriver() {
  if (thread_.joinable()) thread_.join();
}

const DialogSeen& FileDialogDriver::Seen() {
  if (thread_.joinable()) thread_.join();
  return seen_;
}

void FileDialogDriver::Run() {
  HWND dialog = nullptr;
  for (int i = 0; i < 200 && !dialog; ++i, Pause()) dialog = FindFileDialog(testThread_, nullptr);
  if (!dialog) return;
  Pause();
  seen_.title = TextOf(dialog);
  seen_.typedName = TextOf(NameField(dialog));
  HWND types = GetDlgItem(dialog, cmb1);
  LRESULT count = types ? SendMessageA(types, CB_GETCOUNT, 0, 0) : 0;
  for (LRESULT i = 0; i < count; ++i) {
    char entry[256] = "";
    SendMessageA(types, CB_GETLBTEXT, i, reinterpret_cast<LPARAM>(entry));
    seen_.filters.push_back(entry);
  }
  if (duringDialog_) duringDialog_();
  for (const std::string& name : names_) {
    if (name.empty()) {
      PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      return;
    }
    SendMessageA(NameField(dialog), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(name.c_str()));
    PostMessageA(dialog, WM_COMMAND, IDOK, 0);
    Pause();
    if (!IsWindow(dialog)) return;
    ++seen_.refusals;
  }
  PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
}

}  // namespace kwe_test
