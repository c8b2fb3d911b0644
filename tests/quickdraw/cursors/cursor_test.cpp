// QuickDraw's cursors through the DLL, checked against what USER holds: the
// planes and hot spot of the Windows cursors read back with GetIconInfo,
// the thread's cursor and the class cursor of the host's window, the
// display count, and 'CURS' resources in a file on disk.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "KWEByteSwap.h"
#include "KWECursors.h"
#include "Memory.h"
#include "QuickdrawColour.h"
#include "Resources.h"
#include "ToolUtils.h"
#include "UnsupportedCalls.h"
#include "files/files_fixture.h"
#include "support/test_host.h"

namespace {

using kwe_test::P;

// A Cursor as a 'CURS' resource holds it; the hot spot in Macintosh order
// or the processor's. Row 0 holds two pixels of each kind: black (data 1,
// mask 1), inverted (1, 0), white (0, 1), transparent (0, 0).
using Words = std::pair<UInt16, UInt16>;

struct Record {
  uint8_t bytes[68];
  UInt16 Word(int at) const { return UInt16(bytes[at] | bytes[at + 1] << 8); }
  Words HotSpot() const { return {Word(64), Word(66)}; }  // in the processor's order
  std::vector<uint8_t> HotSpotBytes() const { return {bytes + 64, bytes + 68}; }
  Cursor* cursor() { return reinterpret_cast<Cursor*>(bytes); }
};

Record MakeRecord(int v, int h, bool macOrder = true, uint8_t tag = 0) {
  Record r{};
  r.bytes[0] = 0xF0;   // data row 0
  r.bytes[32] = 0xCC;  // mask row 0
  r.bytes[30] = tag;   // data row 15, to tell records apart
  int at = macOrder ? 1 : 0;
  r.bytes[64 + at] = uint8_t(v), r.bytes[66 + at] = uint8_t(h);
  return r;
}

enum Kind { kBlack, kWhite, kTransparent, kInverted };  // AND * 2 + XOR

// A cursor's planes as GetIconInfo gives them: a 1-bit cursor's AND and XOR
// planes, or a colour cursor's colour plane (0xRRGGBB, top row first).
struct Planes {
  bool ok = false;
  int hotX = -1, hotY = -1;
  uint8_t bits[32 * 64 / 8] = {};  // AND rows 0-31, XOR rows 32-63, 4 bytes a row
  std::vector<uint32_t> colour;
  std::pair<int, int> HotSpot() const { return {hotY, hotX}; }  // v, h
  int Bit(int x, int y) const { return bits[y * 4 + x / 8] >> (7 - x % 8) & 1; }
  Kind At(int x, int y) const { return Kind(Bit(x, y) * 2 + Bit(x, y + 32)); }
};

Planes Read(HANDLE cursor) {
  Planes p;
  ICONINFO info{};
  if (!GetIconInfo(static_cast<HICON>(cursor), &info)) return p;
  BITMAP bm{};
  GetObjectA(info.hbmMask, sizeof bm, &bm);
  p.ok = !info.fIcon && !info.hbmColor && bm.bmWidth == 32 && bm.bmHeight == 64 &&
         GetBitmapBits(info.hbmMask, sizeof p.bits, p.bits) == LONG(sizeof p.bits);
  p.hotX = int(info.xHotspot), p.hotY = int(info.yHotspot);
  if (info.hbmColor) {
    BITMAPINFO bi{};
    bi.bmiHeader = {sizeof bi.bmiHeader, 32, -32, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    p.colour.resize(32 * 32);
    HDC screen = GetDC(nullptr);
    GetDIBits(screen, info.hbmColor, 0, 32, p.colour.data(), &bi, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    for (uint32_t& pixel : p.colour) pixel &= 0xFFFFFF;
    DeleteObject(info.hbmColor);
  }
  DeleteObject(info.hbmMask);
  return p;
}

// A colour cursor as its 'crsr' resource holds it, big-endian: the record,
// a 2-bit PixMap at 96, its pixels at 146 (pixel (x, y) is (x + y) % 4),
// a four-colour table at 210. The mask leaves out columns 14 and 15, and
// the 1-bit data inverts (14, 0).
constexpr uint32_t kCursorColours[4] = {0xFF0000, 0x00FF00, 0x0000FF, 0x804020};
std::vector<uint8_t> ColourCursorResource() {
  std::vector<uint8_t> b(250);
  auto put16 = [&](size_t at, uint32_t v) { b[at] = uint8_t(v >> 8), b[at + 1] = uint8_t(v); };
  auto put32 = [&](size_t at, uint32_t v) { put16(at, v >> 16), put16(at + 2, v); };
  put16(0, 0x8001), put32(2, 96), put32(6, 146), b[21] = 0x02;
  for (int y = 0; y < 16; ++y) put16(52 + 2 * y, 0xFFFC);
  put16(96 + 4, 0x8004), put16(96 + 10, 16), put16(96 + 12, 16), put16(96 + 32, 2);
  put32(96 + 42, 210);
  for (int y = 0; y < 16; ++y)
    for (int x = 0; x < 16; ++x)
      b[146 + y * 4 + x / 4] |= uint8_t((x + y) % 4 << (6 - 2 * (x % 4)));
  put16(216, 3);
  for (int i = 0; i < 4; ++i) {
    put16(218 + 8 * i, uint32_t(i));
    for (int k = 0; k < 3; ++k)
      put16(220 + 8 * i + 2 * k, (kCursorColours[i] >> (16 - 8 * k) & 255) * 257);
  }
  return b;
}

HCURSOR Make(Record& r) {
  return static_cast<HCURSOR>(KWE_BrovaskCursor(true, false, r.bytes, true, true));
}

int DisplayCount() {
  int count = ::ShowCursor(TRUE) - 1;
  ::ShowCursor(FALSE);
  return count;
}

HCURSOR ClassCursor(HWND window) {
  return reinterpret_cast<HCURSOR>(GetClassLongPtrA(window, GCLP_HCURSOR));
}

class Cursors : public kwe_test::SessionTest {
 protected:
  // The window in the bottom right corner and on top, clear of the windows
  // other tests show at the top left.
  void MouseOverHost() {
    SetWindowPos(mainWindow, HWND_TOPMOST, GetSystemMetrics(SM_CXSCREEN) - 450,
                 GetSystemMetrics(SM_CYSCREEN) - 350, 400, 300, SWP_SHOWWINDOW);
    UpdateWindow(mainWindow);
    RECT client;
    GetClientRect(mainWindow, &client);
    POINT centre{client.right / 2, client.bottom / 2};
    ClientToScreen(mainWindow, &centre);
    SetCursorPos(centre.x, centre.y);
    MSG msg;
    while (PeekMessageA(&msg, nullptr, 0, 0, PM_REMOVE)) DispatchMessageA(&msg);
    ASSERT_EQ(WindowFromPoint(centre), mainWindow);
  }
  void MouseAway() { SetCursorPos(0, 0); }
};

TEST_F(Cursors, StandardCursorsAreCachedRecordsAndTheLibrarysOwnAreInTheDll) {
  HMODULE dll = GetModuleHandleA("KWEJMP.dll");
  const HCURSOR expected[5] = {LoadCursorA(nullptr, IDC_ARROW), LoadCursorA(nullptr, IDC_IBEAM),
                               LoadCursorA(dll, "CrossCursor"), LoadCursorA(dll, "PlusCursor"),
                               LoadCursorA(nullptr, IDC_WAIT)};
  MouseOverHost();
  for (SInt16 id = 0; id < 5; ++id) {
    CursHandle h = GetCurso(id);
    ASSERT_TRUE(h && *h) << id;
    SetCursor(*h);
    EXPECT_EQ(GetCursor(), expected[id]) << id;
  }
  EXPECT_EQ(std::memcmp(&vars.arrow, *GetCurso(0), sizeof(Cursor)), 0) << "the arrow global";
  // Releasing a standard record is refused: it stays usable.
  KWE_BrovaskCursor(false, false, *GetCurso(0), true, false);
  SetCursor(*GetCurso(0));
  EXPECT_EQ(GetCursor(), expected[0]);

  // The library's own: hot spot (v = h) and the pixel under it.
  struct Own {
    const char* name;
    int hot;
    Kind under;
  } own[] = {{"CrossCursor", 8, kBlack},
             {"PlusCursor", 7, kWhite},
             {"DragSingleCursor", 0, kBlack},
             {"DragMultipleCursor", 0, kBlack}};
  for (const Own& o : own) {
    Planes p = Read(LoadCursorA(dll, o.name));
    EXPECT_EQ(p.HotSpot(), std::make_pair(o.hot, o.hot)) << o.name;
    EXPECT_EQ(p.At(o.hot, o.hot), o.under) << o.name;
    EXPECT_EQ(p.At(31, 31), kTransparent) << o.name;
  }
}

TEST_F(Cursors, ConversionKeepsMacPixelsAndMarksTheCacheSlot) {
  Record r = MakeRecord(3, 5);
  HCURSOR made = Make(r);
  ASSERT_NE(made, nullptr);
  EXPECT_EQ(r.HotSpot().first, 0xFF03) << "marked as cached, in the processor's order";
  Planes p = Read(made);
  ASSERT_TRUE(p.ok);
  EXPECT_EQ(p.HotSpot(), std::make_pair(3, 5));
  const Kind row0[8] = {kBlack, kBlack, kInverted,    kInverted,
                        kWhite, kWhite, kTransparent, kTransparent};
  for (int x = 0; x < 8; ++x) EXPECT_EQ(p.At(x, 0), row0[x]) << x;
  for (int at : {8, 16, 31})
    EXPECT_TRUE(p.At(at, 0) == kTransparent && p.At(0, at) == kTransparent) << at;

  // Out to Macintosh order (a write-back) the mark goes and the cursor
  // waits: the same image coming back gets the same cursor.
  KWE_BrovaskCursor(true, false, r.bytes, false, true);
  EXPECT_EQ(r.HotSpotBytes(), (std::vector<uint8_t>{0, 3, 0, 5}));
  EXPECT_EQ(Make(r), made);

  // make false releases: the record is plain again, the cursor destroyed.
  EXPECT_EQ(KWE_BrovaskCursor(false, false, r.bytes, true, false), nullptr);
  EXPECT_EQ(r.HotSpot(), (Words{3, 5}));
  EXPECT_FALSE(Read(made).ok);
}

TEST_F(Cursors, SetCursorShowsCursorsOverLibraryWindowsAndOnlyRecordsThemElsewhere) {
  MouseOverHost();
  Record cached = MakeRecord(3, 5);
  HCURSOR made = Make(cached);
  SetCursor(cached.cursor());
  EXPECT_EQ(GetCursor(), made);
  EXPECT_EQ(ClassCursor(mainWindow), made);

  // An unmarked record is converted for the one use, and destroyed when the
  // next cursor replaces it.
  Record plain = MakeRecord(6, 7, false);
  SetCursor(plain.cursor());
  HCURSOR first = GetCursor();
  EXPECT_EQ(Read(first).HotSpot(), std::make_pair(6, 7));
  SetCursor(plain.cursor());
  EXPECT_NE(GetCursor(), first);
  EXPECT_FALSE(Read(first).ok);
  EXPECT_TRUE(Read(made).ok) << "cached cursors stay";
  EXPECT_EQ(GetCCursor(999), nullptr);

  InitCursor();
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_ARROW));
  EXPECT_EQ(ClassCursor(mainWindow), LoadCursorA(nullptr, IDC_ARROW));

  MouseAway();
  SetCursor(*GetCurso(1));
  EXPECT_EQ(ClassCursor(mainWindow), LoadCursorA(nullptr, IDC_ARROW));
  MouseOverHost();
  SetCursor(*GetCurso(1));  // the same cursor, now shown
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_IBEAM));
  EXPECT_EQ(ClassCursor(mainWindow), LoadCursorA(nullptr, IDC_IBEAM));

  SetCurso(nullptr);
  EXPECT_EQ(GetCursor(), LoadCursorA(nullptr, IDC_IBEAM));
  // The session's end gives the window class the arrow back.
  SetCursor(cached.cursor());
  KWE_ExitSession();
  EXPECT_EQ(ClassCursor(mainWindow), LoadCursorA(nullptr, IDC_ARROW));
  EXPECT_FALSE(Read(made).ok);
}

