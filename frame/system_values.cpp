#include "frame/system_values.h"

namespace kwe {
namespace {

struct Setting {
  SystemValueKind kind;
  int32_t initial;
};

using K = SystemValueKind;

// Word: 16-bit, answered sign-extended. LowWord: 16-bit, kept as value & 0xFFFF.
constexpr Setting kSettings[kSysValueCount + 1] = {
    {K::Unassigned, 0},                                 // 0: no such index
    {K::LowWord, 0},       {K::LowWord, 0},             // 1, 2
    {K::GetOnly, 0},       {K::GetOnly, 0},             // 3, 4: scroll-bar sizes
    {K::Word, 0x20},       {K::Word, 0x40},             // 5, 6: event pump
    {K::Word, 0},          {K::Word, int16_t(0xFFFF)},  // 7, 8
    {K::Long, 0},          {K::Long, 0},
    {K::Long, 0},                         // 9-11
    {K::Word, 1},                         // 12
    {K::Long, 1},          {K::Long, 0},  // 13, 14
    {K::Long, 0x2000},                    // 15: small-block limit
    {K::Long, 1},          {K::Long, 0},
    {K::Long, 1},                                       // 16-18
    {K::Long, 0},          {K::Long, 0},                // 19, 20
    {K::GetOnly, 0},       {K::GetOnly, 0},             // 21, 22
    {K::Long, 0},          {K::Long, 1},                // 23, 24
    {K::Unassigned, 0},                                 // 25
    {K::Long, 1},          {K::GetOnly, 0},             // 26, 27
    {K::Long, 0},          {K::Long, 1},                // 28, 29
    {K::Word, 0},          {K::Word, 0},                // 30, 31
    {K::LowWord, 0},       {K::Word, int16_t(0xFFFF)},  // 32, 33
    {K::Long, 0},          {K::Long, 0},                // 34, 35
    {K::Long, 0x3F3F3F3F},                              // 36: '????'
    {K::Long, 0},          {K::Long, 0},
    {K::Long, 0},  // 37-39
    {K::Unassigned, 0},    {K::Unassigned, 0},
    {K::Unassigned, 0},  // 40-42
    {K::Unassigned, 0},    {K::Unassigned, 0},
    {K::Unassigned, 0},  // 43-45
    {K::Long, 0},        // 46
};

int32_t g_values[kSysValueCount + 1];
bool g_initialised = false;

void EnsureInitialised() {
  if (g_initialised) return;
  ResetSystemValues();
}

int32_t Stored(SystemValueKind kind, int32_t value) {
  switch (kind) {
    case K::Word: return int16_t(value & 0xFFFF);
    case K::LowWord: return value & 0xFFFF;
    default: return value;
  }
}

bool InRange(int16_t index) { return index >= 1 && index <= kSysValueCount; }

}  // namespace

void ResetSystemValues() {
  for (int i = 0; i <= kSysValueCount; ++i)
    g_values[i] = Stored(kSettings[i].kind, kSettings[i].initial);
  g_initialised = true;
}

SystemValueKind KindOfSystemValue(int16_t index) {
  return InRange(index) ? kSettings[index].kind : K::Unassigned;
}

int32_t ReadSystemValue(int16_t index) {
  EnsureInitialised();
  return InRange(index) ? g_values[index] : 0;
}

int32_t SystemValue(int16_t operation, int16_t index, int32_t value) {
  EnsureInitialised();
  SystemValueKind kind = KindOfSystemValue(index);
  if (kind == K::Unassigned) return 0;
  int32_t previous = g_values[index];
  if (operation == 1 && kind != K::GetOnly) g_values[index] = Stored(kind, value);
  return previous;
}

}  // namespace kwe
