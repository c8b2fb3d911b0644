// CustomPutFile and CustomGetFile: the System 7 dialogs with the application's
// own items, hooks and activation order, which the common dialogs cannot
// carry. Each reports its name and then runs the plain put or get dialog.
#include <cstddef>

#include "StandardFile.h"
#include "frame/standard_file_hooks.h"
#include "frame/unsupported.h"

static_assert(sizeof(SFReply) == 74, "SFReply keeps its 68K layout");
static_assert(sizeof(StandardFileReply) == 88, "StandardFileReply keeps its 68K layout");
static_assert(offsetof(StandardFileReply, sfFile) == 6, "sfFile follows sfType");
static_assert(offsetof(StandardFileReply, sfScript) == 76, "sfScript follows the FSSpec");

KWE_API void KWE_CALL CustomPutFile(ConstStr255Param prompt, ConstStr255Param defaultName,
                                    StandardFileReply* reply, SInt16 dlgID, Point where,
                                    DlgHookYDProcPtr, ModalFilterYDProcPtr, ActivationOrderListPtr,
                                    ActivateYDProcPtr, void*) {
  kwe::Unsupported(__func__);
  kwe::standardfile::PutFile(where, prompt, defaultName, dlgID, reply);
}

KWE_API void KWE_CALL CustomGetFile(FileFilterYDProcPtr, SInt16 numTypes,
                                    ConstSFTypeListPtr typeList, StandardFileReply* reply,
                                    SInt16 dlgID, Point where, DlgHookYDProcPtr,
                                    ModalFilterYDProcPtr, ActivationOrderListPtr, ActivateYDProcPtr,
                                    void*) {
  kwe::Unsupported(__func__);
  kwe::standardfile::GetFile(where, numTypes, typeList, dlgID, reply);
}