// A colour cursor shows its colour pixels, made and cached when its
// resource data comes to the processor's order, or made for the one use
// from a record never loaded. Damaged pixel maps leave the 1-bit image.
TEST_F(Cursors, ColourCursorsShowTheirColourPixelsOrElseTheir1BitImage) {
  MouseOverHost();
  const std::vector<uint8_t> good = ColourCursorResource();
  const struct {
    size_t at, size;  // a byte set to 0xEE (none at 0), the size kept
  } damage[] = {{0, 250}, {0, 96},    {0, 200},   {0, 240},
                {2, 250}, {129, 250}, {216, 250}, {1, 250}};  // map, depth, table, type
  for (const auto& d : damage) {
    for (bool loaded : {false, true}) {
      SCOPED_TRACE(std::to_string(d.at) + " " + std::to_string(d.size) + (loaded ? " loaded" : ""));
      Handle h = NewHandle(Size(d.size));
      std::memcpy(*h, good.data(), d.size);
      if (d.at) (*h)[d.at] = char(0xEE);
      if (loaded) KWE_ByteSwap(kweSwapToNative, 'crsr', 128, SInt32(d.size), *h);
      SetCCursor(reinterpret_cast<CCrsrHandle>(h));
      Planes p = Read(GetCursor());
      if (d.at || d.size < good.size()) {
        EXPECT_TRUE(p.colour.empty() && p.At(0, 0) == kWhite && p.At(14, 0) == kInverted &&
                    p.At(15, 0) == kTransparent);
      } else {
        ASSERT_EQ(p.colour.size(), 32u * 32u);
        for (int i = 0; i < 32 * 32; ++i) {
          int x = i % 32, y = i / 32;
          uint32_t want = x < 14 && y < 16 ? kCursorColours[(x + y) % 4] : i == 14 ? 0xFFFFFF : 0;
          ASSERT_EQ(p.colour[i], want) << x << "," << y;
        }
      }
      InitCursor();
      DisposeCCursor(reinterpret_cast<CCrsrHandle>(h));
    }
  }
}

