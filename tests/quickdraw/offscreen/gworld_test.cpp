// GWorlds, the offscreen buffer and the bitmap transforms through the DLL:
// drawing into a GWorld and copying it onto a port over a DIB section, the
// shared memory DC's life, the one pixels state, and pixels read back after
// turning and mirroring.
#include <gtest/gtest.h>
#include <windows.h>

#include <algorithm>
#include <iterator>

#include "KWEOffscreen.h"
#include "KWEPixMaps.h"
#include "KWEPorts.h"
#include "QDOffscreen.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

class GWorlds : public PortTest {
 protected:
  // Paints r in colour into the GWorld, then comes back to the canvas port.
  void PaintInto(GWorldPtr gw, const Rect& r, RGBColor colour) {
    CGrafPtr saved;
    GDHandle device;
    GetGWorld(&saved, &device);
    SetGWorld(gw, nullptr);
    RGBForeColor(&colour);
    PaintRect(&r);
    SetGWorld(saved, device);
  }
  void CopyOut(GWorldPtr gw, const Rect& from, const Rect& to) {
    const BitMap* src = reinterpret_cast<const BitMap*>(*GetGWorldPixMap(gw));
    CopyBits(src, &port.portBits, &from, &to, srcCopy, nullptr);
  }
};

constexpr RGBColor kRed{0xFFFF, 0, 0};
constexpr RGBColor kBlue{0, 0, 0xFFFF};

TEST_F(GWorlds, DrawingCopiesOutAndSurvivesUpdateGWorld) {
  GWorldPtr gw = nullptr;
  Rect bounds{0, 0, 48, 64};
  ASSERT_EQ(NewGWorld(&gw, 1, &bounds, nullptr, nullptr, 0), noErr);
  ASSERT_NE(gw, nullptr);
  EXPECT_EQ(UInt16(gw->portVersion), 0xE000);
  PixMapHandle pm = GetGWorldPixMap(gw);
  ASSERT_NE(pm, nullptr);
  EXPECT_GE((*pm)->pixelSize, 16) << "depth 1 still takes the screen's format";
  EXPECT_EQ(GetPixBaseAddr(pm), (*pm)->baseAddr);
  GrafPtr current;
  GetPort(&current);
  EXPECT_EQ(current, &port) << "NewGWorld leaves the current port alone";

  PaintInto(gw, Rect{0, 0, 48, 64}, RGBColor{0xFFFF, 0xFFFF, 0xFFFF});
  PaintInto(gw, Rect{10, 10, 20, 30}, kRed);
  Rect to{100, 100, 148, 164};
  CopyOut(gw, bounds, to);
  EXPECT_EQ(canvas.Pixel(110, 110), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(129, 119), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(130, 110), kWhite);
  EXPECT_EQ(canvas.Pixel(105, 105), kWhite);

  // The window port's origin moved: the copy lands where its rectangle says.
  canvas.Clear();
  SetOrigin(0, -100);
  CopyOut(gw, bounds, Rect{-90, 10, -42, 74});
  SetOrigin(0, 0);
  EXPECT_EQ(canvas.Pixel(20, 20), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(5, 5), kWhite);

  GWorldPtr same = gw;
  EXPECT_EQ(UpdateGWorld(&same, 8, &bounds, nullptr, nullptr, 0), 0u);
  EXPECT_EQ(same, gw);
  canvas.Clear();
  CopyOut(gw, bounds, to);
  EXPECT_EQ(canvas.Pixel(110, 110), 0xFF0000u) << "the picture stays after UpdateGWorld";
  DisposeGWorld(gw);
  GetPort(&current);
  EXPECT_EQ(current, &port);
}

TEST_F(GWorlds, SharedDcLivesAsLongAsItsGWorlds) {
  GWorldPtr a = nullptr, b = nullptr;
  Rect bounds{0, 0, 20, 20};
  ASSERT_EQ(NewGWorld(&a, 32, &bounds, nullptr, nullptr, kweSharedGWorldDC), noErr);
  ASSERT_EQ(NewGWorld(&b, 32, &bounds, nullptr, nullptr, kweSharedGWorldDC), noErr);
  SetGWorld(a, nullptr);
  HDC dcA = KWE_GetCurrentDC();
  SetGWorld(b, nullptr);
  HDC dcB = KWE_GetCurrentDC();
  SetPort(&port);
  EXPECT_EQ(dcA, dcB);
  // Each keeps its own pixels although they share the DC.
  PaintInto(a, bounds, kRed);
  PaintInto(b, bounds, kBlue);
  CopyOut(a, bounds, Rect{0, 0, 20, 20});
  CopyOut(b, bounds, Rect{0, 30, 20, 50});
  EXPECT_EQ(canvas.Pixel(5, 5), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(35, 5), 0x0000FFu);
  DisposeGWorld(a);
  EXPECT_EQ(GetObjectType(dcA), DWORD(OBJ_MEMDC));
  DisposeGWorld(b);
  EXPECT_EQ(GetObjectType(dcA), 0u);
}

