// Offscreen drawing through the DLL. GWorlds: drawing into one and copying
// it onto a port over a DIB section, the shared memory DC's life, the one
// pixels state, the offscreen buffer, and pixels read back after turning
// and mirroring. Ports drawing into application memory (SetPortBits,
// SetPortPix): the drawing reaches the program's bytes, the ported idiom
// puts the right pixels on a port over a DIB section, CopyBits reads and
// writes the table's entries, and bad bits leave the port drawing nowhere.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <random>
#include <vector>

#include "KWEOffscreen.h"
#include "KWEPixMaps.h"
#include "KWEPorts.h"
#include "KWESession.h"
#include "Memory.h"
#include "QDOffscreen.h"
#include "Quickdraw.h"
#include "quickdraw/regions/region_canvas.h"

namespace {

using namespace kwe_test;

Rect R(int l, int t, int r, int b) { return Rect{SInt16(t), SInt16(l), SInt16(b), SInt16(r)}; }

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
  EXPECT_GE((*GetGWorldPixMap(gw))->pixelSize, 16) << "depth 1 still takes the screen's format";
  GrafPtr current;
  GetPort(&current);
  EXPECT_EQ(current, &port) << "NewGWorld leaves the current port alone";

  PaintInto(gw, Rect{0, 0, 48, 64}, RGBColor{0xFFFF, 0xFFFF, 0xFFFF});
  PaintInto(gw, Rect{10, 10, 20, 30}, kRed);
  GWorldPtr same = gw;
  EXPECT_EQ(UpdateGWorld(&same, 8, &bounds, nullptr, nullptr, 0), 0u);
  EXPECT_EQ(same, gw);
  CopyOut(gw, bounds, Rect{100, 100, 148, 164});  // the picture stays after UpdateGWorld
  EXPECT_EQ(canvas.Pixel(110, 110), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(129, 119), 0xFF0000u);
  EXPECT_EQ(canvas.Pixel(130, 110), kWhite);
  EXPECT_EQ(canvas.Pixel(105, 105), kWhite);
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
  for (Rect* r : {&empty, &inverted, static_cast<Rect*>(nullptr)})
    EXPECT_EQ(NewGWorld(&bad, 8, r, nullptr, nullptr, 0), -1);

  int before = LiveGdiObjects();
  for (int i = 0; i < 300; ++i) {
    GWorldPtr gw = nullptr;
    ASSERT_EQ(NewGWorld(&gw, 8, &bounds, nullptr, nullptr, i % 2 ? kweSharedGWorldDC : 0), noErr);
    PaintInto(gw, bounds, kRed);
    DisposeGWorld(gw);
  }
  EXPECT_EQ(LiveGdiObjects(), before);
}

// The DC KWE_OffScreenDC prepares goes to the next port opened: a new
// compatible DC is the port's own and goes with it, the shared memory DC
// stays.
TEST_F(GWorlds, OffScreenDcGoesToTheNextPortOpened) {
  for (SInt32 how : {0, 1}) {
    HDC dc = KWE_OffScreenDC(nullptr, how);
    ASSERT_NE(dc, nullptr) << how;
    CGrafPort taker;
    OpenCPort(&taker);
    EXPECT_EQ(KWE_GetCurrentDC(), dc) << how;
    CloseCPort(&taker);
    EXPECT_EQ(GetObjectType(dc), how ? DWORD(OBJ_MEMDC) : 0u) << how;
  }
  SetPort(&port);
}

// The left half black: a quarter turn clockwise puts it on top; a mirror
// left to right puts it on the right.
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

// A 1-bit bitmap in the program's memory, rows rowBytes apart.
struct Bits {
  Bits(const Rect& bounds, int rowBytes, UInt8 fill = 0)
      : bytes(size_t(rowBytes) * (bounds.bottom - bounds.top) + 2, fill) {
    map = BitMap{reinterpret_cast<Ptr>(bytes.data()), SInt16(rowBytes), bounds};
  }
  // Pixel (x, y) from the bitmap's top left: 1 is black.
  bool Black(int x, int y) const {
    return (bytes[size_t(y) * map.rowBytes + x / 8] >> (7 - x % 8)) & 1;
  }
  std::vector<UInt8> bytes;
  BitMap map;
};

