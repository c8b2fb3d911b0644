// Reading a resource's bytes back into the values of its declaration.
// Counts come from the data: an array's count is read from the field whose
// constant expression uses $$Countof of it (solved for the count), else the
// array runs until the fields after it fit the rest of the data exactly, or
// until an element does not fit. Whatever the walk finds is checked by
// encoding the values again: only values that give back the same bytes
// are kept.
#include "rez/rez_labels.h"
#include "rez/rez_layout.h"

namespace rez {

namespace {

struct Failed {};

class Decoder {
 public:
  Decoder(const TypeDecl& decl, const std::string& data, const ResourceContext& context,
          const SourceSet& sources)
      : book_(decl),
        data_(data),
        sources_(sources),
        lookup_(book_, context, data_, sources_, LabelBook::Missing::Throw) {}

  bool Run(const TypeDecl& decl, std::vector<Value>& values) {
    try {
      Fields(decl.fields, 0, values, true);
    } catch (const Failed&) {
      return false;
    } catch (const Unresolved&) {
      return false;
    }
    return bit_ == data_.size() * 8u;
  }

 private:
  LabelBook book_;
  const std::string& data_;
  const SourceSet& sources_;
  LabelBook::Lookup lookup_;
  std::uint64_t bit_ = 0;

  std::uint64_t Left() const { return data_.size() * 8u - bit_; }

  std::uint64_t Read(int width) {
    std::uint64_t v = 0;
    if (!ReadBits(data_, bit_, width, v)) throw Failed{};
    bit_ += static_cast<std::uint64_t>(width);
    return v;
  }
  std::string ReadBytes(std::uint64_t n) {
    if (n * 8 > Left()) throw Failed{};
    if (bit_ % 8 == 0) {
      std::string s = data_.substr(static_cast<std::size_t>(bit_ / 8), static_cast<std::size_t>(n));
      bit_ += n * 8;
      return s;
    }
    std::string s;
    for (std::uint64_t i = 0; i < n; ++i) s += static_cast<char>(Read(8));
    return s;
  }

  // The width in bits of fields[from...] when it does not depend on the data.
  static bool FixedWidth(const std::vector<Field>& fields, std::size_t from, std::uint64_t& bits) {
    bits = 0;
    for (std::size_t i = from; i < fields.size(); ++i) {
      const Field& f = fields[i];
      switch (f.kind) {
        case FieldKind::Bits:
        case FieldKind::Fill: bits += static_cast<std::uint64_t>(f.bits); break;
        case FieldKind::Point: bits += 32; break;
        case FieldKind::Rect: bits += 64; break;
        case FieldKind::Label: break;
        case FieldKind::String:
          if (f.fixedLength < 0 || f.stringKind == StringKind::Wide) return false;
          bits += 8u * static_cast<std::uint64_t>(f.fixedLength +
                                                  (f.stringKind == StringKind::Pascal ? 1 : 0));
          break;
        default: return false;
      }
    }
    return true;
  }

  // Checks a constant field against what was read; a $$Countof of an array
  // not reached yet is solved for that array's count instead.
  void Constant(const Field& f, std::uint64_t read) {
    std::uint64_t mask = f.bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << f.bits) - 1;
    std::string unknown;
    try {
      if ((static_cast<std::uint64_t>(Evaluate(f.value, lookup_, sources_)) & mask) != read)
        throw Failed{};
      return;
    } catch (const Unresolved&) {
      if (!UnknownCount(f.value, unknown)) return;  // a label further on: checked later
    }
    int depth = book_.ArrayDepth(unknown);
    std::uint64_t at[2];
    try {
      for (int k = 0; k < 2; ++k) {
        book_.Count(unknown, depth, k);
        at[k] = static_cast<std::uint64_t>(Evaluate(f.value, lookup_, sources_)) & mask;
      }
    } catch (const Unresolved&) {
      return;
    }
    std::uint64_t step = (at[1] - at[0]) & mask, offset = (read - at[0]) & mask;
    if (step == 0 || offset % step != 0 || offset / step > data_.size() * 8u) throw Failed{};
    book_.Count(unknown, depth, static_cast<std::int64_t>(offset / step));
  }

