// Another program on the same clipboard, as the scrap tests start it:
//   clipboard_peer put <hex bytes>       CF_TEXT of those bytes (and a NUL)
//   clipboard_peer get <file>            the CF_TEXT bytes into file
//   clipboard_peer hold <held> <release> keeps the clipboard open from the
//                                        moment event held is set until
//                                        event release is
// Exit status 0 when it did it, 1 when the clipboard could not be opened,
// 2 when there was no CF_TEXT, 3 on a bad command line.
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

bool OpenPatiently() {
  for (int attempt = 0; attempt < 200; ++attempt) {
    if (OpenClipboard(nullptr)) return true;
    Sleep(10);
  }
  return false;
}

int Put(const std::string& hex) {
  std::string bytes;
  for (size_t i = 0; i + 1 < hex.size(); i += 2)
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  if (!OpenPatiently()) return 1;
  EmptyClipboard();
  HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, bytes.size() + 1);
  char* p = static_cast<char*>(GlobalLock(memory));
  bytes.copy(p, bytes.size());
  p[bytes.size()] = 0;
  GlobalUnlock(memory);
  SetClipboardData(CF_TEXT, memory);
  CloseClipboard();
  return 0;
}

int Get(const char* path) {
  if (!OpenPatiently()) return 1;
  HANDLE data = GetClipboardData(CF_TEXT);
  const char* text = data ? static_cast<const char*>(GlobalLock(data)) : nullptr;
  int status = 2;
  if (text) {
    if (FILE* f = std::fopen(path, "wb")) {
      std::fwrite(text, 1, strnlen(text, GlobalSize(data)), f);
      std::fclose(f);
      status = 0;
    }
    GlobalUnlock(data);
  }
  CloseClipboard();
  return status;
}

int Hold(const char* heldName, const char* releaseName) {
  HANDLE held = OpenEventA(EVENT_MODIFY_STATE, FALSE, heldName);
  HANDLE release = OpenEventA(SYNCHRONIZE, FALSE, releaseName);
  if (!held || !release || !OpenPatiently()) return 1;
  SetEvent(held);
  WaitForSingleObject(release, 20000);
  CloseClipboard();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string command = argc > 1 ? argv[1] : "";
  if (command == "put" && argc == 3) return Put(argv[2]);
  if (command == "put" && argc == 2) return Put("");
  if (command == "get" && argc == 3) return Get(argv[2]);
  if (command == "hold" && argc == 4) return Hold(argv[2], argv[3]);
  return 3;
}