class OffscreenBits : public PortTest {
 protected:
  void TearDown() override {
    KWE_SetFlags(0, 0, 0x0100, 0);
    PortTest::TearDown();
  }
  // Opens off (current afterwards) on bits.
  Boolean OpenOn(GrafPort& off, const BitMap& bits) {
    OpenPort(&off);
    off.portRect = bits.bounds;
    return SetPortBits(&bits);
  }
};

// The drawing calls of a sweep, replayed the same way into any port.
void DrawStep(std::mt19937& random, const Rect& area) {
  auto coord = [&](int lo, int hi) { return SInt16(lo + int(random() % unsigned(hi - lo))); };
  SInt16 l = coord(area.left - 8, area.right), t = coord(area.top - 8, area.bottom);
  Rect r{t, l, SInt16(t + 2 + random() % 40), SInt16(l + 2 + random() % 40)};
  switch (random() % 7) {
    case 0: PaintRect(&r); break;
    case 1: EraseRect(&r); break;
    case 2: InvertRect(&r); break;
    case 3: FrameRect(&r); break;
    case 4: PaintOval(&r); break;
    case 5: FrameOval(&r); break;
    default:
      MoveTo(l, t);
      LineTo(r.right, r.bottom);
      break;
  }
}

// Seeded scenes drawn into application bits and into a GWorld of the same
// bounds: after the write back the program's bytes hold what the GWorld
// holds, and both ways of putting the bits on a window (CopyBits from the
// memory, CopyBits from the port's own bits) show it.
TEST_F(OffscreenBits, SeededScenesMatchAGWorldPixelForPixel) {
  for (unsigned seed = 1; seed <= 24; ++seed) {
    std::mt19937 random(seed);
    int w = 20 + int(random() % 60), h = 10 + int(random() % 50);
    int left = int(random() % 30) - 10, top = int(random() % 30) - 10;
    Rect bounds = R(left, top, left + w, top + h);
    int rowBytes = (w + 15) / 16 * 2 + 2 * int(random() % 3);
    Bits bits(bounds, rowBytes, UInt8(random()));
    GWorldPtr gw = nullptr;
    ASSERT_EQ(NewGWorld(&gw, 1, &bounds, nullptr, nullptr, 0), noErr);
    GrafPort off{};
    ASSERT_TRUE(OpenOn(off, bits.map)) << "seed " << seed;
    EraseRect(&bounds);
    SetGWorld(gw, nullptr);
    EraseRect(&bounds);
    unsigned steps = 4 + random() % 12;
    for (unsigned step = 0; step < steps; ++step) {
      std::mt19937 same = random;
      SetGWorld(gw, nullptr);
      DrawStep(random, bounds);
      SetPort(&off);
      DrawStep(same, bounds);
    }
    SetPort(&port);
    canvas.Clear();
    Rect at0 = R(0, 0, w, h), at100 = R(100, 0, 100 + w, h), at0_100 = R(0, 100, w, 100 + h);
    CopyBits(reinterpret_cast<BitMap*>(*GetGWorldPixMap(gw)), &port.portBits, &bounds, &at0,
             srcCopy, nullptr);
    CopyBits(&bits.map, &port.portBits, &bounds, &at100, srcCopy, nullptr);
    CopyBits(&off.portBits, &port.portBits, &bounds, &at0_100, srcCopy, nullptr);
    int wrong = 0;
    for (int y = 0; y < h && wrong < 3; ++y)
      for (int x = 0; x < w && wrong < 3; ++x) {
        bool black = canvas.Pixel(x, y) == kBlack;
        if (bits.Black(x, y) != black || canvas.Black(100 + x, y) != black ||
            canvas.Black(x, 100 + y) != black) {
          ADD_FAILURE() << "seed " << seed << " pixel " << x << "," << y << " GWorld " << black
                        << " memory " << bits.Black(x, y);
          ++wrong;
        }
      }
    ClosePort(&off);
    DisposeGWorld(gw);
  }
}

