// OpenPicture, OpenCPicture, ClosePicture and KillPicture; StdPutPic, the
// put bottleneck that grows the picture's handle.
#include <cstring>
#include <vector>

#include "Memory.h"
#include "Quickdraw.h"
#include "quickdraw/pictures/picture_state.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::pictures {
namespace {

using quickdraw::CurrentAttr;
using quickdraw::CurrentPort;

// One entry per open picture, innermost last.
std::vector<RecordState> g_states;
bool g_allowPush = false;

using PutProc = void(KWE_CALL*)(const void*, SInt16);

void PutBE16(UInt8* p, uint16_t v) {
  p[0] = static_cast<UInt8>(v >> 8);
  p[1] = static_cast<UInt8>(v);
}

void PutBE32(UInt8* p, uint32_t v) {
  PutBE16(p, static_cast<uint16_t>(v >> 16));
  PutBE16(p + 2, static_cast<uint16_t>(v));
}

// picSize and picFrame big-endian, as they stay while recording.
void WriteSizeAndFrame(UInt8* p, uint16_t size, const Rect& frame) {
  PutBE16(p, size);
  PutBE16(p + 2, static_cast<uint16_t>(frame.top));
  PutBE16(p + 4, static_cast<uint16_t>(frame.left));
  PutBE16(p + 6, static_cast<uint16_t>(frame.bottom));
  PutBE16(p + 8, static_cast<uint16_t>(frame.right));
}

// Another picture may be opened on a port that records only when pushing
// is allowed.
bool MayOpen(GrafPtr port) { return port && CurrentAttr() && (!port->picSave || g_allowPush); }

}  // namespace

// The port's state that playback starts from, and the pen hidden.
RecordState& StartRecording(GrafPtr port, Handle pic) {
  RecordState s;
  s.port = port;
  s.pic = pic;
  s.outerPic = port->picSave;
  s.origin = Point{port->portRect.top, port->portRect.left};
  g_states.push_back(s);
  port->picSave = pic;
  HidePen();
  return g_states.back();
}

// Version opcode, version 2, header opcode, then the header: version -1,
// the frame as Fixed left, top, right, bottom, and a reserved long.
void PutOpenPictureHeader(const Rect& frame) {
  UInt8 header[30] = {0x00, 0x11, 0x02, 0xFF, 0x0C, 0x00, 0xFF, 0xFF, 0xFF, 0xFF};
  const SInt16 edges[4] = {frame.left, frame.top, frame.right, frame.bottom};
  for (int i = 0; i < 4; ++i) PutBE32(header + 10 + 4 * i, static_cast<uint32_t>(edges[i]) << 16);
  PutPictureBytes(header, sizeof header);
}

Handle RecordingTarget(GrafPtr port) {
  RecordState* s = port ? StateOf(port) : nullptr;
  if (s && s->opcodes) return s->opcodes;
  return port ? port->picSave : nullptr;
}

RecordState* StateOf(GrafPtr port) {
  for (auto it = g_states.rbegin(); it != g_states.rend(); ++it)
    if (it->port == port && it->pic == port->picSave) return &*it;
  return nullptr;
}

void PutPictureBytes(const void* data, size_t count) {
  GrafPtr port = CurrentPort();
  if (!port) return;
  PutProc put = &StdPutPic;
  if (port->grafProcs && port->grafProcs->putPicProc &&
      port->grafProcs->putPicProc != reinterpret_cast<ProcPtr>(&StdPutPic))
    put = reinterpret_cast<PutProc>(port->grafProcs->putPicProc);
  const UInt8* p = static_cast<const UInt8*>(data);
  while (count) {
    SInt16 n = static_cast<SInt16>(count > 32766 ? 32766 : count);
    put(p, n);
    p += n;
    count -= static_cast<size_t>(n);
  }
}

}  // namespace kwe::pictures

using namespace kwe::pictures;

KWE_API PicHandle KWE_CALL OpenPicture(const Rect* picFrame) {
  GrafPtr port = CurrentPort();
  if (!picFrame || !MayOpen(port)) return nullptr;
  Handle pic = NewHandle(10);
  if (!pic) return nullptr;
  WriteSizeAndFrame(reinterpret_cast<UInt8*>(*pic), 10, *picFrame);
  StartRecording(port, pic);
  PutOpenPictureHeader(*picFrame);
  return reinterpret_cast<PicHandle>(pic);
}

