// Laying out a resource's values. The layout runs twice: the first pass
// places every label and counts every array (a field may use a label or a
// count that comes later), the second writes the final values, checked
// against their fields, with every label known.
#include <algorithm>

#include "rez/rez_labels.h"
#include "rez/rez_layout.h"

namespace rez {

namespace {

class BitWriter {
 public:
  std::string bytes;
  std::uint64_t bit = 0;

  void Write(std::uint64_t value, int width) {
    if (bit % 8 == 0 && width % 8 == 0) {
      for (int shift = width - 8; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift & 0xFF);
      bit += static_cast<std::uint64_t>(width);
      return;
    }
    for (int i = width - 1; i >= 0; --i) {
      if (bit % 8 == 0) bytes += '\0';
      if (value >> i & 1) bytes.back() = static_cast<char>(bytes.back() | (0x80 >> (bit % 8)));
      ++bit;
    }
  }
  void WriteBytes(const std::string& text) {
    if (bit % 8 == 0) {
      bytes += text;
      bit += text.size() * 8u;
      return;
    }
    for (char c : text) Write(static_cast<unsigned char>(c), 8);
  }
};

class Encoder {
 public:
  Encoder(const TypeDecl& decl, const ResourceContext& context, const SourceSet& sources,
          const std::string& earlier, bool final)
      : book_(decl),
        context_(context),
        sources_(sources),
        earlier_(earlier),
        final_(final),
        lookup_(book_, context_, earlier_, sources_,
                final ? LabelBook::Missing::Fail : LabelBook::Missing::Zero) {}

  // Without labels one pass is enough once every array's count is known
  // from the values ($$Countof usually comes before its array).
  bool NeedsTwoPasses() const { return book_.HasLabels(); }
  void CountArrays(const std::vector<Field>& fields, const std::vector<Value>& values,
                   std::size_t& next) {
    for (const Field& f : fields) {
      if (!TakesValue(f) || next >= values.size()) continue;
      const Value& v = values[next++];
      if (f.kind == FieldKind::Array && v.kind == Value::Kind::Array) {
        Elements(f, v, &Encoder::CountArrays);
      } else if (f.kind == FieldKind::Switch && v.kind == Value::Kind::Case && v.caseIndex >= 0 &&
                 static_cast<std::size_t>(v.caseIndex) < f.cases.size()) {
        std::size_t inner = 0;
        CountArrays(f.cases[static_cast<std::size_t>(v.caseIndex)].fields, v.caseValues, inner);
      }
    }
  }

  // Starts from the labels and counts an earlier pass found.
  void Learn(const Encoder& earlier) { book_.Restore(earlier.book_.Save()); }

  std::string Run(const TypeDecl& decl, const std::vector<Value>& values) {
    std::size_t next = 0;

    Fields(decl.fields, values, next);
    return out_.bytes;
  }

 private:
  LabelBook book_;
  const ResourceContext& context_;
  const SourceSet& sources_;
  const std::string& earlier_;
  bool final_;
  LabelBook::Lookup lookup_;
  BitWriter out_;

  const Value& Take(const Field& f, const std::vector<Value>& values, std::size_t& next,
                    Value::Kind kind) {
    if (next >= values.size() || values[next].kind != kind)
      sources_.Fail(next < values.size() ? values[next].where : f.where,
                    "the values do not match the fields of the type declaration");
    return values[next++];
  }

  void Number(const Field& f, std::int64_t v, const Location& at) {
    if (final_) {
      std::int64_t low = f.isUnsigned ? 0 : -(std::int64_t{1} << (f.bits - 1));
      std::int64_t high = (std::int64_t{1} << f.bits) - 1;
      if (f.bits < 64 && (v < low || v > high))
        sources_.Fail(at, std::to_string(v) + " does not fit a field of " + std::to_string(f.bits) +
                              " bits (" + std::to_string(low) + " to " + std::to_string(high) +
                              ")");
    }
    std::uint64_t mask = f.bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << f.bits) - 1;
    out_.Write(static_cast<std::uint64_t>(v) & mask, f.bits);
  }

