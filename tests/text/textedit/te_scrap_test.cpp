// Cut, copy and paste through the TextEdit scrap and on to the desk scrap
// and another program on the same clipboard (bound records take the same
// path: their edit scripts cut and paste too).
#include <gtest/gtest.h>

#include "TextEdit.h"
#include "scrap/scrap_fixture.h"

namespace kwe_test {
namespace {

class TextScrap : public ScrapTest {
 protected:
  void SetUp() override {
    ScrapTest::SetUp();
    TEInit();
    Rect r{10, 10, 100, 200};
    te = TENew(&r, &r);
    TESetText("copy this text", 14, te);
  }
  void TearDown() override {
    TEDispose(te);
    ScrapTest::TearDown();
  }
  std::string Text() { return std::string(*(*te)->hText, size_t((*te)->teLength)); }
  std::string TEScrap() { return std::string(*TEScrapHandle(), size_t(TEGetScrapLength())); }
  TEHandle te = nullptr;
};

TEST_F(TextScrap, CopyReachesAnotherProgramAndItsTextIsPasted) {
  TESetSelect(5, 9, te);
  TECopy(te);
  EXPECT_EQ(TEScrap(), "this");
  EXPECT_EQ(vars.TEScrpLength, 4);
  EXPECT_EQ(vars.TEScrpHandle, TEScrapHandle());
  EXPECT_EQ(PeerGet(), "this");
  ASSERT_EQ(PeerPut("other's words"), 0u);
  TESetSelect(0, 4, te);
  TEPaste(te);
  EXPECT_EQ(Text(), "other's words this text");
  EXPECT_EQ((*te)->selStart, 13);
  EXPECT_EQ((*te)->selEnd, 13);
  EXPECT_EQ(TEScrap(), "other's words");
}

TEST_F(TextScrap, CutDeletesAndTheScrapCallsMoveBetweenScraps) {
  TESetSelect(0, 5, te);
  TECut(te);
  EXPECT_EQ(Text(), "this text");
  EXPECT_EQ(TEScrap(), "copy ");
  ASSERT_EQ(PeerPut("from outside"), 0u);
  EXPECT_EQ(TEFromScrap(), 0);
  EXPECT_EQ(TEScrap(), "from outside");
  TESetScrapLength(4);
  EXPECT_EQ(TEScrap(), "from");
  EXPECT_EQ(TEToScrap(), 0);
  EXPECT_EQ(PeerGet(), "from");
  TESetScrapLength(-1);
  EXPECT_EQ(TEGetScrapLength(), 4);
  TEInit();
  EXPECT_EQ(TEGetScrapLength(), 0);
  EXPECT_EQ(GetHandleSize(TEScrapHandle()), 0);
}

}  // namespace
}  // namespace kwe_test
