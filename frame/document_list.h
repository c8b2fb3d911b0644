// The Segment Loader's list of documents to open (the published
// AppParameters form, in host byte order): i16 message, i16 count, then per
// document i16 vRefNum, 32-bit file type, i16 version and the name as a
// Pascal string padded to an even length.
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace kwe {

struct DocumentEntry {
  int16_t vRefNum = 0;
  uint32_t fileType = 0;
  int16_t version = 0;
  std::string name;  // at most 63 bytes are kept
};

// Names of the command line, split at blanks and commas.
std::vector<std::string> SplitCommandLine(const char* commandLine);

// Upper-cases the letters a to z only, as the Segment Loader hands names on.
std::string UpperCaseAscii(std::string name);

std::vector<uint8_t> EncodeDocumentList(const std::vector<DocumentEntry>& documents);

// Reads entry index (1-based); false when the list has no such entry or is
// too short to hold it.
bool DecodeDocumentEntry(const uint8_t* list, size_t size, int index, DocumentEntry* entry);

// message and count from the list's header; both 0 for a short list.
void DecodeDocumentHeader(const uint8_t* list, size_t size, int16_t* message, int16_t* count);

}  // namespace kwe
