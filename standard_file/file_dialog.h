// The common open and save dialogs as the Standard File Package runs them.
#pragma once
#include <string>

#include "StandardFile.h"
#include "standard_file/file_filters.h"

namespace kwe::standardfile {

struct FileDialogRequest {
  bool saving = false;
  std::string title;        // ANSI; empty leaves Windows' own title
  std::string defaultName;  // ANSI; the save dialog's suggested name
  DialogFilters filters;
  FileFilterProcPtr fileFilter = nullptr;  // the open dialog's; true excludes a file
};

struct FileDialogChoice {
  std::string path;
  int filterIndex = -1;  // 0-based, as KWE_DosFSpec2MacSFReply takes it
};

// Runs the dialog over the session's open-file record, starting in the
// current directory (CurDirStore). Open files are parked while the open
// dialog runs. False when the user cancels or the dialog cannot open.
bool RunFileDialog(const FileDialogRequest& request, FileDialogChoice* choice);

}  // namespace kwe::standardfile