TEST_F(Cursors, TheCacheHoldsAtMost135MadeCursors) {
  std::vector<Record> records;
  for (int i = 0; i < 136; ++i) records.push_back(MakeRecord(3, 5, true, uint8_t(i)));
  std::vector<HCURSOR> made;
  for (int i = 0; i < 135; ++i) {
    made.push_back(Make(records[i]));
    ASSERT_NE(made.back(), nullptr) << i;
  }
  // The cursor that finds no slot stays a plain record.
  EXPECT_EQ(Make(records[135]), nullptr);
  EXPECT_EQ(records[135].HotSpot(), (Words{3, 5})) << "native and unmarked";

  KWE_BrovaskCursor(false, false, records[40].bytes, true, false);  // a slot comes free
  Record late = MakeRecord(1, 1, true, 0xEE);
  ASSERT_NE(Make(late), nullptr);

  KWE_ExitSession();
  for (HCURSOR c : {made.front(), made.back()}) EXPECT_FALSE(Read(c).ok);
}

// Over the main window: hiding nests, showing stops at level 0, InitCursor
// shows, obscuring hides once until the next show. Away from it obscuring
// does nothing, and the session's end leaves the cursor shown.
TEST_F(Cursors, HideShowAndObscureMoveTheDisplayCountAndAllocCursorReports) {
  MouseOverHost();
  int visible = DisplayCount();
  const struct {
    void(KWE_CALL* call)();
    int level;
  } steps[] = {{HideCursor, -1},    {HideCursor, -2}, {ShowCursor, -1}, {ShowCursor, 0},
               {ShowCursor, 0},     {HideCursor, -1}, {InitCursor, 0},  {ObscureCursor, -1},
               {ObscureCursor, -1}, {ShowCursor, 0}};
  for (const auto& step : steps) {
    step.call();
    EXPECT_EQ(DisplayCount(), visible + step.level) << "step " << &step - steps;
  }
  MouseAway();
  ObscureCursor();
  EXPECT_EQ(DisplayCount(), visible) << "away from the main window";
  MouseOverHost();
  HideCursor();
  ObscureCursor();
  KWE_ExitSession();
  EXPECT_EQ(DisplayCount(), visible) << "the session leaves the cursor shown";

  capture.Clear();
  AllocCursor();  // unsupported
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"AllocCursor"});
}

