// Picture comments that speak to the printer: PostScript sent straight to
// a PostScript printer, the LaserWriter's line width, and rotated or
// flipped drawing.
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
constexpr SInt16 kRotateBegin = 200;
constexpr SInt16 kRotateEnd = 201;
constexpr SInt16 kRotateCenter = 202;
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
// its transfer function; this puts both in place around it. A printer that
// reduces or enlarges (its DEVMODE's scale s) gets the font at the
// printer's dots per point over s, and the drawing scaled by s.
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
  double s = PrintingScale() / 100.0;
  double x = GetDeviceCaps(dc, LOGPIXELSX) / (s * 72.0);
  Send(dc, "currentfont [" + Number(x) + " 0 0 " + Number(x) + " 0 (M) stringwidth pop " +
               Number(x * -1.1) + " mul] makefont setfont\r\n");
  if (PrintingScale() != 100) Send(dc, Number(s) + " " + Number(s) + " scale\r\n");
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

// Between RotateBegin and RotateEnd: the angle and flip the program asked
// for (its text is turned by the angle), and the centre RotateCenter set.
struct Rotation {
  SInt16 flip = 0;  // 1 left to right, 2 top to bottom
  SInt16 angle = 0;
  int centreH = 0, centreV = 0;  // local coordinates
  bool restoreDue = false;
};
Rotation g_rotation;

// RotateCenter's data is two Fixed offsets from the pen, vertical first.
void SetRotationCentre(Handle data) {
  GrafPtr port = quickdraw::CurrentPort();
  if (!port || !data || !*data || GetHandleSize(data) < 8) return;
  auto* offsets = reinterpret_cast<const Fixed*>(*data);
  g_rotation.centreV = port->pnLoc.v + (offsets[0] >> 16);
  g_rotation.centreH = port->pnLoc.h + (offsets[1] >> 16);
}

// A flip is done by the PostScript printer itself, about the centre in
// device pixels: the driver's coordinates are the device's.
void BeginRotation(HDC dc, Handle data) {
  g_rotation.flip = g_rotation.angle = 0;
  if (data && *data && GetHandleSize(data) >= 4) {
    auto* words = reinterpret_cast<const SInt16*>(*data);
    g_rotation.flip = words[0];
    g_rotation.angle = words[1];
  }
  quickdraw::PortAttr* a = quickdraw::CurrentAttr();
  if (!a || (g_rotation.flip != 1 && g_rotation.flip != 2) || !IsPostScript(dc)) return;
  int h = g_rotation.centreH, v = g_rotation.centreV;
  quickdraw::LocalToDevice(*a, &h, &v);
  char text[160];
  std::snprintf(text, sizeof text, "\r\ngsave\r\n%d %d translate %d %d scale %d %d translate\r\n",
                h, v, g_rotation.flip == 1 ? -1 : 1, g_rotation.flip == 2 ? -1 : 1, -h, -v);
  Send(dc, text);
  g_rotation.restoreDue = true;
}

void EndRotation(HDC dc) {
  if (g_rotation.restoreDue) Send(dc, "\r\ngrestore\r\n");
  g_rotation = Rotation{};
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
    case kRotateBegin: BeginRotation(dc, data); return true;
    case kRotateEnd: EndRotation(dc); return true;
    case kRotateCenter: SetRotationCentre(data); return true;
    default: return false;
  }
}

}  // namespace kwe::printing
