// Damaged resource files: every one is refused by OpenResFile with the
// Toolbox's code, leaves nothing of itself in the resource chain and is not
// touched on disk; a damaged data block costs only its own resource.
#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>
#include <vector>

#include "Files.h"
#include "OSUtils.h"
#include "resources/resource_file_fixture.h"

namespace {

using namespace resource_builder;
using kwe_test::AsBytes;
using kwe_test::HandleBytes;
using L = const ImageLayout&;

// Three types, named and unnamed resources; resource 4 is the last name.
std::vector<Resource> Sample() {
  return {MakeResource("STR ", 128, {5, 'H', 'e', 'l', 'l', 'o'}, "Greeting"),
          MakeResource("STR ", 129, {2, 'h', 'i'}),
          MakeResource("TEXT", 128, AsBytes("plain text"), "Notes"),
          MakeResource("PAT ", 1, {0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55}),
          MakeResource("TEXT", 129, AsBytes("more"), "Last")};
}

struct Damage {
  const char* what;
  std::function<void(Bytes&, L)> apply;
  ImageOptions options = {};
  bool costsOneResource = false;  // the file opens without 'TEXT' 128
};

void Truncate(Bytes& b, std::size_t size) { b.resize(size); }
std::size_t MapField(L l, std::size_t offset) { return l.map + offset; }
ImageOptions GapBeforeMap(int bytes) {
  ImageOptions o;
  o.gapBeforeMap = bytes;
  return o;
}

// A damaged data block: the file opens without 'TEXT' 128.
Damage Block(const char* what, std::function<void(Bytes&, L)> apply) {
  return {what, apply, {}, true};
}
// The length of 'TEXT' 128's data block that reaches the end offset.
std::uint32_t Over(L l, std::size_t end) { return std::uint32_t(end - l.dataBlocks[2] - 4); }

std::vector<Damage> Damages() {
  std::vector<Damage> list = {
      // Cut short at and inside every region.
      {"empty file", [](Bytes& b, L) { Truncate(b, 0); }},
      {"half a header", [](Bytes& b, L) { Truncate(b, 128); }},
      {"header only", [](Bytes& b, L) { Truncate(b, 256); }},
      {"285 bytes", [](Bytes& b, L) { Truncate(b, 285); }},
      {"cut inside the data", [](Bytes& b, L l) { Truncate(b, l.data + 7); }},
      {"cut at the end of the data", [](Bytes& b, L l) { Truncate(b, l.map); }},
      {"cut inside the map header", [](Bytes& b, L l) { Truncate(b, l.map + 20); }},
      {"cut after the type count", [](Bytes& b, L l) { Truncate(b, l.typeList + 2); }},
      {"cut inside the type list", [](Bytes& b, L l) { Truncate(b, l.typeEntries[1] + 3); }},
      {"cut at the reference lists", [](Bytes& b, L l) { Truncate(b, l.referenceLists[0]); }},
      {"cut inside a reference", [](Bytes& b, L l) { Truncate(b, l.references[4] + 5); }},
      {"cut at the name list", [](Bytes& b, L l) { Truncate(b, l.nameList); }},
      {"cut inside the last name", [](Bytes& b, L l) { Truncate(b, l.fileSize - 2); }},
      {"one byte short", [](Bytes& b, L l) { Truncate(b, l.fileSize - 1); }},
      // The header.
      {"data offset 0", [](Bytes& b, L) { Store32(b, 0, 0); }},
      {"data offset 257", [](Bytes& b, L) { Store32(b, 0, 257); }},
      {"map offset past the end", [](Bytes& b, L l) { Store32(b, 4, std::uint32_t(l.fileSize)); }},
      {"map offset inside the data",
       [](Bytes& b, L l) { Store32(b, 4, std::uint32_t(l.map - 4)); }},
      {"map offset 0", [](Bytes& b, L) { Store32(b, 4, 0); }},
      {"map 17 bytes behind the data", [](Bytes&, L) {}, GapBeforeMap(17)},
      {"map length 29", [](Bytes& b, L) { Store32(b, 12, 29); }},
      {"map length one past the end",
       [](Bytes& b, L l) { Store32(b, 12, std::uint32_t(l.mapLength + 1)); }},
      {"map length 0xFFFFFFFF", [](Bytes& b, L) { Store32(b, 12, 0xFFFFFFFF); }},
      {"data length 0xFFFFFFFF (wraps past 256)", [](Bytes& b, L) { Store32(b, 8, 0xFFFFFFFF); }},
      {"map offset and length wrap to a small end",
       [](Bytes& b, L) {
         Store32(b, 4, 0xFFFFFFF0);
         Store32(b, 8, 0xFFFFFFF0 - 256);
         Store32(b, 12, 0x20);
       }},
      {"data longer than the space before the map",
       [](Bytes& b, L l) { Store32(b, 8, std::uint32_t(l.dataLength + 1)); }},
      // The map.
      {"type list offset leaves no room for the count",
       [](Bytes& b, L l) { Store16(b, MapField(l, 24), std::uint16_t(l.mapLength - 1)); }},
      {"type list offset 0xFFFF", [](Bytes& b, L l) { Store16(b, MapField(l, 24), 0xFFFF); }},
      {"name list offset past the map",
       [](Bytes& b, L l) { Store16(b, MapField(l, 26), std::uint16_t(l.mapLength + 1)); }},
      {"type count -2", [](Bytes& b, L l) { Store16(b, l.typeList, 0xFFFE); }},
      {"type count 32768", [](Bytes& b, L l) { Store16(b, l.typeList, 0x7FFF); }},
      {"one type too many, read from the reference lists",
       [](Bytes& b, L l) { Store16(b, l.typeList, std::uint16_t(l.types.size())); }},
      {"reference count -2", [](Bytes& b, L l) { Store16(b, l.typeEntries[0] + 4, 0xFFFE); }},
      {"reference count 32768", [](Bytes& b, L l) { Store16(b, l.typeEntries[2] + 4, 0x7FFF); }},
      {"five references in the last list, past the map",
       [](Bytes& b, L l) { Store16(b, l.typeEntries[2] + 4, 4); }},
      {"reference list past the map",
       [](Bytes& b, L l) { Store16(b, l.typeEntries[1] + 6, 0xFFF0); }},
      {"reference list over the type list",
       [](Bytes& b, L l) { Store16(b, l.typeEntries[1] + 6, 2); }},
      {"two types sharing one reference list",
       [](Bytes& b, L l) {
         Store16(b, l.typeEntries[2] + 6, std::uint16_t(l.referenceLists[0] - l.typeList));
       }},
      {"name offset past the name list",
       [](Bytes& b, L l) { Store16(b, l.references[2] + 2, 0x7FF0); }},
      {"name offset -2", [](Bytes& b, L l) { Store16(b, l.references[0] + 2, 0xFFFE); }},
      {"last name running past the map", [](Bytes& b, L l) { b[l.names[4]] = 200; }},
      // A data block whose length or place lies outside the data area.
      Block("length one past the file",
            [](Bytes& b, L l) { Store32(b, l.dataBlocks[2], Over(l, l.fileSize) + 1); }),
      Block("length running from the data area into the map",
            [](Bytes& b, L l) { Store32(b, l.dataBlocks[2], Over(l, l.map) + 10); }),
      Block("length 0x7FFFFFF0", [](Bytes& b, L l) { Store32(b, l.dataBlocks[2], 0x7FFFFFF0); }),
      Block("length 0xFFFFFFFF", [](Bytes& b, L l) { Store32(b, l.dataBlocks[2], 0xFFFFFFFF); }),
      Block("offset past the file",
            [](Bytes& b, L l) { Store32(b, l.references[2] + 4, 0x00FFFFF0); }),
  };
  return list;
}

class ResourceFileDamage : public kwe_test::ResourceFileTest {};

TEST_F(ResourceFileDamage, EveryDamagedFileIsRefusedWithoutATrace) {
  // A sound file is open and current, so a damaged one that slipped into the
  // chain would show in CurResFile and CountTypes.
  const std::string goodPath = Put("good.rsr", BuildResourceImage(Sample()));
  const SInt16 good = Open(goodPath);
  ASSERT_NE(good, -1) << ResError();
  ASSERT_EQ(CountTypes(), 3);

  int number = 0;
  for (const Damage& damage : Damages()) {
    SCOPED_TRACE(damage.what);
    ImageLayout layout;
    Bytes bytes = BuildResourceImage(Sample(), damage.options, &layout);
    damage.apply(bytes, layout);
    const std::string path = Put("case" + std::to_string(++number) + ".rsr", bytes);
    const std::string before = kwe_test::ReadRaw(path);

    const SInt16 ref = Open(path);
    if (damage.costsOneResource) {
      ASSERT_NE(ref, -1) << ResError();
      EXPECT_EQ(GetResource('TEXT', 128), nullptr);
      EXPECT_EQ(ResError(), mapReadErr);
      EXPECT_EQ(HandleBytes(GetResource('TEXT', 129)), AsBytes("more"));
      EXPECT_EQ(HandleBytes(GetResource('STR ', 129)), (Bytes{2, 'h', 'i'}));
    } else {
      EXPECT_EQ(ref, -1);
      EXPECT_EQ(ResError(), mapReadErr);
    }
    if (ref != -1) CloseResFile(ref);
    EXPECT_EQ(CurResFile(), good);
    EXPECT_EQ(CountTypes(), 3);
    EXPECT_EQ(kwe_test::ReadRaw(path), before);
    EXPECT_TRUE(DeleteFileA(path.c_str())) << "the file is still held open";
  }
  EXPECT_EQ(kwe_test::ReadRaw(goodPath), kwe_test::AsString(BuildResourceImage(Sample())));
}

// The edges the checks must not cut (the 286-byte empty file opens in the
// Resource Manager's tests): a map 16 bytes behind the data with unused
// bytes after it, blocks shared by two references. Closing may compact the
// slack away; the resources stay.
TEST_F(ResourceFileDamage, FilesAtTheEdgesStillOpen) {
  std::vector<Resource> list = Sample();
  list[4].sharesDataOf = 2;
  ImageOptions options = GapBeforeMap(16);
  options.trailingBytes = 100;
  const std::string path = Put("edges.rsr", BuildResourceImage(list, options));
  const SInt16 ref = Open(path);
  ASSERT_NE(ref, -1) << ResError();
  EXPECT_EQ(CurResFile(), ref);
  EXPECT_EQ(Count1Types(), 3);
  EXPECT_EQ(HandleBytes(Get1Resource('TEXT', 129)), AsBytes("plain text"));
  EXPECT_EQ(HandleBytes(Get1Resource('PAT ', 1)), list[3].data);
  CloseResFile(ref);
  kwe_test::ExpectedFile expected;
  for (Resource r : list) {
    if (r.sharesDataOf >= 0) r.data = list[r.sharesDataOf].data;
    expected[{r.type, r.id}] = r;
  }
  ExpectOnDisk(path, expected);
}

// A resource file inside another open file (system value 8 names it, 10 its
// base for the system file's slot): read from its base; a base that leaves
// no room for the header is a short read.
TEST_F(ResourceFileDamage, EmbeddedFileReadsFromItsBase) {
  ImageOptions options;
  options.baseOffset = 512;
  const Bytes image = BuildResourceImage(Sample(), options);
  Put("outer.dat", image);
  SInt16 outer = 0;
  ASSERT_EQ(HOpen(0, 0, kwe_test::P("outer.dat"), fsRdPerm, &outer), noErr);
  KWE_SystemValue(1, 8, outer);
  KWE_SystemValue(1, 10, 512);
  SInt16 ref = Open(At("inner.rsr"));
  ASSERT_NE(ref, -1) << ResError();
  EXPECT_EQ(HandleBytes(Get1Resource('TEXT', 129)), AsBytes("more"));
  CloseResFile(ref);

  KWE_SystemValue(1, 10, static_cast<SInt32>(image.size() - 100));
  EXPECT_EQ(Open(At("inner.rsr")), -1);
  EXPECT_EQ(ResError(), ioErr);
  KWE_SystemValue(1, 8, -1);
  FSClose(outer);
  EXPECT_EQ(kwe_test::AsBytes(kwe_test::ReadRaw(At("outer.dat"))), image);
}

}  // namespace
