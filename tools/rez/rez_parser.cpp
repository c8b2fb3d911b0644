// The statements of the Rez language: type declarations, and the
// resource, data, read, include and delete statements that make resources.
#include <algorithm>
#include <map>
#include <unordered_map>

#include "rez/fork_reader.h"
#include "rez/rez_compiler.h"
#include "rez/rez_layout.h"

namespace rez {

const AttributeWord kAttributeWords[6] = {
    {"sysheap", "appheap", 0x40},    {"purgeable", "nonpurgeable", 0x20},
    {"locked", "unlocked", 0x10},    {"protected", "unprotected", 0x08},
    {"preload", "nonpreload", 0x04}, {"changed", "unchanged", 0x02}};

void TypeTable::Add(TypeDecl decl) {
  std::vector<TypeDecl>& list = types_[decl.type];
  for (TypeDecl& old : list)
    if (old.ranged == decl.ranged && old.lowId == decl.lowId && old.highId == decl.highId) {
      old = std::move(decl);  // a later declaration of the same type replaces it
      return;
    }
  list.push_back(std::move(decl));
}

const TypeDecl* TypeTable::Find(std::uint32_t type, std::int16_t id) const {
  auto found = types_.find(type);
  if (found == types_.end()) return nullptr;
  const TypeDecl* general = nullptr;
  for (const TypeDecl& d : found->second) {
    if (d.ranged && id >= d.lowId && id <= d.highId) return &d;
    if (!d.ranged) general = &d;
  }
  return general;
}

namespace {

// Numbers in a resource header: no names, no functions.
class PlainScope : public Scope {
 public:
  bool Name(const Expr&, std::int64_t&) override { return false; }
  bool Function(const Expr&, std::int64_t&) override { return false; }
};

// A value given to a field: the field's symbolic constants, and the
// resource's own $$ID, $$Type and $$Attributes.
class FieldScope : public Scope {
 public:
  FieldScope(const Field& f, const ResourceContext& context) : field_(f), context_(context) {}
  bool Name(const Expr& name, std::int64_t& value) override {
    for (const Symbol& s : field_.symbols)
      if (!s.isString && s.name == name.text) {
        value = s.number;
        return true;
      }
    return false;
  }
  bool Function(const Expr& call, std::int64_t& value) override {
    if (!call.operands.empty()) return false;
    if (call.text == "$$id")
      value = context_.id;
    else if (call.text == "$$type")
      value = context_.type;
    else if (call.text == "$$attributes")
      value = context_.attributes;
    else
      return false;
    return true;
  }

 private:
  const Field& field_;
  const ResourceContext& context_;
};

class Parser {
 public:
  Parser(SourceSet& sources, const std::vector<Token>& tokens, TypeTable& types,
         std::vector<CompiledResource>& out)
      : sources_(sources), in_(tokens, sources), types_(types), out_(out) {
    for (std::size_t i = 0; i < out_.size(); ++i) seen_[Key(out_[i].type, out_[i].id)] = Location{};
  }

  void Statements() {
    while (!in_.AtEnd()) {
      if (in_.TakeWord("resource"))
        ResourceStatement();
      else if (in_.TakeWord("type"))
        TypeStatement();
      else if (in_.TakeWord("data"))
        DataStatement();
      else if (in_.TakeWord("read"))
        ReadStatement();
      else if (in_.TakeWord("include"))
        IncludeStatement();
      else if (in_.TakeWord("delete"))
        DeleteStatement();
      else
        in_.Fail("a statement (type, resource, data, read, include or delete)");
    }
  }

 private:
  SourceSet& sources_;
  TokenCursor in_;
  TypeTable& types_;
  std::vector<CompiledResource>& out_;
  static constexpr int kMaxNesting = 32;
  static constexpr std::size_t kMostDataBytes = std::size_t{1} << 24;
  int nesting_ = 0;
  std::size_t dataBytes_ = 0;
  std::unordered_map<std::uint64_t, Location> seen_;
  ResourceContext context_;

  static std::uint64_t Key(std::uint32_t type, std::int16_t id) {
    return std::uint64_t{type} << 16 | static_cast<std::uint16_t>(id);
  }

