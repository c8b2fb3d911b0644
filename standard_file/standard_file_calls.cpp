// SFGetFile, SFPutFile, their SFP forms, and the System 7 StandardGetFile and
// StandardPutFile over the common open and save dialogs. The reply is made
// from the chosen DOS path by KWE_DosFSpec2MacSFReply, which also makes the
// chosen directory current, sets SFSaveDisk and remembers the name for the
// Finder information rule. The Macintosh dialog's own items cannot be added
// to the common dialogs: a dialog hook, a modal filter or a dialog ID of the
// application's own is reported and the plain dialog runs.
#include <windows.h>

#include <cstring>

#include "StandardFile.h"
#include "files/finder_info.h"
#include "files/name_conversion.h"
#include "frame/session.h"
#include "frame/standard_file_hooks.h"
#include "frame/system_values.h"
#include "frame/unsupported.h"
#include "standard_file/file_dialog.h"

namespace kwe::standardfile {
namespace {

constexpr int16_t kDefaultFileTypeValue = 36;
// The package's own put and get dialogs (System 6 and System 7 forms).
constexpr SInt16 kStandardDialogIDs[] = {0, -3999, -4000, -6042, -6043};

bool IsStandardDialog(SInt16 dlgID) {
  for (SInt16 id : kStandardDialogIDs)
    if (id == dlgID) return true;
  return false;
}

void ReportCustomParts(const char* call, const void* dlgHook, const void* filterProc,
                       SInt16 dlgID) {
  if (dlgHook || filterProc || !IsStandardDialog(dlgID)) Unsupported(call);
}

// Runs the dialog and makes the System 6 reply; the save dialogs give a bare
// name the chosen filter's extension.
void DialogToReply(const FileDialogRequest& request, SFReply* reply) {
  if (!reply) return;
  std::memset(reply, 0, sizeof *reply);
  files::SetDialogFilters(request.filters.records);
  FileDialogChoice choice;
  if (!RunFileDialog(request, &choice)) return;
  KWE_DosFSpec2MacSFReply(request.saving, false, static_cast<SInt16>(choice.filterIndex), true,
                          true, choice.path.c_str(), reply);
}

void GetToReply(FileFilterProcPtr fileFilter, SInt16 numTypes, ConstSFTypeListPtr typeList,
                SFReply* reply) {
  FileDialogRequest request;
  OSType defaultType = static_cast<OSType>(ReadSystemValue(kDefaultFileTypeValue));
  request.filters = FiltersForTypes(TheSession().fileTypeTable, numTypes, typeList, defaultType);
  request.fileFilter = fileFilter;
  DialogToReply(request, reply);
}

void PutToReply(ConstStr255Param prompt, ConstStr255Param defaultName, SFReply* reply) {
  FileDialogRequest request;
  request.saving = true;
  request.title = files::MacNameToAnsi(prompt);
  request.defaultName = files::MacNameToAnsi(defaultName);
  request.filters = FiltersForTypes(TheSession().fileTypeTable, 0, nullptr, 0);
  DialogToReply(request, reply);
}

// The System 7 reply: the file as an FSSpec of its directory, and whether
// saving replaces a file that is there.
void ToStandardReply(const SFReply& old, bool saving, StandardFileReply* reply) {
  std::memset(reply, 0, sizeof *reply);
  if (!old.good) return;
  OSErr err = FSMakeFSSpec(old.vRefNum, 0, old.fName, &reply->sfFile);
  if (err != noErr && err != fnfErr) return;
  reply->sfGood = true;
  reply->sfType = old.fType;
  reply->sfReplacing = saving && err == noErr;
}

}  // namespace

void PutFile(Point, ConstStr255Param prompt, ConstStr255Param defaultName, SInt16,
             StandardFileReply* reply) {
  if (!reply) return;
  SFReply old;
  PutToReply(prompt, defaultName, &old);
  ToStandardReply(old, true, reply);
}

void GetFile(Point, SInt16 numTypes, ConstSFTypeListPtr typeList, SInt16,
             StandardFileReply* reply) {
  if (!reply) return;
  SFReply old;
  GetToReply(nullptr, numTypes, typeList, &old);
  ToStandardReply(old, false, reply);
}

}  // namespace kwe::standardfile

using namespace kwe::standardfile;

KWE_API void KWE_CALL SFGetFile(Point, ConstStr255Param, FileFilterProcPtr fileFilter,
                                SInt16 numTypes, ConstSFTypeListPtr typeList,
                                DlgHookProcPtr dlgHook, SFReply* reply) {
  ReportCustomParts(__func__, reinterpret_cast<const void*>(dlgHook), nullptr, 0);
  GetToReply(fileFilter, numTypes, typeList, reply);
}

KWE_API void KWE_CALL SFPGetFile(Point, ConstStr255Param, FileFilterProcPtr fileFilter,
                                 SInt16 numTypes, ConstSFTypeListPtr typeList,
                                 DlgHookProcPtr dlgHook, SFReply* reply, SInt16 dlgID,
                                 ModalFilterProcPtr filterProc) {
  ReportCustomParts(__func__, reinterpret_cast<const void*>(dlgHook),
                    reinterpret_cast<const void*>(filterProc), dlgID);
  GetToReply(fileFilter, numTypes, typeList, reply);
}

KWE_API void KWE_CALL SFPutFile(Point, ConstStr255Param prompt, ConstStr255Param origName,
                                DlgHookProcPtr dlgHook, SFReply* reply) {
  ReportCustomParts(__func__, reinterpret_cast<const void*>(dlgHook), nullptr, 0);
  PutToReply(prompt, origName, reply);
}

KWE_API void KWE_CALL SFPPutFile(Point, ConstStr255Param prompt, ConstStr255Param origName,
                                 DlgHookProcPtr dlgHook, SFReply* reply, SInt16 dlgID,
                                 ModalFilterProcPtr filterProc) {
  ReportCustomParts(__func__, reinterpret_cast<const void*>(dlgHook),
                    reinterpret_cast<const void*>(filterProc), dlgID);
  PutToReply(prompt, origName, reply);
}

KWE_API void KWE_CALL StandardGetFile(FileFilterProcPtr fileFilter, SInt16 numTypes,
                                      ConstSFTypeListPtr typeList, StandardFileReply* reply) {
  if (!reply) return;
  SFReply old;
  GetToReply(fileFilter, numTypes, typeList, &old);
  ToStandardReply(old, false, reply);
}

KWE_API void KWE_CALL StandardPutFile(ConstStr255Param prompt, ConstStr255Param defaultName,
                                      StandardFileReply* reply) {
  PutFile(Point{}, prompt, defaultName, 0, reply);
}
