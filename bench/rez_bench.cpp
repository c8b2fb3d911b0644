// kwerez and kwederez on a generated 5 MB Rez source: 20,000 resources of
// fourteen types, split over four files because one resource file's map
// holds at most about 5,400 references. Compiling reads each .r from disk
// and writes its resource file; decompiling reads the resource file and
// writes the .r. Both figures count megabytes of Rez source per second
// (there is no Win32 counterpart to compare with); each round is printed,
// then the median.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bench_support.h"
#include "rez/fork_reader.h"
#include "rez/rez_compiler.h"
#include "support/temp_tree.h"

namespace {

constexpr int kFiles = 4, kPerFile = 5000, kRounds = 5;

class Generator {
 public:
  explicit Generator(unsigned seed) : rng_(seed) {}

  std::string Source(int file) {
    std::ostringstream out;
    out << "#include \"Types.r\"\n\n";
    for (int i = 0; i < kPerFile; ++i) Resource(out, file * kPerFile + i, i % 14);
    return out.str();
  }

 private:
  std::mt19937 rng_;
  int Below(int n) { return std::uniform_int_distribution<int>(0, n - 1)(rng_); }
  std::string Word() {
    static const char* const kWords[] = {"Open", "Close",   "Save As",  "Print",  "Quit",
                                         "Find", "Replace", "Document", "Window", "Untitled"};
    return kWords[Below(10)];
  }
  std::string Rect() {
    int top = Below(300), left = Below(400);
    return "{" + std::to_string(top) + ", " + std::to_string(left) + ", " +
           std::to_string(top + 20 + Below(200)) + ", " + std::to_string(left + 40 + Below(300)) +
           "}";
  }

