#include "frame/segment_loader.h"

#include <windows.h>

#include <cstring>
#include <string>

#include "SegLoad.h"
#include "frame/app_path_rule.h"
#include "frame/document_list.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace kwe {
namespace {

Handle g_documentList = nullptr;
Size g_documentListSize = 0;

std::string DocumentPath(const std::string& name, const char* directory) {
  if (!directory || !directory[0] || IsAbsoluteDosName(name.c_str())) return name;
  std::string base = directory;
  if (base.back() != '\\') base += '\\';
  std::vector<char> ansi(base.begin(), base.end());
  ansi.push_back(0);
  OemToCharA(ansi.data(), ansi.data());
  return std::string(ansi.data()) + name;
}

}  // namespace

void BuildDocumentList(const char* commandLine, const char* documentDirectory) {
  std::vector<DocumentEntry> documents;
  for (const std::string& name : SplitCommandLine(commandLine)) {
    std::string path = DocumentPath(name, documentDirectory);
    DocumentEntry entry;
    unsigned char macName[64];
    // A name that names nothing reachable is dropped and the count lowered.
    if (!files::DocumentFromDosPath(path.c_str(), &entry.vRefNum, &entry.fileType, macName))
      continue;
    entry.name = UpperCaseAscii(std::string(reinterpret_cast<char*>(macName + 1), macName[0]));
    documents.push_back(entry);
  }
  std::vector<uint8_t> bytes = EncodeDocumentList(documents);
  Handle list = memory::NewHandleOfSize(static_cast<Size>(bytes.size()));
  if (!list) return;  // MemErr says why; the application sees no documents
  std::memcpy(*list, bytes.data(), bytes.size());
  g_documentList = list;
  g_documentListSize = static_cast<Size>(bytes.size());
}

}  // namespace kwe

using kwe::g_documentList;
using kwe::g_documentListSize;

namespace {
const uint8_t* ListBytes() {
  return g_documentList ? reinterpret_cast<const uint8_t*>(*g_documentList) : nullptr;
}
}  // namespace

KWE_API void KWE_CALL GetAppParms(Str255 apName, SInt16* apRefNum, Handle* apParam) {
  if (apName) {
    char module[MAX_PATH] = "";
    GetModuleFileNameA(kwe::TheSession().instance, module, sizeof module);
    const char* leaf = module;
    for (const char* p = module; *p; ++p)
      if (*p == '\\' || *p == ':') leaf = p + 1;
    size_t n = std::strlen(leaf);
    if (n > 255) n = 255;
    apName[0] = static_cast<unsigned char>(n);
    std::memcpy(apName + 1, leaf, n);
  }
  if (apRefNum) *apRefNum = kwe::resources::ApplicationResourceFile();
  if (apParam) *apParam = g_documentList;
}

KWE_API void KWE_CALL CountAppFiles(SInt16* message, SInt16* count) {
  kwe::DecodeDocumentHeader(ListBytes(), static_cast<size_t>(g_documentListSize), message, count);
}

// An index outside 1..count leaves theFile as it was.
KWE_API void KWE_CALL GetAppFiles(SInt16 index, AppFile* theFile) {
  kwe::DocumentEntry entry;
  if (!theFile || !kwe::DecodeDocumentEntry(ListBytes(), static_cast<size_t>(g_documentListSize),
                                            index, &entry))
    return;
  theFile->vRefNum = entry.vRefNum;
  theFile->fType = entry.fileType;
  theFile->versNum = entry.version;
  theFile->fName[0] = static_cast<unsigned char>(entry.name.size());
  std::memcpy(theFile->fName + 1, entry.name.data(), entry.name.size());
}

// The Macintosh marks a document as processed; nothing here reads the mark.
KWE_API void KWE_CALL ClrAppFiles(SInt16) {}

KWE_API void KWE_CALL ExitToShell(void) {
  kwe::Session& s = kwe::TheSession();
  if (s.hostMainWindowProc && s.mainWindow) {
    CallWindowProcA(s.hostMainWindowProc, s.mainWindow, WM_USER + 1, 0, 0);
    if (reinterpret_cast<WNDPROC>(GetWindowLongPtrA(s.mainWindow, GWLP_WNDPROC)) !=
        s.hostMainWindowProc)
      SetWindowLongPtrA(s.mainWindow, GWLP_WNDPROC,
                        reinterpret_cast<LONG_PTR>(s.hostMainWindowProc));
  }
  PostQuitMessage(0);
}