TEST_F(GWorlds, PixelsStateIsOneForTheProcessAndBadRequestsFail) {
  GWorldPtr a = nullptr, b = nullptr;
  Rect bounds{0, 0, 8, 8}, empty{5, 5, 5, 9}, inverted{9, 9, 1, 1};
  ASSERT_EQ(NewGWorld(&a, 8, &bounds, nullptr, nullptr, 0), noErr);
  ASSERT_EQ(NewGWorld(&b, 8, &bounds, nullptr, nullptr, 0), noErr);
  SetPixelsState(GetGWorldPixMap(a), 0);
  EXPECT_TRUE(LockPixels(GetGWorldPixMap(a)));
  EXPECT_EQ(UInt8(GetPixelsState(GetGWorldPixMap(b))), pixelsLocked);
  AllowPurgePixels(GetGWorldPixMap(b));
  EXPECT_EQ(UInt8(GetPixelsState(nullptr)), pixelsLocked | pixelsPurgeable);
  UnlockPixels(nullptr);
  NoPurgePixels(GetGWorldPixMap(a));
  EXPECT_EQ(GetPixelsState(GetGWorldPixMap(a)), 0);
  DisposeGWorld(a);
  DisposeGWorld(b);

  GWorldPtr bad = nullptr;
  EXPECT_EQ(NewGWorld(&bad, 8, &empty, nullptr, nullptr, 0), -1);
  EXPECT_EQ(NewGWorld(&bad, 8, &inverted, nullptr, nullptr, 0), -1);
  EXPECT_EQ(NewGWorld(&bad, 8, nullptr, nullptr, nullptr, 0), -1);
  EXPECT_EQ(NewGWorld(nullptr, 8, &bounds, nullptr, nullptr, 0), -1);
  DisposeGWorld(nullptr);
  EXPECT_EQ(GetGWorldPixMap(nullptr), nullptr);
  EXPECT_EQ(GetPixBaseAddr(nullptr), nullptr);

  int before = LiveGdiObjects();
  for (int i = 0; i < 300; ++i) {
    GWorldPtr gw = nullptr;
    ASSERT_EQ(NewGWorld(&gw, 8, &bounds, nullptr, nullptr, i % 2 ? kweSharedGWorldDC : 0), noErr);
    PaintInto(gw, bounds, kRed);
    DisposeGWorld(gw);
  }
  EXPECT_EQ(LiveGdiObjects(), before);
}

// The left half black: a quarter turn clockwise puts it on top; a mirror
// left to right puts it on the right.
// The DC KWE_OffScreenDC prepares goes to the next port opened: a new
// compatible DC is the port's own and goes with it, the shared memory DC
// stays. Bit 1 asks for the DIB driver over a DIB pixel map: where the
// platform has one, drawing lands in the pixel map's DIB; where it has none
// (Wine), no DC is made and the next port takes its usual DC.
TEST_F(GWorlds, OffScreenDcGoesToTheNextPortOpened) {
  const struct {
    SInt32 how;
    bool deletedWithPort;
  } cases[] = {{0, true}, {1, false}};
  for (const auto& c : cases) {
    HDC dc = KWE_OffScreenDC(nullptr, c.how);
    ASSERT_NE(dc, nullptr) << c.how;
    CGrafPort taker;
    OpenCPort(&taker);
    EXPECT_EQ(KWE_GetCurrentDC(), dc) << c.how;
    CloseCPort(&taker);
    EXPECT_EQ(GetObjectType(dc), c.deletedWithPort ? 0u : DWORD(OBJ_MEMDC)) << c.how;
  }

  EXPECT_EQ(KWE_OffScreenDC(nullptr, 2), nullptr) << "no pixel map";
  struct {
    BITMAPINFOHEADER header{sizeof(BITMAPINFOHEADER), 8, 8, 1, 24, BI_RGB, 0, 0, 0, 0, 0};
    UInt8 pixels[8 * 24];
  } dib;
  std::fill(std::begin(dib.pixels), std::end(dib.pixels), UInt8(0xFF));
  PixMapHandle pm = KWE_NewDIBPixMap(&dib.header);
  ASSERT_NE(pm, nullptr);
  HDC driverDC = KWE_OffScreenDC(pm, 2);
  CGrafPort taker;
  OpenCPort(&taker);
  HDC taken = KWE_GetCurrentDC();
  if (driverDC) {
    EXPECT_EQ(taken, driverDC);
    Rect all{0, 0, 8, 8};
    PaintRect(&all);
    void* bits = nullptr;
    ASSERT_NE(KWE_GetDIBFromPixMap(pm, &bits), nullptr);
    GdiFlush();
    EXPECT_EQ(static_cast<UInt8*>(bits)[0], 0) << "painted black";
  } else {
    EXPECT_NE(taken, nullptr) << "the port took its usual DC";
  }
  CloseCPort(&taker);
  DisposePixMap(pm);
  SetPort(&port);
}

