// Compiling a source file, and writing the result as a resource file.
#include "rez/rez_compiler.h"

#include <cstdio>
#include <fstream>
#include <stdexcept>

#include "resource_builder/resource_image.h"

namespace rez {

bool CompileRez(const std::string& path, const CompileOptions& options,
                std::vector<CompiledResource>& resources, std::string& error) {
  resources.clear();
  SourceSet sources(options.loader);
  sources.includeDirectories = options.includeDirectories;
  try {
    for (const auto& define : options.defines) sources.Define(define.first, define.second);
    std::vector<Token> tokens = sources.Preprocess(path);
    TypeTable types;
    ParseRez(sources, tokens, types, resources);
  } catch (const RezError& e) {
    resources.clear();
    error = e.what();
    return false;
  }
  return true;
}

bool BuildResourceFile(const std::vector<CompiledResource>& resources, std::string& file,
                       std::string& error) {
  std::vector<resource_builder::Resource> list;
  list.reserve(resources.size());
  for (const CompiledResource& r : resources) {
    resource_builder::Resource b;
    b.type = r.type;
    b.id = r.id;
    b.named = r.named;
    b.name = r.name;
    b.attributes = r.attributes;
    b.data.assign(r.data.begin(), r.data.end());
    list.push_back(std::move(b));
  }
  try {
    resource_builder::Bytes bytes = resource_builder::BuildResourceImage(list);
    file.assign(bytes.begin(), bytes.end());
  } catch (const std::length_error& e) {
    error = std::string("the resources do not fit one resource file: ") + e.what();
    return false;
  }
  return true;
}

bool WriteFileAtomically(const std::string& path, const std::string& bytes, std::string& error) {
  const std::string temporary = path + ".partial";
  {
    std::ofstream out(temporary, std::ios::binary | std::ios::trunc);
    if (out) out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!out || !out.flush()) {
      out.close();
      std::remove(temporary.c_str());
      error = "cannot write " + path;
      return false;
    }
  }
  std::remove(path.c_str());  // Windows' rename does not replace a file
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    std::remove(temporary.c_str());
    error = "cannot rename " + temporary + " to " + path;
    return false;
  }
  return true;
}

}  // namespace rez
