// One resource's data as the Resource Manager hands it over: a start and a
// size. The counts and offsets inside the data steer the conversion, but
// nothing is trusted past the size: a field that does not lie wholly inside
// the data is left alone and the data is marked damaged, so the caller can
// report it and the load goes on.
#pragma once
#include <cstddef>
#include <cstdint>

#include "resources/byte_order.h"

namespace kwe::byteswap {

class ResourceBytes {
 public:
  ResourceBytes(uint8_t* data, size_t size, bool toNative)
      : data_(data), size_(size), toNative_(toNative) {}

  size_t Size() const { return size_; }
  bool ToNative() const { return toNative_; }
  bool Damaged() const { return damaged_; }
  void MarkDamaged() { damaged_ = true; }

  // True when [at, at + length) lies inside the data; offsets may be any
  // value the data produced, however large.
  bool Holds(uint64_t at, uint64_t length) const { return at <= size_ && length <= size_ - at; }

  // Each reverses its field when the field lies inside the data, else marks
  // the data damaged; false then.
  bool Word(uint64_t at) { return Field(at, 2) && (ReverseWord(data_ + at), true); }
  bool Long(uint64_t at) { return Field(at, 4) && (ReverseLong(data_ + at), true); }
  bool Rect(uint64_t at) { return Field(at, 8) && (ReverseFourWords(data_ + at), true); }

  // A count or offset that steers the conversion is read in native order in
  // both directions: after its swap when converting to native order, before
  // it when converting to Macintosh order. Either way the field is swapped.
  // fallback is answered when the field lies outside the data.
  uint16_t SteeringWord(uint64_t at, uint16_t fallback = 0) {
    if (!Field(at, 2)) return fallback;
    uint16_t before = NativeWord(data_ + at);
    ReverseWord(data_ + at);
    return toNative_ ? NativeWord(data_ + at) : before;
  }
  uint32_t SteeringLong(uint64_t at, uint32_t fallback = 0) {
    if (!Field(at, 4)) return fallback;
    uint32_t before = NativeLong(data_ + at);
    ReverseLong(data_ + at);
    return toNative_ ? NativeLong(data_ + at) : before;
  }

  uint8_t* At(uint64_t at) { return data_ + at; }

 private:
  bool Field(uint64_t at, uint64_t length) {
    if (Holds(at, length)) return true;
    damaged_ = true;
    return false;
  }

  uint8_t* data_;
  size_t size_;
  bool toNative_;
  bool damaged_ = false;
};

}  // namespace kwe::byteswap
