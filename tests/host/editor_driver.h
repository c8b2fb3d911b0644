// What the editor's scripts read of the program's own records: the document
// behind a window and the text of its TextEdit record. The Window Manager
// keeps the WindowPtr in the window's first window long, and the editor's
// record begins with it. The fields are read while the program waits for
// input (after Settle).
#pragma once
#include <string>
#include <vector>

#include "KWEWindows.h"
#include "Menus.h"
#include "editor.h"
#include "host/program_driver.h"

namespace kwe_drive {

inline DocumentPeek DocumentOf(HWND w) {
  return w ? reinterpret_cast<DocumentPeek>(GetWindowLongPtrA(w, 0)) : nullptr;
}

inline std::string TextOf(TEHandle te) {
  Handle text = reinterpret_cast<Handle>(TEGetText(te));
  return std::string(reinterpret_cast<const char*>(*text), size_t((*te)->teLength));
}

// The document windows, front to back: the library windows that are no
// dialog or alert.
inline std::vector<HWND> Documents() {
  std::vector<HWND> documents;
  for (HWND w : LibraryWindows())
    if (!ChildWithText(w, "OK") && !ChildWithText(w, "Cancel")) documents.push_back(w);
  return documents;
}

// A menu as the user finds it on opening it: Windows asks the program
// (WM_INITMENUPOPUP), which rebuilds it from its record; the items USER
// shows checked, by their names in the record (a styled item is drawn by
// the program, and USER holds no text for it).
inline std::string CheckedItems(int menu) {
  HMENU popup = GetSubMenu(GetMenu(MainWindow()), menu);
  PostMessageA(MainWindow(), WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(popup),
               MAKELPARAM(menu, 0));
  Settle("open a menu");
  MenuHandle record = GetMenuHandle(SInt16(128 + menu));
  std::string checked;
  for (int item = 0; item < GetMenuItemCount(popup); ++item) {
    if (!(GetMenuState(popup, UINT(item), MF_BYPOSITION) & MF_CHECKED)) continue;
    Str255 name;
    GetMenuItemText(record, SInt16(item + 1), name);
    checked += (checked.empty() ? "" : ",") +
               std::string(reinterpret_cast<const char*>(name + 1), name[0]);
  }
  return checked;
}

// Edit's Undo, Cut, Copy, Paste and Clear: "+" where the item can be
// chosen, "-" where it is grayed.
inline std::string EditStates() {
  CheckedItems(2);
  HMENU edit = GetSubMenu(GetMenu(MainWindow()), 2);
  std::string states;
  for (int item : {0, 2, 3, 4, 5})
    states += GetMenuState(edit, UINT(item), MF_BYPOSITION) & (MF_GRAYED | MF_DISABLED) ? '-' : '+';
  return states;
}

}  // namespace kwe_drive