  bool UnknownCount(const Expr& e, std::string& array) {
    std::int64_t ignored;
    if (e.op == Expr::Op::Function && e.text == "$$countof" && e.operands.size() == 1 &&
        book_.IsArray(e.operands[0].text) && !book_.FindCount(e.operands[0].text, ignored)) {
      array = e.operands[0].text;
      return true;
    }
    for (const Expr& o : e.operands)
      if (UnknownCount(o, array)) return true;
    return false;
  }

  std::int64_t Signed(const Field& f, std::uint64_t v) {
    if (!f.isUnsigned && (f.bits == 16 || f.bits == 32) && (v >> (f.bits - 1)) & 1)
      return static_cast<std::int64_t>(v) - (std::int64_t{1} << f.bits);
    return static_cast<std::int64_t>(v);
  }

  std::string String(const Field& f, const std::vector<Field>& fields, std::size_t index) {
    std::size_t fixed = f.fixedLength < 0 ? 0 : static_cast<std::size_t>(f.fixedLength);
    switch (f.stringKind) {
      case StringKind::Pascal: {
        std::uint64_t n = Read(8);
        if (f.fixedLength < 0) return ReadBytes(n);
        if (n > fixed) throw Failed{};
        std::string s = ReadBytes(fixed);
        return s.substr(0, static_cast<std::size_t>(n));
      }
      case StringKind::Wide: return ReadBytes(Read(16));
      case StringKind::C: {
        if (f.fixedLength >= 0) {
          std::string s = ReadBytes(fixed);
          return s.substr(0, s.find('\0'));
        }
        std::string s;
        for (char c = static_cast<char>(Read(8)); c; c = static_cast<char>(Read(8))) s += c;
        return s;
      }
      case StringKind::Plain: break;
    }
    if (f.fixedLength >= 0) {
      std::string s = ReadBytes(fixed);
      // Text reads back without the NULs that pad it; hex keeps every byte.
      while (!f.hexString && !s.empty() && s.back() == '\0') s.pop_back();
      return s;
    }
    std::uint64_t after = 0;
    if (!FixedWidth(fields, index + 1, after)) after = 0;
    if (after > Left()) throw Failed{};
    return ReadBytes((Left() - after) / 8);
  }

  void Fields(const std::vector<Field>& fields, std::size_t from, std::vector<Value>& out,
              bool toEnd) {
    for (std::size_t i = from; i < fields.size(); ++i) {
      const Field& f = fields[i];
      Value v;
      switch (f.kind) {
        case FieldKind::Label:
          book_.Place(f.label, f.depth, static_cast<std::int64_t>(bit_));
          continue;
        case FieldKind::Fill: Skip(static_cast<std::uint64_t>(f.bits)); continue;
        case FieldKind::Align:
          Skip((static_cast<std::uint64_t>(f.bits) - bit_ % static_cast<std::uint64_t>(f.bits)) %
               static_cast<std::uint64_t>(f.bits));
          continue;
        case FieldKind::Bits: {
          std::uint64_t read = Read(f.bits);
          if (f.hasValue) {
            Constant(f, read);
            continue;
          }
          v.number = Signed(f, read);
          break;
        }
        case FieldKind::String:
          v.kind = Value::Kind::Bytes;
          v.bytes = String(f, fields, i);
          if (f.hasValue) {
            if (v.bytes != f.stringValue) throw Failed{};
            continue;
          }
          break;
        case FieldKind::Point:
        case FieldKind::Rect:
          v.kind = Value::Kind::Numbers;
          for (int k = f.kind == FieldKind::Point ? 2 : 4; k > 0; --k)
            v.numbers.push_back(static_cast<std::int16_t>(Read(16)));
          break;
        case FieldKind::Array: v = Array(f, fields, i, toEnd); break;
        case FieldKind::Switch: v = Switch(f); break;
      }
      out.push_back(std::move(v));
    }
  }

