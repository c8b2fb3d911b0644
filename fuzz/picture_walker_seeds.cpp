// Writes the seed corpus of picture_walker_fuzz: pictures laid out as the
// library's recorder writes them (the processor's-order header, version 2
// opcodes padded to even length), a version 1 picture and pixel data of
// every packing.
#include <cstdint>
#include <cstdio>
#include <string>
#include <vector>

namespace {

struct Picture {
  std::vector<uint8_t> b = {0, 0, 0, 0, 0, 0, 100, 0, 200, 0};
  Picture& Byte(int v) {
    b.push_back(static_cast<uint8_t>(v));
    return *this;
  }
  Picture& Word(int v) { return Byte(v >> 8).Byte(v); }
  Picture& Long(uint32_t v) {
    return Word(static_cast<int>(v >> 16)).Word(static_cast<int>(v & 0xFFFF));
  }
  Picture& Rect(int t, int l, int bo, int r) { return Word(t).Word(l).Word(bo).Word(r); }
  Picture& Header() {
    Word(0x0011).Word(0x02FF).Word(0x0C00).Long(0xFFFFFFFF);
    return Long(0).Long(0).Long(200u << 16).Long(100u << 16).Long(0);
  }
  Picture& End() {
    if (b.size() & 1) Byte(0);
    return Word(0x00FF);
  }
  Picture& PixMap(int rowBytes, int packType, int depth, int cmpCount) {
    Word(0x8000 | rowBytes).Rect(0, 0, 4, 16).Word(0).Word(packType).Long(0);
    Long(72u << 16).Long(72u << 16).Word(depth > 8 ? 16 : 0).Word(depth).Word(cmpCount);
    return Word(depth > 8 ? 8 : depth).Long(0).Long(0).Long(0);
  }
};

bool Write(const std::string& dir, const char* name, const Picture& p) {
  std::FILE* f = std::fopen((dir + "/" + name).c_str(), "wb");
  if (!f) return false;
  std::fwrite(p.b.data(), 1, p.b.size(), f);
  return std::fclose(f) == 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: %s <directory>\n", argv[0]);
    return 2;
  }
  std::string dir = argv[1];
  Picture empty;
  empty.Header().End();
  Picture shapes;
  shapes.Header().Word(0x0001).Word(10).Rect(0, 0, 100, 200).Word(0x0031).Rect(20, 30, 40, 50);
  shapes.Word(0x0022).Word(50).Word(50).Byte(5).Byte(0xFD).Word(0x0023).Byte(5).Byte(0xFD);
  shapes.Word(0x000B).Word(8).Word(8).Word(0x0040).Rect(1, 1, 50, 50);
  shapes.Word(0x0061).Rect(0, 0, 90, 90).Word(30).Word(120);
  shapes.Word(0x0070).Word(18).Rect(0, 0, 9, 9).Word(1).Word(1).Word(8).Word(8).End();
  Picture text;
  text.Header().Word(0x002C).Word(8).Word(20).Byte(5);
  for (char c : std::string("Times")) text.Byte(c);
  text.Word(0x0003).Word(20).Word(0x000D).Word(18).Word(0x0028).Word(40).Word(10).Byte(2);
  text.Byte('a').Byte('b').Word(0x0029).Byte(12).Byte(1).Byte('c');
  text.Word(0x00A1)
      .Word(200)
      .Word(8)
      .Long(0x00010002)
      .Long(0x00030004)
      .Word(0x00A0)
      .Word(100)
      .End();
  Picture v1;
  v1.Byte(0x11).Byte(0x01).Byte(0x31).Rect(10, 10, 20, 20).Byte(0xA0).Word(1).Byte(0xFF);
  Picture pixels;
  pixels.Header().Word(0x0098).PixMap(16, 0, 8, 1).Long(0).Word(0).Word(1);
  pixels.Word(0).Word(0xFFFF).Word(0).Word(0).Word(1).Word(0).Word(0).Word(0xFFFF);
  pixels.Rect(0, 0, 4, 16).Rect(0, 0, 40, 160).Word(0);
  for (int row = 0; row < 4; ++row) pixels.Byte(4).Byte(0xF9).Byte(0).Byte(0xF9).Byte(1);
  pixels.End();
  Picture direct;
  direct.Header().Word(0x009A).Long(0xFF).PixMap(64, 4, 32, 3);
  direct.Rect(0, 0, 4, 16).Rect(0, 0, 4, 16).Word(64);
  for (int row = 0; row < 4; ++row)
    direct.Byte(6).Byte(0xF1).Byte(0xFF).Byte(0xF1).Byte(0).Byte(0xF1).Byte(0x80);
  direct.Word(0x009A).Long(0xFF).PixMap(32, 3, 16, 3).Rect(0, 0, 4, 16).Rect(0, 0, 4, 16).Word(0);
  for (int row = 0; row < 4; ++row) direct.Byte(3).Byte(0xF1).Word(0x7C1F);
  direct.End();
  // Regions in their lines (a clip and a painted one), an RGB pen pattern
  // and a full 2-bit fill pattern with its colour table.
  Picture regions;
  regions.Header();
  for (int op : {0x0001, 0x0081}) {
    regions.Word(op).Word(36).Rect(0, 0, 20, 20).Word(0).Word(0).Word(10).Word(0x7FFF);
    regions.Word(10).Word(0).Word(20).Word(0x7FFF).Word(20).Word(10).Word(20).Word(0x7FFF);
    regions.Word(0x7FFF);
  }
  regions.Word(0x0013).Word(2).Long(0).Long(0).Word(0xFFFF).Word(0x8000).Word(0);
  regions.Word(0x0014).Word(1).Long(0x0F0F0F0F).Long(0xF0F0F0F0).Word(0x8002).Rect(0, 0, 8, 8);
  regions.Word(0).Word(0).Long(0).Long(72u << 16).Long(72u << 16).Word(0).Word(2).Word(1).Word(2);
  regions.Long(0).Long(0).Long(0).Long(0).Word(0).Word(3);
  for (int i = 0; i < 4; ++i) regions.Word(i).Word(i * 0x5555).Word(0).Word(0xFFFF - i * 0x5555);
  for (int row = 0; row < 8; ++row) regions.Byte(0x1B).Byte(0xE4);
  regions.Word(0x0034).Rect(2, 2, 18, 18).End();
  bool ok = Write(dir, "regions", regions) && Write(dir, "empty", empty) &&
            Write(dir, "shapes", shapes) && Write(dir, "text", text) &&
            Write(dir, "version1", v1) && Write(dir, "indexed", pixels) &&
            Write(dir, "direct", direct);
  return ok ? 0 : 1;
}
