// The portable pieces under the Menu Manager: AppendMenu's item data, the
// walk over a record's bytes, the enable bits of inserted items, and the
// texts Win32 menus show (mnemonics, substitutions, command keys).
#include "menus/menu_records.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "menus/item_data.h"
#include "menus/menu_text.h"

namespace {

using namespace kwe::menus;

std::string Text(const ParsedItem& item) {
  return std::string(reinterpret_cast<const char*>(item.text + 1), item.text[0]);
}

std::vector<ParsedItem> Parse(const std::string& data) {
  return ParseItemData(reinterpret_cast<const UInt8*>(data.data()), data.size());
}

// Each input and the items it makes: text, icon, key, mark, style, disabled.
TEST(ItemData, MetacharactersMakeTheItemsTheyDescribe) {
  struct Expected {
    std::string text;
    UInt8 icon, key, mark, style;
    bool disabled;
  };
  const struct {
    std::string data;
    std::vector<Expected> items;
  } cases[] = {
      {"Open/O", {{"Open", 0, 'O', 0, 0, false}}},
      {"Open;Close", {{"Open", 0, 0, 0, 0, false}, {"Close", 0, 0, 0, 0, false}}},
      {"Open\rClose", {{"Open", 0, 0, 0, 0, false}, {"Close", 0, 0, 0, 0, false}}},
      {"(-", {{"-", 0, 0, 0, 0, true}}},
      {"Icon^1", {{"Icon", 1, 0, 0, 0, false}}},
      {"Check!\x12", {{"Check", 0, 0, 0x12, 0, false}}},
      {"Bold<B<I", {{"Bold", 0, 0, 0, 3, false}}},
      {"Styled<U<O<S<X", {{"Styled", 0, 0, 0, 28, false}}},
      {"(Gone/G", {{"Gone", 0, 'G', 0, 0, true}}},
      // After a metacharacter, ";" "(" and "/" are values, not syntax.
      {"Semi/;", {{"Semi", 0, ';', 0, 0, false}}},
      {"Paren/(", {{"Paren", 0, '(', 0, 0, false}}},
      {"Slash//;Next", {{"Slash", 0, '/', 0, 0, false}, {"Next", 0, 0, 0, 0, false}}},
      {"Mark!;", {{"Mark", 0, 0, ';', 0, false}}},
      {"a-b c", {{"a-b c", 0, 0, 0, 0, false}}},
      {";", {{" ", 0, 0, 0, 0, false}}},
      {"A;;B", {{"A", 0, 0, 0, 0, false}, {" ", 0, 0, 0, 0, false}, {"B", 0, 0, 0, 0, false}}},
      {"A;", {{"A", 0, 0, 0, 0, false}}},
      {"", {}},
      {"Dangling/", {{"Dangling", 0, 0, 0, 0, false}}},
  };
  for (const auto& c : cases) {
    std::vector<ParsedItem> items = Parse(c.data);
    ASSERT_EQ(items.size(), c.items.size()) << c.data;
    for (size_t i = 0; i < items.size(); ++i) {
      const Expected& e = c.items[i];
      EXPECT_EQ(Text(items[i]), e.text) << c.data << " item " << i;
      EXPECT_EQ(std::vector<int>({items[i].icon, items[i].key, items[i].mark, items[i].style,
                                  items[i].disabled}),
                std::vector<int>({e.icon, e.key, e.mark, e.style, e.disabled}))
          << c.data << " item " << i;
    }
  }
}

// A record of random items written and walked back; every cut of it walks
// to its whole items only, never past the end.
TEST(MenuRecords, WalkFindsWholeItemsOfAnyCut) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    std::mt19937 random(seed);
    std::vector<UInt8> record(14, 0);
    record.push_back(3);
    record.insert(record.end(), {'F', 'i', 'l'});
    std::vector<size_t> ends;
    int count = int(random() % 12);
    for (int i = 0; i < count; ++i) {
      int length = 1 + int(random() % 20);
      record.push_back(UInt8(length));
      for (int k = 0; k < length; ++k) record.push_back(UInt8('a' + random() % 26));
      for (int k = 0; k < 4; ++k) record.push_back(UInt8(random()));
      ends.push_back(record.size());
    }
    record.push_back(0);
    MenuShape whole = WalkMenu(record.data(), record.size());
    EXPECT_EQ(whole.count, count) << "seed " << seed;
    EXPECT_TRUE(whole.terminated) << "seed " << seed;
    for (size_t cut = 0; cut <= record.size(); ++cut) {
      MenuShape shape = WalkMenu(record.data(), cut);
      int fit = 0;
      for (size_t e : ends) fit += e <= cut;
      ASSERT_EQ(shape.count, cut >= 18 ? fit : 0) << "seed " << seed << " cut " << cut;
      ASSERT_LE(shape.end, cut) << "seed " << seed << " cut " << cut;
      ItemView v;
      EXPECT_FALSE(ReadItem(record.data(), cut, shape.count + 1, &v)) << "seed " << seed;
    }
  }
}

