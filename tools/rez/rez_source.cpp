// The lexer and the preprocessor of the Rez language.
#include "rez/rez_source.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>

#include "rez/rez_expr.h"

namespace rez {

namespace {

constexpr int kMaxIncludeDepth = 32;
constexpr int kMaxExpansionDepth = 64;

bool IsIdentStart(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || c == '$';
}
bool IsIdentChar(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_'; }

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string DirectoryOf(const std::string& path) {
  std::size_t slash = path.find_last_of("/\\");
  return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

// Splits one file into tokens. Directives are handed back whole: a '#' that
// begins a line yields a Punct "#" token and the directive's tokens up to the
// end of the line follow, ended by a Punct "\n" token.
class Lexer {
 public:
  Lexer(const std::string& text, int file, const SourceSet& sources)
      : text_(text), file_(file), sources_(sources) {}

  Token Next() {
    SkipBlanks();
    Token t;
    t.where = Here();
    if (pos_ >= text_.size()) {
      if (inDirective_) {
        inDirective_ = false;
        t.kind = TokenKind::Punct;
        t.text = "\n";
      }
      return t;
    }
    char c = text_[pos_];
    if (c == '\n') {  // only inside a directive: blanks skip the others
      Advance();
      lineStart_ = true;
      inDirective_ = false;
      t.kind = TokenKind::Punct;
      t.text = "\n";
      return t;
    }
    bool first = lineStart_;
    lineStart_ = false;
    if (c == '#' && first) {
      Advance();
      inDirective_ = true;
      t.kind = TokenKind::Punct;
      t.text = "#";
      return t;
    }
    if (c == '$' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '"') {
      Advance();
      return HexString(t);
    }
    if (c == '$' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '$') {
      t.kind = TokenKind::Identifier;
      t.text = "$$";
      Advance();
      Advance();
      while (pos_ < text_.size() && IsIdentChar(text_[pos_])) t.text += Advance();
      return t;
    }
    if (c == '$' || std::isdigit(static_cast<unsigned char>(c))) return NumberToken(t);
    if (IsIdentStart(c)) {
      t.kind = TokenKind::Identifier;
      std::size_t start = pos_;
      while (pos_ < text_.size() && IsIdentChar(text_[pos_])) Advance();
      t.text = text_.substr(start, pos_ - start);
      return t;
    }
    if (c == '"') {
      Advance();
      t.kind = TokenKind::String;
      t.text = Quoted('"', t.where);
      return t;
    }
    if (c == '\'') {
      Advance();
      std::string bytes = Quoted('\'', t.where);
      if (bytes.empty() || bytes.size() > 4)
        sources_.Fail(t.where, "a character constant holds 1 to 4 characters");
      t.kind = TokenKind::Number;
      t.charLiteral = true;
      std::uint32_t value = 0;
      for (char b : bytes) value = value << 8 | static_cast<unsigned char>(b);
      t.number = value;
      t.text = bytes;
      return t;
    }
    static const char* const kTwo[] = {"<<", ">>", "<=", ">=", "==", "!=", "&&", "||"};
    t.kind = TokenKind::Punct;
    if (std::strchr("<>=!&|", c) && pos_ + 1 < text_.size())
      for (const char* two : kTwo)
        if (two[0] == c && two[1] == text_[pos_ + 1]) {
          Advance();
          Advance();
          t.text = two;
          return t;
        }
    if (c == '\0' || !std::strchr("{}()[];:,=+-*/%<>&|^!~", c))
      sources_.Fail(t.where, std::string("unexpected character '") + c + "'");
    t.text = std::string(1, Advance());
    return t;
  }

 private:
  const std::string& text_;
  int file_;
  const SourceSet& sources_;
  std::size_t pos_ = 0;
  int line_ = 1, column_ = 1;
  bool lineStart_ = true, inDirective_ = false;

  Location Here() const { return Location{file_, line_, column_}; }
  char Advance() {
    char c = text_[pos_++];
    if (c == '\n') {
      ++line_;
      column_ = 1;
    } else {
      ++column_;
    }
    return c;
  }

  void SkipBlanks() {
    while (pos_ < text_.size()) {
      char c = text_[pos_];
      if (c == '\\' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '\n' && inDirective_) {
        Advance();
        Advance();
      } else if (c == ' ' || c == '\t' || c == '\r' || c == '\f' || c == '\v') {
        Advance();
      } else if (c == '\n' && !inDirective_) {
        Advance();
        lineStart_ = true;
      } else if (c == '/' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '/') {
        while (pos_ < text_.size() && text_[pos_] != '\n') Advance();
      } else if (c == '/' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '*') {
        Location at = Here();
        Advance();
        Advance();
        while (pos_ < text_.size() &&
               !(text_[pos_] == '*' && pos_ + 1 < text_.size() && text_[pos_ + 1] == '/'))
          Advance();
        if (pos_ >= text_.size()) sources_.Fail(at, "a comment is not closed: expected */");
        Advance();
        Advance();
      } else {
        return;
      }
    }
  }

  Token NumberToken(Token& t) {
    t.kind = TokenKind::Number;
    int base = 10;
    if (text_[pos_] == '$') {
      base = 16;
      Advance();
    } else if (text_[pos_] == '0' && pos_ + 1 < text_.size() &&
               (text_[pos_ + 1] == 'x' || text_[pos_ + 1] == 'X')) {
      base = 16;
      Advance();
      Advance();
    } else if (text_[pos_] == '0' && pos_ + 1 < text_.size() &&
               (text_[pos_ + 1] == 'b' || text_[pos_ + 1] == 'B')) {
      base = 2;
      Advance();
      Advance();
    } else if (text_[pos_] == '0') {
      base = 8;
    }
    std::uint64_t value = 0;
    int digits = 0;
    while (pos_ < text_.size() && IsIdentChar(text_[pos_])) {
      int d = HexDigit(text_[pos_]);
      if (d < 0 || d >= base)
        sources_.Fail(Here(), std::string("'") + text_[pos_] + "' is not a digit of a base-" +
                                  std::to_string(base) + " number");
      if (value > (UINT64_MAX - static_cast<std::uint64_t>(d)) / static_cast<std::uint64_t>(base))
        sources_.Fail(t.where, "the number does not fit in 64 bits");
      value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(d);
      ++digits;
      Advance();
    }
    if (digits == 0) sources_.Fail(t.where, "expected digits after the number's prefix");
    t.number = static_cast<std::int64_t>(value);
    return t;
  }

  Token HexString(Token& t) {
    Advance();  // the quote
    t.kind = TokenKind::HexString;
    int high = -1;
    while (true) {
      if (pos_ >= text_.size() || text_[pos_] == '\n')
        sources_.Fail(t.where, "a hex string is not closed: expected \"");
      char c = Advance();
      if (c == '"') break;
      if (c == ' ' || c == '\t' || c == '\r') continue;
      int d = HexDigit(c);
      if (d < 0) sources_.Fail(t.where, std::string("'") + c + "' is not a hexadecimal digit");
      if (high < 0) {
        high = d;
      } else {
        t.text += static_cast<char>(high << 4 | d);
        high = -1;
      }
    }
    if (high >= 0) sources_.Fail(t.where, "a hex string needs an even number of digits");
    return t;
  }

  // The body of a quoted string or character constant, escapes resolved.
  // In Rez, as in MPW C, \n is a return (0x0D) and \r a line feed (0x0A).
  std::string Quoted(char quote, const Location& at) {
    std::string out;
    while (true) {
      if (pos_ >= text_.size() || text_[pos_] == '\n')
        sources_.Fail(at, std::string("a quote is not closed: expected ") + quote);
      char c = Advance();
      if (c == quote) return out;
      if (c != '\\') {
        out += c;
        continue;
      }
      if (pos_ >= text_.size()) continue;
      char e = Advance();
      switch (e) {
        case 'n': out += '\x0D'; break;
        case 'r': out += '\x0A'; break;
        case 't': out += '\t'; break;
        case 'b': out += '\b'; break;
        case 'f': out += '\f'; break;
        case 'v': out += '\v'; break;
        case '?': out += '\x7F'; break;
        case '$': out += static_cast<char>(HexEscape(2, at)); break;
        case '0':
          if (pos_ < text_.size() && (text_[pos_] == 'x' || text_[pos_] == 'X')) {
            Advance();
            out += static_cast<char>(HexEscape(2, at));
            break;
          }
          [[fallthrough]];
        case '1':
        case '2':
        case '3':
        case '4':
        case '5':
        case '6':
        case '7': {
          int value = e - '0', n = 1;
          while (n < 3 && pos_ < text_.size() && text_[pos_] >= '0' && text_[pos_] <= '7') {
            value = value * 8 + (Advance() - '0');
            ++n;
          }
          if (value > 255) sources_.Fail(at, "an octal escape is above \\377");
          out += static_cast<char>(value);
          break;
        }
        default: out += e;
      }
    }
  }

  int HexEscape(int digits, const Location& at) {
    int value = 0;
    for (int i = 0; i < digits; ++i) {
      int d = pos_ < text_.size() ? HexDigit(text_[pos_]) : -1;
      if (d < 0) sources_.Fail(at, "expected two hexadecimal digits in a \\0x or \\$ escape");
      Advance();
      value = value * 16 + d;
    }
    return value;
  }
};

// Numbers only: names in #if that are not macros count as 0.
class ConditionScope : public Scope {
 public:
  bool Name(const Expr&, std::int64_t& value) override {
    value = 0;
    return true;
  }
  bool Function(const Expr&, std::int64_t&) override { return false; }
};

}  // namespace

FileLoader DiskLoader() {
  return [](const std::string& path, std::string& contents) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    std::ostringstream all;
    all << in.rdbuf();
    contents = all.str();
    return true;
  };
}

std::string SourceSet::Describe(const Location& at) const {
  std::string file = at.file >= 0 ? FileName(at.file) : std::string("<command line>");
  return file + ":" + std::to_string(at.line) + ":" + std::to_string(at.column);
}

void SourceSet::Fail(const Location& at, const std::string& message) const {
  throw RezError(Describe(at) + ": " + message);
}

void SourceSet::Define(const std::string& name, const std::string& value) {
  std::vector<Token> body;
  Lexer lexer(value, -1, *this);
  for (Token t = lexer.Next(); t.kind != TokenKind::End; t = lexer.Next()) body.push_back(t);
  macros_[name] = Macro{body};
  macroStarts_.set(static_cast<unsigned char>(name.empty() ? 0 : name[0]));
}

bool SourceSet::Load(const std::string& name, const Location& from, std::string& path,
                     std::string& contents) {
  std::vector<std::string> candidates;
  bool absolute =
      !name.empty() && (name[0] == '/' || name[0] == '\\' || (name.size() > 1 && name[1] == ':'));
  if (absolute) {
    candidates.push_back(name);
  } else {
    if (from.file >= 0) candidates.push_back(DirectoryOf(FileName(from.file)) + name);
    candidates.push_back(name);
    for (const std::string& dir : includeDirectories)
      candidates.push_back(dir + (dir.empty() || dir.back() == '/' ? "" : "/") + name);
  }
  for (const std::string& candidate : candidates)
    if (loader_(candidate, contents)) {
      path = candidate;
      return true;
    }
  return false;
}

std::vector<Token> SourceSet::Preprocess(const std::string& path) {
  std::string contents;
  if (!loader_(path, contents)) throw RezError(path + ": cannot open the file");
  std::vector<Token> out;
  out.reserve(contents.size() / 4);  // about one token in four bytes of a typical source
  PreprocessFile(path, contents, out, Location{});
  Token end;
  end.where = Location{0, 0, 0};
  if (!out.empty()) end.where = out.back().where;
  out.push_back(end);
  return out;
}

void SourceSet::Expand(Token token, std::vector<Token>& out, std::vector<std::string>& active) {
  // Most identifiers are no macro: the first character rules out nearly all
  // of them before the name is hashed.
  bool candidate = token.kind == TokenKind::Identifier &&
                   macroStarts_.test(static_cast<unsigned char>(token.text[0]));
  auto found = candidate ? macros_.find(token.text) : macros_.end();
  if (found == macros_.end() ||
      std::find(active.begin(), active.end(), token.text) != active.end()) {
    out.push_back(std::move(token));
    return;
  }
  if (active.size() >= kMaxExpansionDepth)
    Fail(token.where, "macro " + token.text + " expands too deeply");
  active.push_back(token.text);
  const std::vector<Token> body = found->second.body;
  for (Token t : body) {
    t.where = token.where;
    Expand(std::move(t), out, active);
  }
  active.pop_back();
}

bool SourceSet::EvaluateCondition(const std::vector<Token>& line, const Location& at) {
  std::vector<Token> expanded;
  std::vector<std::string> active;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i].kind == TokenKind::Identifier && line[i].text == "defined") {
      bool paren = i + 1 < line.size() && line[i + 1].text == "(";
      std::size_t nameAt = i + (paren ? 2 : 1);
      if (nameAt >= line.size() || line[nameAt].kind != TokenKind::Identifier)
        Fail(line[i].where, "expected a macro name after defined");
      Token value = line[i];
      value.kind = TokenKind::Number;
      value.number = macros_.count(line[nameAt].text) ? 1 : 0;
      expanded.push_back(value);
      i = nameAt;
      if (paren) {
        if (i + 1 >= line.size() || line[i + 1].text != ")")
          Fail(line[nameAt].where, "expected ')' after defined(" + line[nameAt].text);
        ++i;
      }
      continue;
    }
    Expand(line[i], expanded, active);
  }
  if (expanded.empty()) Fail(at, "expected an expression after #if");
  Token end;
  end.where = expanded.back().where;
  expanded.push_back(end);
  TokenCursor cursor(expanded, *this);
  Expr e = ParseExpression(cursor);
  if (!cursor.AtEnd()) cursor.Fail("the end of the #if line");
  ConditionScope scope;
  return Evaluate(e, scope, *this) != 0;
}

