// Pictures and GWorlds in a window port: DrawPicture of a recorded
// 1,000-call picture against the same 1,000 calls made directly; the same
// calls with a picture open against none; and NewGWorld, drawing and
// CopyBits to the window against CreateDIBSection, the same GDI drawing and
// BitBlt.
#include <windows.h>

#include <vector>

#include "KWEPorts.h"
#include "QDOffscreen.h"
#include "Quickdraw.h"
#include "bench_support.h"
#include "host_window_session.h"

namespace {

constexpr int kCalls = 1000;
constexpr int kRounds = 9;

struct Call {
  int kind;
  Rect r;
};

std::vector<Call> Scene() {
  kwe_bench::Numbers numbers(11);
  std::vector<Call> calls(kCalls);
  for (Call& c : calls) {
    int left = numbers.Below(300), top = numbers.Below(300);
    c.kind = numbers.Below(4);
    c.r = Rect{SInt16(top), SInt16(left), SInt16(top + 4 + numbers.Below(60)),
               SInt16(left + 4 + numbers.Below(60))};
  }
  return calls;
}

void Draw(const std::vector<Call>& calls) {
  for (const Call& c : calls) {
    switch (c.kind) {
      case 0: PaintRect(&c.r); break;
      case 1: FrameRect(&c.r); break;
      case 2: PaintOval(&c.r); break;
      default:
        MoveTo(c.r.left, c.r.top);
        LineTo(c.r.right, c.r.bottom);
        break;
    }
  }
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("Picture bench");
  HDC dc = GetDC(session.main);
  GrafPort port;
  OpenPort(&port);
  KWE_SwaphDC(dc, true);
  std::vector<Call> calls = Scene();
  Rect frame{0, 0, 400, 400};

  PicHandle pic = OpenPicture(&frame);
  Draw(calls);
  ClosePicture();
  kwe_bench::CompareByRound(
      "DrawPicture (1,000 calls) vs the calls", kRounds, kCalls, 1e6, "us/call",
      [&] { DrawPicture(pic, &frame); }, [&] { Draw(calls); });
  KillPicture(pic);

  kwe_bench::CompareByRound(
      "drawing with a picture open vs none", kRounds, kCalls, 1e6, "us/call",
      [&] {
        PicHandle recorded = OpenPicture(&frame);
        Draw(calls);
        ClosePicture();
        KillPicture(recorded);
      },
      [&] { Draw(calls); });

  // 200 x 200 offscreen: 100 rectangles and ovals, then onto the window.
  Rect bounds{0, 0, 200, 200};
  std::vector<Call> small(calls.begin(), calls.begin() + 100);
  for (Call& c : small) OffsetRect(&c.r, SInt16(-c.r.left / 2), SInt16(-c.r.top / 2));
  HBRUSH black = static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH));
  kwe_bench::CompareByRound(
      "NewGWorld, draw, CopyBits vs DIB section, GDI, BitBlt", kRounds, 1, 1e6, "us/round",
      [&] {
        GWorldPtr gw = nullptr;
        if (NewGWorld(&gw, 32, &bounds, nullptr, nullptr, 0) != noErr) return;
        SetGWorld(gw, nullptr);
        EraseRect(&bounds);
        for (const Call& c : small) c.kind % 2 ? PaintOval(&c.r) : PaintRect(&c.r);
        SetPort(&port);
        CopyBits(reinterpret_cast<const BitMap*>(*GetGWorldPixMap(gw)), &port.portBits, &bounds,
                 &bounds, srcCopy, nullptr);
        DisposeGWorld(gw);
      },
      [&] {
        BITMAPINFO info{};
        info.bmiHeader = {sizeof info.bmiHeader, 200, -200, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
        void* bits = nullptr;
        HDC memory = CreateCompatibleDC(dc);
        HBITMAP dib = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
        HGDIOBJ old = SelectObject(memory, dib);
        PatBlt(memory, 0, 0, 200, 200, WHITENESS);
        HGDIOBJ oldPen = SelectObject(memory, GetStockObject(NULL_PEN));
        HGDIOBJ oldBrush = SelectObject(memory, black);
        for (const Call& c : small) {
          if (c.kind % 2) {
            Ellipse(memory, c.r.left, c.r.top, c.r.right + 1, c.r.bottom + 1);
          } else {
            RECT w{c.r.left, c.r.top, c.r.right, c.r.bottom};
            FillRect(memory, &w, black);
          }
        }
        SelectObject(memory, oldPen);
        SelectObject(memory, oldBrush);
        BitBlt(dc, 0, 0, 200, 200, memory, 0, 0, SRCCOPY);
        SelectObject(memory, old);
        DeleteObject(dib);
        DeleteDC(memory);
      });

  ClosePort(&port);
  ReleaseDC(session.main, dc);
  return 0;
}
