// Resource Manager against the Win32 file calls under it: opening a resource
// file of N resources of 20 types (beside CreateFileA + ReadFile of the same
// bytes) and getting one resource, loaded and converted (beside
// SetFilePointer + ReadFile of the same data block), for N from 100 up.
// The per-call curve against N shows whether lookups stay flat.
//
// A resource map addresses its name list with a 16-bit offset from the map's
// start and spends 12 bytes per reference, so one file holds at most about
// 5,400 resources. Larger N are spread over a chain of 5,000-resource files,
// searched newest first as GetResource does on the Macintosh.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Memory.h"
#include "Resources.h"
#include "bench_support.h"
#include "resource_builder/resource_image.h"

namespace {

using resource_builder::Bytes;
using resource_builder::TypeCode;

constexpr int kTypes = 20;
constexpr int kPerFile = 5000;
constexpr int kDataSize = 32;
constexpr int kRounds = 5;
constexpr int kLookups = 20000;

// Types whose conversion is fixed-size (at most 32 bytes) or none, so the
// loads never reach a host procedure.
const std::uint32_t kTypeCodes[kTypes] = {
    TypeCode("TEXT"), TypeCode("STR "), TypeCode("STR#"), TypeCode("PAT "), TypeCode("PAT#"),
    TypeCode("ICON"), TypeCode("ICN#"), TypeCode("SICN"), TypeCode("FONT"), TypeCode("vers"),
    TypeCode("KWED"), TypeCode("WIND"), TypeCode("DLOG"), TypeCode("CNTL"), TypeCode("ALRT"),
    TypeCode("MENU"), TypeCode("INIT"), TypeCode("LDEF"), TypeCode("dctb"), TypeCode("wctb")};

std::string g_dir;

struct Target {
  std::uint32_t type;
  std::int16_t id;
  int file;           // which file of the chain holds it
  std::size_t block;  // position of its data block's length word in that file
};

struct Setup {
  std::vector<std::string> paths;  // oldest first, the order they are opened
  std::vector<Target> targets;     // the resources to get, in a fixed scattered order
};

// Resource i of the whole set is of type i % 20 with ID i / 20 + 1, so every
// (type, ID) is unique across the chain.
Setup MakeFiles(int n) {
  Setup setup;
  std::vector<Target> all;
  for (int first = 0, file = 0; first < n; first += kPerFile, ++file) {
    const int count = std::min(kPerFile, n - first);
    std::vector<resource_builder::Resource> resources(static_cast<std::size_t>(count));
    for (int k = 0; k < count; ++k) {
      const int i = first + k;
      resources[k].type = kTypeCodes[i % kTypes];
      resources[k].id = static_cast<std::int16_t>(i / kTypes + 1);
      resources[k].data.assign(kDataSize, static_cast<std::uint8_t>(i));
    }
    resource_builder::ImageLayout layout;
    Bytes image = resource_builder::BuildResourceImage(resources, {}, &layout);
    std::string path = g_dir + "n" + std::to_string(n) + "_" + std::to_string(file) + ".rsr";
    HANDLE h = CreateFileA(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(h, image.data(), static_cast<DWORD>(image.size()), &written, nullptr);
    CloseHandle(h);
    setup.paths.push_back(path);
    for (int k = 0; k < count; ++k)
      all.push_back({resources[k].type, resources[k].id, file, layout.dataBlocks[k]});
  }
  // A fixed scatter over every resource (a multiplicative stride), so no two
  // neighbouring calls touch the same reference list or cache entry.
  const std::size_t stride = 7919;
  for (int k = 0; k < kLookups; ++k) setup.targets.push_back(all[(k * stride) % all.size()]);
  return setup;
}

struct PascalPath {
  unsigned char bytes[256];
  explicit PascalPath(const std::string& s) {
    bytes[0] = static_cast<unsigned char>(s.size());
    std::memcpy(bytes + 1, s.data(), s.size());
  }
};

std::vector<SInt16> OpenAll(const Setup& setup) {
  std::vector<SInt16> refs;
  for (const std::string& path : setup.paths) refs.push_back(OpenResFile(PascalPath(path).bytes));
  return refs;
}

void CloseAll(const std::vector<SInt16>& refs) {
  for (SInt16 ref : refs) CloseResFile(ref);
}

double LibraryOpen(const Setup& setup) {
  double start = kwe_bench::Now();
  std::vector<SInt16> refs = OpenAll(setup);
  double seconds = kwe_bench::Now() - start;
  CloseAll(refs);
  return seconds;
}

double RawOpen(const Setup& setup) {
  std::vector<char> bytes;
  double start = kwe_bench::Now();
  for (const std::string& path : setup.paths) {
    HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                           FILE_ATTRIBUTE_NORMAL, nullptr);
    bytes.resize(GetFileSize(h, nullptr));
    DWORD n = 0;
    ReadFile(h, bytes.data(), static_cast<DWORD>(bytes.size()), &n, nullptr);
    CloseHandle(h);
  }
  return kwe_bench::Now() - start;
}

// Seconds per GetResource + ReleaseResource; with load false only the
// lookup is left (the handle comes back empty). Misses are counted.
double LibraryGets(const Setup& setup, bool load, int& misses) {
  std::vector<SInt16> refs = OpenAll(setup);
  SetResLoad(load);
  misses = 0;
  double start = kwe_bench::Now();
  for (const Target& t : setup.targets) {
    Handle h = GetResource(t.type, t.id);
    if (!h || (load && GetHandleSize(h) != kDataSize)) ++misses;
    if (h) ReleaseResource(h);
  }
  double seconds = (kwe_bench::Now() - start) / kLookups;
  SetResLoad(true);
  CloseAll(refs);
  return seconds;
}

double RawGets(const Setup& setup) {
  std::vector<HANDLE> files;
  for (const std::string& path : setup.paths)
    files.push_back(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  char data[256];
  double start = kwe_bench::Now();
  for (const Target& t : setup.targets) {
    HANDLE h = files[static_cast<std::size_t>(t.file)];
    SetFilePointer(h, static_cast<LONG>(t.block), nullptr, FILE_BEGIN);
    unsigned char length[4];
    DWORD n = 0;
    ReadFile(h, length, 4, &n, nullptr);
    DWORD size = std::min<DWORD>(
        DWORD(length[0]) << 24 | length[1] << 16 | length[2] << 8 | length[3], sizeof data);
    ReadFile(h, data, size, &n, nullptr);
  }
  double seconds = (kwe_bench::Now() - start) / kLookups;
  for (HANDLE h : files) CloseHandle(h);
  return seconds;
}

struct Figures {
  int n, files;
  double open, rawOpen, get, rawGet, lookup;
  int misses;
};

Figures Measure(int n) {
  Setup setup = MakeFiles(n);
  Figures f{n, static_cast<int>(setup.paths.size()), 1e9, 1e9, 1e9, 1e9, 1e9, 0};
  for (int round = 0; round < kRounds; ++round) {
    // Turns alternate who goes first, so neither always finds a warmer cache.
    if (round % 2) {
      f.open = std::min(f.open, LibraryOpen(setup));
      f.rawOpen = std::min(f.rawOpen, RawOpen(setup));
      f.get = std::min(f.get, LibraryGets(setup, true, f.misses));
      f.rawGet = std::min(f.rawGet, RawGets(setup));
    } else {
      f.rawOpen = std::min(f.rawOpen, RawOpen(setup));
      f.open = std::min(f.open, LibraryOpen(setup));
      f.rawGet = std::min(f.rawGet, RawGets(setup));
      f.get = std::min(f.get, LibraryGets(setup, true, f.misses));
    }
    int lookupMisses = 0;
    f.lookup = std::min(f.lookup, LibraryGets(setup, false, lookupMisses));
    f.misses += lookupMisses;
  }
  for (const std::string& path : setup.paths) DeleteFileA(path.c_str());
  return f;
}

}  // namespace

int main() {
  char temp[MAX_PATH];
  GetTempPathA(sizeof temp, temp);
  g_dir = std::string(temp) + "kwe_rsrc_bench_" + std::to_string(GetCurrentProcessId()) + "\\";
  CreateDirectoryA(g_dir.c_str(), nullptr);
  std::vector<Figures> curve;
  {
    kwe_bench::Session session;
    for (int n : {100, 1000, 5000, 10000, 50000}) {
      Figures f = Measure(n);
      curve.push_back(f);
      char what[80];
      std::snprintf(what, sizeof what, "OpenResFile, %d resources in %d file(s) (ms)", n, f.files);
      kwe_bench::PrintRatio(what, f.open * 1e3, f.rawOpen * 1e3, "ms");
      std::snprintf(what, sizeof what, "GetResource+Release, %d resources (us/call)", n);
      kwe_bench::PrintRatio(what, f.get * 1e6, f.rawGet * 1e6, "us");
      if (f.misses)
        std::printf("  %d calls of the last round did not find their resource\n", f.misses);
      std::fflush(stdout);
    }
  }
  std::printf("\n%8s %6s %14s %18s %18s\n", "N", "files", "open (ms)", "get+load (us/call)",
              "lookup only (us)");
  for (const Figures& f : curve)
    std::printf("%8d %6d %14.3f %18.3f %18.3f\n", f.n, f.files, f.open * 1e3, f.get * 1e6,
                f.lookup * 1e6);
  const Figures& first = curve.front();
  for (const Figures& f : curve) {
    if (f.n != 5000 && f.n != 50000) continue;
    std::printf(
        "per-call time at %d (%d file%s) / at %d: get+load %.2fx, lookup %.2fx (target 2x)\n", f.n,
        f.files, f.files > 1 ? "s" : "", first.n, f.get / first.get, f.lookup / first.lookup);
  }
  RemoveDirectoryA(g_dir.c_str());
  return 0;
}
