// The Resource Manager's calls on files and the chain: opening, creating,
// closing, updating, choosing the current file.
#include <windows.h>

#include "Files.h"
#include "Resources.h"
#include "files/name_conversion.h"
#include "frame/app_path.h"
#include "frame/diagnostics.h"
#include "frame/low_memory.h"
#include "frame/session.h"
#include "frame/subsystems.h"
#include "frame/system_values.h"
#include "memory/master_flags.h"
#include "resources/resource_file_io.h"
#include "resources/resource_file_name.h"

namespace kwe::resources {

namespace {

constexpr int16_t kSysValueResourceFilesReadOnly = 20;
constexpr UINT kSystemFileMissingString = 1030;
constexpr UINT kApplicationFileMissingString = 1033;

std::string PathForName(ConstStr255Param name, bool creating) {
  return CurrentDirectoryPathName(ResourceFileName(files::MacNameToAnsi(name), creating).c_str());
}

// The path the File Manager's naming gives; empty when it gives none.
std::string PathForVolume(SInt16 vRefNum, SInt32 dirID, ConstStr255Param name, bool useDirID) {
  char path[MAX_PATH] = "";
  OSErr err = useDirID ? KWE_HFSpec(dirID, vRefNum, name, path) : KWE_FSpec(vRefNum, name, path);
  return err == noErr ? std::string(path) : std::string();
}

bool ReadOnlyBySetting() { return ReadSystemValue(kSysValueResourceFilesReadOnly) != 0; }

void ReportHostString(UINT id, const std::string* path) {
  char text[128] = "";
  LoadStringA(TheSession().instance, id, text, sizeof text);
  if (!path) {
    Report(text);
    return;
  }
  char message[1024];
  wsprintfA(message, text, path->c_str());
  Report(message);
}

SInt16 g_applicationFile = 0;

}  // namespace

SInt16 ApplicationResourceFile() { return g_applicationFile; }

void CloseResourceFile(ResourceFile& file) {
  for (const ResourceTypeEntry& type : file.map.Types())
    for (const Reference& ref : type.references)
      if (ref.handle && ref.Live() && (ref.attributes & kAttrChanged)) file.mapChanged = true;
  if (!WriteBackMap(file, false)) ReleaseAndClose(file);
}

}  // namespace kwe::resources

using namespace kwe::resources;
namespace lowmem = kwe::lowmem;

KWE_API SInt16 KWE_CALL InitResources(void) {
  // A second call starts the chain afresh; what the first opened is closed
  // properly, changed maps written back.
  CloseResourceChain();
  g_applicationFile = 0;
  lowmem::ResErr() = noErr;
  lowmem::At<UInt8>(lowmem::Slot::ResLoad) = 1;
  bool readOnly = ReadOnlyBySetting();

  SInt16 first = 0;
  const char* systemFile = kwe::SystemResourceFileName();
  if (systemFile && systemFile[0]) first = OpenResourcePath(kwe::AppPathName(systemFile), readOnly);
  // The international records come from the system file when it opened;
  // WIN.INI's settings apply in any case.
  kwe::intl::StartInternational(first > 0 ? first : 0);
  if (first < 0) {
    ReportHostString(kSystemFileMissingString, nullptr);
    return 0;
  }
  std::string appPath = kwe::AppPathName(".RSR");
  SInt16 app = OpenResourcePath(appPath, readOnly);
  if (app < 0) {
    ReportHostString(kApplicationFileMissingString, &appPath);
    return 0;
  }
  g_applicationFile = app;
  return first ? first : app;
}

KWE_API SInt16 KWE_CALL OpenResFile(ConstStr255Param fileName) {
  return OpenResourcePath(PathForName(fileName, false), false);
}

KWE_API SInt16 KWE_CALL OpenRFPerm(ConstStr255Param fileName, SInt16 vRefNum, SInt8 permission) {
  bool readOnly = permission == fsRdPerm;
  if (vRefNum == 0) return OpenResourcePath(PathForName(fileName, false), readOnly);
  std::string path = PathForVolume(vRefNum, 0, fileName, false);
  if (path.empty()) {
    lowmem::ResErr() = fnfErr;
    return -1;
  }
  return OpenResourcePath(path, readOnly);
}

KWE_API SInt16 KWE_CALL HOpenResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName,
                                     SInt8 permission) {
  std::string path = PathForVolume(vRefNum, dirID, fileName, true);
  if (path.empty()) {
    lowmem::ResErr() = fnfErr;
    return -1;
  }
  return OpenResourcePath(path, permission == fsRdPerm);
}

KWE_API void KWE_CALL CreateResFile(ConstStr255Param fileName) {
  lowmem::ResErr() = noErr;
  CreateResourcePath(PathForName(fileName, true));
}

KWE_API void KWE_CALL HCreateResFile(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName) {
  lowmem::ResErr() = noErr;
  std::string path = PathForVolume(vRefNum, dirID, fileName, true);
  if (!path.empty()) CreateResourcePath(path);
}

KWE_API void KWE_CALL CloseResFile(SInt16 refNum) {
  ResourceFile* file = FileForCall(refNum);
  if (!file) return;
  // The current file stays; when it was the one closed, the next older one
  // (chosen when it left the chain) takes over.
  CurrentFileScope keepCurrent(nullptr);
  CloseResourceFile(*file);
}

KWE_API void KWE_CALL UpdateResFile(SInt16 refNum) {
  ResourceFile* file = FileForCall(refNum);
  if (!file) return;
  CurrentFileScope keepCurrent(nullptr);
  WriteBackMap(*file, true);
}

KWE_API void KWE_CALL UseResFile(SInt16 refNum) {
  lowmem::ResErr() = noErr;
  ForgetLastFound();
  ResourceFile* file = refNum == 0 ? FileInSlot(0) : FileOfRefNum(refNum);
  if (!file) {
    lowmem::ResErr() = resFNotFound;
    return;
  }
  MakeCurrent(file);
}

KWE_API SInt16 KWE_CALL CurResFile(void) {
  ResourceFile* file = CurrentFile();
  return file ? file->refNum : 0;
}

KWE_API SInt16 KWE_CALL HomeResFile(Handle theResource) {
  ResourceFile* file = nullptr;
  ReferencePlace place;
  return LocateResource(theResource, &file, &place) ? file->refNum : SInt16(-1);
}

KWE_API SInt16 KWE_CALL GetResFileAttrs(SInt16 refNum) {
  ResourceFile* file = FileForCall(refNum);
  if (!file) return 0;
  return SInt16((file->readOnly ? mapReadOnly : 0) | (file->mapChanged ? 0x60 : 0));
}
