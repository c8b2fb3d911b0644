// The round trip the Rez fuzz targets hold every input to: resources that
// compiled (or were read from a fork) decompile into Rez that compiles back
// into the same resources, byte for byte.
#pragma once
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "rez/rez_compiler.h"

namespace rez_fuzz {

inline void ExpectRoundTrip(const std::vector<rez::CompiledResource>& resources) {
  rez::DecompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  std::string text, error;
  if (!rez::DecompileRez(resources, options, text, error)) {
    std::fprintf(stderr, "the declarations do not compile: %s\n", error.c_str());
    std::abort();
  }
  rez::CompileOptions compile;
  compile.includeDirectories = {KWE_REZ_TYPES_DIR};
  rez::FileLoader disk = compile.loader;
  compile.loader = [&](const std::string& path, std::string& contents) {
    if (path != "<decompiled>") return disk(path, contents);
    contents = text;
    return true;
  };
  std::vector<rez::CompiledResource> again;
  bool same =
      rez::CompileRez("<decompiled>", compile, again, error) && again.size() == resources.size();
  for (std::size_t i = 0; same && i < again.size(); ++i)
    same = again[i].type == resources[i].type && again[i].id == resources[i].id &&
           again[i].named == resources[i].named && again[i].name == resources[i].name &&
           again[i].attributes == resources[i].attributes && again[i].data == resources[i].data;
  if (!same) {
    std::fprintf(stderr, "the decompiled source does not give the resources back: %s\n%s\n",
                 error.c_str(), text.c_str());
    std::abort();
  }
}

}  // namespace rez_fuzz
