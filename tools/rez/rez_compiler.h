// kwerez and kwederez as a library: compiling Rez sources into resources,
// writing them as a resource file, and printing resources back as Rez.
#pragma once
#include <string>
#include <utility>
#include <vector>

#include "rez/rez_template.h"

namespace rez {

struct CompileOptions {
  std::vector<std::string> includeDirectories;
  std::vector<std::pair<std::string, std::string>> defines;  // name, value
  FileLoader loader = DiskLoader();
};

// Compiles a Rez source file. False, with "file:line:column: message" in
// error, on the first mistake; resources is then empty.
bool CompileRez(const std::string& path, const CompileOptions& options,
                std::vector<CompiledResource>& resources, std::string& error);

// The parser behind CompileRez, for callers that keep the declared types
// (the decompiler reads its type declarations this way).
void ParseRez(SourceSet& sources, const std::vector<Token>& tokens, TypeTable& types,
              std::vector<CompiledResource>& resources);

// The bytes of a resource file holding the resources, in the order given
// (grouped by type in the map). False, with the reason, when the resource
// file format cannot hold them (too many resources or names, data > 16 MB).
bool BuildResourceFile(const std::vector<CompiledResource>& resources, std::string& file,
                       std::string& error);

// Writes bytes to path through a temporary sibling that is renamed into
// place, so that a failure never leaves a half-written file behind.
bool WriteFileAtomically(const std::string& path, const std::string& bytes, std::string& error);

struct DecompileOptions {
  std::vector<std::string> includeDirectories;
  // The declarations the output uses; they are also #included at its top.
  std::vector<std::string> typeFiles = {"Types.r"};
  FileLoader loader = DiskLoader();
};

// Rez source for the resources: declared types by their fields, the rest as
// data statements in hex; compiling it gives the same resources byte for
// byte. False, with a message, when the type declarations do not compile.
bool DecompileRez(const std::vector<CompiledResource>& resources, const DecompileOptions& options,
                  std::string& text, std::string& error);

}  // namespace rez
