// CopyBits onto a window against the Win32 call that puts the same pixels
// there directly:
//   a 1024 x 768 32-bit pixel map, srcCopy, against SetDIBitsToDevice;
//   8-bit indexed pixels with a colour table against StretchDIBits of the
//   equivalent 8-bit DIB;
//   a copy scaled 2x against StretchBlt from a memory DC;
// a port drawing into a 1-bit bitmap in memory (SetPortBits), its bits
// copied to the window, against BitBlt from a memory DC with a 1-bit bitmap;
// and the pipeline's 8-bit index to 32-bit conversion against memcpy of the
// output's size, as time per MB of output (the bandwidth ratio is the
// inverse of the ratio printed).
#include <windows.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "KWEWindows.h"
#include "MacWindows.h"
#include "Memory.h"
#include "Quickdraw.h"
#include "QuickdrawColour.h"
#include "bench_support.h"
#include "host_window_session.h"

namespace {

constexpr int kWidth = 1024, kHeight = 768;

struct Dib {
  BITMAPINFOHEADER header;
  RGBQUAD colours[256];
};

PixMap MapOver(void* pixels, int depth, int width, int height, CTabHandle table) {
  PixMap pm{};
  pm.baseAddr = static_cast<Ptr>(pixels);
  pm.rowBytes = static_cast<SInt16>((width * depth / 8) | 0x8000);
  pm.bounds = Rect{0, 0, static_cast<SInt16>(height), static_cast<SInt16>(width)};
  pm.pixelSize = static_cast<SInt16>(depth);
  pm.pmTable = table;
  return pm;
}

}  // namespace

