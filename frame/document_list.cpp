#include "frame/document_list.h"

#include <cstring>

namespace kwe {
namespace {

constexpr size_t kHeaderSize = 4;
constexpr size_t kFixedEntrySize = 8;  // vRefNum, file type, version

template <class T>
void Put(std::vector<uint8_t>& out, T value) {
  uint8_t bytes[sizeof value];
  std::memcpy(bytes, &value, sizeof value);
  out.insert(out.end(), bytes, bytes + sizeof value);
}

template <class T>
T Get(const uint8_t* p) {
  T value;
  std::memcpy(&value, p, sizeof value);
  return value;
}

}  // namespace

std::vector<std::string> SplitCommandLine(const char* commandLine) {
  std::vector<std::string> names;
  if (!commandLine) return names;
  std::string current;
  for (const char* p = commandLine;; ++p) {
    if (*p == 0 || *p == ' ' || *p == ',' || *p == '\t') {
      if (!current.empty()) names.push_back(current);
      current.clear();
      if (*p == 0) break;
    } else {
      current += *p;
    }
  }
  return names;
}

std::string UpperCaseAscii(std::string name) {
  for (char& c : name)
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  return name;
}

std::vector<uint8_t> EncodeDocumentList(const std::vector<DocumentEntry>& documents) {
  std::vector<uint8_t> out;
  Put<int16_t>(out, 0);  // message: open
  Put<int16_t>(out, static_cast<int16_t>(documents.size()));
  for (const DocumentEntry& d : documents) {
    Put(out, d.vRefNum);
    Put(out, d.fileType);
    Put(out, d.version);
    size_t length = d.name.size() > 63 ? 63 : d.name.size();
    out.push_back(static_cast<uint8_t>(length));
    out.insert(out.end(), d.name.begin(), d.name.begin() + static_cast<long>(length));
    if ((length + 1) % 2) out.push_back(0);
  }
  return out;
}

void DecodeDocumentHeader(const uint8_t* list, size_t size, int16_t* message, int16_t* count) {
  bool whole = list && size >= kHeaderSize;
  if (message) *message = whole ? Get<int16_t>(list) : 0;
  if (count) *count = whole ? Get<int16_t>(list + 2) : 0;
}

bool DecodeDocumentEntry(const uint8_t* list, size_t size, int index, DocumentEntry* entry) {
  int16_t count = 0;
  DecodeDocumentHeader(list, size, nullptr, &count);
  if (index < 1 || index > count) return false;
  size_t at = kHeaderSize;
  for (int i = 1;; ++i) {
    if (at + kFixedEntrySize + 1 > size) return false;
    size_t length = list[at + kFixedEntrySize];
    size_t total = kFixedEntrySize + 1 + length;
    if (total % 2) ++total;
    if (at + kFixedEntrySize + 1 + length > size) return false;
    if (i == index) {
      entry->vRefNum = Get<int16_t>(list + at);
      entry->fileType = Get<uint32_t>(list + at + 2);
      entry->version = Get<int16_t>(list + at + 6);
      entry->name.assign(reinterpret_cast<const char*>(list + at + kFixedEntrySize + 1), length);
      return true;
    }
    at += total;
  }
}

}  // namespace kwe
