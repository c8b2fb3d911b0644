// The command lines kwerez and kwederez share: -i include directories,
// -o the output, and the directory of the standard type declarations.
#pragma once
#include <string>
#include <vector>

namespace rez {

struct ToolArguments {
  std::vector<std::string> includeDirectories;
  std::vector<std::pair<std::string, std::string>> defines;  // kwerez -d
  std::vector<std::string> typeFiles;                        // kwederez -t
  std::string output;
  std::string input;
};

// False, with the message to print, on a command line that does not parse.
bool ParseToolArguments(int argc, char** argv, bool compiler, ToolArguments& out,
                        std::string& error);

// Where the standard declarations (Types.r and the others) are found when
// no -i names them: beside the program in "rez-types", else the source
// tree's folder the build was made from.
std::string StandardTypesDirectory(const char* argv0);

}  // namespace rez
