// kwederez's output: each resource as a resource statement of its declared
// type when its bytes decode by that declaration, else as a data statement.
#include <cstdio>

#include "rez/rez_compiler.h"
#include "rez/rez_layout.h"

namespace rez {

namespace {

constexpr std::size_t kBytesPerHexLine = 16;
constexpr std::size_t kBytesPerStringLine = 64;

std::string HexLines(const std::string& bytes, const std::string& indent) {
  std::string out;
  for (std::size_t at = 0; at < bytes.size(); at += kBytesPerHexLine) {
    out += indent + "$\"";
    for (std::size_t i = at; i < bytes.size() && i < at + kBytesPerHexLine; ++i) {
      char hex[4];
      std::snprintf(hex, sizeof hex, "%02X", static_cast<unsigned char>(bytes[i]));
      if (i > at && (i - at) % 2 == 0) out += ' ';
      out += hex;
    }
    out += "\"\n";
  }
  return out;
}

class Printer {
 public:
  explicit Printer(std::string& out) : out_(out) {}

  void Values(const std::vector<Field>& fields, const std::vector<Value>& values, int depth,
              const char* last) {
    std::size_t next = 0;
    for (const Field& f : fields) {
      if (!TakesValue(f)) continue;
      const Value& v = values[next++];
      Indent(depth);
      One(f, v, depth);
      out_ += next == values.size() ? last : ",";
      out_ += '\n';
    }
  }

 private:
  std::string& out_;

  void Indent(int depth) { out_.append(static_cast<std::size_t>(depth), '\t'); }

  void Number(const Field& f, std::int64_t n) {
    std::uint64_t mask = f.bits >= 64 ? ~std::uint64_t{0} : (std::uint64_t{1} << f.bits) - 1;
    std::uint64_t raw = static_cast<std::uint64_t>(n) & mask;
    for (const Symbol& s : f.symbols)
      if (!s.isString && (static_cast<std::uint64_t>(s.number) & mask) == raw) {
        out_ += s.name;
        return;
      }
    char text[32];
    bool printable = f.radix == Radix::Literal && f.bits == 32;
    for (int shift = 24; printable && shift >= 0; shift -= 8)
      printable = (raw >> shift & 0xFF) >= 0x20 && (raw >> shift & 0xFF) < 0x7F;
    if (printable) {
      out_ += QuoteType(static_cast<std::uint32_t>(raw));
      return;
    }
    if (f.radix == Radix::Hex || f.radix == Radix::Literal)
      std::snprintf(text, sizeof text, "0x%0*llX", (f.bits + 3) / 4,
                    static_cast<unsigned long long>(raw));
    else
      std::snprintf(text, sizeof text, "%lld", static_cast<long long>(n));
    out_ += text;
  }

  void Text(const Field& f, const std::string& bytes, int depth) {
    // A fixed-length string reads back without its padding NULs.
    bool padded = f.stringKind == StringKind::Plain && f.fixedLength >= 0 && !f.hexString;
    for (const Symbol& s : f.symbols)
      if (s.isString &&
          (padded ? s.bytes.substr(0, s.bytes.find_last_not_of('\0') + 1) : s.bytes) == bytes) {
        out_ += s.name;
        return;
      }
    if (f.hexString) {
      if (bytes.empty()) out_ += "$\"\"";
      std::string lines = HexLines(bytes, std::string(static_cast<std::size_t>(depth), '\t'));
      if (!lines.empty())
        out_ += lines.substr(static_cast<std::size_t>(depth), lines.size() - depth - 1);
      return;
    }
    for (std::size_t at = 0; at == 0 || at < bytes.size(); at += kBytesPerStringLine) {
      if (at) {
        out_ += '\n';
        Indent(depth);
      }
      out_ += QuoteString(bytes.substr(at, kBytesPerStringLine));
    }
  }

  void One(const Field& f, const Value& v, int depth) {
    switch (f.kind) {
      case FieldKind::Bits: Number(f, v.number); return;
      case FieldKind::String: Text(f, v.bytes, depth); return;
      case FieldKind::Point:
      case FieldKind::Rect:
        out_ += '{';
        for (std::size_t i = 0; i < v.numbers.size(); ++i)
          out_ += (i ? ", " : "") + std::to_string(v.numbers[i]);
        out_ += '}';
        return;
      case FieldKind::Array:
        out_ += "{\t/* array" + (f.label.empty() ? std::string() : " " + f.label) + ": " +
                std::to_string(v.elements.size()) + " elements */\n";
        for (std::size_t e = 0; e < v.elements.size(); ++e) {
          Indent(depth + 1);
          out_ += "/* [" + std::to_string(e + 1) + "] */\n";
          if (v.elements[e].empty()) {
            Indent(depth + 1);
            out_ += ";\n";
          }
          Values(f.fields, v.elements[e], depth + 1, ";");
        }
        Indent(depth);
        out_ += '}';
        return;
      case FieldKind::Switch: {
        const Case& c = f.cases[static_cast<std::size_t>(v.caseIndex)];
        out_ += c.name + " {\n";
        Values(c.fields, v.caseValues, depth + 1, "");
        Indent(depth);
        out_ += '}';
        return;
      }
      default: return;
    }
  }
};

std::string Header(const char* statement, const CompiledResource& r) {
  std::string out = std::string(statement) + " " + QuoteType(r.type) + " (" + std::to_string(r.id);
  if (r.named) out += ", " + QuoteString(r.name);
  std::uint8_t rest = r.attributes;
  for (const AttributeWord& a : kAttributeWords)
    if (rest & a.bit) {
      out += std::string(", ") + a.set;
      rest = static_cast<std::uint8_t>(rest & ~a.bit);
    }
  if (rest) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%02X", rest);
    out += std::string(", ") + text;
  }
  return out + ") {\n";
}

}  // namespace

bool DecompileRez(const std::vector<CompiledResource>& resources, const DecompileOptions& options,
                  std::string& text, std::string& error) {
  static const char kTop[] = "<type declarations>";
  std::string prologue;
  for (const std::string& file : options.typeFiles)
    prologue += "#include " + QuoteString(file) + "\n";
  FileLoader base = options.loader;
  SourceSet sources([&](const std::string& path, std::string& contents) {
    if (path != kTop) return base(path, contents);
    contents = prologue;
    return true;
  });
  sources.includeDirectories = options.includeDirectories;
  TypeTable types;
  try {
    std::vector<CompiledResource> none;
    ParseRez(sources, sources.Preprocess(kTop), types, none);
  } catch (const RezError& e) {
    error = e.what();
    return false;
  }
  text = prologue;
  Printer printer(text);
  std::vector<Value> values;
  for (const CompiledResource& r : resources) {
    text += '\n';
    const TypeDecl* decl = types.Find(r.type, r.id);
    ResourceContext context{r.type, r.id, r.name, r.attributes};
    if (decl && Decode(*decl, r.data, context, sources, values)) {
      text += Header("resource", r);
      printer.Values(decl->fields, values, 1, "");
    } else {
      text += Header("data", r);
      text += HexLines(r.data, "\t");
    }
    text += "};\n";
  }
  return true;
}

}  // namespace rez
