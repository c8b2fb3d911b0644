// A device's search and complement procedures, and DeviceLoop. Each
// procedure record is the published one followed by the callable form the
// host's make procedure gave (released when the record goes), so that an
// application reading srchProc sees its own procedure.
#include <initializer_list>

#include "Memory.h"
#include "QuickdrawColour.h"
#include "frame/host_procedures.h"
#include "frame/low_memory.h"
#include "quickdraw/colour/device_colours.h"
#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

// Both records are a next handle and a procedure: one chain walker serves.
struct ProcRecord {
  Handle next;
  ProcPtr procedure;
  ProcPtr callable;
};

GDevice* CurrentDeviceRecord() {
  GDHandle gd = lowmem::At<GDHandle>(lowmem::Slot::TheGDevice);
  return gd && *gd ? *gd : nullptr;
}

ProcRecord* RecordOf(Handle h) { return h && *h ? reinterpret_cast<ProcRecord*>(*h) : nullptr; }

void AddTo(ProcPtr* head, ProcPtr procedure) {
  if (!head || !procedure) return;
  Handle h = NewHandleClear(sizeof(ProcRecord));
  if (!h) {
    SetQDError(memFullErr);
    return;
  }
  ProcRecord* r = RecordOf(h);
  r->next = reinterpret_cast<Handle>(*head);
  r->procedure = procedure;
  r->callable = WrapHostProcedure(procedure);
  *head = reinterpret_cast<ProcPtr>(h);
}

// Unlinks the newest record of procedure from the chain at head.
void DeleteFrom(ProcPtr* head, ProcPtr procedure) {
  if (!head) return;
  Handle previous = nullptr;
  for (Handle h = reinterpret_cast<Handle>(*head); ProcRecord* r = RecordOf(h);
       previous = h, h = r->next) {
    if (r->procedure != procedure) continue;
    if (previous)
      RecordOf(previous)->next = r->next;
    else
      *head = reinterpret_cast<ProcPtr>(r->next);
    ReleaseHostProcedure(r->callable);
    DisposeHandle(h);
    return;
  }
}

}  // namespace

bool SearchProceduresFind(const RGBColor& colour, SInt32* index) {
  GDevice* gd = CurrentDeviceRecord();
  if (!gd) return false;
  // The chain is read again after each call: a procedure may delete itself.
  for (Handle h = reinterpret_cast<Handle>(gd->gdSearchProc); ProcRecord* r = RecordOf(h);
       h = r->next) {
    RGBColor asked = colour;
    SInt32 position = 0;
    auto search = reinterpret_cast<ColorSearchProcPtr>(r->callable);
    if (search(&asked, &position)) {
      *index = position;
      return true;
    }
    gd = CurrentDeviceRecord();
    if (!gd) return false;
  }
  return false;
}

bool ComplementByProcedure(RGBColor* colour) {
  GDevice* gd = CurrentDeviceRecord();
  ProcRecord* r = gd ? RecordOf(reinterpret_cast<Handle>(gd->gdCompProc)) : nullptr;
  if (!r) return false;
  reinterpret_cast<ColorComplementProcPtr>(r->callable)(colour);
  return true;
}

void DisposeDeviceProcedures(GDHandle gdh) {
  if (!gdh || !*gdh) return;
  for (ProcPtr* head : {&(*gdh)->gdSearchProc, &(*gdh)->gdCompProc})
    while (ProcRecord* r = RecordOf(reinterpret_cast<Handle>(*head)))
      DeleteFrom(head, r->procedure);
}

}  // namespace kwe::quickdraw

using namespace kwe::quickdraw;

KWE_API void KWE_CALL AddSearch(ColorSearchProcPtr searchProc) {
  if (GDevice* gd = CurrentDeviceRecord())
    AddTo(&gd->gdSearchProc, reinterpret_cast<ProcPtr>(searchProc));
}

KWE_API void KWE_CALL DelSearch(ColorSearchProcPtr searchProc) {
  if (GDevice* gd = CurrentDeviceRecord())
    DeleteFrom(&gd->gdSearchProc, reinterpret_cast<ProcPtr>(searchProc));
}

KWE_API void KWE_CALL AddComp(ColorComplementProcPtr compProc) {
  if (GDevice* gd = CurrentDeviceRecord())
    AddTo(&gd->gdCompProc, reinterpret_cast<ProcPtr>(compProc));
}

KWE_API void KWE_CALL DelComp(ColorComplementProcPtr compProc) {
  if (GDevice* gd = CurrentDeviceRecord())
    DeleteFrom(&gd->gdCompProc, reinterpret_cast<ProcPtr>(compProc));
}

KWE_API void KWE_CALL DeviceLoop(RgnHandle drawingRgn, DeviceLoopDrawingProcPtr drawingProc,
                                 SInt32 userData, SInt32 flags) {
  (void)flags;  // one device: every choice of devices comes to the same
  GDHandle gd = kwe::lowmem::At<GDHandle>(kwe::lowmem::Slot::TheGDevice);
  if (!drawingProc || !gd || !*gd || (drawingRgn && EmptyRgn(drawingRgn))) return;
  PixMapHandle pm = (*gd)->gdPMap;
  SInt16 depth = pm && *pm ? (*pm)->pixelSize : 0;
  ProcPtr callable = kwe::WrapHostProcedure(reinterpret_cast<ProcPtr>(drawingProc));
  reinterpret_cast<DeviceLoopDrawingProcPtr>(callable)(depth, (*gd)->gdFlags, gd, userData);
  kwe::ReleaseHostProcedure(callable);
}
