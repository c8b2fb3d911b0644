// File Manager against the Win32 file calls it is built on: reading and
// writing a 64 MB file in 4 KB and 1 MB pieces, and naming, opening and
// closing files in directories of 100, 1,000 and 10,000 files. Each line:
// library figure, raw Win32 figure, ratio. Every figure is the best of
// several rounds, library and raw taking turns.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "Files.h"
#include "bench_support.h"
#include "support/temp_tree.h"

namespace {

constexpr SInt32 kFileSize = 64 << 20;
constexpr int kRounds = 9;

struct PascalName {
  unsigned char bytes[256];
  explicit PascalName(const std::string& s) {
    bytes[0] = static_cast<unsigned char>(s.size());
    std::memcpy(bytes + 1, s.data(), s.size());
  }
};

std::string g_dir;

// --- 64 MB in pieces ---

double LibraryWrite(const std::string& name, const std::vector<char>& piece) {
  PascalName pname(name);
  DeleteFileA((g_dir + name).c_str());
  double start = kwe_bench::Now();
  Create(pname.bytes, 0, 0, 0);
  SInt16 ref = 0;
  HOpen(0, 0, pname.bytes, fsRdWrPerm, &ref);
  for (SInt32 done = 0; done < kFileSize;) {
    SInt32 count = static_cast<SInt32>(piece.size());
    FSWrite(ref, &count, piece.data());
    done += count;
  }
  FSClose(ref);
  return kwe_bench::Now() - start;
}

double RawWrite(const std::string& name, const std::vector<char>& piece) {
  std::string path = g_dir + name;
  DeleteFileA(path.c_str());
  double start = kwe_bench::Now();
  HANDLE h = CreateFileA(path.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                         CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
  for (SInt32 done = 0; done < kFileSize;) {
    DWORD written = 0;
    WriteFile(h, piece.data(), static_cast<DWORD>(piece.size()), &written, nullptr);
    done += static_cast<SInt32>(written);
  }
  CloseHandle(h);
  return kwe_bench::Now() - start;
}

double LibraryRead(const std::string& name, std::vector<char>& piece) {
  PascalName pname(name);
  double start = kwe_bench::Now();
  SInt16 ref = 0;
  HOpen(0, 0, pname.bytes, fsRdPerm, &ref);
  for (;;) {
    SInt32 count = static_cast<SInt32>(piece.size());
    if (FSRead(ref, &count, piece.data()) != noErr) break;
  }
  FSClose(ref);
  return kwe_bench::Now() - start;
}

double RawRead(const std::string& name, std::vector<char>& piece) {
  std::string path = g_dir + name;
  double start = kwe_bench::Now();
  HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  for (;;) {
    DWORD n = 0;
    if (!ReadFile(h, piece.data(), static_cast<DWORD>(piece.size()), &n, nullptr) ||
        n < piece.size())
      break;
  }
  CloseHandle(h);
  return kwe_bench::Now() - start;
}

void Transfers(size_t pieceSize, const char* label) {
  std::vector<char> piece(pieceSize, 'k');
  double libWrite = 1e9, rawWrite = 1e9, libRead = 1e9, rawRead = 1e9;
  for (int round = 0; round < kRounds; ++round) {
    // Turns alternate who goes first, so neither always finds a warmer cache.
    if (round % 2) {
      libWrite = std::min(libWrite, LibraryWrite("lib.bin", piece));
      rawWrite = std::min(rawWrite, RawWrite("raw.bin", piece));
      libRead = std::min(libRead, LibraryRead("lib.bin", piece));
      rawRead = std::min(rawRead, RawRead("lib.bin", piece));
    } else {
      rawWrite = std::min(rawWrite, RawWrite("raw.bin", piece));
      libWrite = std::min(libWrite, LibraryWrite("lib.bin", piece));
      rawRead = std::min(rawRead, RawRead("lib.bin", piece));
      libRead = std::min(libRead, LibraryRead("lib.bin", piece));
    }
  }
  char what[80];
  std::snprintf(what, sizeof what, "FSWrite 64 MB in %s pieces (ms)", label);
  kwe_bench::PrintRatio(what, libWrite * 1e3, rawWrite * 1e3, "ms");
  std::snprintf(what, sizeof what, "FSRead 64 MB in %s pieces (ms)", label);
  kwe_bench::PrintRatio(what, libRead * 1e3, rawRead * 1e3, "ms");
  DeleteFileA((g_dir + "lib.bin").c_str());
  DeleteFileA((g_dir + "raw.bin").c_str());
}

// --- Naming and opening files ---

std::string FileName(int i) {
  char name[32];
  std::snprintf(name, sizeof name, "file%05d.dat", i);
  return name;
}

void Populate(const std::string& directory, int count) {
  CreateDirectoryA(directory.c_str(), nullptr);
  for (int i = 0; i < count; ++i) {
    HANDLE h = CreateFileA((directory + FileName(i)).c_str(), GENERIC_WRITE, 0, nullptr,
                           CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    CloseHandle(h);
  }
}

// Seconds per file for FSMakeFSSpec + FSpOpenDF + FSClose over `touch` files.
double LibraryOpens(const std::string& directory, int count, int touch) {
  SInt32 dirID = KWE_DirIDFromPath(directory.c_str(), nullptr, nullptr);
  std::vector<PascalName> names;
  for (int i = 0; i < touch; ++i) names.emplace_back(FileName(i * (count / touch)));
  double start = kwe_bench::Now();
  for (const PascalName& name : names) {
    FSSpec spec;
    FSMakeFSSpec(0, dirID, name.bytes, &spec);
    SInt16 ref = 0;
    FSpOpenDF(&spec, fsRdPerm, &ref);
    FSClose(ref);
  }
  return (kwe_bench::Now() - start) / touch;
}

double RawOpens(const std::string& directory, int count, int touch) {
  std::vector<std::string> paths;
  for (int i = 0; i < touch; ++i) paths.push_back(directory + FileName(i * (count / touch)));
  double start = kwe_bench::Now();
  for (const std::string& path : paths) {
    HANDLE h = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                           OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    CloseHandle(h);
  }
  return (kwe_bench::Now() - start) / touch;
}

void Opens() {
  const int counts[] = {100, 1000, 10000};
  for (int count : counts) Populate(g_dir + "n" + std::to_string(count) + "\\", count);
  double lib[3] = {1e9, 1e9, 1e9}, raw[3] = {1e9, 1e9, 1e9};
  for (int round = 0; round < kRounds; ++round) {
    for (int i = 0; i < 3; ++i) {
      std::string directory = g_dir + "n" + std::to_string(counts[i]) + "\\";
      int touch = counts[i] < 1000 ? counts[i] : 1000;
      if (round % 2) {
        lib[i] = std::min(lib[i], LibraryOpens(directory, counts[i], touch));
        raw[i] = std::min(raw[i], RawOpens(directory, counts[i], touch));
      } else {
        raw[i] = std::min(raw[i], RawOpens(directory, counts[i], touch));
        lib[i] = std::min(lib[i], LibraryOpens(directory, counts[i], touch));
      }
    }
  }
  for (int i = 0; i < 3; ++i) {
    char what[80];
    std::snprintf(what, sizeof what, "spec+open+close, %d files in dir (us/file)", counts[i]);
    kwe_bench::PrintRatio(what, lib[i] * 1e6, raw[i] * 1e6, "us");
    kwe_test::RemoveTree(g_dir + "n" + std::to_string(counts[i]) + "\\");
  }
}

}  // namespace

int main() {
  char temp[MAX_PATH];
  GetTempPathA(sizeof temp, temp);
  g_dir = std::string(temp) + "kwe_fm_bench_" + std::to_string(GetCurrentProcessId()) + "\\";
  CreateDirectoryA(g_dir.c_str(), nullptr);
  {
    kwe_bench::Session session;
    SetCurrentDirectoryA(g_dir.c_str());
    Transfers(4096, "4 KB");
    Transfers(1 << 20, "1 MB");
    Opens();
    SetCurrentDirectoryA(temp);
  }  // the session and its open files end before the files are removed
  kwe_test::RemoveTree(g_dir);
  return 0;
}