  std::uint32_t TypeCode() {
    const Token& t = in_.Peek();
    if (t.kind != TokenKind::Number || !t.charLiteral || t.text.size() != 4)
      in_.Fail("a resource type of four characters such as 'MENU'");
    return static_cast<std::uint32_t>(in_.Take().number);
  }

  std::int64_t Number(std::int64_t low, std::int64_t high, const char* what) {
    Location at = in_.Peek().where;
    Expr e = ParseExpression(in_);
    PlainScope scope;
    std::int64_t v = Evaluate(e, scope, sources_);
    if (v < low || v > high)
      sources_.Fail(at, std::string(what) + " must be from " + std::to_string(low) + " to " +
                            std::to_string(high) + ", not " + std::to_string(v));
    return v;
  }

  std::int16_t Id() { return static_cast<std::int16_t>(Number(-32768, 32767, "a resource ID")); }

  // Adjacent string literals (and $$Name, $$Resource, $$Read) make one string.
  bool Strings(std::string& bytes) {
    bool any = false;
    while (true) {
      const Token& t = in_.Peek();
      if (t.kind == TokenKind::String || t.kind == TokenKind::HexString) {
        bytes += in_.Take().text;
      } else if (t.kind == TokenKind::Identifier && SameWord(t.text, "$$name")) {
        in_.Take();
        bytes += context_.name;
      } else if (t.kind == TokenKind::Identifier &&
                 (SameWord(t.text, "$$resource") || SameWord(t.text, "$$read"))) {
        bytes += FileFunction();
      } else {
        return any;
      }
      any = true;
    }
  }

  // $$Read("file") is the file's bytes; $$Resource("file", 'TYPE', id) the
  // data of one resource of a resource file.
  std::string FileFunction() {
    Token call = in_.Take();
    bool resource = SameWord(call.text, "$$resource");
    in_.ExpectPunct("(", ("after " + call.text).c_str());
    if (in_.Peek().kind != TokenKind::String) in_.Fail("a quoted file name");
    Token file = in_.Take();
    std::string bytes = ReadFile(file);
    if (resource) {
      in_.ExpectPunct(",", "after the file name of $$Resource");
      std::uint32_t type = TypeCode();
      in_.ExpectPunct(",", "after the type of $$Resource");
      std::int16_t id = Id();
      std::vector<CompiledResource> found;
      std::string problem;
      if (!ReadResourceFork(bytes, found, problem))
        sources_.Fail(file.where, "\"" + file.text + "\" is not a resource file: " + problem);
      auto r = std::find_if(found.begin(), found.end(), [&](const CompiledResource& c) {
        return c.type == type && c.id == id;
      });
      if (r == found.end())
        sources_.Fail(file.where, "\"" + file.text + "\" holds no resource " + QuoteType(type) +
                                      " (" + std::to_string(id) + ")");
      bytes = r->data;
    }
    in_.ExpectPunct(")", ("to end the arguments of " + call.text).c_str());
    return bytes;
  }

  std::string ReadFile(const Token& name) {
    std::string path, bytes;
    if (!sources_.Load(name.text, name.where, path, bytes))
      sources_.Fail(name.where, "cannot open the file \"" + name.text + "\"");
    return bytes;
  }

  // '(' ID [',' "name"] [',' attribute]... ')'
  CompiledResource Header(std::uint32_t type) {
    CompiledResource r;
    r.type = type;
    in_.ExpectPunct("(", "and the resource ID after the type");
    r.id = Id();
    while (in_.TakePunct(",")) {
      Location at = in_.Peek().where;
      if (in_.Peek().kind == TokenKind::String) {
        Strings(r.name);
        r.named = true;
        if (r.name.size() > 255) sources_.Fail(at, "a resource name holds at most 255 bytes");
        continue;
      }
      bool word = false;
      for (const AttributeWord& a : kAttributeWords) {
        if (in_.TakeWord(a.set))
          r.attributes |= a.bit, word = true;
        else if (in_.TakeWord(a.clear))
          r.attributes &= static_cast<std::uint8_t>(~a.bit), word = true;
        if (word) break;
      }
      if (!word) {
        if (!StartsExpression(in_)) in_.Fail("a resource name or attribute");
        r.attributes |= static_cast<std::uint8_t>(Number(0, 255, "resource attributes"));
      }
    }
    in_.ExpectPunct(")", "after the resource's ID, name and attributes");
    context_ = ResourceContext{r.type, r.id, r.name, r.attributes};
    return r;
  }

