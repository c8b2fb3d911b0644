#include "dialogs/dialogs_fixture.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>

#include "Resources.h"
#include "resource_builder/resource_description.h"
#include "resource_builder/resource_image.h"
#include "support/resource_image_file.h"
#include "support/timed_steps.h"

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

void PostKey(HWND to, UINT vk, bool shift, bool ctrl, bool alt) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_SHIFT] = shift ? 0x80 : 0;
  keys[VK_CONTROL] = ctrl ? 0x80 : 0;
  keys[VK_MENU] = alt ? 0x80 : 0;
  SetKeyboardState(keys);
  // Alt makes them system keys, with the context bit (29) set.
  LPARAM down = LPARAM(1 | (MapVirtualKeyA(vk, 0) << 16) | (alt ? 1u << 29 : 0));
  PostMessageA(to, alt ? WM_SYSKEYDOWN : WM_KEYDOWN, vk, down);
  PostMessageA(to, alt ? WM_SYSKEYUP : WM_KEYUP, vk, down | LPARAM(3u << 30));
}

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

void DialogTest::WhileModal(std::vector<std::function<void()>> steps,
                            const std::function<void()>& call) {
  int idle = 0;
  TimedSteps run(std::move(steps), 30, [&idle] {
    // Past the steps: a loop still running after a second is pressed out.
    if (++idle <= 33) return;
    if (HWND front = GetForegroundWindow()) PostKey(front, VK_ESCAPE);
    idle = 0;
  });
  call();
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
