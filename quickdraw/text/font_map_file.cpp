// Where the font map comes from: a stretch of a file the host has open
// (system values 8, 9 and 10), else kwefont.map beside the application;
// when neither gives an entry, the built-in map, which is then written out
// as kwefont.map so that the user has one to edit.
#include "quickdraw/text/font_map_file.h"

#include <windows.h>

#include <string>

#include "files/file_slots.h"
#include "frame/app_path.h"
#include "frame/system_values.h"

namespace kwe::quickdraw {
namespace {

constexpr char kMapFileName[] = "kwefont.map";
constexpr int16_t kSysValueMapFile = 8;        // a File Manager reference number, -1 for none
constexpr int16_t kSysValueMapStart = 9;       // where the map begins in that file
constexpr int16_t kSysValueMapEnd = 10;        // where it ends; not past the start: the file's end
constexpr DWORD kLargestMapFile = 256 * 1024;  // 500 lines fit many times over

SInt16 HostMapFile() { return static_cast<SInt16>(ReadSystemValue(kSysValueMapFile)); }

// The host's file is read from its start offset and its mark put back.
bool ReadHostMap(SInt16 slot, std::string* text) {
  if (!files::IsSlotInUse(slot)) return false;
  SInt32 start = ReadSystemValue(kSysValueMapStart);
  SInt32 end = ReadSystemValue(kSysValueMapEnd);
  SInt32 mark = files::SeekSlot(slot, 0, 1);
  if (start < 0 || files::SeekSlot(slot, start, 0) != start) return false;
  SInt32 wanted =
      end > start && end - start < SInt32(kLargestMapFile) ? end - start : SInt32(kLargestMapFile);
  text->resize(static_cast<size_t>(wanted));
  SInt32 got = files::ReadSlot(slot, &(*text)[0], wanted);
  text->resize(got > 0 ? static_cast<size_t>(got) : 0);
  if (mark >= 0) files::SeekSlot(slot, mark, 0);
  return got > 0;
}

bool ReadAppMap(std::string* text) {
  HANDLE file = CreateFileA(AppPathName(kMapFileName).c_str(), GENERIC_READ,
                            FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  text->resize(kLargestMapFile);
  DWORD got = 0;
  BOOL ok = ReadFile(file, &(*text)[0], kLargestMapFile, &got, nullptr);
  CloseHandle(file);
  text->resize(ok ? got : 0);
  return ok && got > 0;
}

// Written beside under a name of its own and then moved over the map, so
// that another program starting at the same moment never reads half a map.
void WriteAppMap(const std::string& text) {
  std::string target = AppPathName(kMapFileName);
  std::string directory = target.substr(0, target.find_last_of('\\') + 1);
  char temporary[MAX_PATH + 16] = "";
  if (directory.size() >= MAX_PATH - 14 ||
      !GetTempFileNameA(directory.c_str(), "kwe", 0, temporary))
    return;
  HANDLE file = CreateFileA(temporary, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr);
  bool written = false;
  if (file != INVALID_HANDLE_VALUE) {
    DWORD put = 0;
    written = WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &put, nullptr) &&
              put == text.size();
    CloseHandle(file);
  }
  if (!written || !MoveFileExA(temporary, target.c_str(), MOVEFILE_REPLACE_EXISTING))
    DeleteFileA(temporary);
}

}  // namespace

FontMap LoadFontMap() {
  std::string text;
  SInt16 hostFile = HostMapFile();
  bool read = hostFile != -1 ? ReadHostMap(hostFile, &text) : ReadAppMap(&text);
  if (read) {
    FontMap map = ParseFontMap(text.data(), text.size());
    if (!map.entries.empty()) return map;
  }
  const FontMap& builtIn = BuiltInFontMap();
  WriteAppMap(WriteFontMap(builtIn));
  return builtIn;
}

}  // namespace kwe::quickdraw
