// The session's clipboard procedure: the library opens the clipboard and
// walks its formats; this moves the desk scrap's 'TEXT' and 'PICT' to and
// from the Windows formats other programs read.
#include "host/shell_clipboard.h"

#include "KWEScrap.h"
#include "host/shell.h"

namespace kwe::host {
namespace {

constexpr ResType kText = 0x54455854;     // 'TEXT'
constexpr ResType kPicture = 0x50494354;  // 'PICT'

}  // namespace

SInt32 __stdcall ClipboardProc(SInt16 operation, UInt16 format, HDC dc, Handle destination,
                               ResType type, void* p, void* q) {
  switch (operation) {
    case kweScrapGet: {
      SInt32 result;
      if (type == kText && format == CF_TEXT) {
        result = GetText(destination);
      } else if (type == kPicture && format == CF_ENHMETAFILE) {
        result = GetPicture(destination);
        if (result == noTypeErr) return 0;  // another program's metafile
      } else {
        return 0;
      }
      *static_cast<SInt32*>(q) = result;
      return 1;
    }
    case kweScrapPut: {
      auto source = static_cast<const UInt8*>(p);
      SInt32 length = *static_cast<SInt32*>(q);
      if (type == kText) return PutText(source, length);
      if (type == kPicture) return PutPicture(dc, source, length);
      return 0;
    }
    case kweScrapChanged:  // converted when asked for
      return format == CF_TEXT || format == CF_ENHMETAFILE;
    default: return 1;  // suspend and resume: the clipboard is always Windows'
  }
}

}  // namespace kwe::host
