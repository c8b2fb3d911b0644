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

inline std::string Quoted(const std::string& s) {
  std::string out = "\"";
  for (unsigned char c : s) {
    char buffer[8];
    if (c < 0x20 || c >= 0x7F || c == '"' || c == '\\') {
      std::snprintf(buffer, sizeof buffer, "\\x%02X", c);
      out += buffer;
    } else {
      out += char(c);
    }
  }
  return out + "\"";
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
    if (type == 7 || type == 32 || type == 64) {
      out += "  hex 02\n  words " + i.data + "\n";
    } else {
      out += "  pstring " + Quoted(i.data) + "\n";
      if (i.data.size() % 2) out += "  hex 00\n";
    }
  }
  return out;
}

inline std::string DialogTemplate(int id, int top, int left, int bottom, int right, int itemsId,
                                  const std::string& title = "Settings", bool visible = true) {
  char line[200];
  std::snprintf(line, sizeof line,
                "resource 'DLOG' %d\n  words %d %d %d %d 1\n  hex %02X 00 00 00\n  longs 0\n"
                "  words %d\n  pstring %s\n",
                id, top, left, bottom, right, visible ? 1 : 0, itemsId, Quoted(title).c_str());
  return line;
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