// 'CURS' resources in a file on disk: loaded cached, written back clean,
// released.
class CursorResources : public kwe_test::FilesTest {};

TEST_F(CursorResources, LoadedCachedWrittenBackCleanAndReleased) {
  SetResLoad(true);
  const std::string path = At("CURSORS.RSR");
  CreateResFile(P(path));
  SInt16 ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
  Record native = MakeRecord(3, 5, false, 0x5A);
  Handle whole = NewHandle(68);
  std::memcpy(*whole, native.bytes, 68);
  AddResource(whole, 'CURS', 128, nullptr);
  CloseResFile(ref);
  ASSERT_EQ(ResError(), noErr);
  const Record mac = MakeRecord(3, 5, true, 0x5A);
  const std::string onDisk(reinterpret_cast<const char*>(mac.bytes), 68);

  ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
  CursHandle loaded = GetCurso(128);
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(UInt16((**loaded).hotSpot.v), 0xFF03) << "loaded cached";

  ChangedResource(reinterpret_cast<Handle>(loaded));
  WriteResource(reinterpret_cast<Handle>(loaded));
  ASSERT_EQ(ResError(), noErr);
  std::string file = kwe_test::ReadRaw(path);
  EXPECT_EQ(file.find(std::string("\xFF\x03", 2)), std::string::npos) << "no mark on disk";
  EXPECT_NE(file.find(onDisk), std::string::npos);
  EXPECT_EQ(UInt16((**loaded).hotSpot.v), 0xFF03) << "still cached after the write";
  ReleaseResource(reinterpret_cast<Handle>(loaded));
  CloseResFile(ref);
}

}  // namespace
