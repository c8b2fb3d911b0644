// DOS path rules of the file naming model: splitting, volume prefixes,
// extensions, and the temporary names FSpExchangeFiles steps through. Byte
// work only, so it also runs natively.
#pragma once
#include <cstddef>
#include <string>

namespace kwe::files {

// At the last backslash or ':'; the directory keeps the separator. A path
// with neither is all name.
struct SplitPath {
  std::string directory;
  std::string name;
};
SplitPath SplitAtLastSeparator(const std::string& path);

// "X:\..." or "\\..." and at least 3 characters: a name that brings its own
// volume and directory.
bool IsFullDosName(const std::string& name);

// Doubled backslashes become one, except the two that open a share path.
std::string ReduceDoubledBackslashes(const std::string& path);

std::string WithTrailingBackslash(const std::string& path);

// The volume a path names: a drive letter ("X:") or a share
// ("\\SERVER\SHARE"), with the length of its root ("X:\" or
// "\\SERVER\SHARE\").
struct PathVolume {
  enum Kind { kNone, kDrive, kShare } kind = kNone;
  int drive = -1;     // 0 for A: ... 25 for Z:
  std::string share;  // "\\SERVER\SHARE" as written
  std::string root;   // the volume's root path, ending in a backslash
};
PathVolume VolumeOfDosPath(const std::string& path);

// A path (ending in a backslash) that is exactly a volume's root.
bool IsVolumeRoot(const std::string& directory);

// ASCII upper case: how DOS names compare.
std::string FoldedForCompare(const std::string& text);

// A directory path as a working directory keeps it: a trailing backslash and
// an upper-case drive letter.
std::string CanonicalDirectory(const std::string& path);

// Up to three characters after the last "." of the name, upper-cased; empty
// without a ".".
std::string TypeExtension(const std::string& name);

// The name with a filter's extension (up to three characters, NUL-ended when
// shorter): everything from the first "." goes and "." + extension is
// appended, unless keepExisting and the name already has a non-empty one.
std::string WithFilterExtension(const std::string& name, const char extension[3],
                                bool keepExisting);

// What OpenFile's OF_PARSE accepts: a non-empty file name, no control
// characters or <>"|?*, ':' only after a drive letter, shorter than MAX_PATH.
bool IsParsableDosPath(const std::string& path);

// FSpExchangeFiles' temporary name: the path with its extension replaced by
// ".aaa" (appended when there is none); *position starts at its last letter.
std::string ExchangeTemporaryName(const std::string& path, size_t* position);
// The next name to try after a taken one: the letter at the position
// advances ('z' becomes '{'); any other character becomes 'a' and the
// position moves left. False once the position reaches the ".".
bool NextExchangeName(std::string& path, size_t& position);

}  // namespace kwe::files
