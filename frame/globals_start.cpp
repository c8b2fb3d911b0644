// KWE_InitGlobals: binds the host's low-memory globals and starts the managers
// that need them.
#include <windows.h>

#include <algorithm>
#include <cstring>

#include "KWESession.h"
#include "frame/low_memory.h"
#include "frame/segment_loader.h"
#include "frame/session.h"
#include "frame/subsystems.h"

namespace {

void ClearScrapInformation() {
  static unsigned char scrapName[] = "\x09scrapfile";
  ScrapStuff& scrap = kwe::lowmem::At<ScrapStuff>(kwe::lowmem::Slot::ScrapInfo);
  scrap.scrapSize = 0;
  scrap.scrapHandle = nullptr;
  scrap.scrapCount = 1;
  scrap.scrapState = 0;
  scrap.scrapName = scrapName;
}

}  // namespace

KWE_API SInt16 KWE_CALL KWE_InitGlobals(const KWEGlobalsRecord* globals) {
  using namespace kwe;
  KWEGlobalsRecord copy;
  std::memset(&copy, 0, sizeof copy);
  if (globals) {
    size_t size = static_cast<UInt16>(globals->size);
    std::memcpy(&copy, globals, std::min(size, sizeof copy));
  }
  lowmem::BindFromRecord(copy);
  quickdraw::FillArrowGlobal();
  lowmem::At<UInt32>(lowmem::Slot::DoubleTime) = GetDoubleClickTime() >> 4;
  ClearScrapInformation();
  files::SetStartupVolumeGlobals();
  files::StartVolumeTable();
  BuildDocumentList(TheSession().record.commandLine, TheSession().record.documentDirectory);
  events::StartEventManager();
  return InitGlobalsResult(TheSession().version, TheSession().windowsFlags);
}
