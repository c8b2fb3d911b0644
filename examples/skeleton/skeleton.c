/* Skeleton: the shape every Macintosh application of the late 1980s had. A
   menu bar from an 'MBAR', document windows from a 'WIND' that can be
   dragged, sized, zoomed and closed, an About alert, Copy (the front
   document as a picture and its title as text) and Paste (text names the
   front document), and the event loop around WaitNextEvent (or GetNextEvent
   where the trap is missing). The one change from its Macintosh source is
   <MacWindows.h> for <Windows.h>. */
#include <Dialogs.h>
#include <DiskInit.h>
#include <Events.h>
#include <Fonts.h>
#include <MacWindows.h>
#include <Memory.h>
#include <Menus.h>
#include <OSUtils.h>
#include <Packages.h>
#include <Quickdraw.h>
#include <Scrap.h>
#include <SegLoad.h>
#include <ToolUtils.h>
#include <Traps.h>
#include <Types.h>

#define rMenuBar 128
#define rAboutAlert 128
#define rDocWindow 128
#define rUserAlert 129

#define mApple 128
#define iAbout 1
#define mFile 129
#define iNew 1
#define iClose 2
#define iQuit 4
#define mEdit 130
#define iCopy 4
#define iPaste 5

#define kMaxDocuments 8
#define kMinDocSize 80
#define kMarkSize 16
#define kStagger 20

/* Read by whoever wants to know how the program found its world. */
Boolean gHasWaitNextEvent;
Boolean gInBackground;
short gDocumentCount;
Boolean gQuitting;
long gCopiedPictureSize;
long gPastedPictureSize;

static Boolean TrapAvailable(short theTrap, TrapType tType) {
  if (tType == ToolTrap) theTrap &= 0x07FF;
  return NGetTrapAddress(theTrap, tType) != NGetTrapAddress(_Unimplemented, ToolTrap);
}

static void AlertUser(short error) {
  static const unsigned char empty[1] = {0};
  Str255 message;
  NumToString(error, message);
  ParamText(message, empty, empty, empty);
  StopAlert(rUserAlert, nil);
}

/* The last click in a window lives in its refCon: v in the high word. */
static void DrawDocument(WindowPtr window) {
  Rect r = window->portRect;
  long click = GetWRefCon(window);
  Rect mark;
  EraseRect(&r);
  InsetRect(&r, 10, 10);
  FrameRect(&r);
  InsetRect(&r, 20, 20);
  if (!EmptyRect(&r)) FillOval(&r, &qd.gray);
  if (click != 0) {
    SetRect(&mark, (short)(click & 0xFFFF), (short)(click >> 16), (short)(click & 0xFFFF),
            (short)(click >> 16));
    InsetRect(&mark, -kMarkSize / 2, -kMarkSize / 2);
    PaintRect(&mark);
  }
  DrawGrowIcon(window);
}

static void DoNew(void) {
  WindowPtr window;
  Str255 title, number;
  if (gDocumentCount >= kMaxDocuments) return;
  window = GetNewWindow(rDocWindow, nil, (WindowPtr)-1L);
  if (window == nil) {
    AlertUser(memFullErr);
    return;
  }
  ++gDocumentCount;
  GetWTitle(window, title);
  NumToString(gDocumentCount, number);
  BlockMove(number + 1, title + title[0] + 2, number[0]);
  title[title[0] + 1] = ' ';
  title[0] += number[0] + 1;
  SetWTitle(window, title);
  MoveWindow(window, (short)(kStagger * gDocumentCount), (short)(40 + kStagger * gDocumentCount),
             false);
  ShowWindow(window);
}

static void DoCloseWindow(WindowPtr window) {
  if (window == nil) return;
  DisposeWindow(window);
  --gDocumentCount;
}

/* The front document's drawing as a 'PICT' and its title, followed by a
   line of its own, as 'TEXT'. */
static void DoCopy(WindowPtr window) {
  static const unsigned char suffix[] = "\rdrawn by Skeleton \xA5";
  Str255 title;
  PicHandle picture;
  if (window == nil) return;
  SetPort(window);
  picture = OpenPicture(&window->portRect);
  DrawDocument(window);
  ClosePicture();
  ZeroScrap();
  GetWTitle(window, title);
  BlockMove(suffix, title + title[0] + 1, sizeof suffix - 1);
  PutScrap(title[0] + (long)sizeof suffix - 1, 'TEXT', title + 1);
  gCopiedPictureSize = GetHandleSize((Handle)picture);
  HLock((Handle)picture);
  PutScrap(gCopiedPictureSize, 'PICT', *picture);
  KillPicture(picture);
}

/* The scrap's text up to its first return names the front document; a
   picture on the scrap is only measured. */
