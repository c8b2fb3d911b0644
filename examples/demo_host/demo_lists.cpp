#include "demo_lists.h"

#include <cstring>

namespace {

const char* const kPapers[] = {"Letter", "Legal", "A4", "A5", "B5", "Tabloid"};
constexpr SInt16 kPaperCount = sizeof kPapers / sizeof kPapers[0];

}  // namespace

ListHandle AddPaperList(DialogPtr d) {
  GrafPtr saved;
  GetPort(&saved);
  SetPort(d);
  // The free corner right of the check boxes; one selection at a time.
  const Rect view{40, 214, 88, 314};
  const Rect bounds{0, 0, kPaperCount, 1};
  KWE_LSetSelFlags(lOnlyOne & 0xFF);
  ListHandle paper = LNew(&view, &bounds, Point{0, 0}, 0, d, true, false, false, true);
  SetPort(saved);
  if (!paper) return nullptr;
  for (SInt16 v = 0; v < kPaperCount; ++v)
    LSetCell(kPapers[v], SInt16(std::strlen(kPapers[v])), Cell{v, 0}, paper);
  LSetSelect(true, Cell{2, 0}, paper);
  return paper;
}

std::string TakePaperChoice(ListHandle paper) {
  if (!paper) return "none";
  Cell c{0, 0};
  std::string choice = "none";
  if (LGetSelect(true, &c, paper)) {
    char name[32];
    SInt16 length = sizeof name;
    LGetCell(name, &length, c, paper);
    choice.assign(name, size_t(length));
  }
  LDispose(paper);
  return choice;
}