void SourceSet::PreprocessFile(const std::string& path, const std::string& text,
                               std::vector<Token>& out, const Location& includedFrom) {
  for (const std::string& open : includeStack_)
    if (open == path) {
      std::string chain;
      for (const std::string& name : includeStack_) chain += name + " includes ";
      Fail(includedFrom, "#include cycle: " + chain + path);
    }
  if (static_cast<int>(includeStack_.size()) >= kMaxIncludeDepth)
    Fail(includedFrom, "#include nests deeper than 32 files");
  includeStack_.push_back(path);
  int file = static_cast<int>(names_.size());
  names_.push_back(path);
  Lexer lexer(text, file, *this);

  // One entry per open #if: whether its text is taken, whether a branch of
  // it has been taken already, whether #else was seen, where it began.
  struct Conditional {
    bool taking, taken, sawElse;
    Location where;
  };
  std::vector<Conditional> conditionals;
  auto taking = [&] { return conditionals.empty() || conditionals.back().taking; };
  std::vector<std::string> active;

  for (Token t = lexer.Next(); t.kind != TokenKind::End; t = lexer.Next()) {
    if (!(t.kind == TokenKind::Punct && t.text == "#")) {
      if (taking()) Expand(std::move(t), out, active);
      continue;
    }
    Token name = lexer.Next();
    std::vector<Token> line;
    if (!(name.kind == TokenKind::Punct && name.text == "\n"))
      for (Token x = lexer.Next(); !(x.kind == TokenKind::Punct && x.text == "\n");
           x = lexer.Next())
        line.push_back(x);
    if (name.kind == TokenKind::Punct && name.text == "\n") continue;  // a lone '#'
    const std::string& d = name.text;
    bool outer = conditionals.size() < 2 || conditionals[conditionals.size() - 2].taking;
    if (d == "if" || d == "ifdef" || d == "ifndef") {
      bool value = false;
      if (taking()) {
        if (d == "if") {
          value = EvaluateCondition(line, name.where);
        } else {
          if (line.size() != 1 || line[0].kind != TokenKind::Identifier)
            Fail(name.where, "expected one macro name after #" + d);
          value = (macros_.count(line[0].text) != 0) == (d == "ifdef");
        }
      }
      bool parentTaking = taking();
      conditionals.push_back(Conditional{parentTaking && value, value, false, name.where});
      if (!parentTaking) conditionals.back().taken = true;
    } else if (d == "elif" || d == "else") {
      if (conditionals.empty()) Fail(name.where, "#" + d + " without #if");
      Conditional& c = conditionals.back();
      if (c.sawElse) Fail(name.where, "#" + d + " after #else");
      bool value = !c.taken && outer && (d == "else" || EvaluateCondition(line, name.where));
      c.taking = value;
      c.taken = c.taken || value;
      c.sawElse = d == "else";
    } else if (d == "endif") {
      if (conditionals.empty()) Fail(name.where, "#endif without #if");
      conditionals.pop_back();
    } else if (!taking()) {
      continue;
    } else if (d == "define") {
      if (line.empty() || line[0].kind != TokenKind::Identifier)
        Fail(name.where, "expected a macro name after #define");
      if (line.size() > 1 && line[1].text == "(" &&
          line[1].where.column == line[0].where.column + static_cast<int>(line[0].text.size()))
        Fail(line[1].where, "macros with parameters are not supported");
      macros_[line[0].text] = Macro{std::vector<Token>(line.begin() + 1, line.end())};
      macroStarts_.set(static_cast<unsigned char>(line[0].text[0]));
    } else if (d == "undef") {
      if (line.size() != 1 || line[0].kind != TokenKind::Identifier)
        Fail(name.where, "expected one macro name after #undef");
      macros_.erase(line[0].text);
    } else if (d == "include") {
      if (line.size() != 1 || line[0].kind != TokenKind::String)
        Fail(name.where, "expected a quoted file name after #include");
      std::string found, contents;
      if (!Load(line[0].text, name.where, found, contents))
        Fail(line[0].where, "cannot open the include file \"" + line[0].text + "\"");
      PreprocessFile(found, contents, out, line[0].where);
    } else if (d == "error") {
      std::string message;
      for (const Token& x : line) message += (message.empty() ? "" : " ") + x.text;
      Fail(name.where, "#error " + message);
    } else if (d == "pragma" || d == "printf" || d == "line") {
      // Listing and line-control directives change nothing in the output.
    } else {
      Fail(name.where, "unknown directive #" + d);
    }
  }
  if (!conditionals.empty())
    Fail(conditionals.back().where, "#if is not closed: expected #endif before the end of " + path);
  includeStack_.pop_back();
}

namespace {

std::string Quote(const std::string& bytes, char quote) {
  std::string out(1, quote);
  for (char c : bytes) {
    unsigned char u = static_cast<unsigned char>(c);
    if (c == quote || c == '\\') {
      out += '\\';
      out += c;
    } else if (u == 0x0D) {
      out += "\\n";
    } else if (u >= 0x20 && u < 0x7F) {
      out += c;
    } else {
      char hex[8];
      std::snprintf(hex, sizeof hex, "\\0x%02X", u);
      out += hex;
    }
  }
  return out + quote;
}

}  // namespace

std::string QuoteString(const std::string& bytes) { return Quote(bytes, '"'); }

std::string QuoteType(std::uint32_t type) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(type >> shift & 0xFF);
  return Quote(bytes, '\'');
}

}  // namespace rez
