// The resource builder's text form of the dialog resources the tests use:
// items of a 'DITL', a 'DLOG', a 'KWED' and an 'ALRT'.
#pragma once
#include <cstdio>
#include <string>
#include <vector>

namespace kwe_test {

struct ItemText {
  int top, left, bottom, right, type;
  std::string data;  // text, or a resource ID in decimal for types 7, 32, 64
};

// Bytes as the text form's hexadecimal pairs, for texts of any characters.
inline std::string Hex(const std::string& bytes) {
  std::string out = "  hex";
  char pair[4];
  for (unsigned char c : bytes) {
    std::snprintf(pair, sizeof pair, " %02X", c);
    out += pair;
  }
  return out + "\n";
}

inline std::string ItemList(int id, const std::vector<ItemText>& items, int countWord = -2) {
  char line[160];
  std::snprintf(line, sizeof line, "resource 'DITL' %d\n  words %d\n", id,
                countWord == -2 ? int(items.size()) - 1 : countWord);
  std::string out = line;
  for (const ItemText& i : items) {
    std::snprintf(line, sizeof line, "  longs 0\n  words %d %d %d %d\n  hex %02X\n", i.top, i.left,
                  i.bottom, i.right, i.type);
    out += line;
    int type = i.type & 127;
    if (type == 7 || type == 32 || type == 64)
      out += "  hex 02\n  words " + i.data + "\n";
    else  // a Pascal string padded to an even length
      out += Hex(char(i.data.size()) + i.data + std::string(i.data.size() % 2, '\0'));
  }
  return out;
}

inline std::string DialogTemplate(int id, int top, int left, int bottom, int right, int itemsId,
                                  const std::string& title = "Settings", bool visible = true) {
  char line[200];
  std::snprintf(line, sizeof line,
                "resource 'DLOG' %d\n  words %d %d %d %d 1\n  hex %02X 00 00 00\n  longs 0\n"
                "  words %d\n",
                id, top, left, bottom, right, visible ? 1 : 0, itemsId);
  return line + Hex(char(title.size()) + title);
}

struct EntryText {
  int item, target, mnemonic, flags;
};
inline std::string PrivateTableText(int id, int band, int flags,
                                    const std::vector<EntryText>& entries) {
  char line[120];
  std::snprintf(line, sizeof line, "resource 'KWED' %d\n  hex %02X %02X\n  words %d\n", id, band,
                flags, int(entries.size()));
  std::string out = line;
  for (const EntryText& e : entries) {
    std::snprintf(line, sizeof line, "  hex %02X %02X %02X %02X\n", e.item, e.target, e.mnemonic,
                  e.flags);
    out += line;
  }
  return out;
}

// One stage's bits as the Macintosh keeps them: item 2 the default (bit 3),
// shown (bit 2), beeps (bits 0-1); stage 1 in the low nibble.
inline int Stage(bool secondDefault, bool shown, int beeps) {
  return (secondDefault ? 8 : 0) | (shown ? 4 : 0) | (beeps & 3);
}
inline std::string AlertText(int id, int top, int left, int bottom, int right, int itemsId, int s1,
                             int s2, int s3, int s4) {
  char line[160];
  std::snprintf(line, sizeof line, "resource 'ALRT' %d\n  words %d %d %d %d %d %d\n", id, top, left,
                bottom, right, itemsId, s1 | s2 << 4 | s3 << 8 | s4 << 12);
  return line;
}

}  // namespace kwe_test