// Bits a port cannot draw into: false, paramErr, the program's bytes
// untouched by drawing, and the port draws again once given good bits.
TEST_F(OffscreenBits, BadBitsLeaveThePortDrawingNowhere) {
  struct Case {
    const char* what;
    int rowBytes;
    bool null;
    Rect bounds;
  } cases[] = {
      {"null baseAddr", 4, true, R(0, 0, 16, 8)},
      {"odd rowBytes", 3, false, R(0, 0, 16, 8)},
      {"short rows", 2, false, R(0, 0, 17, 8)},
      {"empty bounds", 4, false, R(5, 5, 5, 9)},
      {"inverted bounds", 4, false, R(9, 9, 2, 2)},
      {"negative rowBytes", -4, false, R(0, 0, 8, 8)},
      {"pixel map flags", 0x4004, false, R(0, 0, 8, 8)},
  };
  for (const Case& c : cases) {
    Bits bits(R(0, 0, 32, 16), 4, 0x5A);
    BitMap bad = bits.map;
    bad.rowBytes = SInt16(c.rowBytes);
    bad.bounds = c.bounds;
    if (c.null) bad.baseAddr = nullptr;
    GrafPort off{};
    EXPECT_FALSE(OpenOn(off, bad)) << c.what;
    EXPECT_EQ(QDError(), paramErr) << c.what;
    Rect all = R(-50, -50, 50, 50);
    PaintRect(&all);
    SetPort(&port);
    EXPECT_EQ(bits.bytes, std::vector<UInt8>(bits.bytes.size(), 0x5A)) << c.what;
    EXPECT_EQ(BlackIn(0, 0, 64, 64), 0) << c.what << ": nothing lands on another port";
    SetPort(&off);
    EXPECT_TRUE(SetPortBits(&bits.map)) << c.what;
    PaintRect(&all);
    SetPort(&port);
    EXPECT_EQ(bits.bytes[0], 0xFF) << c.what;
    ClosePort(&off);
  }
  EXPECT_FALSE(SetPortBits(nullptr));
}

// 32 ports draw into memory at once; the 33rd cannot (memFullErr) until one
// closes. The freed entry goes to the next port that asks.
TEST_F(OffscreenBits, ThirtyThreeEntriesAndTheLastIsRefused) {
  std::vector<Bits> bits;
  for (int i = 0; i < 34; ++i) bits.emplace_back(R(0, 0, 16, 4), 2);
  std::vector<GrafPort> off(34);
  for (int i = 0; i < 32; ++i) {
    ASSERT_TRUE(OpenOn(off[i], bits[i].map)) << i;
    EXPECT_EQ(uintptr_t(off[i].portBits.baseAddr), uintptr_t(i + 1)) << "the lowest free entry";
  }
  EXPECT_FALSE(OpenOn(off[32], bits[32].map));
  EXPECT_EQ(QDError(), memFullErr);
  Rect all = R(0, 0, 16, 4);
  PaintRect(&all);
  SetPort(&off[5]);
  PaintRect(&all);
  SetPort(&port);
  EXPECT_EQ(bits[32].bytes[0], 0) << "the 33rd bitmap is not drawn into";
  EXPECT_EQ(bits[5].bytes[0], 0xFF);
  ClosePort(&off[7]);
  EXPECT_TRUE(OpenOn(off[33], bits[33].map));
  EXPECT_EQ(uintptr_t(off[33].portBits.baseAddr), 8u);
  for (int i = 0; i < 34; ++i)
    if (i != 7) ClosePort(&off[i]);
}

// What the port starts with, and the program's own changes to its memory
// between drawing sessions, which the port keeps.
TEST_F(OffscreenBits, CopyInSwitchAndTheProgramsOwnChanges) {
  for (bool copyIn : {false, true}) {
    KWE_SetFlags(0, 0, 0x0100, copyIn ? 0x0100 : 0);
    Bits bits(R(0, 0, 32, 8), 4, 0x81);
    GrafPort off{};
    ASSERT_TRUE(OpenOn(off, bits.map));
    Rect left = R(0, 0, 8, 8);
    PaintRect(&left);
    SetPort(&port);
    EXPECT_EQ(bits.bytes[0], 0xFF) << copyIn;
    EXPECT_EQ(bits.bytes[2], copyIn ? 0x81 : 0x00) << "copy in " << copyIn;
    bits.bytes[3 * 4 + 3] = 0x3C;  // the program draws a few pixels itself
    SetPort(&off);
    Rect second = R(8, 0, 16, 8);
    PaintRect(&second);
    SetPort(&port);
    EXPECT_EQ(bits.bytes[3 * 4 + 1], 0xFF);
    EXPECT_EQ(bits.bytes[3 * 4 + 3], 0x3C) << "kept while the port drew elsewhere";
    // Reading the memory while the port is still current finds the drawing
    // too, through CopyBits.
    SetPort(&off);
    Rect third = R(16, 0, 24, 4);
    PaintRect(&third);
    Rect to = R(0, 0, 32, 8);
    CopyBits(&bits.map, &port.portBits, &to, &to, srcCopy, nullptr);
    EXPECT_EQ(canvas.Pixel(20, 2), kBlack);
    EXPECT_EQ(canvas.Pixel(20, 6), kWhite);
    ClosePort(&off);
    EXPECT_EQ(bits.bytes[2], 0xFF) << "ClosePort writes back";
  }
}