  void String(const Field& f, const std::string& text, const Location& at) {
    std::size_t n = text.size();
    auto tooLong = [&](std::size_t limit) {
      if (n > limit)
        sources_.Fail(at, "a string of " + std::to_string(n) + " bytes is longer than the " +
                              std::to_string(limit) + " its field holds");
    };
    std::size_t fixed = f.fixedLength < 0 ? 0 : static_cast<std::size_t>(f.fixedLength);
    switch (f.stringKind) {
      case StringKind::Pascal:
        tooLong(f.fixedLength < 0 ? 255 : std::min<std::size_t>(fixed, 255));
        out_.Write(n, 8);
        out_.WriteBytes(text);
        if (f.fixedLength >= 0) out_.WriteBytes(std::string(fixed - n, '\0'));
        break;
      case StringKind::Wide:
        tooLong(65535);
        out_.Write(n, 16);
        out_.WriteBytes(text);
        break;
      case StringKind::C:
        if (f.fixedLength >= 0) {
          tooLong(fixed == 0 ? 0 : fixed - 1);
          out_.WriteBytes(text + std::string(fixed - n, '\0'));
        } else {
          out_.WriteBytes(text);
          out_.Write(0, 8);
        }
        break;
      case StringKind::Plain:
        if (f.fixedLength >= 0) {
          tooLong(fixed);
          out_.WriteBytes(text + std::string(fixed - n, '\0'));
        } else {
          out_.WriteBytes(text);
        }
        break;
    }
  }

  void Fields(const std::vector<Field>& fields, const std::vector<Value>& values,
              std::size_t& next) {
    for (const Field& f : fields) switch (f.kind) {
        case FieldKind::Label:
          book_.Place(f.label, f.depth, static_cast<std::int64_t>(out_.bit));
          break;
        case FieldKind::Bits:
          if (f.hasValue) {
            Number(f, Evaluate(f.value, lookup_, sources_), f.value.where);
          } else {
            const Value& v = Take(f, values, next, Value::Kind::Number);
            Number(f, v.number, v.where);
          }
          break;
        case FieldKind::String:
          if (f.hasValue) {
            String(f, f.stringValue, f.where);
          } else {
            const Value& v = Take(f, values, next, Value::Kind::Bytes);
            String(f, v.bytes, v.where);
          }
          break;
        case FieldKind::Point:
        case FieldKind::Rect: {
          const Value& v = Take(f, values, next, Value::Kind::Numbers);
          Field word;
          word.bits = 16;
          for (std::int64_t n : v.numbers) Number(word, n, v.where);
          break;
        }
        case FieldKind::Fill:
          for (int left = f.bits; left > 0; left -= std::min(left, 32))
            out_.Write(0, std::min(left, 32));
          break;
        case FieldKind::Align:
          while (out_.bit % static_cast<std::uint64_t>(f.bits)) out_.Write(0, 1);
          break;
        case FieldKind::Array: Array(f, Take(f, values, next, Value::Kind::Array)); break;
        case FieldKind::Switch: {
          const Value& v = Take(f, values, next, Value::Kind::Case);
          std::size_t inner = 0;
          Fields(f.cases[static_cast<std::size_t>(v.caseIndex)].fields, v.caseValues, inner);
          break;
        }
      }
  }

  void Array(const Field& f, const Value& v) {
    std::int64_t count = static_cast<std::int64_t>(v.elements.size());
    if (f.hasCount && final_) {
      std::int64_t wanted = Evaluate(f.count, lookup_, sources_);
      if (wanted != count)
        sources_.Fail(v.where, "array " + (f.label.empty() ? std::string() : f.label + " ") +
                                   "takes " + std::to_string(wanted) + " elements but " +
                                   std::to_string(count) + " are given");
    }
    Elements(f, v, &Encoder::Fields);
  }

  // Counts an array and walks its elements with their indices open.
  void Elements(const Field& f, const Value& v,
                void (Encoder::*walk)(const std::vector<Field>&, const std::vector<Value>&,
                                      std::size_t&)) {
    book_.Count(f.label, f.depth, static_cast<std::int64_t>(v.elements.size()));
    book_.Enter(f.label);
    for (const std::vector<Value>& element : v.elements) {
      book_.Next();
      std::size_t inner = 0;
      (this->*walk)(f.fields, element, inner);
    }
    book_.Leave();
  }
};

}  // namespace

bool TakesValue(const Field& f) {
  switch (f.kind) {
    case FieldKind::Bits:
    case FieldKind::String: return !f.hasValue;
    case FieldKind::Point:
    case FieldKind::Rect:
    case FieldKind::Array:
    case FieldKind::Switch: return true;
    default: return false;
  }
}

std::string Encode(const TypeDecl& decl, const std::vector<Value>& values,
                   const ResourceContext& context, const SourceSet& sources) {
  const std::string none;
  Encoder only(decl, context, sources, none, true);
  if (!only.NeedsTwoPasses()) {
    std::size_t next = 0;
    only.CountArrays(decl.fields, values, next);
    return only.Run(decl, values);
  }
  Encoder first(decl, context, sources, none, false);
  std::string bytes = first.Run(decl, values);
  Encoder final(decl, context, sources, bytes, true);
  final.Learn(first);
  return final.Run(decl, values);
}

}  // namespace rez
