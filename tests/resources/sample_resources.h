// A valid record of every resource type that KWE_ByteSwap knows, written
// field by field either as a Macintosh resource file holds it (big-endian)
// or as a loaded resource should look (native order). The two forms come
// from one list of fields, laid out independently of the library's table,
// so comparing them checks each layout; the fuzz target's seed corpus is
// written from both forms.
#pragma once
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace kwe_samples {

using Bytes = std::vector<uint8_t>;

// The alert stages as a host declares them: bit fields from the least
// significant bit, stage 4 first, as in the Toolbox's C interface.
struct StageList {
  unsigned boldItm4 : 1, boxDrwn4 : 1, sound4 : 2;
  unsigned boldItm3 : 1, boxDrwn3 : 1, sound3 : 2;
  unsigned boldItm2 : 1, boxDrwn2 : 1, sound2 : 2;
  unsigned boldItm1 : 1, boxDrwn1 : 1, sound1 : 2;
};

inline void Put(Bytes& out, bool mac, uint32_t value, int width) {
  for (int i = 0; i < width; ++i)
    out.push_back(
        uint8_t(value >> (mac ? 8 * (width - 1 - i) : 8 * i)));  // tests run little-endian
}

// The fields, separated by spaces: b, w and l are bytes, words and longs
// (one or more values, commas between); r a rectangle (four words); fNxHH
// N bytes of HH; sTEXT a Pascal string; g the alert stages as four codes,
// stage 1 first, each bold item << 3 | box drawn << 2 | sound.
inline Bytes Record(bool mac, const std::string& fields) {
  Bytes out;
  std::istringstream in(fields);
  for (std::string field; in >> field;) {
    const char kind = field[0];
    const std::string arg = field.substr(1);
    std::vector<uint32_t> values;
    if (kind != 's' && kind != 'f') {
      std::istringstream list(arg);
      for (std::string v; std::getline(list, v, ',');)
        values.push_back(uint32_t(std::stoll(v, nullptr, 0)));
    }
    if (kind == 's') {
      out.push_back(uint8_t(arg.size()));
      out.insert(out.end(), arg.begin(), arg.end());
    } else if (kind == 'f') {
      const size_t x = arg.find('x');
      out.insert(out.end(), std::stoul(arg.substr(0, x)),
                 uint8_t(std::stoul(arg.substr(x + 1), nullptr, 16)));
    } else if (kind == 'g' && mac) {
      Put(out, true, values[0] | values[1] << 4 | values[2] << 8 | values[3] << 12, 2);
    } else if (kind == 'g') {
      const auto bold = [&](int s) { return values[s] >> 3; };
      const auto box = [&](int s) { return (values[s] >> 2) & 1; };
      const auto sound = [&](int s) { return values[s] & 3; };
      StageList list{bold(3), box(3), sound(3), bold(2), box(2), sound(2),
                     bold(1), box(1), sound(1), bold(0), box(0), sound(0)};
      uint8_t word[2];
      std::memcpy(word, &list, 2);
      out.insert(out.end(), word, word + 2);
    } else {
      for (uint32_t v : values) Put(out, mac, v, kind == 'b' ? 1 : kind == 'l' ? 4 : 2);
    }
  }
  return out;
}

inline std::string PixMap(int height, int rowBytes, int table) {
  return " l0 w" + std::to_string(0x8000 | rowBytes) + " r0,0," + std::to_string(height) +
         ",16 w0,0 l0,0x00480000,0x00480000 w0,8,1,8 l0," + std::to_string(table) + ",0 ";
}

inline std::string ColourTable(int ctSize) {
  std::string fields = " l0x12345678 w0x8000," + std::to_string(ctSize);
  for (int i = 0; i <= ctSize; ++i)
    fields += " w" + std::to_string(i) + "," + std::to_string(0x1111 * i) + "," +
              std::to_string(0xFF00 - i) + ",0x0102";
  return fields + " ";
}

struct Sample {
  const char* type;    // four characters
  std::string fields;  // empty: converted as "nothing", the same bytes in both forms
  Bytes make(bool mac) const {
    if (!fields.empty()) return Record(mac, fields);
    Bytes b(40);
    for (size_t i = 0; i < b.size(); ++i) b[i] = uint8_t(i * 37 + 5);
    return b;
  }
};

// Every type of the table, with one sample each ('INTL' twice: its two
// layouts). 'DITL' holds a button, static text of odd length, an icon (its
// ID is its data) and a 'CNTL' control item; 'ppat' its PixMap at 28, the
// pattern data at 78 and the colour table at 94; 'cicn' a 16 x 16 colour
// icon with its mask, 1-bit image, colour table and 8-bit image.
inline const std::vector<Sample>& AllSamples() {
  static const std::vector<Sample> samples = [] {
    std::vector<Sample> list = {
        {"acur", "w3,0,128,0,129,0,130,0"},
        {"ALRT", "r40,40,140,340 w129 g15,6,9,0"},
        {"KWED", "b1,2 w0x0304 b5,6"},   // the library's own defaults record
        {"CURS", "f32x0F f32xF0 w7,9"},  // only the hot spot
        {"crsr", "f20x81 f32x0F f32xF0 w3,5 f12x77"},
        {"clut", ColourTable(3)},
        {"DITL",
         "w3 l0 r10,20,30,80 b4 sOK l0 r40,20,60,200 b136 sHello b0 l0 r70,20,102,52 b32,2 w1000"
         " l0 r110,20,130,120 b7,2 w129"},
        {"DLOG", "r50,60,250,460 w1 b1,0,1,0 l0xCAFEF00D w130 sSettings"},
        {"INTL", "f30x2E w0x0201"},
        {"INTL", "f328x41 w0x4E75,2"},
        {"MBAR", "w3,128,129,130"},
        {"MENU", "w128,0,0 l0,-5 sFile sOpen f4x00 b0"},
        {"PAT#", "w2 f8xAA f8x55"},
        {"PICT", "w30 r0,0,100,200 f20x11"},  // opcodes stay as they are
        {"pltt",
         "w2 l0 w0 l0,0 w0,0x2222,0xFFFF,2,0x5000,0 l0 w0x1000,0x2222,0xFFFF,2,0x5000,0 l0"},
        {"ppat", "w1 l28,78,0 w0xFFFF l0 f8xA5" + PixMap(8, 2, 94) + "f16x3C" + ColourTable(1)},
        {"STR#", "w2 sone stwo"},
        {"WIND", "r40,10,300,500 w8 b1,0,1,0 l0xDEADBEEF sUntitled"},
        {"cicn", PixMap(16, 16, 0) + "l0 w2 r0,0,16,16 l0 w2 r0,0,16,16 l0 f64xFF" +
                     ColourTable(1) + "f256x01"},
        {"CNTL", "r10,10,26,100 w1 b1,0 w10,0,16 l77 sCheck"},
        {"vers", "w0x0102,0x8000,0 s1.2 s1.2-KWE"},
    };
    // Types kept as they are: the same bytes in both forms.
    for (const char* type : {"CDEF", "FONT", "ICON", "ICN#", "INIT", "MDEF", "PAT ", "STR ", "WDEF",
                             "LDEF", "dctb", "SICN", "TEXT", "wctb"})
      list.push_back({type, ""});
    return list;
  }();
  return samples;
}

inline uint32_t TypeOf(const char* s) {
  return uint32_t(uint8_t(s[0])) << 24 | uint32_t(uint8_t(s[1])) << 16 |
         uint32_t(uint8_t(s[2])) << 8 | uint32_t(uint8_t(s[3]));
}

}  // namespace kwe_samples
