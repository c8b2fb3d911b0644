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

struct Planes {
  bool ok = false;
  int hotX = -1, hotY = -1;
  uint8_t bits[32 * 64 / 8] = {};  // AND rows 0-31, XOR rows 32-63, 4 bytes a row
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
  DeleteObject(info.hbmMask);
  if (info.hbmColor) DeleteObject(info.hbmColor);
  return p;
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
  // Releasing a standard record is refused: it stays marked and usable.
  KWE_BrovaskCursor(false, false, *GetCurso(0), true, false);
  EXPECT_EQ(UInt16((**GetCurso(0)).hotSpot.v), 0xFFFF);

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

  // A colour cursor's 1-bit part sits at 20, 52 and 84 of its record.
  uint8_t colour[96] = {};
  colour[20] = 0x80, colour[52] = 0x80, colour[85] = 1, colour[87] = 2;
  HCURSOR fromColour = static_cast<HCURSOR>(KWE_BrovaskCursor(true, true, colour, true, true));
  p = Read(fromColour);
  EXPECT_EQ(p.At(0, 0), kBlack);
  EXPECT_EQ(p.hotX, 2);
  EXPECT_EQ(colour[85], 0xFF) << "the mark, in the processor's order";
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
  Planes p = Read(first);
  EXPECT_EQ(p.HotSpot(), std::make_pair(6, 7));
  EXPECT_EQ(p.At(2, 0), kInverted);
  SetCursor(plain.cursor());
  EXPECT_NE(GetCursor(), first);
  EXPECT_FALSE(Read(first).ok);
  EXPECT_TRUE(Read(made).ok) << "cached cursors stay";

  // A colour cursor shows its 1-bit part, cached when it was loaded.
  Handle colour = NewHandleClear(96);
  (*colour)[20] = char(0x80), (*colour)[52] = char(0x80), (*colour)[85] = 1;
  HCURSOR colourMade = static_cast<HCURSOR>(KWE_BrovaskCursor(true, true, *colour, true, true));
  SetCCursor(reinterpret_cast<CCrsrHandle>(colour));
  EXPECT_EQ(GetCursor(), colourMade);
  DisposeCCursor(reinterpret_cast<CCrsrHandle>(colour));
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

TEST_F(Cursors, TheCacheHoldsAtMost135MadeCursors) {
  std::vector<Record> records;
  for (int i = 0; i < 136; ++i) records.push_back(MakeRecord(3, 5, true, uint8_t(i)));
  std::vector<HCURSOR> made;
  for (int i = 0; i < 135; ++i) {
    made.push_back(Make(records[i]));
    ASSERT_NE(made.back(), nullptr) << i;
  }
  // Nothing is made for the cursor that finds no slot. Windows counts USER
  // objects; Wine counts none, but hands the handle freed last out first.
  DWORD userObjects = GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
  Record probe = MakeRecord(0, 0, false);
  HCURSOR freed = static_cast<HCURSOR>(KWE_BrovaskCursor(true, false, probe.bytes, true, false));
  DestroyCursor(freed);
  EXPECT_EQ(Make(records[135]), nullptr);
  HCURSOR next = static_cast<HCURSOR>(KWE_BrovaskCursor(true, false, probe.bytes, true, false));
  EXPECT_EQ(LOWORD(reinterpret_cast<UINT_PTR>(next)), LOWORD(reinterpret_cast<UINT_PTR>(freed)));
  DestroyCursor(next);
  EXPECT_EQ(GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS), userObjects);
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
// released; a truncated one is left as it is.
class CursorResources : public kwe_test::FilesTest {};

TEST_F(CursorResources, LoadedCachedWrittenBackCleanAndReleased) {
  SetResLoad(true);
  const std::string path = At("CURSORS.RSR");
  CreateResFile(P(path));
  SInt16 ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
  Record native = MakeRecord(3, 5, false, 0x5A);
  Handle whole = NewHandle(68), truncated = NewHandle(40);
  std::memcpy(*whole, native.bytes, 68);
  std::memset(*truncated, 0xA5, 40);
  AddResource(whole, 'CURS', 128, nullptr);
  AddResource(truncated, 'CURS', 129, nullptr);
  CloseResFile(ref);
  ASSERT_EQ(ResError(), noErr);
  const Record mac = MakeRecord(3, 5, true, 0x5A);
  const std::string onDisk(reinterpret_cast<const char*>(mac.bytes), 68);
  ASSERT_NE(kwe_test::ReadRaw(path).find(onDisk), std::string::npos);

  ref = OpenResFile(P(path));
  ASSERT_GT(ref, 0);
  CursHandle loaded = GetCurso(128);
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(UInt16((**loaded).hotSpot.v), 0xFF03) << "loaded cached";
  CursHandle shortOne = GetCurso(129);
  ASSERT_NE(shortOne, nullptr);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(*shortOne), 40), std::string(40, '\xA5'));

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
