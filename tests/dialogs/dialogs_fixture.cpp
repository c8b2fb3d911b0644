#include "dialogs/dialogs_fixture.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#include "Resources.h"
#include "resource_builder/resource_description.h"
#include "resource_builder/resource_image.h"
#include "support/resource_image_file.h"

namespace kwe_test {

std::string AsString(const UInt8* pstring) {
  return std::string(reinterpret_cast<const char*>(pstring + 1), pstring[0]);
}

namespace {

BOOL CALLBACK CollectChild(HWND child, LPARAM context) {
  auto& out = *reinterpret_cast<std::vector<Child>*>(context);
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
  out.push_back(c);
  return TRUE;
}

}  // namespace

std::vector<Child> ChildrenOf(HWND parent) {
  std::vector<Child> out;
  EnumChildWindows(parent, CollectChild, reinterpret_cast<LPARAM>(&out));
  return out;
}

std::string Show(const RECT& r) {
  return std::to_string(r.top) + "," + std::to_string(r.left) + "," + std::to_string(r.bottom) +
         "," + std::to_string(r.right);
}
std::string Show(const Rect& r) { return Show(RECT{r.left, r.top, r.right, r.bottom}); }

HWND HwndOfDialog(DialogPtr d) { return KWE_GethWnd(d); }

HWND ItemChild(DialogPtr d, int item) { return GetDlgItem(HwndOfDialog(d), item); }

::testing::AssertionResult Flat(const Footprint& before, const Footprint& after) {
  constexpr int kCacheSlack = 8;
  if (after.windows == before.windows && after.bytes == before.bytes && after.list == before.list &&
      after.gdi - before.gdi < kCacheSlack)
    return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "before " << before << ", after " << after;
}

void DialogTest::SetUp() {
  WindowTest::SetUp();
  InitDialogs(nullptr);
}

void DialogTest::TearDown() {
  BYTE keys[256] = {};
  SetKeyboardState(keys);
  if (refNum > 0) CloseResFile(refNum);
  if (!file.empty()) DeleteFileA(file.c_str());
  WindowTest::TearDown();
}

void DialogTest::Resources(const std::string& description) {
  std::vector<resource_builder::Resource> list;
  std::string error;
  ASSERT_TRUE(resource_builder::ParseResourceDescription(description, list, error)) << error;
  OpenResourceImage(resource_builder::BuildResourceImage(list), "kwe_dlg_", &file, &refNum);
}

SInt16 DialogTest::RunModal(std::vector<std::function<void()>> steps, ModalFilterProcPtr filter,
                            std::vector<SInt16> stop) {
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

}  // namespace kwe_test