static void DoPaste(WindowPtr window) {
  Handle text = NewHandle(0), picture = NewHandle(0);
  SInt32 offset, length = GetScrap(text, 'TEXT', &offset);
  Str255 title;
  short i;
  gPastedPictureSize = GetScrap(picture, 'PICT', &offset);
  if (window != nil && length > 0) {
    for (i = 0; i < length && i < 255 && (*text)[i] != '\r'; ++i) title[i + 1] = (*text)[i];
    title[0] = (unsigned char)i;
    SetWTitle(window, title);
  }
  DisposeHandle(text);
  DisposeHandle(picture);
}

static void AdjustMenus(void) {
  MenuHandle file = GetMenuHandle(mFile);
  if (FrontWindow() != nil)
    EnableItem(file, iClose);
  else
    DisableItem(file, iClose);
}

static void DoMenuCommand(long menuResult) {
  short menuID = HiWord(menuResult);
  short menuItem = LoWord(menuResult);
  switch (menuID) {
    case mApple:
      if (menuItem == iAbout) Alert(rAboutAlert, nil);
      break;
    case mFile:
      switch (menuItem) {
        case iNew: DoNew(); break;
        case iClose: DoCloseWindow(FrontWindow()); break;
        case iQuit: gQuitting = true; break;
      }
      break;
    case mEdit:
      if (menuItem == iCopy) DoCopy(FrontWindow());
      if (menuItem == iPaste) DoPaste(FrontWindow());
      break;
  }
  HiliteMenu(0);
}

static void DoContentClick(WindowPtr window, Point where) {
  SetPort(window);
  GlobalToLocal(&where);
  SetWRefCon(window, ((long)where.v << 16) | (unsigned short)where.h);
  InvalRect(&window->portRect);
}

static void DoMouseDown(EventRecord* event) {
  WindowPtr window;
  Rect limits;
  long newSize;
  short part = FindWindow(event->where, &window);
  switch (part) {
    case inMenuBar:
      AdjustMenus();
      DoMenuCommand(MenuSelect(event->where));
      break;
    case inContent:
      if (window != FrontWindow())
        SelectWindow(window);
      else
        DoContentClick(window, event->where);
      break;
    case inDrag: DragWindow(window, event->where, &qd.screenBits.bounds); break;
    case inGrow:
      SetRect(&limits, kMinDocSize, kMinDocSize, qd.screenBits.bounds.right,
              qd.screenBits.bounds.bottom);
      newSize = GrowWindow(window, event->where, &limits);
      if (newSize != 0) {
        SizeWindow(window, LoWord(newSize), HiWord(newSize), true);
        InvalRect(&window->portRect);
      }
      break;
    case inGoAway:
      if (TrackGoAway(window, event->where)) DoCloseWindow(window);
      break;
    case inZoomIn:
    case inZoomOut:
      if (TrackBox(window, event->where, part)) {
        SetPort(window);
        ZoomWindow(window, part, false);
        InvalRect(&window->portRect);
      }
      break;
  }
}

static void DoEvent(EventRecord* event) {
  WindowPtr window = (WindowPtr)event->message;
  switch (event->what) {
    case mouseDown: DoMouseDown(event); break;
    case keyDown:
    case autoKey:
      if (event->modifiers & cmdKey) {
        AdjustMenus();
        DoMenuCommand(MenuKey((short)(event->message & charCodeMask)));
      }
      break;
    case updateEvt:
      SetPort(window);
      BeginUpdate(window);
      DrawDocument(window);
      EndUpdate(window);
      break;
    case activateEvt: DrawGrowIcon(window); break;
    case diskEvt:
      if (HiWord(event->message) != noErr) DIBadMount(event->where, event->message);
      break;
    case osEvt:
      if (((event->message >> 24) & 0xFF) == suspendResumeMessage)
        gInBackground = (event->message & resumeFlag) == 0;
      break;
  }
}

static void EventLoop(void) {
  EventRecord event;
  Boolean gotEvent;
  while (!gQuitting) {
    if (gHasWaitNextEvent) {
      gotEvent = WaitNextEvent(everyEvent, &event, gInBackground ? 60 : 6, nil);
    } else {
      SystemTask();
      gotEvent = GetNextEvent(everyEvent, &event);
    }
    if (gotEvent) DoEvent(&event);
  }
}

int main(void) {
  SysEnvRec world;
  Handle menuBar;

  MaxApplZone();
  MoreMasters();
  InitGraf(&qd.thePort);
  InitFonts();
  InitWindows();
  InitMenus();
  InitDialogs(nil);
  InitCursor();
  FlushEvents(everyEvent, 0);

  SysEnvirons(curSysEnvVers, &world);
  if (world.machineType < 0) ExitToShell(); /* the 64K ROM had too little */
  gHasWaitNextEvent = TrapAvailable(_WaitNextEvent, ToolTrap);

  menuBar = GetNewMBar(rMenuBar);
  if (menuBar == nil) {
    AlertUser(resNotFound);
    ExitToShell();
  }
  SetMenuBar(menuBar);
  DisposeHandle(menuBar);
  DrawMenuBar();

  DoNew();
  EventLoop();
  return 0;
}