  void Add(CompiledResource r, const Location& at) {
    // A resource file's data offsets are 24 bits wide: stop before memory
    // fills with resources no file can hold.
    dataBytes_ += r.data.size() + 4;
    if (dataBytes_ > kMostDataBytes)
      sources_.Fail(at, "the resources hold more than the 16 MB a resource file's data area holds");
    auto [place, fresh] = seen_.emplace(Key(r.type, r.id), at);
    if (!fresh)
      sources_.Fail(
          at, "resource " + QuoteType(r.type) + " (" + std::to_string(r.id) + ") is defined twice" +
                  (place->second.file >= 0 ? " (first at " + sources_.Describe(place->second) + ")"
                                           : std::string()));
    out_.push_back(std::move(r));
  }

  void ResourceStatement() {
    Location typeAt = in_.Peek().where;
    CompiledResource r = Header(TypeCode());
    const TypeDecl* decl = types_.Find(r.type, r.id);
    if (!decl)
      sources_.Fail(typeAt, "type " + QuoteType(r.type) +
                                " is not declared: #include its declaration or use a data "
                                "statement");
    in_.ExpectPunct("{", "before the resource's values");
    std::vector<Value> values;
    Values(decl->fields, values);
    in_.ExpectPunct("}", "after the resource's values");
    in_.ExpectPunct(";", "after the resource statement");
    r.data = Encode(*decl, values, context_, sources_);
    Add(std::move(r), typeAt);
  }

  void DataStatement() {
    Location typeAt = in_.Peek().where;
    CompiledResource r = Header(TypeCode());
    in_.ExpectPunct("{", "before the data statement's strings");
    while (Strings(r.data) || in_.TakePunct(",")) {
    }
    in_.ExpectPunct("}", "after the data statement's strings");
    in_.ExpectPunct(";", "after the data statement");
    Add(std::move(r), typeAt);
  }

  void ReadStatement() {
    Location typeAt = in_.Peek().where;
    CompiledResource r = Header(TypeCode());
    if (in_.Peek().kind != TokenKind::String) in_.Fail("the quoted name of the file to read");
    r.data = ReadFile(in_.Take());
    in_.ExpectPunct(";", "after the read statement");
    Add(std::move(r), typeAt);
  }

  // include "file" [not] ['TYPE' ['(' ID [':' ID] ')']] [as 'TYPE'] ';'
  void IncludeStatement() {
    if (in_.Peek().kind != TokenKind::String) in_.Fail("the quoted name of a resource file");
    Token file = in_.Take();
    bool exclude = in_.TakeWord("not");
    bool typed = false, ranged = false;
    std::uint32_t type = 0, renamed = 0;
    std::int16_t low = 0, high = 0;
    if (exclude || in_.Peek().kind == TokenKind::Number) {
      type = TypeCode();
      typed = true;
      if (in_.TakePunct("(")) {
        ranged = true;
        low = high = Id();
        if (in_.TakePunct(":")) high = Id();
        in_.ExpectPunct(")", "after the ID range");
      }
    }
    if (in_.TakeWord("as")) renamed = TypeCode();
    in_.ExpectPunct(";", "after the include statement");
    std::vector<CompiledResource> found;
    std::string problem;
    if (!ReadResourceFork(ReadFile(file), found, problem))
      sources_.Fail(file.where, "\"" + file.text + "\" is not a resource file: " + problem);
    for (CompiledResource& r : found) {
      bool match = !typed || (r.type == type && (!ranged || (r.id >= low && r.id <= high)));
      if (match == exclude) continue;
      if (renamed) r.type = renamed;
      Add(std::move(r), file.where);
    }
  }

