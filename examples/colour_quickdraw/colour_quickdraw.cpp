// Colour QuickDraw: a colour window with a wheel of twelve hues painted as
// arcs, and below it a strip of bars that the Colour menu switches between
// the spectrum and a ramp of greys. A click inverts a square of the
// picture, as the old demos showed off the inverse colour. The one change
// from its Macintosh source is <MacWindows.h> for <Windows.h>.
#include <Dialogs.h>
#include <Events.h>
#include <Fonts.h>
#include <MacWindows.h>
#include <Memory.h>
#include <Menus.h>
#include <OSUtils.h>
#include <Quickdraw.h>
#include <SegLoad.h>
#include <ToolUtils.h>
#include <Traps.h>
#include <Types.h>

const short rMenuBar = 128;
const short rAboutAlert = 128;
const short rNoColourAlert = 129;
const short mApple = 128, iAbout = 1;
const short mFile = 129, iQuit = 1;
const short mColour = 130, iSpectrum = 1, iGreys = 2;

const short kHues = 12;
const short kBars = 12;
const short kInvertSize = 20;

Rect gWindowBounds = {40, 40, 340, 320};  // top, left, bottom, right
const unsigned char kWindowTitle[] =
    "\x10"
    "Colour QuickDraw";
Rect gWheel = {20, 20, 220, 220};
Rect gStrip = {240, 20, 280, 260};
short gStripKind = iSpectrum;
Boolean gQuitting = false;

static void HueColour(short index, short count, RGBColor* colour) {
  HSVColor hsv;
  hsv.hue = (unsigned short)((long)index * 65536L / count);
  hsv.saturation = 65535;
  hsv.value = 65535;
  HSV2RGB(&hsv, colour);
}

static void DrawWheel(void) {
  RGBColor colour;
  for (short i = 0; i < kHues; ++i) {
    HueColour(i, kHues, &colour);
    RGBForeColor(&colour);
    PaintArc(&gWheel, (short)(i * 360 / kHues), 360 / kHues);
  }
}

static void DrawStrip(void) {
  RGBColor colour;
  short width = (short)((gStrip.right - gStrip.left) / kBars);
  for (short i = 0; i < kBars; ++i) {
    Rect bar = gStrip;
    bar.left = (short)(gStrip.left + i * width);
    bar.right = (short)(bar.left + width);
    if (gStripKind == iSpectrum) {
      HueColour(i, kBars, &colour);
    } else {
      colour.red = colour.green = colour.blue = (unsigned short)(65535L * i / (kBars - 1));
    }
    RGBForeColor(&colour);
    PaintRect(&bar);
  }
}

static void DrawPicture(WindowPtr window) {
  RGBColor black = {0, 0, 0};
  EraseRect(&window->portRect);
  DrawWheel();
  DrawStrip();
  RGBForeColor(&black);
  FrameOval(&gWheel);
}

static void SetStripKind(short kind) {
  MenuHandle menu = GetMenuHandle(mColour);
  CheckItem(menu, iSpectrum, kind == iSpectrum);
  CheckItem(menu, iGreys, kind == iGreys);
  gStripKind = kind;
  if (FrontWindow() != nil) {
    SetPort(FrontWindow());
    InvalRect(&gStrip);
  }
}

static void DoMenuCommand(long menuResult) {
  short menuID = HiWord(menuResult), item = LoWord(menuResult);
  if (menuID == mApple && item == iAbout)
    Alert(rAboutAlert, nil);
  else if (menuID == mFile && item == iQuit)
    gQuitting = true;
  else if (menuID == mColour)
    SetStripKind(item);
  HiliteMenu(0);
}

static void DoContentClick(WindowPtr window, Point where) {
  Rect square;
  SetPort(window);
  GlobalToLocal(&where);
  SetRect(&square, where.h, where.v, where.h, where.v);
  InsetRect(&square, -kInvertSize / 2, -kInvertSize / 2);
  InvertRect(&square);
}

static void DoEvent(EventRecord* event) {
  WindowPtr window;
  switch (event->what) {
    case mouseDown:
      switch (FindWindow(event->where, &window)) {
        case inMenuBar: DoMenuCommand(MenuSelect(event->where)); break;
        case inContent: DoContentClick(window, event->where); break;
        case inDrag: DragWindow(window, event->where, &qd.screenBits.bounds); break;
        case inGoAway:
          if (TrackGoAway(window, event->where)) gQuitting = true;
          break;
      }
      break;
    case keyDown:
      if (event->modifiers & cmdKey) DoMenuCommand(MenuKey((char)(event->message & charCodeMask)));
      break;
    case updateEvt:
      window = (WindowPtr)event->message;
      SetPort(window);
      BeginUpdate(window);
      DrawPicture(window);
      EndUpdate(window);
      break;
  }
}

int main(void) {
  SysEnvRec world;
  EventRecord event;

  MaxApplZone();
  InitGraf(&qd.thePort);
  InitFonts();
  InitWindows();
  InitMenus();
  InitDialogs(nil);
  InitCursor();

  SysEnvirons(curSysEnvVers, &world);
  if (!world.hasColorQD) {
    StopAlert(rNoColourAlert, nil);
    ExitToShell();
  }
  Handle menuBar = GetNewMBar(rMenuBar);
  SetMenuBar(menuBar);
  DisposeHandle(menuBar);
  DrawMenuBar();
  SetStripKind(iSpectrum);

  WindowPtr window =
      NewCWindow(nil, &gWindowBounds, kWindowTitle, true, noGrowDocProc, (WindowPtr)-1L, true, 0);
  if (window == nil) ExitToShell();
  SetPort(window);
  while (!gQuitting)
    if (WaitNextEvent(everyEvent, &event, 6, nil)) DoEvent(&event);
  DisposeWindow(window);
  ExitToShell();  // the Finder's way home: the process ends here
}
