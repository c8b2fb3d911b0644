// The document editor of examples/editor as a user meets it, against a raw
// Win32 program with a main window, a menu bar and an edit control
// (raw_edit_program.cpp), both started from this folder as processes:
//   start-up: from CreateProcess to the program waiting for input with its
//     document window shown and drawn (the editor's first idle
//     WaitNextEvent): the first window of its kind visible, then a message
//     sent to the main window answered (the thread is in its message pump),
//     no update region left in its windows, and a second message answered;
//   typing 10,000 characters of prose posted as WM_CHAR (to the editor's
//     main window, which hands them to the front document, and to the raw
//     edit control), timed until Select All and Copy posted behind them
//     put the whole text on the clipboard.
// Arguments: start-up rounds and typing rounds (default 5 and 1: under
// Wine a raw edit control takes milliseconds a character once it holds
// thousands, so a typing round takes a minute or more a side).
#include <windows.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "bench_support.h"

namespace {

// The editor's Edit menu: Copy, Clear and Select All (raw_edit_program.cpp
// gives its own the same identifiers).
constexpr UINT kCopy = 0x203, kClear = 0x205, kSelectAll = 0x207;
constexpr int kCharacters = 10000;

struct Program {
  const char* exe;
  const char* mainClass;
  const char* documentClass;  // the window the typing goes into
  bool typeToMain;            // the editor's keys go to its main window
};

const Program kEditor{"editor.exe", "KWEMainWndClass", "KWESubWndClass", true};
const Program kRaw{"raw_edit_program.exe", "RawEditMain", "Edit", false};

struct Running {
  PROCESS_INFORMATION process{};
  HWND main = nullptr, document = nullptr;
};

// The programs running, stopped when the bench gives up.
std::vector<HANDLE> g_started;

[[noreturn]] void GiveUp() {
  for (HANDLE process : g_started) TerminateProcess(process, 1);
  std::exit(1);
}

struct Search {
  DWORD process;
  const char* name;
  HWND found;
};

BOOL CALLBACK MatchWindow(HWND window, LPARAM data) {
  auto* s = reinterpret_cast<Search*>(data);
  DWORD process = 0;
  char name[64] = "";
  GetWindowThreadProcessId(window, &process);
  GetClassNameA(window, name, sizeof name);
  if (process == s->process && IsWindowVisible(window) && lstrcmpiA(name, s->name) == 0) {
    s->found = window;
    return FALSE;
  }
  if (process == s->process) EnumChildWindows(window, MatchWindow, data);
  return s->found == nullptr;
}

// A visible window of class name, top-level or child, of the process.
HWND FindProcessWindow(DWORD process, const char* name) {
  Search search{process, name, nullptr};
  EnumWindows(MatchWindow, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

BOOL CALLBACK NoteUpdate(HWND window, LPARAM dirty) {
  if (GetUpdateRect(window, nullptr, FALSE)) *reinterpret_cast<bool*>(dirty) = true;
  return TRUE;
}

bool Drawn(const Running& r) {
  bool dirty = false;
  NoteUpdate(r.main, reinterpret_cast<LPARAM>(&dirty));
  EnumChildWindows(r.main, NoteUpdate, reinterpret_cast<LPARAM>(&dirty));
  EnumThreadWindows(r.process.dwThreadId, NoteUpdate, reinterpret_cast<LPARAM>(&dirty));
  return !dirty;
}

// A sent message is taken only when the program's thread asks for its
// next message.
bool Answers(HWND main) {
  DWORD_PTR result;
  return SendMessageTimeoutA(main, WM_NULL, 0, 0, SMTO_NORMAL, 20000, &result) != 0;
}

std::string Folder() {
  char path[MAX_PATH];
  DWORD n = GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string folder(path, n);
  return folder.substr(0, folder.find_last_of("\\/") + 1);
}

// Starts the program and answers the seconds until it waits for input,
// drawn; a program that does not get there in 20 s stops the bench.
double Start(const Program& program, Running* r) {
  std::string command = "\"" + Folder() + program.exe + "\"";
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  double start = kwe_bench::Now();
  if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, Folder().c_str(),
                      &startup, &r->process)) {
    std::printf("cannot start %s\n", command.c_str());
    GiveUp();
  }
  g_started.push_back(r->process.hProcess);
  DWORD id = r->process.dwProcessId;
  while (!(r->main = FindProcessWindow(id, program.mainClass)) ||
         !(r->document = FindProcessWindow(id, program.documentClass))) {
    if (kwe_bench::Now() - start > 20 || WaitForSingleObject(r->process.hProcess, 0) == 0) {
      std::printf("%s showed no window\n", program.exe);
      GiveUp();
    }
    Sleep(1);
  }
  Answers(r->main);
  while (!Drawn(*r)) Sleep(1);
  Answers(r->main);
  return kwe_bench::Now() - start;
}

void Stop(Running* r) {
  g_started.erase(std::find(g_started.begin(), g_started.end(), r->process.hProcess));
  TerminateProcess(r->process.hProcess, 0);
  WaitForSingleObject(r->process.hProcess, 20000);
  CloseHandle(r->process.hProcess);
  CloseHandle(r->process.hThread);
  *r = Running{};
}

size_t ClipboardLength() {
  size_t length = 0;
  if (!OpenClipboard(nullptr)) return 0;  // the program has it open: ask again
  if (HANDLE data = GetClipboardData(CF_TEXT)) {
    length = strlen(static_cast<const char*>(GlobalLock(data)));
    GlobalUnlock(data);
  }
  CloseClipboard();
  return length;
}

void Post(HWND window, UINT message, WPARAM wParam) {
  while (!PostMessageA(window, message, wParam, 0)) Sleep(1);  // a full queue takes its time
}

// Clears the document, types the text and copies it; answers the seconds
// until the clipboard holds it (each return a CR LF there).
double Type(const Program& program, const Running& r, const std::string& text) {
  size_t wanted = text.size();
  for (char c : text) wanted += c == '\r';
  HWND keys = program.typeToMain ? r.main : r.document;
  double start = kwe_bench::Now();
  Post(r.main, WM_COMMAND, kSelectAll);
  Post(r.main, WM_COMMAND, kClear);
  for (char c : text) Post(keys, WM_CHAR, WPARAM(static_cast<unsigned char>(c)));
  Post(r.main, WM_COMMAND, kSelectAll);
  Post(r.main, WM_COMMAND, kCopy);
  size_t length = 0;
  while ((length = ClipboardLength()) != wanted) {
    if (kwe_bench::Now() - start > 300) {
      std::printf("%s: the clipboard holds %d characters, not %d\n", program.exe, int(length),
                  int(wanted));
      GiveUp();
    }
    Sleep(2);
  }
  return kwe_bench::Now() - start;
}

void EmptyTheClipboard() {
  while (!OpenClipboard(nullptr)) Sleep(1);
  EmptyClipboard();
  CloseClipboard();
}

}  // namespace

int main(int argc, char** argv) {
  int startRounds = argc > 1 ? std::atoi(argv[1]) : 5;
  int typeRounds = argc > 2 ? std::atoi(argv[2]) : 1;
  Running editor, raw;
  auto startOnce = [](const Program& program, Running* r) {
    return [&program, r] {
      double seconds = Start(program, r);
      Stop(r);
      return seconds;
    };
  };
  kwe_bench::CompareTimedByRound("start-up to the first idle wait", startRounds, 1, 1e3, "ms",
                                 startOnce(kEditor, &editor), startOnce(kRaw, &raw));

  std::string text = kwe_bench::Prose(kCharacters);
  Start(kEditor, &editor);
  Start(kRaw, &raw);
  auto typeOnce = [&text](const Program& program, Running* r) {
    return [&program, r, &text] {
      EmptyTheClipboard();
      return Type(program, *r, text);
    };
  };
  kwe_bench::CompareTimedByRound("typing 10,000 characters (posted WM_CHAR)", typeRounds, 1, 1e3,
                                 "ms", typeOnce(kEditor, &editor), typeOnce(kRaw, &raw));
  Stop(&editor);
  Stop(&raw);
  return 0;
}
