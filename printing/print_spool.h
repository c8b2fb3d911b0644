// The spool file of a document printed with bJDocLoop = bSpoolLoop: each
// page a QuickDraw picture, written as PrClosePage ends it and played back
// onto the printer by PrPicFile, as the Macintosh's spooling drivers did.
// The file lives in Windows' temporary directory from PrOpenDoc until
// PrPicFile has played it (or the next spooled document replaces it).
#pragma once
#include <cstdint>
#include <string>

#include "MacTypes.h"
#include "Quickdraw.h"

namespace kwe::printing {

// Starts a new spool file, deleting one that was never played; false when
// no file can be made.
bool BeginSpool();
// Adds a page; false when the disk refuses it.
bool SpoolPage(PicHandle page);
// Finishes the file for PrPicFile (or deletes it when abandon is set).
void EndSpool(bool abandon);
// Whether a finished spool file waits for PrPicFile.
bool SpoolWaiting();
std::string SpoolPath();

// Reads a finished spool file page by page.
class SpoolReader {
 public:
  SpoolReader();
  ~SpoolReader();
  SpoolReader(const SpoolReader&) = delete;
  SpoolReader& operator=(const SpoolReader&) = delete;
  // False when the file is missing or its header is damaged.
  bool Open();
  int Pages() const { return pages_; }
  // The next page as a new picture handle, or null when the file ends
  // early or the page is damaged.
  PicHandle NextPage();

 private:
  void* file_;
  int pages_ = 0;
  int64_t remaining_ = 0;
};

// Deletes the finished spool file.
void DiscardSpool();

}  // namespace kwe::printing
