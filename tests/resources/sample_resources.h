// A valid record of every resource type that KWE_ByteSwap knows, written
// field by field either as a Macintosh resource file holds it (big-endian)
// or as a loaded resource should look (native order). The two forms are
// laid out independently of the library's table, so comparing them checks
// each layout; the fuzz target's seed corpus is written from the Macintosh
// forms.
#pragma once
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace kwe_samples {

using Bytes = std::vector<uint8_t>;

class RecordWriter {
 public:
  explicit RecordWriter(bool mac) : mac_(mac) {}

  RecordWriter& Word(uint16_t v) { return Put(v, 2); }
  RecordWriter& Long(uint32_t v) { return Put(v, 4); }
  RecordWriter& Rect(int16_t top, int16_t left, int16_t bottom, int16_t right) {
    return Word(uint16_t(top)).Word(uint16_t(left)).Word(uint16_t(bottom)).Word(uint16_t(right));
  }
  RecordWriter& Byte(uint8_t v) {
    bytes_.push_back(v);
    return *this;
  }
  RecordWriter& Text(const char* s) {
    bytes_.insert(bytes_.end(), s, s + std::strlen(s));
    return *this;
  }
  RecordWriter& PString(const char* s) { return Byte(uint8_t(std::strlen(s))).Text(s); }
  RecordWriter& Fill(size_t n, uint8_t v) {
    bytes_.insert(bytes_.end(), n, v);
    return *this;
  }
  // A field whose value is already in the order of the form being written.
  RecordWriter& RawWord(uint16_t v) {
    bytes_.push_back(uint8_t(v & 0xFF));
    bytes_.push_back(uint8_t(v >> 8));
    return *this;
  }
  bool Mac() const { return mac_; }
  size_t Size() const { return bytes_.size(); }
  const Bytes& Result() const { return bytes_; }

 private:
  RecordWriter& Put(uint32_t v, int n) {
    for (int i = 0; i < n; ++i) {
      int shift = mac_ ? 8 * (n - 1 - i) : 8 * i;  // the tests run little-endian
      bytes_.push_back(uint8_t(v >> shift));
    }
    return *this;
  }
  bool mac_;
  Bytes bytes_;
};

// The alert stages as a host declares them: bit fields from the least
// significant bit, stage 4 first, as in the Toolbox's C interface.
struct StageList {
  unsigned boldItm4 : 1, boxDrwn4 : 1, sound4 : 2;
  unsigned boldItm3 : 1, boxDrwn3 : 1, sound3 : 2;
  unsigned boldItm2 : 1, boxDrwn2 : 1, sound2 : 2;
  unsigned boldItm1 : 1, boxDrwn1 : 1, sound1 : 2;
};

inline RecordWriter& Stages(RecordWriter& w, const unsigned (&bold)[4], const unsigned (&box)[4],
                            const unsigned (&sound)[4]) {
  if (w.Mac()) {
    // On the Macintosh stage 4 is the high nibble, bold item its top bit.
    uint16_t word = 0;
    for (int s = 0; s < 4; ++s)
      word = uint16_t(word | ((bold[s] << 3 | box[s] << 2 | sound[s]) << (4 * s)));
    return w.Word(word);
  }
  StageList list{bold[3], box[3], sound[3], bold[2], box[2], sound[2],
                 bold[1], box[1], sound[1], bold[0], box[0], sound[0]};
  uint16_t word;
  std::memcpy(&word, &list, 2);
  return w.RawWord(word);
}

inline void PixMapFields(RecordWriter& w, int16_t height, uint16_t rowBytes, uint32_t table) {
  w.Long(0).Word(uint16_t(0x8000 | rowBytes)).Rect(0, 0, height, 16).Word(0).Word(0).Long(0);
  w.Long(0x00480000).Long(0x00480000).Word(0).Word(8).Word(1).Word(8).Long(0).Long(table).Long(0);
}

inline void ColourTableFields(RecordWriter& w, int16_t ctSize) {
  w.Long(0x12345678).Word(0x8000).Word(uint16_t(ctSize));
  for (int i = 0; i <= ctSize; ++i)
    w.Word(uint16_t(i)).Word(uint16_t(0x1111 * i)).Word(uint16_t(0xFF00 - i)).Word(0x0102);
}

inline Bytes Acur(bool mac) {
  RecordWriter w(mac);
  w.Word(3).Word(0);
  for (int i = 0; i < 3; ++i) w.Word(uint16_t(128 + i)).Word(0);
  return w.Result();
}

inline Bytes Alrt(bool mac) {
  RecordWriter w(mac);
  w.Rect(40, 40, 140, 340).Word(129);
  Stages(w, {1, 0, 1, 0}, {1, 1, 0, 0}, {3, 2, 1, 0});
  return w.Result();
}

// The library's own defaults record: only the word at 2 is a number.
inline Bytes Kwed(bool mac) {
  return RecordWriter(mac).Byte(1).Byte(2).Word(0x0304).Byte(5).Byte(6).Result();
}

// 'CURS' and 'crsr' as the cursor stand-in converts them: only the hot spot.
inline Bytes Curs(bool mac) {
  RecordWriter w(mac);
  w.Fill(32, 0x0F).Fill(32, 0xF0).Word(7).Word(9);
  return w.Result();
}

inline Bytes Crsr(bool mac) {
  RecordWriter w(mac);
  w.Fill(20, 0x81).Fill(32, 0x0F).Fill(32, 0xF0).Word(3).Word(5).Fill(12, 0x77);
  return w.Result();
}

inline Bytes Clut(bool mac) {
  RecordWriter w(mac);
  ColourTableFields(w, 3);
  return w.Result();
}

// Four items: a button, static text with an odd length, an icon (its ID is
// its data) and a 'CNTL' control item (type 7, also an ID).
inline Bytes Ditl(bool mac) {
  RecordWriter w(mac);
  w.Word(3);
  w.Long(0).Rect(10, 20, 30, 80).Byte(4).PString("OK");
  w.Long(0).Rect(40, 20, 60, 200).Byte(8 | 0x80).PString("Hello").Byte(0);
  w.Long(0).Rect(70, 20, 102, 52).Byte(32).Byte(2).Word(1000);
  w.Long(0).Rect(110, 20, 130, 120).Byte(7).Byte(2).Word(129);
  return w.Result();
}

inline Bytes Dlog(bool mac) {
  RecordWriter w(mac);
  w.Rect(50, 60, 250, 460).Word(1).Byte(1).Byte(0).Byte(1).Byte(0).Long(0xCAFEF00D).Word(130);
  w.PString("Settings");
  return w.Result();
}

inline Bytes Intl0(bool mac) {
  RecordWriter w(mac);
  w.Fill(30, 0x2E).Word(0x0201);
  return w.Result();
}

inline Bytes Intl1(bool mac) {
  RecordWriter w(mac);
  w.Fill(328, 0x41).Word(0x4E75).Word(0x0002);
  return w.Result();
}

inline Bytes Mbar(bool mac) {
  return RecordWriter(mac).Word(3).Word(128).Word(129).Word(130).Result();
}

inline Bytes Menu(bool mac) {
  RecordWriter w(mac);
  w.Word(128).Word(0).Word(0).Long(0).Long(0xFFFFFFFB).PString("File");
  w.PString("Open").Fill(4, 0).Byte(0);
  return w.Result();
}

inline Bytes PatList(bool mac) {
  RecordWriter w(mac);
  w.Word(2).Fill(8, 0xAA).Fill(8, 0x55);
  return w.Result();
}

inline Bytes Pict(bool mac) {
  RecordWriter w(mac);
  w.Word(30).Rect(0, 0, 100, 200).Fill(20, 0x11);  // opcodes stay as they are
  return w.Result();
}

inline Bytes Pltt(bool mac) {
  RecordWriter w(mac);
  w.Word(2).Long(0).Word(0).Long(0).Long(0);
  for (int i = 0; i < 2; ++i)
    w.Word(uint16_t(0x1000 * i)).Word(0x2222).Word(0xFFFF).Word(2).Word(0x5000).Word(0).Long(0);
  return w.Result();
}

// A pixel pattern: header, the PixMap at 28, 8 rows of 2 bytes of 8-bit
// pattern data at 78, then the colour table at 94.
inline Bytes Ppat(bool mac) {
  RecordWriter w(mac);
  w.Word(1).Long(28).Long(78).Long(0).Word(0xFFFF).Long(0).Fill(8, 0xA5);
  PixMapFields(w, 8, 2, 94);
  w.Fill(16, 0x3C);
  ColourTableFields(w, 1);
  return w.Result();
}

inline Bytes StrList(bool mac) {
  return RecordWriter(mac).Word(2).PString("one").PString("two").Result();
}

inline Bytes Wind(bool mac) {
  RecordWriter w(mac);
  w.Rect(40, 10, 300, 500).Word(8).Byte(1).Byte(0).Byte(1).Byte(0).Long(0xDEADBEEF);
  w.PString("Untitled");
  return w.Result();
}

// A 16 x 16 colour icon: PixMap (row bytes 16), mask and 1-bit BitMaps
// (row bytes 2), a handle placeholder, the two 1-bit images (2 x 2 x 16
// bytes), the colour table, then the 8-bit image.
inline Bytes Cicn(bool mac) {
  RecordWriter w(mac);
  PixMapFields(w, 16, 16, 0);
  w.Long(0).Word(2).Rect(0, 0, 16, 16);
  w.Long(0).Word(2).Rect(0, 0, 16, 16);
  w.Long(0);
  w.Fill(64, 0xFF);
  ColourTableFields(w, 1);
  w.Fill(256, 0x01);
  return w.Result();
}

inline Bytes Cntl(bool mac) {
  RecordWriter w(mac);
  w.Rect(10, 10, 26, 100).Word(1).Byte(1).Byte(0).Word(10).Word(0).Word(16).Long(77);
  w.PString("Check");
  return w.Result();
}

inline Bytes Vers(bool mac) {
  RecordWriter w(mac);
  w.Word(0x0102).Word(0x8000).Word(0).PString("1.2").PString("1.2, (c) KWE");
  return w.Result();
}

// Types converted as "nothing": the same bytes in both forms.
inline Bytes Opaque(bool) {
  Bytes b(40);
  for (size_t i = 0; i < b.size(); ++i) b[i] = uint8_t(i * 37 + 5);
  return b;
}

struct Sample {
  const char* type;  // four characters
  Bytes (*make)(bool mac);
};

// Every type of the table, with one sample each ('INTL' twice: its two
// layouts).
inline const std::vector<Sample>& AllSamples() {
  static const std::vector<Sample> samples = {
      {"acur", Acur},   {"ALRT", Alrt},   {"KWED", Kwed},   {"CDEF", Opaque}, {"CURS", Curs},
      {"crsr", Crsr},   {"clut", Clut},   {"DITL", Ditl},   {"DLOG", Dlog},   {"FONT", Opaque},
      {"ICON", Opaque}, {"ICN#", Opaque}, {"INIT", Opaque}, {"INTL", Intl0},  {"INTL", Intl1},
      {"MBAR", Mbar},   {"MDEF", Opaque}, {"MENU", Menu},   {"PAT ", Opaque}, {"PAT#", PatList},
      {"PICT", Pict},   {"pltt", Pltt},   {"ppat", Ppat},   {"STR ", Opaque}, {"STR#", StrList},
      {"WDEF", Opaque}, {"WIND", Wind},   {"LDEF", Opaque}, {"dctb", Opaque}, {"cicn", Cicn},
      {"CNTL", Cntl},   {"vers", Vers},   {"SICN", Opaque}, {"TEXT", Opaque}, {"wctb", Opaque},
  };
  return samples;
}

inline uint32_t TypeOf(const char* s) {
  return uint32_t(uint8_t(s[0])) << 24 | uint32_t(uint8_t(s[1])) << 16 |
         uint32_t(uint8_t(s[2])) << 8 | uint32_t(uint8_t(s[3]));
}

}  // namespace kwe_samples
