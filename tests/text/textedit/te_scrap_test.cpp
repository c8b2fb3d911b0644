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

// Copy reaches another program on the clipboard, its text comes back with
// TEPaste, a cut deletes, and TEFromScrap / TEToScrap move text between the
// TextEdit scrap and the desk scrap.
TEST_F(TextScrap, CopyCutAndPasteCrossTheDeskScrap) {
  TESetSelect(5, 9, te);
  TECopy(te);
  EXPECT_EQ(TEScrap(), "this");
  EXPECT_EQ(PeerGet(), "this");
  ASSERT_EQ(PeerPut("other's words"), 0u);
  TESetSelect(0, 4, te);
  TEPaste(te);
  EXPECT_EQ(Text(), "other's words this text");
  EXPECT_EQ((*te)->selStart * 100 + (*te)->selEnd, 1313);
  TESetSelect(0, 14, te);
  TECut(te);
  EXPECT_EQ(Text(), "this text");
  EXPECT_EQ(PeerGet(), "other's words ");
  ASSERT_EQ(PeerPut("from outside"), 0u);
  EXPECT_EQ(TEFromScrap(), 0);
  EXPECT_EQ(TEScrap(), "from outside");
  TESetScrapLength(4);
  EXPECT_EQ(TEToScrap(), 0);
  EXPECT_EQ(PeerGet(), "from");
  TEInit();
  EXPECT_EQ(TEGetScrapLength(), 0);
}

}  // namespace
}  // namespace kwe_test
