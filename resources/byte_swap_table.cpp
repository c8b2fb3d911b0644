#include "resources/byte_swap_table.h"

#include <string>

#include "resources/byte_swap_records.h"
#include "resources/resource_bytes.h"

namespace kwe::byteswap {
namespace {

// clang-format off
// Conversions that are not "nothing"; the rest of the table leaves the
// data as it is (code, fonts, strings, 1-bit icons and patterns).
enum class Layout {
  None, AnimatedCursor, Alert, LibraryDefaults, Cursor, ColourCursor, ColourTable, ItemList,
  DialogTemplate, International, MenuBar, Menu, PatternList, Picture, Palette, PixelPattern,
  StringList, WindowTemplate, ColourIcon, ControlTemplate, Version, Unknown
};

struct TableEntry {
  ResType type;
  Layout layout;
};

// Every type appears once, so the order decides nothing.
constexpr TableEntry kTable[] = {
    {TypeCode("acur"), Layout::AnimatedCursor}, {TypeCode("ALRT"), Layout::Alert},
    {TypeCode("KWED"), Layout::LibraryDefaults}, {TypeCode("CDEF"), Layout::None},
    {TypeCode("CURS"), Layout::Cursor},          {TypeCode("crsr"), Layout::ColourCursor},
    {TypeCode("clut"), Layout::ColourTable},     {TypeCode("DITL"), Layout::ItemList},
    {TypeCode("DLOG"), Layout::DialogTemplate},  {TypeCode("FONT"), Layout::None},
    {TypeCode("ICON"), Layout::None},            {TypeCode("ICN#"), Layout::None},
    {TypeCode("INIT"), Layout::None},            {TypeCode("INTL"), Layout::International},
    {TypeCode("MBAR"), Layout::MenuBar},         {TypeCode("MDEF"), Layout::None},
    {TypeCode("MENU"), Layout::Menu},            {TypeCode("PAT "), Layout::None},
    {TypeCode("PAT#"), Layout::PatternList},     {TypeCode("PICT"), Layout::Picture},
    {TypeCode("pltt"), Layout::Palette},         {TypeCode("ppat"), Layout::PixelPattern},
    {TypeCode("STR "), Layout::None},            {TypeCode("STR#"), Layout::StringList},
    {TypeCode("WDEF"), Layout::None},            {TypeCode("WIND"), Layout::WindowTemplate},
    {TypeCode("LDEF"), Layout::None},            {TypeCode("dctb"), Layout::None},
    {TypeCode("cicn"), Layout::ColourIcon},      {TypeCode("CNTL"), Layout::ControlTemplate},
    {TypeCode("vers"), Layout::Version},         {TypeCode("SICN"), Layout::None},
    {TypeCode("TEXT"), Layout::None},            {TypeCode("wctb"), Layout::None},
};
// clang-format on

Layout LayoutOf(ResType type) {
  for (const TableEntry& e : kTable)
    if (e.type == type) return e.layout;
  return Layout::Unknown;
}

// A signed 16-bit count as the Toolbox keeps it; negative means none.
int32_t Count(uint16_t word) { return word & 0x8000 ? 0 : int32_t(word); }

void SwapAnimatedCursor(ResourceBytes& b) {
  int32_t frames = Count(b.SteeringWord(0));
  b.Word(2);  // used-frame counter
  for (int32_t i = 0; i < frames; ++i) {
    uint64_t frame = 4 + 4 * uint64_t(i);
    if (!b.Word(frame) || !b.Word(frame + 2)) return;  // resource ID, filler
  }
}

void SwapAlert(ResourceBytes& b) {
  b.Rect(0);  // boundsRect
  b.Word(8);  // itemsID
  SwapAlertStages(b, 10);
}

// 'DITL': the count word holds the number of items minus one. Each item is
// a placeholder long, its display rectangle, a type byte and a data length
// byte; the data is padded to an even length. Control items naming a 'CNTL'
// and icon and picture items carry a 16-bit resource ID as their data.
void SwapItemList(ResourceBytes& b) {
  int32_t items = int32_t(int16_t(b.SteeringWord(0, 0xFFFF))) + 1;
  // Locals, not b's members: stores through the byte pointers could alias
  // them and make every check reload them.
  uint8_t* data = b.At(0);
  const uint64_t size = b.Size();
  uint64_t item = 2;
  bool damaged = false;
  for (int32_t i = 0; i < items; ++i) {
    if (item > size || size - item < 14) {
      damaged = true;
      break;
    }
    uint8_t* p = data + item;
    ReverseLong(p);           // placeholder
    ReverseFourWords(p + 4);  // display rectangle
    uint8_t type = p[12], length = p[13];
    if ((type & 7) == 7 || (type & 0x60) != 0) {
      // The ID word must lie in the item's own data (else it would be the
      // next item's) and inside the resource.
      if (length >= 2 && size - item >= 16)
        ReverseWord(p + 14);
      else
        damaged = true;
    }
    item += 14 + ((uint64_t(length) + 1) & ~uint64_t(1));
  }
  if (damaged) b.MarkDamaged();
}

void SwapDialogTemplate(ResourceBytes& b) {
  b.Rect(0);   // boundsRect
  b.Word(8);   // procID
  b.Long(14);  // refCon
  b.Word(18);  // itemsID
}

// 'INTL' 1 (long dates) is 332 bytes; 'INTL' 0 (numbers, short dates) is 32.
void SwapInternational(ResourceBytes& b) {
  if (b.Size() == 32) {
    b.Word(30);  // intl0Vers
  } else {
    b.Word(328);  // localRtn
    b.Word(330);  // intl1Vers
  }
}

void SwapCountedWords(ResourceBytes& b) {
  int32_t count = Count(b.SteeringWord(0));
  for (int32_t i = 0; i < count; ++i)
    if (!b.Word(2 + 2 * uint64_t(i))) return;
}

// The title and the items are bytes.
void SwapMenu(ResourceBytes& b) {
  b.Word(0);   // menuID
  b.Word(2);   // menuWidth
  b.Word(4);   // menuHeight
  b.Long(6);   // menuProc
  b.Long(10);  // enableFlags
}

// Only the header: the opcodes are the picture code's, converted as it plays.
void SwapPicture(ResourceBytes& b) {
  b.Word(0);  // picSize
  b.Rect(2);  // picFrame
}

void SwapPalette(ResourceBytes& b) {
  int32_t entries = Count(b.SteeringWord(0));
  b.Long(2);
  b.Word(6);
  b.Long(8);
  b.Long(12);
  for (int32_t i = 0; i < entries; ++i) {
    uint64_t entry = 16 + 16 * uint64_t(i);
    if (!b.Holds(entry, 16)) {
      b.MarkDamaged();
      return;
    }
    uint8_t* p = b.At(entry);
    ReverseFourWords(p);  // RGB, usage
    ReverseWord(p + 8);   // tolerance
    ReverseWord(p + 10);  // private flags
    ReverseLong(p + 12);
  }
}

// Runs swap over fields that steer the rest and answers what read finds in
// them in native order: read after the swap when loading, before it when
// writing, as the direction rule for counts has it.
template <class Swap, class Read>
auto SwapAndReadNative(ResourceBytes& b, Swap swap, Read read) {
  if (b.ToNative()) {
    swap();
    return read();
  }
  auto value = read();
  swap();
  return value;
}

// The colour table follows the pixel map and the pattern data; an offset
// that points back into the header is damage, not a table.
void SwapPixelPattern(ResourceBytes& b) {
  constexpr uint64_t kPixMapAt = 28, kTableField = kPixMapAt + 42;  // pmTable
  b.Word(0);                                                        // patType
  b.Long(2);                                                        // patMap
  b.Long(6);                                                        // patData
  b.Long(10);                                                       // patXData
  b.Word(14);                                                       // patXValid
  b.Long(16);                                                       // patXMap
  if (!b.Holds(kPixMapAt, kPixMapSize)) {
    SwapPixMap(b, kPixMapAt);  // what lies inside; the rest is damage
    return;
  }
  uint32_t tableOffset = SwapAndReadNative(
      b, [&] { SwapPixMap(b, kPixMapAt); }, [&] { return NativeLong(b.At(kTableField)); });
  if (tableOffset < kPixMapAt + kPixMapSize) {
    b.MarkDamaged();
    return;
  }
  SwapColourTable(b, tableOffset);
}

void SwapWindowTemplate(ResourceBytes& b) {
  b.Rect(0);   // boundsRect
  b.Word(8);   // procID
  b.Long(14);  // refCon
}

// A 'cicn' is the icon's PixMap, the mask and 1-bit BitMaps, a handle
// placeholder, the mask and 1-bit images (row bytes times the PixMap's
// height each), then the colour table.
void SwapColourIcon(ResourceBytes& b) {
  constexpr uint64_t kMaskAt = 50, kBitMapAt = 64, kImagesAt = 82;
  auto swapHeader = [&] {
    SwapPixMap(b, 0);
    SwapBitMap(b, kMaskAt);
    SwapBitMap(b, kBitMapAt);
  };
  if (!b.Holds(0, kImagesAt)) {
    swapHeader();  // what lies inside; the rest is damage
    return;
  }
  int64_t tableOffset = SwapAndReadNative(b, swapHeader, [&] {
    auto word = [&](uint64_t at) { return int64_t(int16_t(NativeWord(b.At(at)))); };
    int64_t rowBytes = (word(kMaskAt + 4) & 0x0FFF) + (word(kBitMapAt + 4) & 0x0FFF);
    int64_t height = word(10) - word(6);  // bounds.bottom - bounds.top
    return int64_t(kImagesAt) + rowBytes * height;
  });
  if (tableOffset < int64_t(kImagesAt)) {
    b.MarkDamaged();
    return;
  }
  SwapColourTable(b, uint64_t(tableOffset));
}

void SwapControlTemplate(ResourceBytes& b) {
  b.Rect(0);   // boundsRect
  b.Word(8);   // value
  b.Word(12);  // max
  b.Word(14);  // min
  b.Word(16);  // procID
  b.Long(18);  // refCon
}

void SwapVersion(ResourceBytes& b) {
  b.Word(0);  // the numeric version, as two words
  b.Word(2);
  b.Word(4);  // region code
}

std::string TypeText(ResType type) {
  std::string text(4, ' ');
  for (int i = 0; i < 4; ++i) text[i] = char((type >> (24 - 8 * i)) & 0xFF);
  return text;
}

void Report(const ByteSwapHost& host, ResType type, const char* what) {
  if (host.report) host.report((TypeText(type) + what).c_str());
}

}  // namespace

int TableTypeCount() { return int(sizeof kTable / sizeof kTable[0]); }
ResType TableType(int index) { return kTable[index].type; }

bool TableKnows(ResType type) { return LayoutOf(type) != Layout::Unknown; }

SwapOutcome SwapResource(UInt32 direction, ResType type, SInt16 id, SInt32 size, void* data,
                         const ByteSwapHost& host) {
  if (!data || size <= 0) return SwapOutcome::Untouched;
  ResourceBytes b(static_cast<uint8_t*>(data), size_t(size), direction != 0);
  Layout layout = LayoutOf(type);
  switch (layout) {
    case Layout::None: return SwapOutcome::Untouched;
    case Layout::AnimatedCursor: SwapAnimatedCursor(b); break;
    case Layout::Alert: SwapAlert(b); break;
    case Layout::LibraryDefaults: b.Word(2); break;
    case Layout::Cursor:
    case Layout::ColourCursor:
      if (host.convertCursor)
        host.convertCursor(layout == Layout::ColourCursor, data, size, direction);
      return SwapOutcome::Converted;
    case Layout::ColourTable: SwapColourTable(b, 0); break;
    case Layout::ItemList: SwapItemList(b); break;
    case Layout::DialogTemplate: SwapDialogTemplate(b); break;
    case Layout::International: SwapInternational(b); break;
    case Layout::MenuBar: SwapCountedWords(b); break;
    case Layout::PatternList:  // the count; the patterns and strings are bytes
    case Layout::StringList: b.Word(0); break;
    case Layout::Menu: SwapMenu(b); break;
    case Layout::Picture: SwapPicture(b); break;
    case Layout::Palette: SwapPalette(b); break;
    case Layout::PixelPattern: SwapPixelPattern(b); break;
    case Layout::WindowTemplate: SwapWindowTemplate(b); break;
    case Layout::ColourIcon: SwapColourIcon(b); break;
    case Layout::ControlTemplate: SwapControlTemplate(b); break;
    case Layout::Version: SwapVersion(b); break;
    case Layout::Unknown:
      if (host.convertHostType && host.convertHostType(direction, type, id, size, data))
        return SwapOutcome::Converted;
      Report(host, type, " unknown byteswap type");
      return SwapOutcome::UnknownType;
  }
  if (!b.Damaged()) return SwapOutcome::Converted;
  Report(host, type, " damaged byteswap data");
  return SwapOutcome::Damaged;
}

}  // namespace kwe::byteswap
