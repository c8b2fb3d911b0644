/* Greets from its resource file: it reads 'STR ' 128 from greeting.RSR,
   draws it in a window on the first update event, reads back a pixel of
   the frame it drew, prints what it found and quits. */
#include <Dialogs.h>
#include <Events.h>
#include <Fonts.h>
#include <MacWindows.h>
#include <Memory.h>
#include <Menus.h>
#include <Quickdraw.h>
#include <Resources.h>
#include <ToolUtils.h>
#include <Types.h>
#include <stdio.h>

int main(void) {
  static const unsigned char title[] = "\010Greeting";
  Rect bounds, frame;
  WindowPtr window;
  StringHandle greeting;
  EventRecord event;
  RGBColor pixel;
  int drawn = 0;

  InitGraf(&qd.thePort);
  InitFonts();
  InitWindows();
  InitMenus();
  InitDialogs(nil);
  InitCursor();

  greeting = GetString(128);
  SetRect(&bounds, 40, 40, 340, 200);
  window = NewWindow(nil, &bounds, title, true, documentProc, (WindowPtr)-1L, false, 0);
  if (greeting == nil || window == nil) {
    printf("greeting: no 'STR ' 128 or no window\n");
    return 2;
  }
  while (!drawn) {
    if (WaitNextEvent(everyEvent, &event, 6, nil) && event.what == updateEvt) {
      SetPort(window);
      BeginUpdate(window);
      EraseRect(&window->portRect);
      frame = window->portRect;
      InsetRect(&frame, 5, 5);
      FrameRect(&frame);
      MoveTo(20, 40);
      DrawString(*greeting);
      EndUpdate(window);
      drawn = 1;
    }
  }
  GetCPixel(5, 20, &pixel);
  printf("greeting: %.*s; frame pixel %s\n", (int)(*greeting)[0], (char*)*greeting + 1,
         pixel.red == 0 && pixel.green == 0 && pixel.blue == 0 ? "black" : "not black");
  DisposeWindow(window);
  return 0;
}
