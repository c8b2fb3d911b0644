// A session with InitDialogs done and a resource file of the test's own
// (written from the resource builder's text form into a temporary file),
// with helpers that read back what USER holds for a dialog's children and
// that drive a modal call with posted input; the resource builder's text
// form of the dialog resources the tests use: items of a 'DITL', a 'DLOG', a
// 'KWED' and an 'ALRT'.
#pragma once
#include <algorithm>
#include <cctype>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "Dialogs.h"
#include "Resources.h"
#include "resource_builder/resource_description.h"
#include "resource_builder/resource_image.h"
#include "support/resource_image_file.h"
#include "windows/windows_fixture.h"

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

inline const UInt8* PStr(const char* text) { return reinterpret_cast<const UInt8*>(text); }
inline std::string AsString(const UInt8* pstring) {
  return std::string(reinterpret_cast<const char*>(pstring + 1), pstring[0]);
}

struct Child {
  std::string cls;  // lower case
  int id;
  RECT place;  // in the dialog's client area
  std::string text;
  DWORD style;
};
inline BOOL CALLBACK CollectChild(HWND child, LPARAM context) {
  Child c;
  char buffer[512] = "";
  GetClassNameA(child, buffer, sizeof buffer);
  for (char* p = buffer; *p; ++p) *p = char(std::tolower(UInt8(*p)));
  c.cls = buffer;
  c.id = GetDlgCtrlID(child);
  GetWindowRect(child, &c.place);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&c.place), 2);
  GetWindowTextA(child, buffer, sizeof buffer);
  c.text = buffer;
  c.style = DWORD(GetWindowLongA(child, GWL_STYLE));
  reinterpret_cast<std::vector<Child>*>(context)->push_back(c);
  return TRUE;
}
inline std::vector<Child> ChildrenOf(HWND parent) {
  std::vector<Child> out;
  EnumChildWindows(parent, CollectChild, reinterpret_cast<LPARAM>(&out));
  return out;
}

inline std::string Show(const RECT& r) {
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}
inline std::string Show(const Rect& r) { return Show(RECT{r.left, r.top, r.right, r.bottom}); }

inline DialogPeek PeekDialog(DialogPtr d) { return reinterpret_cast<DialogPeek>(d); }
inline HWND HwndOfDialog(DialogPtr d) { return KWE_GethWnd(d); }
inline HWND ItemChild(DialogPtr d, int item) { return GetDlgItem(HwndOfDialog(d), item); }

// What GetDialogItem answers for an item, and the text of its handle.
struct DialogItem {
  SInt16 type = 0;
  Handle h = nullptr;
  Rect r{};
};
inline DialogItem ItemOf(DialogPtr d, SInt16 item) {
  DialogItem i;
  GetDialogItem(d, item, &i.type, &i.h, &i.r);
  return i;
}
inline std::string TextOfItem(DialogPtr d, SInt16 item) {
  Str255 text;
  GetDialogItemText(ItemOf(d, item).h, text);
  return AsString(text);
}

// USER's windows and the heap's bytes as they were; GDI's objects within a
// few that Wine's own caches take now and then (a leak per dialog would
// show hundreds over the cycles the tests run).
inline ::testing::AssertionResult Flat(const Footprint& before, const Footprint& after) {
  constexpr int kCacheSlack = 8;
  if (after.windows == before.windows && after.bytes == before.bytes && after.list == before.list &&
      after.gdi - before.gdi < kCacheSlack)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "before " << before << ", after " << after;
}

class DialogTest : public WindowTest {
 protected:
  void SetUp() override {
    WindowTest::SetUp();
    InitDialogs(nullptr);
  }
  void TearDown() override {
    BYTE keys[256] = {};
    SetKeyboardState(keys);
    if (refNum > 0) CloseResFile(refNum);
    if (!file.empty()) DeleteFileA(file.c_str());
    WindowTest::TearDown();
  }
  // Opens a resource file built from the text form; fails the test on a
  // mistake in it.
  void Resources(const std::string& description) {
    std::vector<resource_builder::Resource> list;
    std::string error;
    ASSERT_TRUE(resource_builder::ParseResourceDescription(description, list, error)) << error;
    OpenResourceImage(resource_builder::BuildResourceImage(list), "kwe_dlg_", &file, &refNum);
  }
  // The application's loop: ModalDialog again until it answers an item of
  // stop; every answer is kept in hits.
  SInt16 RunModal(std::vector<std::function<void()>> steps, ModalFilterProcPtr filter = nullptr,
                  std::vector<SInt16> stop = {1, 2}) {
    SInt16 hit = -99;
    hits.clear();
    WhileModal(std::move(steps), [&] {
      do {
        ModalDialog(filter, &hit);
        hits.push_back(hit);
      } while (std::find(stop.begin(), stop.end(), hit) == stop.end() && hits.size() < 100);
    });
    return hit;
  }
  std::vector<SInt16> hits;

  std::string file;
  SInt16 refNum = 0;
};

}  // namespace kwe_test
