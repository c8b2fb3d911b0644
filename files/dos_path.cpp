#include "files/dos_path.h"

#include <cctype>
#include <cstring>

namespace kwe::files {
namespace {

bool IsSeparator(char c) { return c == '\\' || c == ':'; }

bool IsDriveLetter(char c) { return std::isalpha(static_cast<unsigned char>(c)) != 0; }

constexpr size_t kMaxDosPath = 260;  // MAX_PATH

}  // namespace

SplitPath SplitAtLastSeparator(const std::string& path) {
  for (size_t i = path.size(); i-- > 0;)
    if (IsSeparator(path[i])) return {path.substr(0, i + 1), path.substr(i + 1)};
  return {std::string(), path};
}

bool IsFullDosName(const std::string& name) {
  if (name.size() < 3) return false;
  if (name[0] == '\\' && name[1] == '\\') return true;
  return IsDriveLetter(name[0]) && name[1] == ':' && name[2] == '\\';
}

std::string ReduceDoubledBackslashes(const std::string& path) {
  std::string out;
  out.reserve(path.size());
  size_t i = 0;
  if (path.size() >= 2 && path[0] == '\\' && path[1] == '\\') {
    out = "\\\\";
    i = 2;
    while (i < path.size() && path[i] == '\\') ++i;
  }
  for (; i < path.size(); ++i) {
    if (path[i] == '\\' && !out.empty() && out.back() == '\\') continue;
    out += path[i];
  }
  return out;
}

std::string WithTrailingBackslash(const std::string& path) {
  if (!path.empty() && path.back() == '\\') return path;
  return path + '\\';
}

PathVolume VolumeOfDosPath(const std::string& path) {
  PathVolume v;
  if (path.size() >= 2 && IsDriveLetter(path[0]) && path[1] == ':') {
    v.kind = PathVolume::kDrive;
    v.drive = std::toupper(static_cast<unsigned char>(path[0])) - 'A';
    v.root = std::string(1, static_cast<char>('A' + v.drive)) + ":\\";
    return v;
  }
  if (path.size() < 5 || path[0] != '\\' || path[1] != '\\' || path[2] == '\\') return v;
  size_t server = path.find('\\', 2);
  if (server == std::string::npos || server + 1 >= path.size() || path[server + 1] == '\\')
    return v;
  size_t end = path.find('\\', server + 1);
  if (end == std::string::npos) end = path.size();
  v.kind = PathVolume::kShare;
  v.share = path.substr(0, end);
  v.root = v.share + '\\';
  return v;
}

bool IsVolumeRoot(const std::string& directory) {
  PathVolume v = VolumeOfDosPath(directory);
  return v.kind != PathVolume::kNone && FoldedForCompare(v.root) == FoldedForCompare(directory);
}

std::string FoldedForCompare(const std::string& text) {
  std::string out = text;
  for (char& c : out)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return out;
}

std::string CanonicalDirectory(const std::string& path) {
  std::string out = WithTrailingBackslash(ReduceDoubledBackslashes(path));
  if (out.size() >= 2 && out[1] == ':' && IsDriveLetter(out[0]))
    out[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(out[0])));
  return out;
}

std::string TypeExtension(const std::string& name) {
  size_t dot = name.rfind('.');
  if (dot == std::string::npos) return std::string();
  return FoldedForCompare(name.substr(dot + 1, 3));
}

std::string WithFilterExtension(const std::string& name, const char extension[3],
                                bool keepExisting) {
  size_t last = name.rfind('.');
  if (keepExisting && last != std::string::npos && last + 1 < name.size()) return name;
  std::string out = name.substr(0, name.find('.'));
  out += '.';
  for (int i = 0; i < 3 && extension[i]; ++i) out += extension[i];
  return out;
}

bool IsParsableDosPath(const std::string& path) {
  if (path.empty() || path.size() >= kMaxDosPath || path.back() == '\\') return false;
  for (size_t i = 0; i < path.size(); ++i) {
    unsigned char c = static_cast<unsigned char>(path[i]);
    if (c < 0x20 || std::strchr("<>\"|?*", c)) return false;
    if (c == ':' && !(i == 1 && IsDriveLetter(path[0]))) return false;
  }
  return !SplitAtLastSeparator(path).name.empty();
}

std::string ExchangeTemporaryName(const std::string& path, size_t* position) {
  SplitPath parts = SplitAtLastSeparator(path);
  size_t dot = parts.name.rfind('.');
  std::string stem = dot == std::string::npos ? parts.name : parts.name.substr(0, dot);
  std::string out = parts.directory + stem + ".aaa";
  *position = out.size() - 1;
  return out;
}

bool NextExchangeName(std::string& path, size_t& position) {
  if (position >= path.size()) return false;
  for (;;) {
    char c = path[position];
    if (c >= 'a' && c <= 'z') {
      path[position] = static_cast<char>(c + 1);
      return true;
    }
    path[position] = 'a';
    if (position == 0 || path[--position] == '.') return false;
  }
}

}  // namespace kwe::files
