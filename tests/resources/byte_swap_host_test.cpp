// KWE_ByteSwap in a session, through the DLL: the host's byte-swap
// procedure and type list with both argument lists, 'CURS' handed to
// QuickDraw, the reports through DebugStr.
// The table itself is tested natively (byte_swap_table_test.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <vector>

#include "KWEByteSwap.h"
#include "KWESession.h"
#include "support/test_host.h"

namespace {

using Bytes = std::vector<uint8_t>;
using Calls = std::vector<std::vector<SInt32>>;  // direction, index, ID (-1: not given), size

const UInt32 kHostTypes[] = {'AAAA', 'BBBB', 'HOST', 0};
Calls g_calls;

// The host converts its own types: one 32-bit field at the start.
void KWE_CALL HostProcedure(UInt32 direction, SInt32 index, SInt32 size, void* data) {
  g_calls.push_back({SInt32(direction), index, -1, size});
  KWE_ByteSwapLONG(data);
}

void KWE_CALL ExtendedHostProcedure(UInt32 direction, SInt32 index, SInt32 id, SInt32 size, void*) {
  g_calls.push_back({SInt32(direction), index, id, size});
}

class ByteSwapSession : public kwe_test::SessionTest {
 protected:
  void FillRecord(KWESessionRecord& r) override {
    g_calls.clear();
    r.flags |= extended ? kweFlagExtendedByteSwap : 0;
    r.byteSwapProcedure = extended ? reinterpret_cast<ProcPtr>(ExtendedHostProcedure)
                                   : reinterpret_cast<ProcPtr>(HostProcedure);
    r.byteSwapTypes = kHostTypes;
  }
  bool extended = false;
};

// Host types reach the procedure with their index in the list (and, with
// the extended argument list, the resource ID widened with its sign);
// 'CURS' goes to QuickDraw's cursor conversion, which converts the hot
// spot; unknown and damaged data are reported through DebugStr.
TEST_F(ByteSwapSession, HostTypesCursorsAndReports) {
  Bytes data{1, 2, 3, 4, 5};
  KWE_ByteSwap(kweSwapToNative, 'HOST', 300, 5, data.data());
  EXPECT_EQ(data, (Bytes{4, 3, 2, 1, 5}));
  KWE_ByteSwap(kweSwapToMac, 'AAAA', 300, 5, data.data());
  EXPECT_EQ(g_calls, (Calls{{1, 2, -1, 5}, {0, 0, -1, 5}}));

  Bytes curs(68, 0xF0);
  curs[64] = 0, curs[65] = 3, curs[66] = 0, curs[67] = 5;
  KWE_ByteSwap(kweSwapToNative, 'CURS', 128, 68, curs.data());
  const auto* cursor = reinterpret_cast<const Cursor*>(curs.data());
  EXPECT_EQ(UInt16(cursor->hotSpot.v), 0xFF03);  // cached: the mark above the coordinate
  EXPECT_EQ(cursor->hotSpot.h & 0xFF, 5);
  EXPECT_EQ(curs[0], 0xF0);
  EXPECT_TRUE(capture.Reports().empty());

  Bytes unknown{9, 8, 7, 6};
  KWE_ByteSwap(kweSwapToNative, 'XYZW', 128, 4, unknown.data());
  EXPECT_EQ(unknown, (Bytes{9, 8, 7, 6}));
  // A 'DITL' that claims 32,768 items in 20 bytes.
  Bytes ditl{0x7F, 0xFF, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 4, 0, 0, 0, 0, 0};
  KWE_ByteSwap(kweSwapToNative, 'DITL', 128, SInt32(ditl.size()), ditl.data());
  EXPECT_EQ(capture.Reports(),
            (std::vector<std::string>{"XYZW unknown byteswap type", "DITL damaged byteswap data"}));

  TearDown();  // a new session, with the extended argument list
  extended = true;
  SetUp();
  KWE_ByteSwap(kweSwapToNative, 'BBBB', -2, 8, data.data());
  EXPECT_EQ(g_calls, (Calls{{1, 1, -2, 8}}));
}

}  // namespace
