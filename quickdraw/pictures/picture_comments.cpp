// PicComment and StdComment: comments go into the picture being recorded
// and, through the port's commentProc, to whoever handles them.
#include "Memory.h"
#include "Quickdraw.h"
#include "printing/print_job.h"
#include "quickdraw/pictures/picture_recording.h"
#include "quickdraw/ports/port_attr.h"
#include "quickdraw/text/text_rotation.h"

using kwe::quickdraw::CurrentAttr;
using kwe::quickdraw::CurrentPort;

namespace {

using CommentProc = void(KWE_CALL*)(SInt16, SInt16, Handle);

constexpr SInt16 kRotateBegin = 200;
constexpr SInt16 kRotateEnd = 201;
constexpr SInt16 kRotateCenter = 202;

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

// Every port turns its text between RotateBegin and RotateEnd; the
// printing port also hands the printer the comments it takes.
KWE_API void KWE_CALL StdComment(SInt16 kind, SInt16 dataSize, Handle dataHandle) {
  GrafPtr port = CurrentPort();
  kwe::pictures::RecordComment(port, kind, dataSize, dataHandle);
  Size size = dataHandle && *dataHandle ? GetHandleSize(dataHandle) : 0;
  if (kind == kRotateBegin) {
    // The data: flip word, then the angle in degrees.
    int angle = size >= 4 ? reinterpret_cast<const SInt16*>(*dataHandle)[1] : 0;
    kwe::quickdraw::BeginTextRotation(port, angle);
  } else if (kind == kRotateEnd) {
    kwe::quickdraw::EndTextRotation();
  } else if (kind == kRotateCenter && size >= 8 && port) {
    // Two Fixed offsets from the pen, vertical first.
    const Fixed* offsets = reinterpret_cast<const Fixed*>(*dataHandle);
    kwe::quickdraw::SetTextRotationCentre(port, port->pnLoc.h + (offsets[1] >> 16),
                                          port->pnLoc.v + (offsets[0] >> 16));
  }
  kwe::printing::PassComment(kwe::quickdraw::CurrentDC(), kind, dataSize, dataHandle);
}