int main() {
  kwe_bench::HostWindowSession session("CopyBits bench");
  Rect bounds{40, 0, 40 + kHeight, kWidth};
  static const unsigned char title[] = {8, 'C', 'o', 'p', 'y', 'B', 'i', 't', 's'};
  WindowPtr window =
      NewWindow(nullptr, &bounds, title, true, documentProc, WindowPtr(-1), false, 0);
  SetPort(window);
  HWND hwnd = KWE_GethWnd(window);
  HDC dc = GetDC(hwnd);

  std::vector<uint32_t> deep(static_cast<size_t>(kWidth) * kHeight);
  std::vector<uint8_t> indexed(static_cast<size_t>(kWidth) * kHeight);
  kwe_bench::Numbers numbers(11);
  for (size_t i = 0; i < deep.size(); ++i) {
    deep[i] = static_cast<uint32_t>(i * 2654435761u) & 0xFFFFFF;
    indexed[i] = static_cast<uint8_t>(numbers.Below(256));
  }
  CTabHandle table = GetCTable(8);
  Dib dib{};
  dib.header = {sizeof dib.header, kWidth, -kHeight, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
  Dib dib8 = dib;
  dib8.header.biBitCount = 8;
  dib8.header.biClrUsed = 256;
  for (int i = 0; i < 256; ++i) {
    const RGBColor& c = (**table).ctTable[i].rgb;
    dib8.colours[i] = RGBQUAD{BYTE(c.blue >> 8), BYTE(c.green >> 8), BYTE(c.red >> 8), 0};
  }
  PixMap deepMap = MapOver(deep.data(), 32, kWidth, kHeight, nullptr);
  PixMap indexedMap = MapOver(indexed.data(), 8, kWidth, kHeight, table);
  Rect all{0, 0, kHeight, kWidth};
  const int copies = 20;

  kwe_bench::CompareByRound(
      "CopyBits 1024x768 32-bit srcCopy vs SetDIBitsToDevice", 9, copies, 1e3, "ms",
      [&] {
        for (int i = 0; i < copies; ++i)
          CopyBits(reinterpret_cast<BitMap*>(&deepMap), &window->portBits, &all, &all, srcCopy,
                   nullptr);
      },
      [&] {
        for (int i = 0; i < copies; ++i)
          SetDIBitsToDevice(dc, 0, 0, kWidth, kHeight, 0, 0, 0, kHeight, deep.data(),
                            reinterpret_cast<BITMAPINFO*>(&dib), DIB_RGB_COLORS);
      });
  kwe_bench::CompareByRound(
      "CopyBits 8-bit indexed vs StretchDIBits of an 8-bit DIB", 9, copies, 1e3, "ms",
      [&] {
        for (int i = 0; i < copies; ++i)
          CopyBits(reinterpret_cast<BitMap*>(&indexedMap), &window->portBits, &all, &all, srcCopy,
                   nullptr);
      },
      [&] {
        for (int i = 0; i < copies; ++i)
          StretchDIBits(dc, 0, 0, kWidth, kHeight, 0, 0, kWidth, kHeight, indexed.data(),
                        reinterpret_cast<BITMAPINFO*>(&dib8), DIB_RGB_COLORS, SRCCOPY);
      });

  // 2x: a 512 x 384 quarter of the window scaled onto the whole of it.
  HDC memory = CreateCompatibleDC(dc);
  HBITMAP bitmap = CreateCompatibleBitmap(dc, kWidth / 2, kHeight / 2);
  HGDIOBJ old = SelectObject(memory, bitmap);
  PixMap halfMap = MapOver(deep.data(), 32, kWidth, kHeight / 2, nullptr);
  Rect half{0, 0, kHeight / 2, kWidth / 2};
  SetStretchBltMode(dc, COLORONCOLOR);
  kwe_bench::CompareByRound(
      "CopyBits scaled 2x vs StretchBlt", 9, copies, 1e3, "ms",
      [&] {
        for (int i = 0; i < copies; ++i)
          CopyBits(reinterpret_cast<BitMap*>(&halfMap), &window->portBits, &half, &all, srcCopy,
                   nullptr);
      },
      [&] {
        for (int i = 0; i < copies; ++i)
          StretchBlt(dc, 0, 0, kWidth, kHeight, memory, 0, 0, kWidth / 2, kHeight / 2, SRCCOPY);
      });
  SelectObject(memory, old);
  DeleteObject(bitmap);
  DeleteDC(memory);

  // A table entry: the port's bits are in memory, its pixels in the entry's
  // DC, and CopyBits from the port's bits is a blit from that DC.
  std::vector<uint8_t> oneBit(static_cast<size_t>(kWidth / 8) * kHeight, 0x5A);
  BitMap offBits{reinterpret_cast<Ptr>(oneBit.data()), kWidth / 8, all};
  GrafPort off{};
  OpenPort(&off);
  SetPortBits(&offBits);
  Rect block{100, 100, 300, 500};
  PaintOval(&block);
  SetPort(window);
  HDC mono = CreateCompatibleDC(dc);
  HBITMAP monoBitmap = CreateBitmap(kWidth, kHeight, 1, 1, nullptr);
  HGDIOBJ monoOld = SelectObject(mono, monoBitmap);
  kwe_bench::CompareByRound(
      "CopyBits SetPortBits entry to window vs BitBlt from a memory DC", 9, copies, 1e3, "ms",
      [&] {
        for (int i = 0; i < copies; ++i)
          CopyBits(&off.portBits, &window->portBits, &all, &all, srcCopy, nullptr);
      },
      [&] {
        for (int i = 0; i < copies; ++i) BitBlt(dc, 0, 0, kWidth, kHeight, mono, 0, 0, SRCCOPY);
      });
  SelectObject(mono, monoOld);
  DeleteObject(monoBitmap);
  DeleteDC(mono);
  ClosePort(&off);
  SetPort(window);

  // The pipeline's conversion: 8-bit indexed memory pixels into a 32-bit
  // pixel map (memory to memory, the 32-bit side needing no inverse table).
  std::vector<uint32_t> out(deep.size());
  PixMap outMap = MapOver(out.data(), 32, kWidth, kHeight, nullptr);
  const double megabytes = static_cast<double>(out.size() * 4) / 1e6;
  kwe_bench::CompareByRound(
      "Pipeline 8-bit index to 32-bit vs memcpy (us per MB)", 9, 1, 1e6 / megabytes, "us/MB",
      [&] {
        CopyBits(reinterpret_cast<BitMap*>(&indexedMap), reinterpret_cast<BitMap*>(&outMap), &all,
                 &all, srcCopy, nullptr);
      },
      [&] { std::memcpy(out.data(), deep.data(), out.size() * 4); });

  ReleaseDC(hwnd, dc);
  DisposeCTable(table);
  DisposeWindow(window);
  return 0;
}