// Entries as CopyBits sides: entry to window, window to entry, entry to
// memory, memory to entry, the last while the port is current.
TEST_F(OffscreenBits, EntriesAsCopySidesEitherWay) {
  Bits bits(R(0, 0, 40, 20), 6);
  GrafPort off{};
  ASSERT_TRUE(OpenOn(off, bits.map));
  Rect block = R(4, 4, 12, 10);
  PaintRect(&block);
  SetPort(&port);
  Rect all = R(0, 0, 40, 20);
  CopyBits(&off.portBits, &port.portBits, &all, &all, srcCopy, nullptr);
  EXPECT_EQ(canvas.Pixel(5, 5), kBlack);
  EXPECT_EQ(canvas.Pixel(13, 5), kWhite);

  canvas.Clear();
  canvas.Fill(kBlack, RECT{20, 0, 30, 20});
  CopyBits(&port.portBits, &off.portBits, &all, &all, srcCopy, nullptr);
  EXPECT_TRUE(bits.Black(25, 10)) << "the window's pixels written back into memory";
  EXPECT_FALSE(bits.Black(5, 5)) << "srcCopy replaced the block";

  Bits copy(R(0, 0, 40, 20), 6);
  CopyBits(&off.portBits, &copy.map, &all, &all, srcCopy, nullptr);
  EXPECT_EQ(copy.bytes, bits.bytes);

  SetPort(&off);
  Bits source(R(0, 0, 40, 20), 6, 0xFF);
  Rect half = R(0, 0, 16, 20);
  CopyBits(&source.map, &bits.map, &half, &half, srcCopy, nullptr);
  Rect line = R(0, 15, 40, 16);
  EraseRect(&line);
  SetPort(&port);
  EXPECT_TRUE(bits.Black(3, 3)) << "a copy into the memory reaches the current port";
  EXPECT_FALSE(bits.Black(3, 15)) << "and drawing after it is kept";

  // A picture recorded on the port copying from its own memory holds the
  // port's latest drawing, not the bytes as they were before it.
  SetPort(&off);
  Rect fresh = R(30, 2, 38, 8), left = R(0, 0, 20, 20), right = R(20, 0, 40, 20);
  PaintRect(&fresh);
  PicHandle pic = OpenPicture(&all);
  CopyBits(&bits.map, &off.portBits, &right, &left, srcCopy, nullptr);
  ClosePicture();
  SetPort(&port);
  canvas.Clear();
  DrawPicture(pic, &all);
  EXPECT_EQ(canvas.Pixel(13, 5), kBlack) << "the block painted just before the copy";
  KillPicture(pic);
  ClosePort(&off);
}

// SetPortPix over an 8-bit pixel map in memory: the colours land as their
// indices, and the program's record keeps its address.
TEST_F(OffscreenBits, ColourPortOnAnEightBitPixelMap) {
  std::vector<UInt8> pixels(24 * 10, 0);
  PixMapHandle pm = NewPixMap();
  ASSERT_NE(pm, nullptr);
  DisposeCTable((*pm)->pmTable);
  (*pm)->pmTable = GetCTable(8);
  (*pm)->baseAddr = reinterpret_cast<Ptr>(pixels.data());
  (*pm)->rowBytes = SInt16(24 | 0x8000);
  (*pm)->bounds = R(0, 0, 24, 10);
  (*pm)->pixelSize = 8;
  (*pm)->pixelType = 0;
  (*pm)->cmpCount = 1;
  (*pm)->cmpSize = 8;
  CGrafPort off{};
  OpenCPort(&off);
  PixMapHandle own = off.portPixMap;
  EXPECT_TRUE(SetPortPix(pm));
  Rect all = R(0, 0, 24, 10), block = R(2, 2, 6, 6);
  EraseRect(&all);
  PaintRect(&block);
  SetPort(&port);
  EXPECT_EQ((*pm)->baseAddr, reinterpret_cast<Ptr>(pixels.data()));
  EXPECT_EQ(pixels[3 * 24 + 3], 0xFF) << "black is the last index";
  EXPECT_EQ(pixels[8 * 24 + 8], 0x00) << "white the first";
  SetPort(reinterpret_cast<GrafPtr>(&off));
  EXPECT_FALSE(SetPortPix(nullptr));
  EXPECT_EQ(QDError(), paramErr);
  EXPECT_TRUE(SetPortPix(own)) << "the port's own pixel map back, to be disposed with it";
  CloseCPort(&off);
  (*pm)->baseAddr = nullptr;
  DisposePixMap(pm);
}

