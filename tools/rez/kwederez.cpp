// kwederez: prints the resources of a resource file, a raw resource fork,
// an AppleDouble, AppleSingle or MacBinary file as Rez source.
//
//   kwederez [-i directory]... [-t Types.r]... [-o output.r] file
//
// Types declared in the -t files (Types.r by default) are written field by
// field, the rest as data statements in hex; kwerez compiles the output back
// into the same resources byte for byte.
#include <cstdio>

#include "rez/fork_reader.h"
#include "rez/rez_compiler.h"
#include "rez/tool_arguments.h"

int main(int argc, char** argv) {
  rez::ToolArguments arguments;
  std::string error;
  if (!rez::ParseToolArguments(argc, argv, false, arguments, error)) {
    std::fprintf(stderr,
                 "kwederez: %s\nusage: kwederez [-i directory]... [-t Types.r]... [-o output.r] "
                 "file\n",
                 error.c_str());
    return 2;
  }
  rez::DecompileOptions options;
  options.includeDirectories = arguments.includeDirectories;
  options.includeDirectories.push_back(rez::StandardTypesDirectory(argv[0]));
  if (!arguments.typeFiles.empty()) options.typeFiles = arguments.typeFiles;
  std::string bytes, text;
  std::vector<rez::CompiledResource> resources;
  if (!options.loader(arguments.input, bytes)) {
    std::fprintf(stderr, "%s: cannot open the file\n", arguments.input.c_str());
    return 1;
  }
  if (!rez::ReadResourceFork(bytes, resources, error)) {
    std::fprintf(stderr, "%s: %s\n", arguments.input.c_str(), error.c_str());
    return 1;
  }
  if (!rez::DecompileRez(resources, options, text, error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  if (arguments.output.empty()) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
  }
  if (!rez::WriteFileAtomically(arguments.output, text, error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  return 0;
}
