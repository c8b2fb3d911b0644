// The Rez compiler on arbitrary source text: whatever the input, it either
// compiles or reports a located mistake; it never crashes, hangs or reads
// out of bounds. What compiles must survive the decompiler's round trip.
// The first byte chooses whether the standard declarations come first, so
// that resource statements of every standard type are reached.
#include <cstddef>
#include <cstdint>
#include <string>

#include "rez_oracle.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] & 1) text = "#include \"Types.r\"\n" + text;
  rez::CompileOptions options;
  options.includeDirectories = {KWE_REZ_TYPES_DIR};
  rez::FileLoader disk = options.loader;
  options.loader = [&](const std::string& path, std::string& contents) {
    if (path == "main.r" || path == "other.r") {
      contents = text;  // an include of main.r or other.r meets the cycle check
      return true;
    }
    return path.find(KWE_REZ_TYPES_DIR) == 0 && disk(path, contents);
  };
  std::vector<rez::CompiledResource> resources;
  std::string error, file;
  if (!rez::CompileRez("main.r", options, resources, error)) {
    if (error.empty() || !resources.empty()) __builtin_trap();
    return 0;
  }
  if (rez::BuildResourceFile(resources, file, error)) rez_fuzz::ExpectRoundTrip(resources);
  return 0;
}