  void Skip(std::uint64_t bits) {
    if (bits > Left()) throw Failed{};
    bit_ += bits;
  }

  // Whether the fields after an array fit the rest of the data exactly from
  // here; nothing of the trial stays.
  bool RestFits(const std::vector<Field>& fields, std::size_t index) {
    std::uint64_t start = bit_;
    LabelBook::Mark mark = book_.Save();
    bool fits = false;
    try {
      std::vector<Value> ignored;
      Fields(fields, index + 1, ignored, true);
      fits = bit_ == data_.size() * 8u;
    } catch (const Failed&) {
    } catch (const Unresolved&) {
    }
    bit_ = start;
    book_.Restore(std::move(mark));
    return fits;
  }

  Value Array(const Field& f, const std::vector<Field>& fields, std::size_t index, bool toEnd) {
    Value v;
    v.kind = Value::Kind::Array;
    std::int64_t count = -1;
    if (f.hasCount) {
      try {
        count = Evaluate(f.count, lookup_, sources_);
      } catch (const Unresolved&) {
      }
    } else if (!f.label.empty()) {
      book_.FindCount(f.label, count);
    }
    if (count > static_cast<std::int64_t>(data_.size() * 8u) + 1) throw Failed{};
    book_.Enter(f.label);
    while (count < 0 ? Left() > 0 && !(toEnd && RestFits(fields, index))
                     : static_cast<std::int64_t>(v.elements.size()) < count) {
      std::uint64_t start = bit_;
      LabelBook::Mark mark = book_.Save();
      book_.Next();
      std::vector<Value> element;
      try {
        Fields(f.fields, 0, element, false);
      } catch (const Failed&) {
        if (count >= 0) throw;
        bit_ = start;
        book_.Restore(std::move(mark));
        break;
      }
      v.elements.push_back(std::move(element));
      if (bit_ == start && count < 0) break;
    }
    book_.Leave();
    book_.Count(f.label, f.depth, static_cast<std::int64_t>(v.elements.size()));
    return v;
  }

  Value Switch(const Field& f) {
    std::uint64_t start = bit_;
    for (std::size_t c = 0; c < f.cases.size(); ++c) {
      LabelBook::Mark mark = book_.Save();
      Value v;
      v.kind = Value::Kind::Case;
      v.caseIndex = static_cast<int>(c);
      try {
        if (KeyMatches(f.cases[c].fields)) {
          Fields(f.cases[c].fields, 0, v.caseValues, false);
          return v;
        }
      } catch (const Failed&) {
      } catch (const Unresolved&) {
      }
      bit_ = start;
      book_.Restore(std::move(mark));
    }
    throw Failed{};
  }

  // A case is taken only when its key reads as the key's constant; the key
  // follows fields of fixed width (usually none).
  bool KeyMatches(const std::vector<Field>& fields) {
    std::uint64_t offset = 0;
    for (std::size_t i = 0; i < fields.size(); ++i) {
      const Field& key = fields[i];
      if (!key.isKey) continue;
      if (!FixedWidth(std::vector<Field>(fields.begin(), fields.begin() + static_cast<long>(i)), 0,
                      offset))
        return true;  // the case's own walk checks the key
      std::uint64_t read = 0;
      if (key.kind != FieldKind::Bits || !key.hasValue) return true;
      if (!ReadBits(data_, bit_ + offset, key.bits, read)) return false;
      std::uint64_t mask = key.bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << key.bits) - 1;
      return (static_cast<std::uint64_t>(Evaluate(key.value, lookup_, sources_)) & mask) == read;
    }
    return true;
  }
};

}  // namespace

bool Decode(const TypeDecl& decl, const std::string& data, const ResourceContext& context,
            const SourceSet& sources, std::vector<Value>& values) {
  values.clear();
  try {
    if (!Decoder(decl, data, context, sources).Run(decl, values)) return false;
    if (Encode(decl, values, context, sources) == data) return true;
  } catch (const RezError&) {
  }
  values.clear();
  return false;
}

}  // namespace rez
