// The "INTL" 0 and 1 records: their United States values, the system
// resource file's, and the handles applications get of them.
#include <cstring>

#include "Memory.h"
#include "Resources.h"
#include "frame/low_memory.h"
#include "frame/subsystems.h"
#include "intl/intl_state.h"

namespace kwe::intl {
namespace {

constexpr ResType kIntlType = 0x494E544C;  // 'INTL'
constexpr SInt16 kReturnInstruction = 0x4E75;

IntlState g_state;

template <typename Record>
void LoadRecord(SInt16 id, Record* record) {
  Handle h = Get1Resource(kIntlType, id);
  // A resource shorter than its record is damaged: the record keeps its values.
  if (h && *h && GetHandleSize(h) >= static_cast<Size>(sizeof(Record)))
    std::memcpy(record, *h, sizeof(Record));
}

template <typename Record>
Handle HandleCopy(const Record& record) {
  Handle h = NewHandle(sizeof(Record));
  if (h) std::memcpy(*h, &record, sizeof(Record));
  return h;
}

// A record given to IUSetIntl becomes the live one, and the handle of it
// that GetIntlResource gave out shows it.
template <typename Record>
void MakeLive(Handle given, Record* live, Handle kept) {
  if (GetHandleSize(given) < static_cast<Size>(sizeof(Record))) return;
  std::memcpy(live, *given, sizeof(Record));
  if (kept && *kept && kept != given) std::memcpy(*kept, live, sizeof(Record));
}

void CopyPascal(Str15 out, const char* text) {
  size_t n = std::strlen(text);
  out[0] = static_cast<unsigned char>(n);
  std::memcpy(out + 1, text, n);
}

}  // namespace

IntlState& State() { return g_state; }

Intl0Rec DefaultIntl0() {
  Intl0Rec r{};
  r.decimalPt = '.';
  r.thousSep = ',';
  r.listSep = ';';
  r.currSym1 = '$';
  r.currFmt = currSymLead | currNegSym | currTrailingZ | currLeadingZ;
  r.dateOrder = mdy;
  r.dateSep = '/';
  r.timeCycle = 255;  // 12-hour
  r.timeFmt = 0x60;
  std::memcpy(r.mornStr, "AM", 3);
  std::memcpy(r.eveStr, "PM", 3);
  r.timeSep = ':';
  r.metricSys = 0;
  r.intl0Vers = 0;
  return r;
}

Intl1Rec DefaultIntl1() {
  Intl1Rec r{};
  for (int i = 0; i < 7; ++i) CopyPascal(r.days[i], kDayNames[i]);
  for (int i = 0; i < 12; ++i) CopyPascal(r.months[i], kMonthNames[i]);
  r.suppressDay = 0;
  r.lngDateFmt = 255;
  r.abbrLen = 3;
  std::memcpy(r.st1, ", ", 2);
  r.st2[0] = ' ';
  std::memcpy(r.st3, ", ", 2);
  r.localRtn[0] = kReturnInstruction;
  return r;
}

void StartInternational(SInt16 systemFile) {
  IntlState& s = g_state;
  s.intl0 = DefaultIntl0();
  s.intl1 = DefaultIntl1();
  s.settings = DateTimeSettings{};
  if (systemFile > 0) {
    SInt16 current = CurResFile();
    OSErr saved = lowmem::ResErr();
    UseResFile(systemFile);
    LoadRecord(0, &s.intl0);
    LoadRecord(1, &s.intl1);
    UseResFile(current);
    lowmem::ResErr() = saved;  // a missing 'INTL' is no failure of InitResources
  }
  ReadInternationalSettings(systemFile);
  // Handles already given out show the records as they are now.
  if (s.intl0Handle && *s.intl0Handle) std::memcpy(*s.intl0Handle, &s.intl0, sizeof(Intl0Rec));
  if (s.intl1Handle && *s.intl1Handle) std::memcpy(*s.intl1Handle, &s.intl1, sizeof(Intl1Rec));
}

void EndInternational() {
  // The Memory Manager releases every block at the session's end; the next
  // session makes its own handles.
  g_state.intl0Handle = nullptr;
  g_state.intl1Handle = nullptr;
}

}  // namespace kwe::intl

using namespace kwe::intl;

KWE_API Handle KWE_CALL GetIntlResource(SInt16 theID) {
  IntlState& s = State();
  if (theID == 0) {
    if (!s.intl0Handle) s.intl0Handle = HandleCopy(s.intl0);
    return s.intl0Handle;
  }
  if (theID == 1) {
    if (!s.intl1Handle) s.intl1Handle = HandleCopy(s.intl1);
    return s.intl1Handle;
  }
  return GetResource(kIntlType, theID);
}

KWE_API Handle KWE_CALL IUGetIntl(SInt16 theID) { return GetIntlResource(theID); }

KWE_API void KWE_CALL IUSetIntl(SInt16 refNum, SInt16 theID, Handle intlHandle) {
  if (!intlHandle || !*intlHandle) {
    kwe::lowmem::ResErr() = nilHandleErr;
    return;
  }
  SInt16 current = CurResFile();
  UseResFile(refNum);
  if (CurResFile() != refNum) {
    UseResFile(current);
    kwe::lowmem::ResErr() = resFNotFound;
    return;
  }
  IntlState& s = State();
  if (theID == 0) MakeLive(intlHandle, &s.intl0, s.intl0Handle);
  if (theID == 1) MakeLive(intlHandle, &s.intl1, s.intl1Handle);
  if (Handle old = Get1Resource(kIntlType, theID)) RemoveResource(old);
  Handle copy = intlHandle;
  if (HandToHand(&copy) != noErr) {
    kwe::lowmem::ResErr() = memFullErr;
    UseResFile(current);
    return;
  }
  AddResource(copy, kIntlType, theID, reinterpret_cast<ConstStr255Param>(""));
  OSErr result = kwe::lowmem::ResErr();
  if (result == noErr)
    WriteResource(copy);
  else
    DisposeHandle(copy);
  result = kwe::lowmem::ResErr();
  UseResFile(current);
  kwe::lowmem::ResErr() = result;
}
