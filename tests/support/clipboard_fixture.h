// A session whose clipboard procedure is the host shell's, a window
// that hears of clipboard changes and hands them to KWE_DrawClipboard as a
// host's main window does, and a second program on the same clipboard.
#pragma once
#include <windows.h>

#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>

#include "KWEScrap.h"
#include "Memory.h"
#include "host/shell.h"
#include "support/test_host.h"

namespace kwe_test {

constexpr ResType kTextType = 0x54455854;  // 'TEXT'
constexpr ResType kPictType = 0x50494354;  // 'PICT'
// How long a change notification may take on a busy machine; waits end as
// soon as it has come.
constexpr DWORD kNotificationWait = 30000;

inline LRESULT CALLBACK ListenerProc(HWND w, UINT msg, WPARAM wParam, LPARAM lParam) {
  if (msg == WM_CLIPBOARDUPDATE) {
    KWE_DrawClipboard();
    return 0;
  }
  return DefWindowProcA(w, msg, wParam, lParam);
}

// The path of a program beside the test program.
inline std::string BesideTests(const char* name) {
  char path[MAX_PATH];
  GetModuleFileNameA(nullptr, path, MAX_PATH);
  std::string p = path;
  return p.substr(0, p.find_last_of('\\') + 1) + name;
}

class ScrapTest : public SessionTest {
 protected:
  virtual KWEClipboardProc Procedure() const { return kwe::host::ClipboardProc; }
  void FillRecord(KWESessionRecord& r) override {
    r.clipboardProcedure = reinterpret_cast<ProcPtr>(Procedure());
  }
  void SetUp() override {
    SessionTest::SetUp();
    WNDCLASSA wc{};
    wc.lpfnWndProc = ListenerProc;
    wc.hInstance = TestInstance();
    wc.lpszClassName = "ScrapTestListener";
    RegisterClassA(&wc);
    listener = CreateWindowA("ScrapTestListener", "", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                             TestInstance(), nullptr);
    ASSERT_TRUE(AddClipboardFormatListener(listener));
    ZeroScrap();
    Pump(100);
  }
  void TearDown() override {
    RemoveClipboardFormatListener(listener);
    DestroyWindow(listener);
    SessionTest::TearDown();
  }

  SInt16 Count() const { return InfoScrap()->scrapCount; }

  // Delivers what Windows has queued for this thread for ms milliseconds.
  void Pump(DWORD ms) {
    PumpUntil([] { return false; }, ms);
  }
  bool PumpUntil(const std::function<bool()>& done, DWORD ms) {
    DWORD start = GetTickCount();
    do {
      MSG msg;
      while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
      if (done()) return true;
      MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
    } while (GetTickCount() - start < ms);
    return done();
  }

  // Starts the second program; with wait, returns its exit status.
  DWORD Peer(const std::string& arguments, bool wait = true, HANDLE* process = nullptr) {
    std::string command = "\"" + BesideTests("clipboard_peer.exe") + "\" " + arguments;
    STARTUPINFOA startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    if (!CreateProcessA(nullptr, &command[0], nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &info))
      return 0xFFFF;
    CloseHandle(info.hThread);
    DWORD status = STILL_ACTIVE;
    if (wait) {
      WaitForSingleObject(info.hProcess, 20000);
      GetExitCodeProcess(info.hProcess, &status);
    }
    if (process)
      *process = info.hProcess;
    else
      CloseHandle(info.hProcess);
    return status;
  }
  DWORD PeerPut(const std::string& bytes) {
    std::string hex;
    char pair[3];
    for (unsigned char c : bytes) {
      std::snprintf(pair, sizeof pair, "%02X", c);
      hex += pair;
    }
    return Peer("put " + hex);
  }
  // What the other program reads as CF_TEXT ("<none>" when it reads nothing).
  std::string PeerGet() {
    char directory[MAX_PATH], file[MAX_PATH];
    GetTempPathA(MAX_PATH, directory);
    GetTempFileNameA(directory, "clp", 0, file);
    std::string text = "<none>";
    if (Peer(std::string("get \"") + file + "\"") == 0) {
      text.clear();
      std::ifstream in(file, std::ios::binary);
      text.assign(std::istreambuf_iterator<char>(in), {});
    }
    DeleteFileA(file);
    return text;
  }

  // The scrap's 'TEXT' as the application gets it, with GetScrap's result.
  std::string ScrapText(SInt32* result, SInt32* offset = nullptr) {
    Handle h = NewHandle(0);
    SInt32 ignored;
    *result = GetScrap(h, kTextType, offset ? offset : &ignored);
    std::string text(*h, *h + (*result > 0 ? *result : 0));
    DisposeHandle(h);
    return text;
  }

  HWND listener = nullptr;
};

}  // namespace kwe_test
