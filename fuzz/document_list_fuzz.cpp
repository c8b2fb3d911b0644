// The Segment Loader's document list on arbitrary bytes. Reading a header
// and entries of any list reads nothing past its end (the sanitizer sees
// the input's exact extent); the names a command line splits into, encoded
// as a list, read back as the same entries.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "frame/document_list.h"

using namespace kwe;

namespace {

void Check(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  int16_t message = 0, count = 0;
  DecodeDocumentHeader(data, size, &message, &count);
  DocumentEntry entry;
  for (int index = -1; index <= 300; ++index) {
    if (DecodeDocumentEntry(data, size, index, &entry))
      Check(index >= 1 && entry.name.size() <= 255);
  }

  std::string text(reinterpret_cast<const char*>(data), size);
  std::vector<std::string> names = SplitCommandLine(text.c_str());
  std::vector<DocumentEntry> documents;
  for (size_t i = 0; i < names.size() && i < 200; ++i) {
    Check(!names[i].empty());
    DocumentEntry d;
    d.vRefNum = static_cast<int16_t>(-1 - static_cast<int>(i));
    d.fileType = 0x54455854u + static_cast<uint32_t>(i);
    d.version = static_cast<int16_t>(i);
    d.name = UpperCaseAscii(names[i]).substr(0, 63);
    documents.push_back(d);
  }
  std::vector<uint8_t> list = EncodeDocumentList(documents);
  DecodeDocumentHeader(list.data(), list.size(), &message, &count);
  Check(count == static_cast<int16_t>(documents.size()));
  for (size_t i = 0; i < documents.size(); ++i) {
    Check(DecodeDocumentEntry(list.data(), list.size(), static_cast<int>(i + 1), &entry));
    Check(entry.vRefNum == documents[i].vRefNum && entry.fileType == documents[i].fileType &&
          entry.version == documents[i].version && entry.name == documents[i].name);
  }
  Check(!DecodeDocumentEntry(list.data(), list.size(), static_cast<int>(documents.size() + 1),
                             &entry));
  return 0;
}
