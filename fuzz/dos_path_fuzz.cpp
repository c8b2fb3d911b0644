// The DOS path rules and the file-name conversions on arbitrary bytes, as
// an application's names and a host's paths can be. Splitting gives the
// path back, reduced and canonical paths never grow past what was asked,
// extensions stay within three characters, the exchange names run out
// rather than loop, and a name converted to a Pascal string stays within
// the length it was given.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "files/dos_path.h"
#include "files/name_conversion.h"

using namespace kwe::files;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 4) return 0;
  const char extension[3] = {static_cast<char>(data[0]), static_cast<char>(data[1]),
                             static_cast<char>(data[2])};
  bool keepExisting = data[3] & 1;
  std::string path(reinterpret_cast<const char*>(data + 4), size - 4);

  SplitPath parts = SplitAtLastSeparator(path);
  Check(parts.directory + parts.name == path);
  Check(parts.name.find_first_of("\\:") == std::string::npos);

  Check(ReduceDoubledBackslashes(path).size() <= path.size());
  Check(TypeExtension(parts.name).size() <= 3);
  std::string filtered = WithFilterExtension(parts.name, extension, keepExisting);
  Check(filtered.size() <= parts.name.size() + 4);

  PathVolume volume = VolumeOfDosPath(path);
  if (volume.kind == PathVolume::kDrive) Check(volume.drive >= 0 && volume.drive < 26);
  if (volume.kind != PathVolume::kNone) Check(!volume.root.empty() && volume.root.back() == '\\');
  (void)IsVolumeRoot(WithTrailingBackslash(path));
  (void)CanonicalDirectory(path);
  (void)IsFullDosName(path);
  (void)IsParsableDosPath(path);
  Check(FoldedForCompare(path).size() == path.size());

  size_t position = 0;
  std::string exchange = ExchangeTemporaryName(path, &position);
  Check(position < exchange.size());
  int names = 0;
  while (NextExchangeName(exchange, position)) Check(++names < 27 * 27 * 27);

  Str255 name;
  for (size_t maxLength : {size_t{31}, size_t{63}, size_t{255}}) {
    bool whole = AnsiNameToMac(path, name, maxLength);
    Check(name[0] <= maxLength);
    Check(!whole || path.size() <= maxLength);
    Check(MacNameToAnsi(name).size() == name[0]);
  }
  return 0;
}