// Titles and items as Win32 shows them: one mnemonic per text, chosen at a
// word's start first, then a consonant; ampersands doubled; Macintosh
// characters substituted or converted.
TEST(MenuText, MnemonicsAndSubstitutions) {
  const struct {
    std::string mac, used, expected;
    bool keep;
  } cases[] = {
      {"Save As & Quit", "", "&Save As && Quit", false},
      {"Save", "S", "Sa&ve", false},  // no free word start: a consonant first
      {"Save As", "S", "Save &As", false},
      {"Sea", "SE", "Se&a", false},     // only a vowel left
      {"Oui", "O", "O&ui", false},      // vowels only: the first free one
      {"File", "FILE", "File", false},  // nothing free
      {"&Edit", "", "&Edit", true},     // the application's own mnemonic
      {"Open\xC9", "", "&Open...", false},
      {"\xD2Hi\xD3 \xD1 \xAA", "", "\"&Hi\" - (tm)", false},
      {"caf\x8E", "", "&caf\xE9", false},
  };
  for (const auto& c : cases) {
    UsedLetters used;
    for (char u : c.used) used.Mark(UInt8(u));
    TextOptions options;
    options.keepAmpersands = c.keep;
    std::string out =
        Win32MenuText(reinterpret_cast<const UInt8*>(c.mac.data()), c.mac.size(), &used, options);
    EXPECT_EQ(out, c.expected) << c.mac;
  }
  UsedLetters used;
  TextOptions options;
  std::string first = Win32MenuText(reinterpret_cast<const UInt8*>("File"), 4, &used, options);
  std::string second = Win32MenuText(reinterpret_cast<const UInt8*>("Font"), 4, &used, options);
  EXPECT_EQ(first + "|" + second, "&File|Fo&nt");
  std::string popUp = Win32MenuText(reinterpret_cast<const UInt8*>("A&B"), 3, nullptr, options);
  EXPECT_EQ(popUp, "A&&B");
}

TEST(MenuText, CommandKeysUseTheHostsFormats) {
  const struct {
    UInt8 key, style;
    bool functionKeys;
    std::string expected;
  } cases[] = {
      {'S', 0, false, "\tP+S"},  {'s', 0, false, "\tPS+S"}, {'S', 0x80, false, "\tPS+S"},
      {'1', 0, false, "\tP+1"},  {'1', 0, true, "\tP+F1"},  {'9', 0, true, "\tP+F9"},
      {'0', 0, true, "\tP+F11"}, {'%', 0, false, "\tP+%"},
  };
  for (const auto& c : cases)
    EXPECT_EQ(AcceleratorText(c.key, c.style, "\tP+%s", "\tPS+%s", c.functionKeys), c.expected)
        << c.key;
  EXPECT_EQ(AcceleratorText('K', 0, "%d %s %x", "", false), "%d K %x");
}

}  // namespace
