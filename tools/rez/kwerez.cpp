// kwerez: compiles a Rez source into a Macintosh-format resource file.
//
//   kwerez [-i directory]... [-d NAME[=value]]... -o output.rsr source.r
//
// On any mistake it prints "file:line:column: what was expected" and writes
// nothing; an existing output file is left as it was.
#include <cstdio>

#include "rez/rez_compiler.h"
#include "rez/tool_arguments.h"

int main(int argc, char** argv) {
  rez::ToolArguments arguments;
  std::string error;
  if (!rez::ParseToolArguments(argc, argv, true, arguments, error)) {
    std::fprintf(stderr,
                 "kwerez: %s\nusage: kwerez [-i directory]... [-d NAME[=value]]... -o output "
                 "source.r\n",
                 error.c_str());
    return 2;
  }
  rez::CompileOptions options;
  options.includeDirectories = arguments.includeDirectories;
  options.includeDirectories.push_back(rez::StandardTypesDirectory(argv[0]));
  options.defines = arguments.defines;
  std::vector<rez::CompiledResource> resources;
  std::string file;
  if (!rez::CompileRez(arguments.input, options, resources, error) ||
      !rez::BuildResourceFile(resources, file, error) ||
      !rez::WriteFileAtomically(arguments.output, file, error)) {
    std::fprintf(stderr, "%s\n", error.c_str());
    return 1;
  }
  return 0;
}
