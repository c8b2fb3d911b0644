// Creating, deleting and renaming files, and making directories.
#include <windows.h>

#include "Files.h"
#include "files/call_support.h"
#include "files/dos_path.h"
#include "files/file_slots.h"
#include "files/name_conversion.h"
#include "files/working_directories.h"

using namespace kwe::files;

namespace {

// The creator and type are not stored: they come from the name later.
OSErr CreateAt(const std::string& path) {
  if (PathExists(path)) return dupFNErr;
  if (!IsParsableDosPath(path)) return dirFulErr;
  HANDLE h = CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (h == INVALID_HANDLE_VALUE)
    return GetLastError() == ERROR_FILE_EXISTS ? OSErr(dupFNErr) : OSErr(dirFulErr);
  return CloseHandle(h) ? OSErr(noErr) : OSErr(fnfErr);
}

OSErr CreateNamed(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name) {
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, name, &path);
  return err != noErr ? err : CreateAt(path);
}

OSErr DeleteAt(const std::string& path) {
  if (SlotOfPath(path) != 0) return fBsyErr;
  if (DeleteFileA(path.c_str())) return noErr;
  switch (GetLastError()) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME: return fnfErr;
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION: return fLckdErr;
    default: return -1;
  }
}

OSErr DeleteNamed(SInt32 dirID, SInt16 vRefNum, ConstStr255Param name) {
  std::string path;
  OSErr err = PathOf(dirID, vRefNum, name, &path);
  return err != noErr ? err : DeleteAt(path);
}

// As the C runtime's rename classifies Windows' answer: no such file,
// access (the new name exists, or the file is in use), another device.
OSErr RenameNamed(SInt32 dirID, SInt16 vRefNum, ConstStr255Param oldName,
                  ConstStr255Param newName) {
  std::string from, to;
  OSErr err = PathOf(dirID, vRefNum, oldName, &from);
  if (err == noErr) err = PathOf(dirID, vRefNum, newName, &to);
  if (err != noErr) return err;
  if (!oldName || oldName[0] == 0 || !newName || newName[0] == 0) return bdNamErr;
  if (!MoveFileA(from.c_str(), to.c_str())) {
    switch (GetLastError()) {
      case ERROR_FILE_NOT_FOUND:
      case ERROR_PATH_NOT_FOUND:
      case ERROR_INVALID_NAME: return bdNamErr;
      case ERROR_ACCESS_DENIED:
      case ERROR_ALREADY_EXISTS:
      case ERROR_FILE_EXISTS:
      case ERROR_SHARING_VIOLATION: return dupFNErr;
      case ERROR_NOT_SAME_DEVICE: return extFSErr;
      default: return ioErr;
    }
  }
  // A parked file follows its new name, so that it can reopen.
  std::string key = FoldedForCompare(FullDosPath(from.c_str()));
  std::string full = FullDosPath(to.c_str());
  for (SInt16 slot = kFirstSlot; slot < kSlotCount; ++slot) {
    const std::string* held = SlotPath(slot);
    if (held && FoldedForCompare(*held) == key) SetSlotPath(slot, full);
  }
  return noErr;
}

OSErr MakeDirectory(SInt32 parentID, SInt16 vRefNum, ConstStr255Param name, SInt32* created) {
  std::string path;
  OSErr err = PathOf(parentID, vRefNum, name, &path);
  if (err != noErr) return err;
  if (!IsParsableDosPath(path)) return bdNamErr;
  if (!CreateDirectoryA(path.c_str(), nullptr)) {
    DWORD error = GetLastError();
    return error == ERROR_ALREADY_EXISTS || error == ERROR_ACCESS_DENIED ||
                   error == ERROR_FILE_EXISTS
               ? OSErr(dupFNErr)
               : OSErr(dirNFErr);
  }
  *created = DirectoryIDForPath(path, nullptr, nullptr);
  return noErr;
}

}  // namespace

KWE_API OSErr KWE_CALL PBCreate(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  return Finish(&pb->ioParam, CreateNamed(0, pb->ioParam.ioVRefNum, pb->ioParam.ioNamePtr));
}

KWE_API OSErr KWE_CALL PBHCreate(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  return Finish(&f, CreateNamed(f.ioDirID, f.ioVRefNum, f.ioNamePtr));
}

KWE_API OSErr KWE_CALL Create(ConstStr255Param fileName, SInt16 vRefNum, OSType, OSType) {
  return CreateNamed(0, vRefNum, fileName);
}

KWE_API OSErr KWE_CALL HCreate(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName, OSType,
                               OSType) {
  return CreateNamed(dirID, vRefNum, fileName);
}

KWE_API OSErr KWE_CALL FSpCreate(const FSSpec* spec, OSType, OSType, ScriptCode) {
  if (!spec) return paramErr;
  return CreateNamed(spec->parID, spec->vRefNum, spec->name);
}

KWE_API OSErr KWE_CALL PBDelete(ParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  return Finish(&pb->ioParam, DeleteNamed(0, pb->ioParam.ioVRefNum, pb->ioParam.ioNamePtr));
}

KWE_API OSErr KWE_CALL PBHDelete(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  return Finish(&f, DeleteNamed(f.ioDirID, f.ioVRefNum, f.ioNamePtr));
}

KWE_API OSErr KWE_CALL FSDelete(ConstStr255Param fileName, SInt16 vRefNum) {
  return DeleteNamed(0, vRefNum, fileName);
}

KWE_API OSErr KWE_CALL HDelete(SInt16 vRefNum, SInt32 dirID, ConstStr255Param fileName) {
  return DeleteNamed(dirID, vRefNum, fileName);
}

KWE_API OSErr KWE_CALL FSpDelete(const FSSpec* spec) {
  if (!spec) return paramErr;
  return DeleteNamed(spec->parID, spec->vRefNum, spec->name);
}

KWE_API OSErr KWE_CALL PBHRename(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  ConstStr255Param newName = reinterpret_cast<ConstStr255Param>(pb->ioParam.ioMisc);
  return Finish(&f, RenameNamed(f.ioDirID, f.ioVRefNum, f.ioNamePtr, newName));
}

KWE_API OSErr KWE_CALL Rename(ConstStr255Param oldName, SInt16 vRefNum, ConstStr255Param newName) {
  return RenameNamed(0, vRefNum, oldName, newName);
}

KWE_API OSErr KWE_CALL HRename(SInt16 vRefNum, SInt32 dirID, ConstStr255Param oldName,
                               ConstStr255Param newName) {
  return RenameNamed(dirID, vRefNum, oldName, newName);
}

KWE_API OSErr KWE_CALL FSpRename(const FSSpec* spec, ConstStr255Param newName) {
  if (!spec) return paramErr;
  return RenameNamed(spec->parID, spec->vRefNum, spec->name, newName);
}

KWE_API OSErr KWE_CALL PBDirCreate(HParmBlkPtr pb, Boolean) {
  if (!pb) return paramErr;
  HFileParam& f = pb->fileParam;
  SInt32 created = 0;
  OSErr err = MakeDirectory(f.ioDirID, f.ioVRefNum, f.ioNamePtr, &created);
  if (err == noErr) f.ioDirID = created;
  return Finish(&f, err);
}

KWE_API OSErr KWE_CALL DirCreate(SInt16 vRefNum, SInt32 parentDirID, ConstStr255Param directoryName,
                                 SInt32* createdDirID) {
  SInt32 created = 0;
  OSErr err = MakeDirectory(parentDirID, vRefNum, directoryName, &created);
  if (err == noErr && createdDirID) *createdDirID = created;
  return err;
}