  void DeleteStatement() {
    std::uint32_t type = TypeCode();
    bool ranged = false;
    std::int16_t low = 0, high = 0;
    if (in_.TakePunct("(")) {
      ranged = true;
      low = high = Id();
      if (in_.TakePunct(":")) high = Id();
      in_.ExpectPunct(")", "after the ID range");
    }
    in_.ExpectPunct(";", "after the delete statement");
    auto gone = [&](const CompiledResource& r) {
      return r.type == type && (!ranged || (r.id >= low && r.id <= high));
    };
    for (const CompiledResource& r : out_)
      if (gone(r)) seen_.erase(Key(r.type, r.id));
    out_.erase(std::remove_if(out_.begin(), out_.end(), gone), out_.end());
  }

  // ----- type declarations -----

  void TypeStatement() {
    TypeDecl decl;
    decl.type = TypeCode();
    if (in_.TakePunct("(")) {
      decl.ranged = true;
      decl.lowId = decl.highId = Id();
      if (in_.TakePunct(":")) decl.highId = Id();
      in_.ExpectPunct(")", "after the ID range of the type");
    }
    if (in_.TakeWord("as")) {
      Location at = in_.Peek().where;
      std::uint32_t base = TypeCode();
      const TypeDecl* old = types_.Find(base, decl.ranged ? decl.lowId : 0);
      if (!old) sources_.Fail(at, "type " + QuoteType(base) + " is not declared");
      decl.fields = old->fields;
    } else {
      in_.ExpectPunct("{", "before the type's fields");
      decl.fields = Fields(0, false);
      in_.ExpectPunct("}", "after the type's fields");
    }
    in_.ExpectPunct(";", "after the type declaration");
    types_.Add(std::move(decl));
  }

  std::vector<Field> Fields(int depth, bool inSwitch) {
    // Arrays and switches nest by recursion, here and wherever the fields
    // are laid out; real declarations nest two or three deep.
    if (++nesting_ > kMaxNesting) in_.Fail("fields nested less than 32 deep");
    std::vector<Field> fields;
    while (!in_.IsPunct("}") && !(inSwitch && in_.IsWord("case"))) {
      if (in_.AtEnd()) in_.Fail("'}' to end the fields");
      Field f = OneField(depth);
      fields.push_back(std::move(f));
    }
    --nesting_;
    return fields;
  }

  int BracketedCount() {
    in_.ExpectPunct("[", "before the length");
    int n = static_cast<int>(Number(0, 65535, "a length"));
    in_.ExpectPunct("]", "after the length");
    return n;
  }

  int UnitBits(bool allowBit) {
    static const struct {
      const char* word;
      int bits;
    } kUnits[] = {{"bit", 1}, {"nibble", 4}, {"byte", 8}, {"word", 16}, {"long", 32}};
    for (const auto& u : kUnits)
      if ((allowBit || u.bits > 1) && in_.TakeWord(u.word)) return u.bits;
    in_.Fail(allowBit ? "bit, nibble, byte, word or long" : "nibble, byte, word or long");
  }