// A DIB pixel map given to a colour port is drawn on as it stands: the
// port's drawing lands in the map's own DIB (white stays white around it),
// and a bitmap without pixels behind baseAddr (one over a DDB) is refused.
// While that port is current, a bitmap of the offscreen table is copied to
// and from as its memory: a copy into it stays there when its port draws
// again.
TEST_F(OffscreenBits, ColourPortOnADibPixelMapAndTableBitmapsMeanwhile) {
  struct {
    BITMAPINFOHEADER header;
    RGBQUAD colours[2];
    UInt8 bits[12 * 8];
  } dib{{sizeof dib.header, 12, 8, 1, 8, BI_RGB, 0, 0, 0, 2, 0},
        {{255, 255, 255, 0}, {0, 0, 0, 0}},
        {}};
  PixMapHandle pm = KWE_NewDIBPixMap(&dib.header);
  ASSERT_NE(pm, nullptr);
  Bits table(R(0, 0, 16, 4), 2, 0);
  GrafPort plain{};
  ASSERT_TRUE(OpenOn(plain, table.map));
  CGrafPort colour{};
  OpenCPort(&colour);
  PixMapHandle own = colour.portPixMap;
  ASSERT_TRUE(SetPortPix(pm));
  Rect block = R(2, 1, 6, 4);
  PaintRect(&block);
  table.bytes[0] = 0xC3;  // the program's own change, while its port is not current
  // The table's memory onto the canvas, the canvas back into the table.
  canvas.Clear();
  Rect strip = R(0, 0, 16, 4), at = R(100, 100, 116, 104);
  CopyBits(&plain.portBits, &port.portBits, &strip, &at, srcCopy, nullptr);
  EXPECT_EQ(canvas.Row(100, 100, 116), "##....##........");
  RECT blackLine{100, 103, 116, 104};
  canvas.Fill(kBlack, blackLine);
  CopyBits(&port.portBits, &plain.portBits, &at, &strip, srcCopy, nullptr);
  SetPort(&plain);
  Rect corner = R(0, 0, 2, 1);
  InvertRect(&corner);
  SetPort(&port);
  EXPECT_EQ(table.bytes[0], 0x03) << "the inverted corner over the first row";
  EXPECT_EQ(table.bytes[6], 0xFF) << "the black line the canvas gave";
  void* bits = nullptr;
  ASSERT_NE(KWE_GetDIBFromPixMap(pm, &bits), nullptr);
  const UInt8* rows = static_cast<const UInt8*>(bits);
  for (int y = 0; y < 8; ++y)
    for (int x = 0; x < 12; ++x)
      ASSERT_EQ(rows[(7 - y) * 12 + x], x >= 2 && x < 6 && y >= 1 && y < 4 ? 1 : 0)
          << x << "," << y;

  SetPort(reinterpret_cast<GrafPtr>(&colour));
  PixMapHandle overDdb = KWE_NewDDBPixMap(CreateBitmap(8, 8, 1, 1, nullptr), nullptr);
  ASSERT_NE(overDdb, nullptr);
  EXPECT_FALSE(SetPortPix(overDdb));
  EXPECT_EQ(QDError(), paramErr);
  EXPECT_TRUE(SetPortPix(own));
  CloseCPort(&colour);
  ClosePort(&plain);
  DisposePixMap(overDdb);
  DisposePixMap(pm);
}

// New bits over and over leave GDI's object count where it was.
TEST_F(OffscreenBits, GdiObjectsStayFlatOverManySetPortBits) {
  Bits a(R(0, 0, 64, 32), 8), b(R(0, 0, 32, 64), 4);
  GrafPort off{};
  ASSERT_TRUE(OpenOn(off, a.map));
  int before = LiveGdiObjects();
  Rect r = R(1, 1, 9, 9);
  for (int i = 0; i < 10000; ++i) {
    SetPortBits(i % 2 ? &a.map : &b.map);
    if (i % 100 == 0) PaintRect(&r);
  }
  SetPort(&port);
  EXPECT_EQ(LiveGdiObjects(), before);
  ClosePort(&off);
}

}  // namespace
