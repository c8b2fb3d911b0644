#include "rez/tool_arguments.h"

#include <fstream>

#ifndef KWE_REZ_TYPES_DIR
#define KWE_REZ_TYPES_DIR ""
#endif

namespace rez {

bool ParseToolArguments(int argc, char** argv, bool compiler, ToolArguments& out,
                        std::string& error) {
  for (int i = 1; i < argc; ++i) {
    std::string a = argv[i];
    bool takesValue = a == "-i" || a == "-o" || (compiler ? a == "-d" : a == "-t");
    if (takesValue && i + 1 >= argc) {
      error = a + " needs a value";
      return false;
    }
    if (a == "-i") {
      out.includeDirectories.push_back(argv[++i]);
    } else if (a == "-o") {
      out.output = argv[++i];
    } else if (compiler && a == "-d") {
      std::string d = argv[++i];
      std::size_t equals = d.find('=');
      out.defines.emplace_back(d.substr(0, equals),
                               equals == std::string::npos ? "1" : d.substr(equals + 1));
    } else if (!compiler && a == "-t") {
      out.typeFiles.push_back(argv[++i]);
    } else if (!a.empty() && a[0] == '-') {
      error = "unknown option " + a;
      return false;
    } else if (!out.input.empty()) {
      error = "only one input file is taken";
      return false;
    } else {
      out.input = a;
    }
  }
  if (out.input.empty()) error = "no input file";
  if (compiler && out.output.empty()) error = "no output file (-o)";
  return error.empty();
}

std::string StandardTypesDirectory(const char* argv0) {
  std::string program = argv0 ? argv0 : "";
  std::size_t slash = program.find_last_of("/\\");
  std::string beside =
      (slash == std::string::npos ? std::string(".") : program.substr(0, slash)) + "/rez-types";
  if (std::ifstream(beside + "/Types.r")) return beside;
  return KWE_REZ_TYPES_DIR;
}

}  // namespace rez
