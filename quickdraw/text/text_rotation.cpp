// The rotation the RotateBegin comment asks for, applied to text.
#include "quickdraw/text/text_rotation.h"

#include <cmath>

#include "quickdraw/ports/port_attr.h"

namespace kwe::quickdraw {
namespace {

struct Rotation {
  GrafPtr port = nullptr;
  int angle = 0;
  int centreH = 0, centreV = 0;
};
Rotation g_rotation;

// The port's font is made again with (or without) the escapement.
void MarkTextDirty(GrafPtr port) {
  if (PortAttr* a = port ? AttrOf(port) : nullptr) a->dirty |= kTextDirty;
}

}  // namespace

void BeginTextRotation(GrafPtr port, int angle) {
  g_rotation.port = port;
  g_rotation.angle = ((angle % 360) + 360) % 360;
  MarkTextDirty(port);
}

void EndTextRotation() {
  MarkTextDirty(g_rotation.port);
  g_rotation.port = nullptr;
  g_rotation.angle = 0;
}

void SetTextRotationCentre(GrafPtr, int h, int v) {
  g_rotation.centreH = h;
  g_rotation.centreV = v;
}

bool TextRotationActive(GrafPtr port) { return port && g_rotation.port == port; }

int TextEscapementOf(GrafPtr port) {
  if (!TextRotationActive(port) || g_rotation.angle == 0) return 0;
  return (3600 - g_rotation.angle * 10) % 3600;
}

void TextRotationCentre(int* h, int* v) {
  *h = g_rotation.centreH;
  *v = g_rotation.centreV;
}

// Clockwise on a screen whose v grows downwards.
void TurnTextOrigin(GrafPtr port, int centreH, int centreV, int* h, int* v) {
  if (!TextRotationActive(port) || g_rotation.angle == 0) return;
  double radians = g_rotation.angle * 3.14159265358979323846 / 180.0;
  double c = std::cos(radians), s = std::sin(radians);
  double dh = *h - centreH, dv = *v - centreV;
  *h = centreH + static_cast<int>(std::lround(dh * c - dv * s));
  *v = centreV + static_cast<int>(std::lround(dh * s + dv * c));
}

}  // namespace kwe::quickdraw
