// The clipboard procedure's 'PICT'. Other programs see the picture as an
// enhanced metafile drawn by DrawPicture; the metafile also carries the
// picture's own bytes in a GDI comment, so that a Macintosh program (this
// one or another on the library) gets back the very picture it put, with
// its opcodes and comments, rather than a replay of GDI records. A metafile
// of another program's has no such comment: it does not become a 'PICT'.
#include <cstring>
#include <vector>

#include "KWEPorts.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "host/shell_clipboard.h"

namespace kwe::host {
namespace {

constexpr char kTag[8] = {'K', 'W', 'E', 'P', 'I', 'C', 'T', 0};

// Plays the picture into dc through a port of its own, the picture's frame
// at the metafile's origin. Without QuickDraw started there is no port to
// draw with, and the metafile holds only the comment.
void DrawInto(HDC dc, PicHandle picture) {
  GrafPtr saved = nullptr;
  GetPort(&saved);
  if (!saved) return;
  GrafPort port;
  OpenPort(&port);
  HDC previous = KWE_SwaphDC(dc, true);
  Rect frame = (**picture).picFrame;
  OffsetRect(&frame, SInt16(-frame.left), SInt16(-frame.top));
  DrawPicture(picture, &frame);
  KWE_SwaphDC(previous, false);
  ClosePort(&port);
  SetPort(saved);
}

}  // namespace

bool PutPicture(HDC dc, const UInt8* source, SInt32 length) {
  if (length < SInt32(sizeof(Picture))) return false;
  PicHandle picture = reinterpret_cast<PicHandle>(NewHandle(length));
  if (!picture) return false;
  std::memcpy(*picture, source, size_t(length));
  // The picture's frame, in the 0.01 mm of a metafile's frame on the
  // reference device: another program pastes the picture at its size.
  const Rect& frame = (**picture).picFrame;
  HDC reference = dc ? dc : GetDC(nullptr);
  RECT hundredths{0, 0,
                  MulDiv(frame.right - frame.left, GetDeviceCaps(reference, HORZSIZE) * 100,
                         GetDeviceCaps(reference, HORZRES)),
                  MulDiv(frame.bottom - frame.top, GetDeviceCaps(reference, VERTSIZE) * 100,
                         GetDeviceCaps(reference, VERTRES))};
  if (!dc) ReleaseDC(nullptr, reference);
  HDC metafile = CreateEnhMetaFileA(dc, nullptr, &hundredths, "Macintosh picture\0PICT\0");
  bool placed = false;
  if (metafile) {
    std::vector<BYTE> comment(sizeof kTag + size_t(length));
    std::memcpy(comment.data(), kTag, sizeof kTag);
    std::memcpy(comment.data() + sizeof kTag, source, size_t(length));
    GdiComment(metafile, UINT(comment.size()), comment.data());
    DrawInto(metafile, picture);
    HENHMETAFILE finished = CloseEnhMetaFile(metafile);
    placed = finished && SetClipboardData(CF_ENHMETAFILE, finished);
    if (finished && !placed) DeleteEnhMetaFile(finished);
  }
  DisposeHandle(reinterpret_cast<Handle>(picture));
  return placed;
}

SInt32 GetPicture(Handle destination) {
  auto metafile = static_cast<HENHMETAFILE>(GetClipboardData(CF_ENHMETAFILE));
  UINT size = metafile ? GetEnhMetaFileBits(metafile, 0, nullptr) : 0;
  std::vector<BYTE> bits(size);
  if (!size || GetEnhMetaFileBits(metafile, size, bits.data()) != size) return noTypeErr;
  for (size_t at = 0; at + sizeof(EMR) <= size;) {
    const auto* record = reinterpret_cast<const EMR*>(bits.data() + at);
    if (record->nSize < sizeof(EMR) || at + record->nSize > size) break;
    const auto* comment = reinterpret_cast<const EMRGDICOMMENT*>(record);
    if (record->iType == EMR_GDICOMMENT && record->nSize >= sizeof(EMRGDICOMMENT) &&
        comment->cbData > sizeof kTag &&
        comment->cbData <= record->nSize - offsetof(EMRGDICOMMENT, Data) &&
        std::memcmp(comment->Data, kTag, sizeof kTag) == 0) {
      SInt32 length = SInt32(comment->cbData - sizeof kTag);
      if (!destination) return length;
      SetHandleSize(destination, length);
      if (MemError() != noErr) return MemError();
      std::memcpy(*destination, comment->Data + sizeof kTag, size_t(length));
      return length;
    }
    at += record->nSize;
  }
  return noTypeErr;
}

}  // namespace kwe::host
