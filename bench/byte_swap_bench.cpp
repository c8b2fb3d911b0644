// KWE_ByteSwap throughput on what a resource file holds, beside memcpy of
// the same bytes: the colour resources of a picture-heavy application
// ('clut' and 'pltt' tables of 256 colours, 'ppat' patterns, 'cicn' icons
// and the pictures themselves, about a megabyte) and the dialog item lists
// of a dialog-heavy one (2,000 'DITL' records of 30 items). Each pass loads
// every record (to native order) or writes it back (to Macintosh order).
#include <windows.h>

#include <cstdio>
#include <cstring>
#include <random>
#include <vector>

#include "KWEByteSwap.h"
#include "bench_support.h"

namespace {

using Bytes = std::vector<uint8_t>;

struct Record {
  ResType type;
  size_t offset, size;
};

struct Workload {
  const char* name;
  Bytes bytes;
  std::vector<Record> records;

  void Add(ResType type, const Bytes& data) {
    records.push_back({type, bytes.size(), data.size()});
    bytes.insert(bytes.end(), data.begin(), data.end());
  }
};

constexpr ResType Type(const char (&s)[5]) {
  return ResType(uint8_t(s[0])) << 24 | ResType(uint8_t(s[1])) << 16 | ResType(uint8_t(s[2])) << 8 |
         ResType(uint8_t(s[3]));
}

// Big-endian writing, as a resource compiler lays the records out.
struct Writer {
  Bytes b;
  Writer& W(uint16_t v) {
    b.push_back(uint8_t(v >> 8));
    b.push_back(uint8_t(v));
    return *this;
  }
  Writer& L(uint32_t v) { return W(uint16_t(v >> 16)).W(uint16_t(v)); }
  Writer& Fill(size_t n, uint8_t v) {
    b.insert(b.end(), n, v);
    return *this;
  }
};

Bytes ColourTable(std::mt19937& rng, int entries) {
  Writer w;
  w.L(rng()).W(0).W(uint16_t(entries - 1));
  for (int i = 0; i < entries; ++i)
    w.W(uint16_t(i)).W(uint16_t(rng())).W(uint16_t(rng())).W(uint16_t(rng()));
  return w.b;
}

Bytes Palette(std::mt19937& rng, int entries) {
  Writer w;
  w.W(uint16_t(entries)).L(0).W(0).L(0).L(0);
  for (int i = 0; i < entries; ++i)
    w.W(uint16_t(rng())).W(uint16_t(rng())).W(uint16_t(rng())).W(2).W(0x5000).W(0).L(0);
  return w.b;
}

// An 8 x 8 pattern of 8-bit pixels with a 16-colour table.
Bytes PixelPattern(std::mt19937& rng) {
  Writer w;
  w.W(1).L(28).L(78).L(0).W(0xFFFF).L(0).Fill(8, 0xAA);
  w.L(0).W(0x8008).W(0).W(0).W(8).W(8).W(0).W(0).L(0).L(0x00480000).L(0x00480000);
  w.W(0).W(8).W(1).W(8).L(0).L(78 + 64).L(0);
  w.Fill(64, uint8_t(rng()));
  Bytes table = ColourTable(rng, 16);
  w.b.insert(w.b.end(), table.begin(), table.end());
  return w.b;
}

// A 32 x 32 colour icon of 8-bit pixels.
Bytes ColourIcon(std::mt19937& rng) {
  Writer w;
  w.L(0).W(0x8020).W(0).W(0).W(32).W(32).W(0).W(0).L(0).L(0x00480000).L(0x00480000);
  w.W(0).W(8).W(1).W(8).L(0).L(0).L(0);
  w.L(0).W(4).W(0).W(0).W(32).W(32);
  w.L(0).W(4).W(0).W(0).W(32).W(32);
  w.L(0).Fill(2 * 4 * 32, 0xFF);
  Bytes table = ColourTable(rng, 256);
  w.b.insert(w.b.end(), table.begin(), table.end());
  w.Fill(32 * 32, uint8_t(rng()));
  return w.b;
}

Bytes Picture(std::mt19937& rng, size_t size) {
  Writer w;
  w.W(uint16_t(size)).W(0).W(0).W(480).W(640);
  while (w.b.size() < size) w.b.push_back(uint8_t(rng()));
  return w.b;
}

Workload ColourResources(std::mt19937& rng) {
  Workload load{"colour resources", {}, {}};
  for (int i = 0; i < 64; ++i) load.Add(Type("clut"), ColourTable(rng, 256));
  for (int i = 0; i < 64; ++i) load.Add(Type("pltt"), Palette(rng, 256));
  for (int i = 0; i < 256; ++i) load.Add(Type("ppat"), PixelPattern(rng));
  for (int i = 0; i < 128; ++i) load.Add(Type("cicn"), ColourIcon(rng));
  for (int i = 0; i < 16; ++i) load.Add(Type("PICT"), Picture(rng, 16384));
  return load;
}

// Buttons, check boxes, static and edit text, icons, pictures and user
// items, in the proportions of a preferences dialog.
Workload DialogItemLists(std::mt19937& rng) {
  static const char* const kTexts[] = {
      "OK",    "Cancel",           "Show hidden files",
      "Name:", "Use 24-hour time", "Default folder for new documents"};
  Workload load{"dialog item lists", {}, {}};
  std::uniform_int_distribution<int> kind(0, 6), text(0, 5);
  for (int list = 0; list < 2000; ++list) {
    Writer w;
    w.W(29);
    for (int item = 0; item < 30; ++item) {
      w.L(0).W(uint16_t(10 + item * 20)).W(20).W(uint16_t(26 + item * 20)).W(300);
      int k = kind(rng);
      if (k == 4 || k == 5) {  // icon or picture: a resource ID
        w.b.push_back(k == 4 ? 32 : 64);
        w.b.push_back(2);
        w.W(uint16_t(128 + item));
      } else if (k == 6) {  // user item: no data
        w.b.push_back(0x80);
        w.b.push_back(0);
      } else {
        const char* s = kTexts[text(rng)];
        size_t n = std::strlen(s);
        w.b.push_back(uint8_t(k == 3 ? 16 : k == 2 ? 8 : 4 + k));
        w.b.push_back(uint8_t(n));
        w.b.insert(w.b.end(), s, s + n);
        if (n & 1) w.b.push_back(0);
      }
    }
    load.Add(Type("DITL"), w.b);
  }
  return load;
}

template <class Pass>
double Throughput(size_t bytes, Pass pass) {
  pass(0);  // warm the caches, with an even number of passes
  pass(1);
  int passes = 0;
  double start = kwe_bench::Now(), elapsed = 0;
  do {
    pass(passes);
    ++passes;
    elapsed = kwe_bench::Now() - start;
  } while (elapsed < 0.25 || passes % 2);
  return double(bytes) * passes / elapsed / 1e6;
}

bool Measure(Workload load) {
  Bytes original = load.bytes, copy(load.bytes.size());
  // Odd passes load (to native order), even ones write back: the data stays
  // a valid resource file's data throughout.
  double swap = Throughput(load.bytes.size(), [&](int pass) {
    UInt32 direction = pass % 2 == 0 ? kweSwapToNative : kweSwapToMac;
    for (const Record& r : load.records)
      KWE_ByteSwap(direction, r.type, 128, SInt32(r.size), load.bytes.data() + r.offset);
  });
  double raw = Throughput(load.bytes.size(), [&](int) {
    for (const Record& r : load.records)
      std::memcpy(copy.data() + r.offset, original.data() + r.offset, r.size);
  });
  bool same = load.bytes == original;
  std::printf("%s: %zu records, %zu bytes%s\n", load.name, load.records.size(), load.bytes.size(),
              same ? "" : "  NOT RESTORED AFTER AN EVEN NUMBER OF PASSES");
  char label[80];
  std::snprintf(label, sizeof label, "KWE_ByteSwap %s (MB/s)", load.name);
  kwe_bench::PrintRatio(label, swap, raw, "MB/s");
  bool fastEnough = swap >= raw / 10;
  if (!fastEnough) std::printf("KWE_ByteSwap %s is below a tenth of memcpy\n", load.name);
  return same && fastEnough;
}

}  // namespace

int main() {
  kwe_bench::Session session;
  std::mt19937 rng(1991);
  bool ok = Measure(ColourResources(rng));
  ok = Measure(DialogItemLists(rng)) && ok;
  return ok ? 0 : 1;
}
