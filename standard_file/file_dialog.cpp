#include "standard_file/file_dialog.h"

#include <windows.h>

#include "Files.h"
#include "KWEStandardFile.h"
#include "files/dos_path.h"
#include "files/name_conversion.h"
#include "files/working_directories.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "frame/session.h"

namespace kwe::standardfile {
namespace {

constexpr size_t kLongestMacName = 63;

// The dialog is modal on the host's one thread: the request it runs for.
struct RunningDialog {
  const FileDialogRequest* request = nullptr;
  FileFilterProcPtr fileFilter = nullptr;  // wrapped for the host
};
RunningDialog g_running;

std::string CurrentDirectoryPath() {
  std::string path;
  SInt32 dirID = kwe::lowmem::At<SInt32>(kwe::lowmem::Slot::CurDirStore);
  if (files::FullPath(dirID, 0, "", &path) != noErr) return "";
  return path;
}

// What the application's filter procedure sees for one file: the catalog
// entry PBGetCatInfo gives for it.
bool FilterExcludes(const std::string& path) {
  if (!g_running.fileFilter) return false;
  files::SplitPath parts = files::SplitAtLastSeparator(path);
  Str255 name;
  files::AnsiNameToMac(parts.name, name, 255);
  SInt16 volume = 0;
  SInt32 dirID = files::DirectoryIDForPath(parts.directory, &volume, nullptr);
  CInfoPBRec pb{};
  pb.hFileInfo.ioNamePtr = name;
  pb.hFileInfo.ioVRefNum = volume;
  pb.hFileInfo.ioDirID = dirID;
  if (PBGetCatInfo(&pb, false) != noErr) return false;
  return g_running.fileFilter(&pb);
}

bool Refuses(const std::string& path) {
  std::string name = files::SplitAtLastSeparator(path).name;
  return name.size() > kLongestMacName || (!g_running.request->saving && FilterExcludes(path));
}

void CentreOnScreen(HWND dialog) {
  RECT r;
  if (!GetWindowRect(dialog, &r)) return;
  int x = (GetSystemMetrics(SM_CXSCREEN) - (r.right - r.left)) / 2;
  int y = (GetSystemMetrics(SM_CYSCREEN) - (r.bottom - r.top)) / 2;
  SetWindowPos(dialog, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

UINT_PTR OnNotify(HWND hook, const OFNOTIFYA* note) {
  if (!g_running.request) return 0;
  switch (note->hdr.code) {
    case CDN_INITDONE:
      if (!g_running.request->saving && SessionFlag(kweFlagCentreOpenDialog))
        CentreOnScreen(GetParent(hook));
      return 0;
    case CDN_FILEOK:
      if (!Refuses(note->lpOFN->lpstrFile)) return 0;
      MessageBeep(0);
      SetWindowLongPtrA(hook, DWLP_MSGRESULT, 1);
      return 1;
    default: return 0;
  }
}

void FillRecord(OPENFILENAMEA& record, const FileDialogRequest& request,
                const std::string& directory) {
  Session& s = TheSession();
  record.hwndOwner = s.mainWindow;
  record.lpstrFilter = request.filters.windowsFilter.c_str();
  record.nFilterIndex = 1;
  record.lpstrFile = s.openFileName;
  record.nMaxFile = sizeof s.openFileName;
  lstrcpynA(s.openFileName, request.defaultName.c_str(), sizeof s.openFileName);
  record.lpstrFileTitle = s.openFileTitle;
  record.nMaxFileTitle = sizeof s.openFileTitle;
  record.lpstrInitialDir = directory.empty() ? nullptr : directory.c_str();
  record.lpstrTitle = request.title.empty() ? nullptr : request.title.c_str();
  record.Flags = OFN_EXPLORER | OFN_ENABLEHOOK | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
                 OFN_PATHMUSTEXIST | (request.saving ? OFN_OVERWRITEPROMPT : OFN_FILEMUSTEXIST);
  record.lpfnHook = K_FileOpenHookProc;
}

}  // namespace

bool RunFileDialog(const FileDialogRequest& request, FileDialogChoice* choice) {
  OPENFILENAMEA& record = TheSession().openFileRecord;
  std::string directory = CurrentDirectoryPath();
  FillRecord(record, request, directory);
  g_running.request = &request;
  g_running.fileFilter = reinterpret_cast<FileFilterProcPtr>(
      WrapHostProcedure(reinterpret_cast<ProcPtr>(request.fileFilter)));
  if (!request.saving) KWE_FHReOpenAll(false);
  BOOL chosen = request.saving ? GetSaveFileNameA(&record) : GetOpenFileNameA(&record);
  if (!request.saving) KWE_FHReOpenAll(true);
  ReleaseHostProcedure(reinterpret_cast<ProcPtr>(g_running.fileFilter));
  g_running = RunningDialog{};
  if (!chosen) return false;
  choice->path = record.lpstrFile;
  choice->filterIndex = static_cast<int>(record.nFilterIndex) - 1;
  return true;
}

}  // namespace kwe::standardfile

KWE_API UINT_PTR CALLBACK K_FileOpenHookProc(HWND dialog, UINT msg, WPARAM, LPARAM lParam) {
  if (msg != WM_NOTIFY) return 0;
  return kwe::standardfile::OnNotify(dialog, reinterpret_cast<const OFNOTIFYA*>(lParam));
}
