// PicComment and StdComment: comments go into the picture being recorded
// and, through the port's commentProc, to whoever handles them.
#include "Quickdraw.h"
#include "printing/print_job.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"

using kwe::quickdraw::CurrentAttr;
using kwe::quickdraw::CurrentPort;

namespace {

using CommentProc = void(KWE_CALL*)(SInt16, SInt16, Handle);

}  // namespace

KWE_API void KWE_CALL PicComment(SInt16 kind, SInt16 dataSize, Handle dataHandle) {
  GrafPtr port = CurrentPort();
  if (!port || !CurrentAttr()) return;
  ProcPtr custom = port->grafProcs ? port->grafProcs->commentProc : nullptr;
  if (custom && custom != reinterpret_cast<ProcPtr>(&StdComment))
    reinterpret_cast<CommentProc>(custom)(kind, dataSize, dataHandle);
  else
    StdComment(kind, dataSize, dataHandle);
}

// Screen and memory ports have nothing to do with a comment beyond
// recording it; the printing port hands the printer the comments it takes.
KWE_API void KWE_CALL StdComment(SInt16 kind, SInt16 dataSize, Handle dataHandle) {
  kwe::pictures::RecordComment(CurrentPort(), kind, dataSize, dataHandle);
  kwe::printing::PassComment(kwe::quickdraw::CurrentDC(), kind, dataSize, dataHandle);
}
