// What kwerez compiles from the standard declarations is what the Toolbox
// managers read: the file is opened by the library's Resource Manager under
// Wine, which converts each resource to native order, and the fields are
// checked where the managers look for them; the independent reader sees the
// same bytes on disk.
#include <cstring>

#include "Resources.h"
#include "TextUtils.h"
#include "resources/resource_file_fixture.h"
#include "rez/rez_compiler.h"

namespace {

using kwe_test::AsBytes;

template <typename T>
T Field(Handle h, std::size_t offset) {
  T value;
  std::memcpy(&value, *h + offset, sizeof value);
  return value;
}

std::string PascalAt(Handle h, std::size_t offset) {
  const unsigned char* p = reinterpret_cast<const unsigned char*>(*h) + offset;
  return std::string(reinterpret_cast<const char*>(p + 1), p[0]);
}

class RezResourceManagerTest : public kwe_test::ResourceFileTest {};

TEST_F(RezResourceManagerTest, StandardResourcesReadBackWhereTheManagersLook) {
  const char* source =
      "#include \"Types.r\"\n"
      "resource 'MENU' (128, \"Edit\", purgeable) { 128, textMenuProc, allEnabled, enabled,\n"
      "  \"Edit\", { \"Undo\", noIcon, \"Z\", noMark, plain; \"-\", noIcon, noKey, noMark, plain } "
      "};\n"
      "resource 'DLOG' (200, locked) { {50, 60, 250, 400}, movableDBoxProc, visible, goAway,\n"
      "  0x01020304, 201, \"Find\" };\n"
      "resource 'ALRT' (300) { {100, 100, 200, 400}, 301, { OK, visible, sound1; OK, visible,\n"
      "  sound1; Cancel, visible, silent; Cancel, invisible, sound3 } };\n"
      "resource 'CNTL' (400, preload) { {10, 20, 30, 100}, 1, visible, 5, 0, checkBoxProc, 7,\n"
      "  \"Check\" };\n"
      "resource 'STR#' (500) { { \"one\"; \"two\" } };\n";
  rez::CompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  rez::FileLoader disk = options.loader;
  options.loader = [&](const std::string& path, std::string& contents) {
    if (path != "app.r") return disk(path, contents);
    contents = source;
    return true;
  };
  std::vector<rez::CompiledResource> resources;
  std::string file, error;
  ASSERT_TRUE(rez::CompileRez("app.r", options, resources, error)) << error;
  ASSERT_TRUE(rez::BuildResourceFile(resources, file, error)) << error;
  std::string path = Put("app.rsr", AsBytes(file));

  kwe_test::ExpectedFile expected;
  for (const rez::CompiledResource& r : resources)
    expected[{r.type, r.id}] =
        resource_builder::Resource{r.type, r.id, r.named, r.name, r.attributes, AsBytes(r.data)};
  ExpectOnDisk(path, expected);

  SInt16 ref = Open(path);
  ASSERT_GT(ref, 0);
  Handle menu = Get1Resource('MENU', 128);
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(Field<SInt16>(menu, 0), 128);
  EXPECT_EQ(Field<UInt32>(menu, 10), 0xFFFFFFFFu);
  EXPECT_EQ(PascalAt(menu, 14), "Edit");
  EXPECT_EQ(PascalAt(menu, 19), "Undo");
  EXPECT_EQ(Field<char>(menu, 25), 'Z');
  SInt16 id = 0;
  ResType type = 0;
  Str255 name;
  GetResInfo(menu, &id, &type, name);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(name + 1), name[0]), "Edit");
  EXPECT_EQ(GetResAttrs(menu) & (resPurgeable | resLocked | resPreload), resPurgeable);

  Handle dialog = Get1Resource('DLOG', 200);
  ASSERT_NE(dialog, nullptr);
  EXPECT_EQ(Field<SInt16>(dialog, 0), 50);
  EXPECT_EQ(Field<SInt16>(dialog, 6), 400);
  EXPECT_EQ(Field<SInt16>(dialog, 8), 5);
  EXPECT_EQ(Field<UInt8>(dialog, 10), 1);
  EXPECT_EQ(Field<UInt8>(dialog, 12), 1);
  EXPECT_EQ(Field<UInt32>(dialog, 14), 0x01020304u);
  EXPECT_EQ(Field<SInt16>(dialog, 18), 201);
  EXPECT_EQ(GetResAttrs(dialog) & resLocked, resLocked);

  // Stage 1 in the top nibble once converted: default item 2, hidden, three
  // beeps; stage 2 item 2, shown, silent; stages 3 and 4 item 1, shown, one beep.
  Handle alert = Get1Resource('ALRT', 300);
  ASSERT_NE(alert, nullptr);
  EXPECT_EQ(Field<SInt16>(alert, 8), 301);
  EXPECT_EQ(Field<UInt16>(alert, 10), 0xD366);

  Handle control = Get1Resource('CNTL', 400);
  ASSERT_NE(control, nullptr);
  EXPECT_EQ(Field<SInt16>(control, 2), 20);
  EXPECT_EQ(Field<SInt16>(control, 8), 1);
  EXPECT_EQ(Field<UInt8>(control, 10), 1);
  EXPECT_EQ(Field<SInt16>(control, 12), 5);
  EXPECT_EQ(Field<SInt16>(control, 16), 1);
  EXPECT_EQ(Field<SInt32>(control, 18), 7);
  EXPECT_EQ(PascalAt(control, 22), "Check");

  Str255 second;
  GetIndString(second, 500, 2);
  EXPECT_EQ(std::string(reinterpret_cast<char*>(second + 1), second[0]), "two");
  CloseResFile(ref);
}

}  // namespace