  Field OneField(int depth) {
    Field f;
    f.where = in_.Peek().where;
    f.depth = depth;
    if (in_.Peek().kind == TokenKind::Identifier && in_.IsPunct(":", 1)) {
      f.kind = FieldKind::Label;
      f.label = in_.Take().text;
      in_.Take();
      return f;
    }
    while (true) {
      if (in_.TakeWord("key"))
        f.isKey = true;
      else if (in_.TakeWord("unsigned"))
        f.isUnsigned = true;
      else if (in_.TakeWord("wide"))
        f.wide = true;
      else if (in_.TakeWord("hex"))
        f.radix = Radix::Hex, f.hexString = true;
      else if (in_.TakeWord("decimal"))
        f.radix = Radix::Decimal;
      else if (in_.TakeWord("octal"))
        f.radix = Radix::Octal;
      else if (in_.TakeWord("binary"))
        f.radix = Radix::Binary;
      else if (in_.TakeWord("literal"))
        f.radix = Radix::Literal;
      else
        break;
    }
    if (in_.TakeWord("switch")) return Switch(f, depth);
    if (in_.TakeWord("array")) return Array(f, depth);
    if (in_.TakeWord("fill")) {
      f.kind = FieldKind::Fill;
      f.bits = UnitBits(true);
      if (in_.IsPunct("[")) f.bits *= BracketedCount();
      in_.ExpectPunct(";", "after the fill");
      return f;
    }
    if (in_.TakeWord("align")) {
      f.kind = FieldKind::Align;
      f.bits = UnitBits(false);
      in_.ExpectPunct(";", "after the align");
      return f;
    }
    static const struct {
      const char* word;
      int bits;
    } kNumbers[] = {{"boolean", 1}, {"byte", 8}, {"integer", 16}, {"longint", 32}};
    bool known = false;
    for (const auto& n : kNumbers)
      if (in_.TakeWord(n.word)) {
        f.bits = n.bits;
        f.isUnsigned = f.isUnsigned || n.bits == 1;
        known = true;
        break;
      }
    if (!known && in_.TakeWord("bitstring")) {
      f.bits = BracketedCount();
      if (f.bits < 1 || f.bits > 32) sources_.Fail(f.where, "a bitstring is 1 to 32 bits wide");
      known = true;
    }
    static const struct {
      const char* word;
      StringKind kind;
    } kStrings[] = {{"string", StringKind::Plain},
                    {"pstring", StringKind::Pascal},
                    {"cstring", StringKind::C},
                    {"wstring", StringKind::Wide}};
    if (!known && in_.TakeWord("char")) {
      f.kind = FieldKind::String;
      f.fixedLength = 1;
      known = true;
    }
    for (const auto& s : kStrings)
      if (!known && in_.TakeWord(s.word)) {
        f.kind = FieldKind::String;
        f.stringKind = s.kind;
        if (in_.IsPunct("[") && s.kind != StringKind::Wide) f.fixedLength = BracketedCount();
        if (s.kind == StringKind::Pascal && f.fixedLength > 255)
          sources_.Fail(f.where, "a pstring holds at most 255 bytes");
        known = true;
      }
    if (!known && in_.TakeWord("point")) f.kind = FieldKind::Point, known = true;
    if (!known && in_.TakeWord("rect")) f.kind = FieldKind::Rect, known = true;
    if (!known)
      in_.Fail(
          "a field (boolean, byte, integer, longint, bitstring, char, string, pstring, "
          "cstring, wstring, point, rect, fill, align, array or switch)");
    if (f.kind != FieldKind::String) f.hexString = false;
    ValueOrSymbols(f);
    in_.ExpectPunct(";", "after the field");
    if (f.isKey && !f.hasValue) sources_.Fail(f.where, "a key field needs a constant value");
    return f;
  }

  // "= constant", or "name = value, name = value ...".
  void ValueOrSymbols(Field& f) {
    bool text = f.kind == FieldKind::String;
    if (in_.TakePunct("=")) {
      if (f.kind == FieldKind::Point || f.kind == FieldKind::Rect)
        sources_.Fail(f.where, "a point or rect takes no constant value");
      f.hasValue = true;
      if (text) {
        if (!Strings(f.stringValue)) in_.Fail("a string");
      } else {
        f.value = ParseExpression(in_);
      }
      return;
    }
    if (in_.Peek().kind != TokenKind::Identifier) return;
    do {
      Symbol s;
      s.name = in_.ExpectIdentifier("a symbolic constant's name");
      in_.ExpectPunct("=", ("and a value after the name " + s.name).c_str());
      if (text) {
        s.isString = true;
        if (!Strings(s.bytes)) in_.Fail("a string");
      } else {
        Location at = in_.Peek().where;
        Expr e = ParseExpression(in_);
        FieldScope symbols(f, context_);
        try {
          s.number = Evaluate(e, symbols, sources_);
        } catch (const RezError&) {
          sources_.Fail(at, "the value of " + s.name + " must be a constant number");
        }
      }
      f.symbols.push_back(std::move(s));
    } while (in_.TakePunct(","));
  }

  Field Array(Field f, int depth) {
    f.kind = FieldKind::Array;
    if (in_.Peek().kind == TokenKind::Identifier) f.label = in_.Take().text;
    if (in_.TakePunct("[")) {
      f.hasCount = true;
      f.count = ParseExpression(in_);
      in_.ExpectPunct("]", "after the array's count");
    }
    in_.ExpectPunct("{", "before the array's fields");
    f.fields = Fields(depth + 1, false);
    in_.ExpectPunct("}", "after the array's fields");
    in_.ExpectPunct(";", "after the array");
    return f;
  }

