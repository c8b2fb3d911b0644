// KWE_ByteSwap in a session, through the DLL: the host's byte-swap
// procedure and type list with both argument lists, the reports through
// DebugStr, the cursor hand-over, and the Rect/RECT converters. The table
// itself is tested natively (byte_swap_table_test.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "KWEByteSwap.h"
#include "KWESession.h"
#include "support/test_host.h"

namespace {

using Bytes = std::vector<uint8_t>;

constexpr UInt32 Type(const char (&s)[5]) {
  return UInt32(UInt8(s[0])) << 24 | UInt32(UInt8(s[1])) << 16 | UInt32(UInt8(s[2])) << 8 |
         UInt32(UInt8(s[3]));
}

const UInt32 kHostTypes[] = {Type("AAAA"), Type("BBBB"), Type("HOST"), 0};

struct Call {
  UInt32 direction;
  SInt32 index, id, size;
  void* data;
};
std::vector<Call> g_calls;

// The host converts its own type: one 32-bit field at the start.
void KWE_CALL HostProcedure(UInt32 direction, SInt32 index, SInt32 size, void* data) {
  g_calls.push_back({direction, index, -1, size, data});
  KWE_ByteSwapLONG(data);
}

void KWE_CALL ExtendedHostProcedure(UInt32 direction, SInt32 index, SInt32 id, SInt32 size,
                                    void* data) {
  g_calls.push_back({direction, index, id, size, data});
}

class ByteSwapSession : public kwe_test::SessionTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    g_calls.clear();
    r.byteSwapProcedure = reinterpret_cast<ProcPtr>(HostProcedure);
    r.byteSwapTypes = kHostTypes;
  }
};

// Host types reach the procedure with their index in the list; 'CURS' goes
// to QuickDraw's cursor conversion, which converts the hot spot; unknown and
// damaged data are reported through DebugStr.
TEST_F(ByteSwapSession, HostTypesCursorsAndReports) {
  Bytes data{1, 2, 3, 4, 5};
  KWE_ByteSwap(kweSwapToNative, Type("HOST"), 300, 5, data.data());
  ASSERT_EQ(g_calls.size(), 1u);
  EXPECT_EQ(g_calls[0].direction, 1u);
  EXPECT_EQ(g_calls[0].index, 2);
  EXPECT_EQ(g_calls[0].size, 5);
  EXPECT_EQ(g_calls[0].data, data.data());
  EXPECT_EQ(data, (Bytes{4, 3, 2, 1, 5}));
  KWE_ByteSwap(kweSwapToMac, Type("AAAA"), 300, 5, data.data());
  EXPECT_EQ(g_calls.back().index, 0);
  EXPECT_EQ(g_calls.back().direction, 0u);

  Bytes curs(68, 0xF0);
  curs[64] = 0, curs[65] = 3, curs[66] = 0, curs[67] = 5;
  KWE_ByteSwap(kweSwapToNative, Type("CURS"), 128, 68, curs.data());
  const auto* cursor = reinterpret_cast<const Cursor*>(curs.data());
  EXPECT_EQ(UInt16(cursor->hotSpot.v), 0xFF03);  // cached: the mark above the coordinate
  EXPECT_EQ(cursor->hotSpot.h & 0xFF, 5);
  EXPECT_EQ(curs[0], 0xF0);
  EXPECT_TRUE(capture.Reports().empty());

  Bytes unknown{9, 8, 7, 6};
  KWE_ByteSwap(kweSwapToNative, Type("XYZW"), 128, 4, unknown.data());
  EXPECT_EQ(unknown, (Bytes{9, 8, 7, 6}));
  // A 'DITL' that claims 32,768 items in 20 bytes.
  Bytes ditl{0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0};
  KWE_ByteSwap(kweSwapToNative, Type("DITL"), 128, SInt32(ditl.size()), ditl.data());
  EXPECT_EQ(capture.Reports(),
            (std::vector<std::string>{"XYZW unknown byteswap type", "DITL damaged byteswap data"}));
  EXPECT_EQ(g_calls.size(), 2u);
}

class ExtendedByteSwapSession : public kwe_test::SessionTest {
 protected:
  UInt32 SessionFlags() const override { return kweFlagExtendedByteSwap; }
  void FillRecord(KWESessionRecord& r) override {
    g_calls.clear();
    r.byteSwapProcedure = reinterpret_cast<ProcPtr>(ExtendedHostProcedure);
    r.byteSwapTypes = kHostTypes;
  }
};

TEST_F(ExtendedByteSwapSession, ExtendedProcedureGetsTheResourceID) {
  Bytes data(8);
  KWE_ByteSwap(kweSwapToNative, Type("BBBB"), -2, 8, data.data());
  ASSERT_EQ(g_calls.size(), 1u);
  EXPECT_EQ(g_calls[0].index, 1);
  EXPECT_EQ(g_calls[0].id, -2);  // widened with its sign
  EXPECT_EQ(g_calls[0].size, 8);
}

// A session without a procedure or list: the host's type is unknown.
using ByteSwapWithoutList = kwe_test::SessionTest;

TEST_F(ByteSwapWithoutList, UnknownTypeIsReportedWithoutAProcedure) {
  Bytes data{1, 2};
  KWE_ByteSwap(kweSwapToNative, Type("HOST"), 0, 2, data.data());
  EXPECT_EQ(data, (Bytes{1, 2}));
  EXPECT_EQ(capture.Reports(), std::vector<std::string>{"HOST unknown byteswap type"});
}

TEST(RectConversion, ToolboxRectAndWin32RectSwapTheirOrder) {
  Rect mac{-5, -32768, 32767, -1};
  RECT win{};
  KWE_ConvMRtoWR(&mac, &win);
  EXPECT_EQ(std::vector<LONG>({win.left, win.top, win.right, win.bottom}),
            std::vector<LONG>({-32768, -5, -1, 32767}));
  RECT wide{0x12345, -70000, 7, -8};
  KWE_ConvWRtoMR(&wide, &mac);  // the low 16 bits
  EXPECT_EQ(std::vector<SInt16>({mac.left, mac.top, mac.right, mac.bottom}),
            std::vector<SInt16>({0x2345, SInt16(-70000 & 0xFFFF), 7, -8}));
}

}  // namespace
