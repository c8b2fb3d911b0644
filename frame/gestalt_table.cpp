#include "frame/gestalt_table.h"

namespace kwe {
namespace {

constexpr uint32_t Code(const char (&s)[5]) {
  return (uint32_t(uint8_t(s[0])) << 24) | (uint32_t(uint8_t(s[1])) << 16) |
         (uint32_t(uint8_t(s[2])) << 8) | uint32_t(uint8_t(s[3]));
}

struct Answer {
  uint32_t selector;
  int32_t response;
};

constexpr Answer kAnswers[] = {
    {Code("vers"), 1}, {Code("mach"), 11},     {Code("sysv"), kSystemVersion},
    {Code("proc"), 4}, {Code("qd  "), 0x0200}, {Code("kbd "), 4},
    {Code("atlk"), 0}, {Code("hdwr"), 0},      {Code("os  "), 0},
    {Code("scri"), 1}, {Code("te  "), 1},      {Code("evnt"), 0},
    {Code("edtn"), 0}, {Code("help"), 0},      {Code("alis"), 0},
    {Code("fold"), 0}, {Code("pop!"), 0},      {Code("font"), 0},
};

}  // namespace

bool GestaltResponse(uint32_t selector, uint16_t windowsFlags, int32_t* response) {
  if (selector == Code("fpu ")) {
    *response = (windowsFlags & kCoprocessorFlag) ? int32_t(0xFFFFFFFF) : 0;
    return true;
  }
  for (const Answer& a : kAnswers) {
    if (a.selector == selector) {
      *response = a.response;
      return true;
    }
  }
  *response = 0;
  return false;
}

}  // namespace kwe
