// The program's way in. The package links every Macintosh program with
// --wrap=main, so the C runtime's call of main() arrives here first: the
// shell runs WinMain, which sets up the Windows side and then calls the
// program's own main() with the runtime's arguments.
#include "host/shell.h"

extern "C" int __real_main(int argc, char** argv, char** envp);

namespace {

int g_argc = 0;
char** g_argv = nullptr;
char** g_envp = nullptr;

// What follows the program's own name on its command line: the documents
// the Segment Loader hands to CountAppFiles and GetAppFiles.
const char* DocumentsPart(const char* line) {
  bool quoted = false;
  for (; *line && (quoted || (*line != ' ' && *line != '\t')); ++line)
    if (*line == '"') quoted = !quoted;
  while (*line == ' ' || *line == '\t') ++line;
  return line;
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR commandLine, int) {
  HWND mdiClient = nullptr;
  HWND main = kwe::host::CreateMainWindow(instance, KWEHostApplication, &mdiClient);
  if (!main) return 1;
  kwe::host::RegisterLibraryClasses(instance);
  kwe::host::StartSession(instance, commandLine, KWEHostApplication, main, mdiClient);
  int result = __real_main(g_argc, g_argv, g_envp);
  kwe::host::EndSession();
  return result;
}

extern "C" int __wrap_main(int argc, char** argv, char** envp) {
  g_argc = argc;
  g_argv = argv;
  g_envp = envp;
  return WinMain(GetModuleHandleA(nullptr), nullptr,
                 const_cast<char*>(DocumentsPart(GetCommandLineA())), SW_SHOWDEFAULT);
}