TEST_F(GWorlds, RotateAndFlipMoveThePixels) {
  GWorldPtr gw = nullptr;
  Rect bounds{0, 0, 20, 40};
  ASSERT_EQ(NewGWorld(&gw, 32, &bounds, nullptr, nullptr, 0), noErr);
  PixMapHandle pm = GetGWorldPixMap(gw);
  PaintInto(gw, bounds, RGBColor{0xFFFF, 0xFFFF, 0xFFFF});
  PaintInto(gw, Rect{0, 0, 20, 20}, RGBColor{0, 0, 0});

  ASSERT_TRUE(KWE_OffScreenFlip(pm, 1));
  CopyOut(gw, bounds, bounds);
  EXPECT_EQ(canvas.Row(10, 0, 40), std::string(20, '.') + std::string(20, '#'));
  ASSERT_TRUE(KWE_OffScreenFlip(pm, 1));

  ASSERT_TRUE(KWE_OffScreenRotate(pm, 90));
  EXPECT_EQ((*pm)->bounds.right, 20);
  EXPECT_EQ((*pm)->bounds.bottom, 40);
  canvas.Clear();
  Rect turned{0, 0, 40, 20};
  CopyOut(gw, turned, turned);
  EXPECT_EQ(canvas.Pixel(10, 5), kBlack);
  EXPECT_EQ(canvas.Pixel(10, 35), kWhite);
  EXPECT_FALSE(KWE_OffScreenRotate(pm, 45));
  EXPECT_FALSE(KWE_OffScreenFlip(pm, 0));
  EXPECT_FALSE(KWE_OffScreenRotate(nullptr, 90));
  DisposeGWorld(gw);
}

TEST_F(GWorlds, OffscreenBufferShowsItsDrawingOnlyAtTheEnd) {
  Rect r{10, 10, 60, 60}, inner{20, 20, 40, 40};
  ASSERT_TRUE(KWE_BeginOffScreen(true, &r));
  EXPECT_TRUE(KWE_BeginOffScreen(true, &inner)) << "already active: no second buffer";
  PaintRect(&inner);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 0);
  KWE_EndOffScreen(true, false, srcCopy);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 20 * 20);
  EXPECT_EQ(canvas.Pixel(20, 20), kBlack);
  // Without copy nothing reaches the port; an empty rectangle starts nothing.
  ASSERT_TRUE(KWE_BeginOffScreen(false, &r));
  EraseRect(&inner);
  KWE_EndOffScreen(false, false, srcCopy);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 20 * 20);
  Rect empty{5, 5, 5, 5};
  EXPECT_FALSE(KWE_BeginOffScreen(true, &empty));
  KWE_EndOffScreen(true, false, srcCopy);
  PaintRect(&r);
  EXPECT_EQ(BlackIn(0, 0, 256, 256), 50 * 50) << "the port draws on its own DC again";
  // Regions land where rectangles do: GDI's region calls take the buffer's
  // origin too.
  canvas.Clear();
  ASSERT_TRUE(KWE_BeginOffScreen(true, &r));
  RgnHandle rgn = NewRgn();
  OpenRgn();
  FrameOval(&inner);
  CloseRgn(rgn);
  PaintRgn(rgn);
  KWE_EndOffScreen(true, false, srcCopy);
  DisposeRgn(rgn);
  EXPECT_EQ(canvas.Pixel(30, 30), kBlack) << "the oval region's middle";
  EXPECT_EQ(canvas.Pixel(20, 20), kWhite) << "outside the oval, inside its box";
  EXPECT_EQ(BlackIn(0, 0, 20, 256) + BlackIn(40, 0, 256, 256), 0) << "nothing beside it";
}

}  // namespace