  Field Switch(Field f, int depth) {
    f.kind = FieldKind::Switch;
    in_.ExpectPunct("{", "before the switch's cases");
    while (in_.TakeWord("case")) {
      Case c;
      c.name = in_.ExpectIdentifier("the case's name");
      in_.ExpectPunct(":", ("after case " + c.name).c_str());
      c.fields = Fields(depth, true);
      f.cases.push_back(std::move(c));
    }
    if (f.cases.empty()) in_.Fail("'case' in the switch");
    in_.ExpectPunct("}", "after the switch's cases");
    in_.ExpectPunct(";", "after the switch");
    return f;
  }

  // ----- values of a resource statement -----

  void Values(const std::vector<Field>& fields, std::vector<Value>& out) {
    out.reserve(fields.size());
    bool first = true;
    for (const Field& f : fields) {
      if (!TakesValue(f)) continue;
      if (!first) in_.ExpectPunct(",", "between values");
      first = false;
      out.push_back(OneValue(f));
    }
  }

  Value OneValue(const Field& f) {
    Value v;
    v.where = in_.Peek().where;
    switch (f.kind) {
      case FieldKind::Bits: {
        FieldScope scope(f, context_);
        Expr e = ParseExpression(in_);
        v.number = Evaluate(e, scope, sources_);
        return v;
      }
      case FieldKind::String:
        v.kind = Value::Kind::Bytes;
        if (in_.Peek().kind == TokenKind::Identifier)
          for (const Symbol& s : f.symbols)
            if (s.isString && s.name == in_.Peek().text) {
              in_.Take();
              v.bytes = s.bytes;
              return v;
            }
        if (!Strings(v.bytes)) in_.Fail("a string");
        return v;
      case FieldKind::Point:
      case FieldKind::Rect: {
        v.kind = Value::Kind::Numbers;
        bool point = f.kind == FieldKind::Point;
        in_.ExpectPunct(
            "{", point ? "to begin a point {v, h}" : "to begin a rect {top, left, bottom, right}");
        for (int k = 0; k < (point ? 2 : 4); ++k) {
          if (k) in_.ExpectPunct(",", "between coordinates");
          v.numbers.push_back(Number(-32768, 32767, "a coordinate"));
        }
        in_.ExpectPunct("}", point ? "to end the point" : "to end the rect");
        return v;
      }
      case FieldKind::Array: {
        v.kind = Value::Kind::Array;
        in_.ExpectPunct("{", "to begin the array's elements");
        bool anyValue = std::any_of(f.fields.begin(), f.fields.end(), TakesValue);
        while (!in_.TakePunct("}")) {
          std::vector<Value> element;
          if (anyValue) Values(f.fields, element);
          v.elements.push_back(std::move(element));
          if (!in_.TakePunct(";")) {
            if (!anyValue) in_.Fail("';' for an element without values");
            in_.ExpectPunct("}", "or ';' after the array element");
            break;
          }
        }
        return v;
      }
      case FieldKind::Switch: {
        v.kind = Value::Kind::Case;
        Location at = in_.Peek().where;
        std::string name = in_.ExpectIdentifier("the name of one of the switch's cases");
        for (std::size_t c = 0; c < f.cases.size(); ++c)
          if (SameWord(name, Lower(f.cases[c].name).c_str())) v.caseIndex = static_cast<int>(c);
        if (v.caseIndex < 0) {
          std::string names;
          for (const Case& c : f.cases) names += (names.empty() ? "" : ", ") + c.name;
          sources_.Fail(at, "'" + name + "' is not a case of the switch (" + names + ")");
        }
        in_.ExpectPunct("{", ("before the values of case " + name).c_str());
        Values(f.cases[static_cast<std::size_t>(v.caseIndex)].fields, v.caseValues);
        in_.ExpectPunct("}", ("after the values of case " + name).c_str());
        return v;
      }
      default: break;
    }
    return v;
  }

  static std::string Lower(const std::string& s) {
    std::string out;
    for (char c : s) out += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
  }
};

}  // namespace

void ParseRez(SourceSet& sources, const std::vector<Token>& tokens, TypeTable& types,
              std::vector<CompiledResource>& resources) {
  Parser(sources, tokens, types, resources).Statements();
}

}  // namespace rez
