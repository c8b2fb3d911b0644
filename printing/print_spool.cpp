// The spool file: a header (the mark 'KWSP', a version word, a reserved
// word and the page count), then each page as its byte count and the
// picture's bytes as the picture handle holds them. Only this library reads
// it back, on the machine that wrote it, so the counts are in the
// processor's order; the pictures keep their own.
#include "printing/print_spool.h"

#include <windows.h>

#include <cstring>

#include "Memory.h"

namespace kwe::printing {
namespace {

constexpr uint32_t kMark = 0x4B575350;  // 'KWSP'
constexpr uint16_t kVersion = 1;
constexpr int64_t kSmallestPage = 12;  // picSize, picFrame and one opcode
constexpr int kMostPages = 0x7FFF;     // iCurPage counts them in 16 bits

struct Header {
  uint32_t mark;
  uint16_t version;
  uint16_t reserved;
  uint32_t pages;
};

std::string g_path;
HANDLE g_writing = INVALID_HANDLE_VALUE;
uint32_t g_pages = 0;
bool g_waiting = false;

bool Write(HANDLE file, const void* data, DWORD size) {
  DWORD written = 0;
  return WriteFile(file, data, size, &written, nullptr) && written == size;
}

bool Read(HANDLE file, void* data, DWORD size) {
  DWORD read = 0;
  return ReadFile(file, data, size, &read, nullptr) && read == size;
}

}  // namespace

bool BeginSpool() {
  EndSpool(true);
  DiscardSpool();
  char dir[MAX_PATH], path[MAX_PATH];
  if (!GetTempPathA(MAX_PATH, dir) || !GetTempFileNameA(dir, "kwp", 0, path)) return false;
  g_path = path;
  g_writing = CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_TEMPORARY,
                          nullptr);
  g_pages = 0;
  Header header{kMark, kVersion, 0, 0};
  if (g_writing != INVALID_HANDLE_VALUE && Write(g_writing, &header, sizeof header)) return true;
  EndSpool(true);
  return false;
}

bool SpoolPage(PicHandle page) {
  if (g_writing == INVALID_HANDLE_VALUE || !page || !*page) return false;
  uint32_t size = static_cast<uint32_t>(GetHandleSize(reinterpret_cast<Handle>(page)));
  if (g_pages >= kMostPages || !Write(g_writing, &size, sizeof size) ||
      !Write(g_writing, *page, size))
    return false;
  ++g_pages;
  return true;
}

void EndSpool(bool abandon) {
  if (g_writing == INVALID_HANDLE_VALUE) return;
  // The count goes in last, so that a file cut short by a full disk never
  // claims pages it lacks.
  Header header{kMark, kVersion, 0, g_pages};
  bool finished = !abandon && SetFilePointer(g_writing, 0, nullptr, FILE_BEGIN) == 0 &&
                  Write(g_writing, &header, sizeof header);
  CloseHandle(g_writing);
  g_writing = INVALID_HANDLE_VALUE;
  g_waiting = finished;
  if (!finished) DiscardSpool();
}

bool SpoolWaiting() { return g_waiting; }
std::string SpoolPath() { return g_path; }

void DiscardSpool() {
  if (!g_path.empty() && g_writing == INVALID_HANDLE_VALUE) {
    DeleteFileA(g_path.c_str());
    g_path.clear();
  }
  g_waiting = false;
}

SpoolReader::SpoolReader() : file_(INVALID_HANDLE_VALUE) {}

SpoolReader::~SpoolReader() {
  if (file_ != INVALID_HANDLE_VALUE) CloseHandle(static_cast<HANDLE>(file_));
}

bool SpoolReader::Open() {
  if (!g_waiting) return false;
  // Deleting the file while it is read lets it go when the reader closes.
  HANDLE file = CreateFileA(g_path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE,
                            nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  file_ = file;
  LARGE_INTEGER size{};
  Header header{};
  if (!GetFileSizeEx(file, &size) || !Read(file, &header, sizeof header) || header.mark != kMark ||
      header.version != kVersion || header.pages > kMostPages)
    return false;
  pages_ = static_cast<int>(header.pages);
  remaining_ = size.QuadPart - static_cast<int64_t>(sizeof header);
  return true;
}

PicHandle SpoolReader::NextPage() {
  HANDLE file = static_cast<HANDLE>(file_);
  uint32_t size = 0;
  if (file == INVALID_HANDLE_VALUE || remaining_ < static_cast<int64_t>(sizeof size) ||
      !Read(file, &size, sizeof size))
    return nullptr;
  remaining_ -= static_cast<int64_t>(sizeof size);
  if (size < kSmallestPage || size > remaining_) return nullptr;
  Handle page = NewHandle(static_cast<Size>(size));
  if (!page) return nullptr;
  if (!Read(file, *page, size)) {
    DisposeHandle(page);
    return nullptr;
  }
  remaining_ -= size;
  return reinterpret_cast<PicHandle>(page);
}

}  // namespace kwe::printing
