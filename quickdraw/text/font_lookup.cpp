// From a Macintosh font number and size to an installed face and one of its
// sizes.
#include "quickdraw/text/font_list.h"

namespace kwe::quickdraw {
namespace {

constexpr SInt16 kApplFont = 1;
constexpr BYTE kTrueTypeBit = 0x04;

int PitchOf(const InstalledFace& face) { return face.pitchAndFamily & 0x0F; }
bool OfFamily(const InstalledFace& face, uint8_t family) {
  return (face.pitchAndFamily & 0xF0) == family;
}

// A face of the entry's family: a TrueType one first, else the one whose
// pitch nibble is largest.
const InstalledFace* FaceOfFamily(uint8_t family) {
  const std::vector<InstalledFace>& faces = InstalledFaces();
  for (const InstalledFace& face : faces)
    if (OfFamily(face, family) && (face.pitchAndFamily & kTrueTypeBit)) return &face;
  const InstalledFace* best = nullptr;
  for (const InstalledFace& face : faces)
    if (OfFamily(face, family) && (!best || PitchOf(face) > PitchOf(*best))) best = &face;
  return best;
}

}  // namespace

// The numbers in each face's first slot win over those in later slots, so a
// face the map names first for a number keeps it.
FaceChoice FaceForNumber(SInt16 number) {
  const std::vector<InstalledFace>& faces = InstalledFaces();
  const InstalledFace* applFace = nullptr;
  for (int slot = 0; slot < kMacNumbersPerFace; ++slot) {
    for (const InstalledFace& face : faces) {
      if (face.macNumbers[slot] == number)
        return FaceChoice{&face, MapEntryOfNumber(CurrentFontMap(), number)};
      if (!applFace && face.macNumbers[slot] == kApplFont) applFace = &face;
    }
  }
  if (const FontMapEntry* entry = MapEntryOfNumber(CurrentFontMap(), number))
    return FaceChoice{FaceOfFamily(entry->family), entry};
  return FaceChoice{applFace, nullptr};
}

// A bigger raster size costs a little more than a smaller one as far away,
// so 11 takes 10 (cost 2) before 12 (cost 3); the first of equal costs wins.
const FaceSize* SizeForRequest(const InstalledFace& face, SInt16 txSize) {
  if (face.sizes.empty()) return nullptr;
  if (!(face.fontType & RASTER_FONTTYPE)) return &face.sizes.front();
  const FaceSize* best = nullptr;
  int bestCost = 0;
  for (const FaceSize& size : face.sizes) {
    int cost = size.pixels > txSize ? 2 * (size.pixels - txSize) + 1 : 2 * (txSize - size.pixels);
    if (!best || cost < bestCost) {
      best = &size;
      bestCost = cost;
    }
  }
  return best;
}

}  // namespace kwe::quickdraw
