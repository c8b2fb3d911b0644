// The portable readers on seeded random lists: every item ReadItems answers
// lies inside the bytes, the trimmed list reads back the same items, a
// built table groups consecutive radio buttons, and the ParamText expansion
// matches a plain string replacement. A failure prints its seed and step.
#include "dialogs/dialog_data.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>

namespace {

using namespace kwe::dialogs;

std::vector<UInt8> RandomList(std::mt19937& rng, int* radioRuns) {
  std::vector<UInt8> list(2);
  int count = int(rng() % 12);
  SInt16 word = SInt16(count - 1);
  std::memcpy(list.data(), &word, 2);
  *radioRuns = 0;
  bool inRun = false;
  for (int i = 0; i < count; ++i) {
    UInt8 type = UInt8(rng() % 3 == 0 ? kRadioItem : (rng() % 2 ? kButtonItem : kStaticTextItem));
    UInt8 length = UInt8(rng() % 9);
    std::vector<UInt8> item(kItemHeaderSize + length + (length & 1), UInt8(rng()));
    item[12] = type;
    item[13] = length;
    list.insert(list.end(), item.begin(), item.end());
    if (type == kRadioItem && !inRun) ++*radioRuns;
    inRun = type == kRadioItem;
  }
  return list;
}

TEST(DialogData, SeededListsReadInsideTheirBytes) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    std::mt19937 rng(seed);
    int runs = 0;
    std::vector<UInt8> list = RandomList(rng, &runs);
    SInt16 countWord;
    std::memcpy(&countWord, list.data(), 2);
    size_t cut = rng() % 2 ? list.size() : rng() % (list.size() + 1);
    std::vector<UInt8> bytes(list.begin(), list.begin() + long(cut));
    std::vector<ItemView> items = ReadItems(bytes.data(), bytes.size());
    SCOPED_TRACE("seed " + std::to_string(seed) + " cut " + std::to_string(cut));
    if (cut == list.size()) {
      EXPECT_EQ(int(items.size()), countWord + 1);
    }
    for (const ItemView& v : items) EXPECT_LE(v.offset + kItemHeaderSize + v.length, bytes.size());
    std::vector<UInt8> trimmed = TrimmedItemList(bytes.data(), bytes.size());
    std::vector<ItemView> again = ReadItems(trimmed.data(), trimmed.size());
    ASSERT_EQ(again.size(), items.size());
    for (size_t i = 0; i < items.size(); ++i) {
      EXPECT_EQ(again[i].type, items[i].type);
      EXPECT_EQ(again[i].length, items[i].length);
      EXPECT_EQ(0, std::memcmp(again[i].data, items[i].data, items[i].length));
    }
    if (cut == list.size()) {
      PrivateTable t = BuildPrivateTable(items);
      int groups = 0;
      for (const TableEntry& e : t.entries) groups = std::max(groups, e.Group());
      EXPECT_EQ(groups, std::min(runs, 15));
      PrivateTable back;
      std::vector<UInt8> b = TableBytes(t);
      ASSERT_TRUE(ReadPrivateTable(b.data(), b.size(), &back));
      EXPECT_EQ(back.entries.size(), t.entries.size());
    }
  }
}

TEST(DialogData, DamagedTablesKeepTheirWholeEntries) {
  struct Case {
    std::vector<UInt8> bytes;
    bool read;
    size_t entries;
  };
  const Case cases[] = {
      {{}, false, 0},
      {{20, 0x40, 2}, false, 0},
      {{20, 0x40, 2, 0, 1, 1, 'A', 0}, true, 1},        // count 2, one present
      {{20, 0x40, 0xFF, 0xFF, 1, 1, 'A', 0}, true, 0},  // negative count
      {{20, 0x40, 1, 0, 1, 1, 'A', 0, 9, 9}, true, 1},  // trailing bytes
  };
  for (const Case& c : cases) {
    PrivateTable t;
    EXPECT_EQ(ReadPrivateTable(c.bytes.data(), c.bytes.size(), &t), c.read);
    EXPECT_EQ(t.entries.size(), c.entries);
  }
}

TEST(DialogData, ExpansionMatchesStringReplacement) {
  std::mt19937 rng(7);
  const char alphabet[] = "ab^0123";
  for (int step = 0; step < 2000; ++step) {
    std::string params[4];
    for (auto& p : params) p = std::string(rng() % 90, 'p');
    params[1] = "one";
    std::string text;
    for (int i = 0, n = int(rng() % 40); i < n; ++i) text += alphabet[rng() % 7];
    UInt8 strings[4][256];
    const UInt8* ptrs[4];
    for (int k = 0; k < 4; ++k) {
      strings[k][0] = UInt8(params[k].size());
      std::memcpy(strings[k] + 1, params[k].data(), params[k].size());
      ptrs[k] = strings[k];
    }
    if (step % 5 == 0) ptrs[3] = nullptr;
    std::string expect;
    unsigned used = 0;
    for (size_t i = 0; i < text.size(); ++i) {
      if (text[i] == '^' && i + 1 < text.size() && text[i + 1] >= '0' && text[i + 1] <= '3') {
        int k = text[++i] - '0';
        used |= 1u << k;
        if (ptrs[k]) expect += params[k];
      } else {
        expect += text[i];
      }
    }
    bool cut = expect.size() > 255;
    if (cut) expect.resize(255);
    UInt8 out[256];
    unsigned got =
        ExpandParameters(reinterpret_cast<const UInt8*>(text.data()), text.size(), ptrs, out);
    ASSERT_EQ(std::string(reinterpret_cast<char*>(out + 1), out[0]), expect) << "step " << step;
    if (!cut) {
      ASSERT_EQ(got, used) << "step " << step;
    }
  }
}

}  // namespace
