// Picture comments that speak to the printer: PostScript sent straight to
// a PostScript printer, and the LaserWriter's line width.
#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

#include "FixMath.h"
#include "Memory.h"
#include "frame/session.h"
#include "printing/print_job.h"
#include "printing/printer.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::printing {
namespace {

constexpr SInt16 kSetLineWidth = 182;
constexpr SInt16 kPostScriptBegin = 190;
constexpr SInt16 kPostScriptEnd = 191;
constexpr SInt16 kPostScriptHandle = 192;
// KWE_SetFlags' second pair: wrap the program's PostScript in its own
// dictionary and transfer function.
constexpr UInt16 kWrapPostScript = 0x0010;

// PASSTHROUGH's input is the byte count as a word, then the bytes.
void Send(HDC dc, const char* bytes, size_t size) {
  while (size > 0) {
    size_t part = size > 32000 ? 32000 : size;
    std::vector<char> buffer(part + 2);
    buffer[0] = static_cast<char>(part & 0xFF);
    buffer[1] = static_cast<char>(part >> 8);
    std::copy(bytes, bytes + part, buffer.begin() + 2);
    ExtEscape(dc, POSTSCRIPT_PASSTHROUGH, static_cast<int>(buffer.size()), buffer.data(), 0,
              nullptr);
    bytes += part;
    size -= part;
  }
}

void Send(HDC dc, const std::string& text) { Send(dc, text.data(), text.size()); }

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

// The program's PostScript expects the LaserWriter's 72 dots per inch and
// its transfer function; this puts both in place around it.
void BeginPostScript(HDC dc) {
  Send(dc,
       "\r\ngsave 30 dict begin\r\n"
       "/_curtrans systemdict /currenttransfer get def\r\n"
       "/_settrans systemdict /settransfer get def\r\n"
       "/catprocs{/proc2 exch cvlit def/proc1 exch cvlit def\r\n"
       " /newproc proc1 length proc2 length add array def\r\n"
       " newproc 0 proc1 putinterval newproc proc1\r\n"
       " length proc2 putinterval newproc cvx} def\r\n"
       "/Negative 0 _curtrans exec 1 _curtrans exec gt def\r\n"
       "Negative {/settransfer {{1 exch sub} catprocs _settrans} bind def} if\r\n");
  double x = GetDeviceCaps(dc, LOGPIXELSX) / 72.0;
  Send(dc, "currentfont [" + Number(x) + " 0 0 " + Number(x) + " 0 (M) stringwidth pop " +
               Number(x * -1.1) + " mul] makefont setfont\r\n");
}

void SetLineWidth(Handle data) {
  if (!data || !*data || GetHandleSize(data) < 4) return;
  auto* words = reinterpret_cast<const SInt16*>(*data);
  quickdraw::PortAttr* a = quickdraw::CurrentAttr();
  if (!a || words[1] == 0) return;
  a->penScale = FixDiv(words[0], words[1]);
  a->penScaleOn = a->penScale != quickdraw::kFixedOne;
  a->dirty |= quickdraw::kPenDirty;
  quickdraw::UpdateDevicePenSize(*a);
}

}  // namespace

bool PassComment(HDC dc, SInt16 kind, SInt16, Handle data) {
  if (!dc || dc != PrintingDC()) return false;
  bool wrap = (TheSession().drawingSwitches & kWrapPostScript) != 0;
  switch (kind) {
    case kSetLineWidth: SetLineWidth(data); return true;
    case kPostScriptBegin:
      if (!IsPostScript(dc)) return false;
      if (wrap) BeginPostScript(dc);
      return true;
    case kPostScriptEnd:
      if (!IsPostScript(dc)) return false;
      if (wrap) Send(dc, "\r\nend grestore\r\n");
      return true;
    case kPostScriptHandle:
      if (!IsPostScript(dc) || !data || !*data) return false;
      Send(dc, *data, static_cast<size_t>(GetHandleSize(data)));
      return true;
    default: return false;
  }
}

}  // namespace kwe::printing
