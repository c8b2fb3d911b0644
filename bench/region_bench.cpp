// Regions against the GDI regions under them: the four set operations on two
// regions of 1,000 scattered rectangles each beside CombineRgn on the same
// Win32 regions, and PtInRgn and RectInRgn per call beside PtInRegion and
// RectInRegion.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "KWERegions.h"
#include "Quickdraw.h"
#include "bench_support.h"

namespace {

constexpr int kRectangles = 1000;
constexpr int kCombines = 400;
constexpr int kQueries = 200000;
constexpr int kRounds = 5;

kwe_bench::Numbers g_numbers(2024);
int Random(int n) { return g_numbers.Below(n); }

RgnHandle ScatteredRegion() {
  RgnHandle r = NewRgn(), piece = NewRgn();
  for (int i = 0; i < kRectangles; ++i) {
    int top = Random(4000), left = Random(4000);
    SetRectRgn(piece, SInt16(left), SInt16(top), SInt16(left + 5 + Random(60)),
               SInt16(top + 5 + Random(60)));
    UnionRgn(r, piece, r);
  }
  DisposeRgn(piece);
  return r;
}

template <typename Library, typename Raw>
void Compare(const char* what, int calls, double scale, const char* unit, Library library,
             Raw raw) {
  kwe_bench::CompareBest(what, kRounds, calls, scale, unit, library, raw);
}

}  // namespace

int main() {
  kwe_bench::Session session;
  RgnHandle a = ScatteredRegion(), b = ScatteredRegion(), dst = NewRgn();
  HRGN rawA = KWE_RgnSetToRealRectRgn(a), rawB = KWE_RgnSetToRealRectRgn(b);
  HRGN rawDst = CreateRectRgn(0, 0, 0, 0);
  DWORD count = GetRegionData(rawA, 0, nullptr);
  std::printf("two regions of %d scattered rectangles (%lu bytes of rectangles in the first)\n",
              kRectangles, static_cast<unsigned long>(count));

  struct Operation {
    const char* name;
    void(KWE_CALL* call)(RgnHandle, RgnHandle, RgnHandle);
    int mode;
  } operations[] = {{"UnionRgn vs CombineRgn(RGN_OR)", UnionRg, RGN_OR},
                    {"SectRgn vs CombineRgn(RGN_AND)", SectRgn, RGN_AND},
                    {"DiffRgn vs CombineRgn(RGN_DIFF)", DiffRgn, RGN_DIFF},
                    {"XorRgn vs CombineRgn(RGN_XOR)", XorRg, RGN_XOR}};
  for (const Operation& op : operations) {
    Compare(
        op.name, kCombines, 1e6, "us/call",
        [&] {
          for (int i = 0; i < kCombines; ++i) op.call(a, b, dst);
        },
        [&] {
          for (int i = 0; i < kCombines; ++i) CombineRgn(rawDst, rawA, rawB, op.mode);
        });
  }

  std::vector<Point> points(kQueries);
  std::vector<Rect> rects(kQueries);
  for (int i = 0; i < kQueries; ++i) {
    points[i] = Point{SInt16(Random(4100)), SInt16(Random(4100))};
    int top = Random(4100), left = Random(4100);
    rects[i] = Rect{SInt16(top), SInt16(left), SInt16(top + 1 + Random(20)),
                    SInt16(left + 1 + Random(20))};
  }
  volatile int sink = 0;
  Compare(
      "PtInRgn vs PtInRegion", kQueries, 1e9, "ns/call",
      [&] {
        int n = 0;
        for (const Point& p : points) n += PtInRgn(p, a);
        sink = sink + n;
      },
      [&] {
        int n = 0;
        for (const Point& p : points) n += PtInRegion(rawA, p.h, p.v) != 0;
        sink = sink + n;
      });
  Compare(
      "RectInRgn vs RectInRegion", kQueries, 1e9, "ns/call",
      [&] {
        int n = 0;
        for (const Rect& r : rects) n += RectInRgn(&r, a);
        sink = sink + n;
      },
      [&] {
        int n = 0;
        for (const Rect& r : rects) {
          RECT rect{r.left, r.top, r.right, r.bottom};
          n += RectInRegion(rawA, &rect) != 0;
        }
        sink = sink + n;
      });

  DeleteObject(rawDst);
  DisposeRgn(a);
  DisposeRgn(b);
  DisposeRgn(dst);
  return 0;
}
