/* A classic source that includes only the window and dialog headers still
   sees what they brought in on the Macintosh: the operating-system
   utilities, the event records, the rectangle calculations, qd, and the
   language of the interfaces (pascal, nil, universal procedure pointers). */
#include <Dialogs.h>
#include <MacWindows.h>

pascal Boolean ClassicFilter(DialogPtr dialog, EventRecord* event, short* itemHit);
pascal void ClassicUserItem(DialogPtr dialog, short item);
short ClassicGraph(void);

pascal Boolean ClassicFilter(DialogPtr dialog, EventRecord* event, short* itemHit) {
  if (dialog == nil || event->what != keyDown) return false;
  *itemHit = (event->message & charCodeMask) == '\r' ? ok : 0;
  return *itemHit != 0;
}

pascal void ClassicUserItem(DialogPtr dialog, short item) {
  Rect box;
  SetRect(&box, 0, 0, item, item);
  if (dialog) FrameRect(&box);
}

short ClassicGraph(void) {
  SysEnvRec world;
  EventRecord event;
  Rect r, s;
  short itemHit = 0;
  ModalFilterUPP filter = NewModalFilterProc(ClassicFilter);
  UserItemUPP drawer = NewUserItemProc(ClassicUserItem);
  UniversalProcPtr described =
      NewRoutineDescriptor((ProcPtr)ClassicFilter, uppModalFilterProcInfo, GetCurrentISA());
  InitGraf(&qd.thePort);
  SysEnvirons(curSysEnvVers, &world);
  SetRect(&r, 0, 0, 100, 100);
  OffsetRect(&r, 10, 10);
  InsetRect(&r, 2, 2);
  UnionRect(&r, &qd.screenBits.bounds, &s);
  event.what = app4Evt;
  event.where = topLeft(r);
  ModalDialog(filter, &itemHit);
  DisposeRoutineDescriptor(described);
  (void)drawer;
  return (short)(world.machineType == envMacII && PtInRect(event.where, &s) && EqualRect(&r, &s) &&
                 !EmptyRect(&r) && qd.randSeed == itemHit);
}