KWE_API PicHandle KWE_CALL OpenCPicture(const OpenCPicParams* params) {
  GrafPtr port = CurrentPort();
  if (!params || !MayOpen(port)) return nullptr;
  Handle pic = NewHandleClear(40);
  if (!pic) return nullptr;
  UInt8* p = reinterpret_cast<UInt8*>(*pic);
  WriteSizeAndFrame(p, 40, params->srcRect);
  const UInt8 opcodes[8] = {0x00, 0x11, 0x02, 0xFF, 0x0C, 0x00, 0xFF, 0xFE};
  std::memcpy(p + 10, opcodes, sizeof opcodes);
  PutBE32(p + 20, static_cast<uint32_t>(params->hRes));
  PutBE32(p + 24, static_cast<uint32_t>(params->vRes));
  const Rect& r = params->srcRect;
  const SInt16 edges[4] = {r.top, r.left, r.bottom, r.right};
  for (int i = 0; i < 4; ++i) PutBE16(p + 28 + 2 * i, static_cast<uint16_t>(edges[i]));
  StartRecording(port, pic);
  return reinterpret_cast<PicHandle>(pic);
}

// The end opcode (after a pad byte when the length is odd), then picSize
// and picFrame in the processor's order. A picture whose handle could not
// grow was emptied and gets nothing.
KWE_API void KWE_CALL ClosePicture(void) {
  GrafPtr port = CurrentPort();
  if (!port || !port->picSave) return;
  Handle scrap = port->picSave;
  RecordState* s = StateOf(port);
  Handle pic = RecordingTarget(port);
  Rect scrapRect = s ? s->scrapRect : Rect{};
  if (*pic) {
    const UInt8 end[3] = {0x00, 0x00, 0xFF};
    long size = GetHandleSize(pic);
    bool odd = size & 1;
    PutPictureBytes(end + (odd ? 0 : 1), odd ? 3 : 2);
  }
  if (*pic && GetHandleSize(pic) >= 10) {
    UInt8* p = reinterpret_cast<UInt8*>(*pic);
    for (int i = 0; i < 10; i += 2) std::swap(p[i], p[i + 1]);
  }
  port->picSave = s ? s->outerPic : nullptr;
  if (s) g_states.erase(g_states.begin() + (s - g_states.data()));
  ShowPen();
  if (pic != scrap) FinishScrapPicture(scrap, pic, scrapRect);
}

KWE_API void KWE_CALL KillPicture(PicHandle myPicture) {
  if (!myPicture) return;
  DisposeHandle(reinterpret_cast<Handle>(myPicture));
}

KWE_API void KWE_CALL KWE_AllowPictStatePush(Boolean allow) { g_allowPush = allow != 0; }

// Appends to the picture being recorded; picSize keeps the low 16 bits of
// the length. Past 32767 bytes the whole length also goes into the long at
// offset 16 of an OpenPicture header (its -1 version long), never over the
// resolution of an OpenCPicture header. A handle that cannot grow is
// emptied, which ends the recording.
KWE_API void KWE_CALL StdPutPic(const void* dataPtr, SInt16 byteCount) {
  GrafPtr port = CurrentPort();
  if (!port || !dataPtr || byteCount <= 0) return;
  Handle pic = RecordingTarget(port);
  if (!pic || !*pic) return;
  long size = GetHandleSize(pic);
  SetHandleSize(pic, size + byteCount);
  if (MemError() != noErr || GetHandleSize(pic) != size + byteCount) {
    EmptyHandle(pic);
    return;
  }
  UInt8* p = reinterpret_cast<UInt8*>(*pic);
  std::memcpy(p + size, dataPtr, static_cast<size_t>(byteCount));
  long length = size + byteCount;
  PutBE16(p, static_cast<uint16_t>(length));
  bool extended = length >= 20 && p[16] == 0xFF && p[17] == 0xFE;
  if (length > 32767 && length >= 20 && !extended) PutBE32(p + 16, static_cast<uint32_t>(length));
}