  void Resource(std::ostringstream& out, int n, int kind) {
    int id = n % 30000 + 128;
    switch (kind) {
      case 0:
        out << "resource 'STR#' (" << id << ") { {";
        for (int s = 0; s < 6; ++s)
          out << (s ? ";" : "") << "\n\t\"" << Word() << " " << Word() << "\"";
        out << " } };\n";
        break;
      case 1:
        out << "resource 'MENU' (" << id << ", \"" << Word() << "\") { " << id
            << ", textMenuProc, allEnabled, enabled, \"" << Word() << "\", {\n"
            << "\t\"" << Word() << "\", noIcon, \"N\", noMark, plain;\n"
            << "\t\"" << Word() << "\", noIcon, \"O\", noMark, plain;\n"
            << "\t\"" << Word() << "\", noIcon, \"W\", noMark, plain;\n"
            << "\t\"-\", noIcon, noKey, noMark, plain;\n"
            << "\t\"" << Word() << " " << Word() << "\", noIcon, noKey, noMark, italic;\n"
            << "\t\"" << Word() << "\", noIcon, noKey, check, bold } };\n";
        break;
      case 2:
        out << "resource 'DITL' (" << id << ", purgeable) { {\n\t" << Rect()
            << ", Button { enabled, \"OK\" };\n\t" << Rect() << ", StaticText { disabled, \""
            << Word() << " " << Word() << "\" };\n\t" << Rect() << ", EditText { enabled, \""
            << Word() << "\" };\n\t" << Rect() << ", Button { enabled, \"Cancel\" };\n\t" << Rect()
            << ", Control { enabled, " << id << " } } };\n";
        break;
      case 3:
        out << "resource 'WIND' (" << id << ") { " << Rect()
            << ", zoomDocProc, visible, goAway, 0x0, \"" << Word() << "\" };\n";
        break;
      case 4:
        out << "resource 'CNTL' (" << id << ") { " << Rect() << ", 0, visible, 100, 0, "
            << "scrollBarProc, 0, \"\" };\n";
        break;
      case 5:
        out << "resource 'DLOG' (" << id << ") { " << Rect()
            << ", movableDBoxProc, invisible, noGoAway, 0x0, " << id << ", \"" << Word()
            << "\" };\n";
        break;
      case 6:
        out << "resource 'ALRT' (" << id << ") { " << Rect() << ", " << id
            << ", { OK, visible, sound1; OK, visible, sound1; OK, visible, sound1; OK, visible, "
               "sound1 } };\n";
        break;
      case 7:
        out << "resource 'clut' (" << id << ") { 0x0, 0x0, {\n\t0, 0xFFFF, 0xFFFF, 0xFFFF;\n\t1, "
            << Below(65536) << ", " << Below(65536) << ", 0x0;\n\t2, 0x0, 0x0, 0x0;\n\t3, 0x8000, "
            << Below(65536) << ", 0x0;\n\t4, 0x4000, 0x4000, 0x4000;\n\t5, 0x0, 0x0, 0x0 } };\n";
        break;
      case 8:
        out << "resource 'vers' (" << id << ") { 0x01, 0x00, final, 0x00, 0, \"1.0\", \"1.0, "
            << Word() << "\" };\n";
        break;
      case 9:
        out << "resource 'TEXT' (" << id << ") {";
        for (int line = 0; line < 6; ++line)
          out << "\n\t\"" << Word() << " " << Word() << " " << Word() << " " << Word() << "\\n\"";
        out << " };\n";
        break;
      case 10:
        out << "resource 'PAT#' (" << id << ") { { $\"AA55 AA55 AA55 AA55\"; $\"8822 8822 "
            << "8822 8822\" } };\n";
        break;
      case 11:
        out << "resource 'KWED' (" << id << ") { 0, standardFont, tabByTable, keepOKCancel, { "
            << "1, 1, \"O\", noGroup, singleLine, notCombo; 2, 2, noMnemonic, 1, singleLine, "
            << "notCombo } };\n";
        break;
      case 12:
        out << "resource 'SIZE' (" << id << ") { acceptSuspendResumeEvents, canBackground, "
            << "doesActivateOnFGSwitch, backgroundAndForeground, getFrontClicks, "
            << "ignoreAppDiedEvents, is32BitCompatible, isHighLevelEventAware, "
            << "onlyLocalHLEvents, notStationeryAware, dontUseTextEditServices, 1048576, "
               "524288 };\n";
        break;
      default: {
        out << "data 'XDAT' (" << id << ") {\n";
        for (int line = 0; line < 28; ++line) {
          out << "\t$\"";
          for (int b = 0; b < 16; ++b) {
            char hex[3];
            std::snprintf(hex, sizeof hex, "%02X", Below(256));
            out << hex << (b % 2 && b < 15 ? " " : "");
          }
          out << "\"\n";
        }
        out << "};\n";
      }
    }
  }
};

std::string ReadAll(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// This process's own processor time, which other work on the machine does not inflate.
double CpuSeconds() {
  FILETIME created, exited, kernel, user;
  GetProcessTimes(GetCurrentProcess(), &created, &exited, &kernel, &user);
  auto seconds = [](const FILETIME& t) {
    return (static_cast<double>(t.dwHighDateTime) * 4294967296.0 + t.dwLowDateTime) / 1e7;
  };
  return seconds(kernel) + seconds(user);
}

double Median(std::vector<double> v) {
  std::sort(v.begin(), v.end());
  return v[v.size() / 2];
}

}  // namespace

int main() {
  char temp[MAX_PATH];
  GetTempPathA(MAX_PATH, temp);
  std::string dir = std::string(temp) + "kwe_rez_bench\\";
  kwe_test::RemoveTree(dir);
  CreateDirectoryA(dir.c_str(), nullptr);

  Generator generator(20261126);
  double sourceBytes = 0;
  for (int f = 0; f < kFiles; ++f) {
    std::string text = generator.Source(f);
    sourceBytes += static_cast<double>(text.size());
    std::ofstream(dir + "part" + std::to_string(f) + ".r", std::ios::binary) << text;
  }
  std::printf("Rez source: %.2f MB, %d resources in %d files\n", sourceBytes / 1e6,
              kFiles * kPerFile, kFiles);

  // The standard declarations are copied beside the programs of the tree.
  char module[MAX_PATH];
  GetModuleFileNameA(nullptr, module, MAX_PATH);
  std::string types = module;
  types = types.substr(0, types.find_last_of("\\/") + 1) + "rez-types";
  rez::CompileOptions compileOptions;
  compileOptions.includeDirectories = {types};
  rez::DecompileOptions decompileOptions;
  decompileOptions.includeDirectories = {types};
  std::vector<double> compileRates, decompileRates, compileCpu, decompileCpu;
  for (int round = 1; round <= kRounds; ++round) {
    std::string error;
    double start = kwe_bench::Now(), cpuStart = CpuSeconds();
    for (int f = 0; f < kFiles; ++f) {
      std::vector<rez::CompiledResource> resources;
      std::string file, name = dir + "part" + std::to_string(f);
      if (!rez::CompileRez(name + ".r", compileOptions, resources, error) ||
          !rez::BuildResourceFile(resources, file, error) ||
          !rez::WriteFileAtomically(name + ".rsr", file, error)) {
        std::printf("compile failed: %s\n", error.c_str());
        return 1;
      }
    }
    double compiled = kwe_bench::Now(), cpuCompiled = CpuSeconds();
    double outputBytes = 0;
    for (int f = 0; f < kFiles; ++f) {
      std::vector<rez::CompiledResource> resources;
      std::string text, name = dir + "part" + std::to_string(f);
      if (!rez::ReadResourceFork(ReadAll(name + ".rsr"), resources, error) ||
          !rez::DecompileRez(resources, decompileOptions, text, error) ||
          !rez::WriteFileAtomically(name + ".out.r", text, error)) {
        std::printf("decompile failed: %s\n", error.c_str());
        return 1;
      }
      outputBytes += static_cast<double>(text.size());
      if (text.find("\ndata 'MENU'") != std::string::npos) {
        std::printf("a 'MENU' came back as raw data\n");
        return 1;
      }
    }
    double decompiled = kwe_bench::Now(), cpuDecompiled = CpuSeconds();
    compileRates.push_back(sourceBytes / 1e6 / (compiled - start));
    decompileRates.push_back(outputBytes / 1e6 / (decompiled - compiled));
    compileCpu.push_back(sourceBytes / 1e6 / (cpuCompiled - cpuStart));
    decompileCpu.push_back(outputBytes / 1e6 / (cpuDecompiled - cpuCompiled));
    std::printf(
        "round %d: compile %6.1f MB/s (%6.1f of processor time)   decompile %6.1f MB/s "
        "(%6.1f of processor time), %.2f MB written\n",
        round, compileRates.back(), compileCpu.back(), decompileRates.back(), decompileCpu.back(),
        outputBytes / 1e6);
  }
  std::printf("%-32s %6.1f MB/s, %6.1f MB/s of processor time (target 20)\n",
              "kwerez, median of the rounds", Median(compileRates), Median(compileCpu));
  std::printf("%-32s %6.1f MB/s, %6.1f MB/s of processor time (target 20)\n",
              "kwederez, median of the rounds", Median(decompileRates), Median(decompileCpu));
  kwe_test::RemoveTree(dir);
  return 0;
}
