#include "demo_pictures.h"

#include "QDOffscreen.h"
#include "Quickdraw.h"

namespace {

const Rect kFrame{0, 0, 40, 60};

// The recorded drawing, in the frame's coordinates.
void Drawing() {
  Rect sky{0, 0, 40, 60}, sun{4, 40, 16, 52}, house{19, 9, 38, 31}, door{28, 17, 38, 23};
  RGBColor blue{0x9999, 0xCCCC, 0xFFFF}, yellow{0xFFFF, 0xCCCC, 0};
  RGBForeColor(&blue);
  PaintRect(&sky);
  RGBForeColor(&yellow);
  PaintOval(&sun);
  ForeColor(redColor);
  PaintRect(&house);
  ForeColor(blackColor);
  PenSize(2, 2);
  FrameRect(&house);
  MoveTo(6, 20);
  LineTo(20, 8);
  LineTo(34, 20);
  PenNormal();
  EraseRect(&door);
}

void Label(SInt16 h, SInt16 v, const char* text, int length) {
  MoveTo(h, v);
  DrawText(text, 0, SInt16(length));
}

}  // namespace

void DrawPictureDemo(SInt16 h, SInt16 v) {
  GrafPtr port;
  GetPort(&port);
  PicHandle pic = OpenPicture(&kFrame);
  Drawing();
  ClosePicture();
  if (!pic) return;
  Rect original = kFrame, doubled{0, 0, 80, 120};
  OffsetRect(&original, h, SInt16(v + 14));
  OffsetRect(&doubled, SInt16(h + 70), SInt16(v + 14));
  DrawPicture(pic, &original);
  DrawPicture(pic, &doubled);
  KillPicture(pic);

  // The same drawing in a GWorld, then copied onto the window.
  GWorldPtr world = nullptr;
  Rect onWindow = kFrame;
  OffsetRect(&onWindow, SInt16(h + 200), SInt16(v + 14));
  if (NewGWorld(&world, 32, &kFrame, nullptr, nullptr, 0) == noErr) {
    CGrafPtr saved;
    GDHandle device;
    GetGWorld(&saved, &device);
    SetGWorld(world, nullptr);
    Drawing();
    SetGWorld(saved, device);
    CopyBits(reinterpret_cast<const BitMap*>(*GetGWorldPixMap(world)), &port->portBits, &kFrame,
             &onWindow, srcCopy, nullptr);
    DisposeGWorld(world);
  }
  ForeColor(blackColor);
  Label(h, SInt16(v + 10), "Picture", 7);
  Label(SInt16(h + 70), SInt16(v + 10), "Played at 2x", 12);
  Label(SInt16(h + 200), SInt16(v + 10), "Via a GWorld", 12);
}
