// Rez sources held in memory (the standard declarations come from disk),
// compiled and decompiled through the library behind kwerez and kwederez.
#pragma once
#include <map>
#include <string>
#include <vector>

#include "rez/fork_reader.h"
#include "rez/rez_compiler.h"

namespace rez_test {

using Sources = std::map<std::string, std::string>;

inline rez::FileLoader LoaderOf(const Sources& files) {
  rez::FileLoader disk = rez::DiskLoader();
  return [files, disk](const std::string& path, std::string& contents) {
    auto found = files.find(path);
    if (found != files.end()) {
      contents = found->second;
      return true;
    }
    return path.find(KWE_REZ_TYPES_DIR) == 0 && disk(path, contents);
  };
}

// Compiles main.r of files; false with the message on a mistake.
inline bool Compile(const Sources& files, std::vector<rez::CompiledResource>& out,
                    std::string& error, const std::string& main = "main.r") {
  rez::CompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  options.loader = LoaderOf(files);
  return rez::CompileRez(main, options, out, error);
}

inline std::string Decompile(const std::vector<rez::CompiledResource>& resources) {
  rez::DecompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  std::string text, error;
  if (!rez::DecompileRez(resources, options, text, error)) return "decompiler failed: " + error;
  return text;
}

inline std::string Hex(const std::string& bytes) {
  static const char kDigits[] = "0123456789ABCDEF";
  std::string out;
  for (char c : bytes) {
    out += kDigits[static_cast<unsigned char>(c) >> 4];
    out += kDigits[c & 15];
  }
  return out;
}

inline std::string Describe(const rez::CompiledResource& r) {
  return rez::QuoteType(r.type) + " (" + std::to_string(r.id) + ", " +
         (r.named ? rez::QuoteString(r.name) : "no name") + ", attributes " +
         std::to_string(r.attributes) + ") " + Hex(r.data);
}

}  // namespace rez_test
