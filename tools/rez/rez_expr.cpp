// Token walking and Rez expressions: precedence climbing over C's binary
// operators, evaluated in 64-bit two's-complement arithmetic.
#include "rez/rez_expr.h"

#include <cctype>

namespace rez {

namespace {

const Token& EndToken() {
  static const Token end;
  return end;
}

int Precedence(const std::string& op) {
  static const struct {
    const char* op;
    int level;
  } kLevels[] = {{"||", 1}, {"&&", 2}, {"|", 3}, {"^", 4},  {"&", 5},  {"==", 6},
                 {"!=", 6}, {"<", 7},  {">", 7}, {"<=", 7}, {">=", 7}, {"<<", 8},
                 {">>", 8}, {"+", 9},  {"-", 9}, {"*", 10}, {"/", 10}, {"%", 10}};
  for (const auto& l : kLevels)
    if (op == l.op) return l.level;
  return 0;
}

Expr ParseBinary(TokenCursor& in, int minimum);

// Parentheses and unary operators nest by recursion; a bound keeps a hostile
// input from exhausting the stack.
constexpr int kMaxNesting = 256;
int nesting = 0;
struct NestingGuard {
  explicit NestingGuard(TokenCursor& in) {
    if (++nesting > kMaxNesting) {
      nesting = 0;
      in.Fail("an expression nested less than 256 deep");
    }
  }
  ~NestingGuard() {
    if (nesting > 0) --nesting;
  }
};

Expr ParsePrimary(TokenCursor& in) {
  NestingGuard guard(in);
  const Token& t = in.Peek();
  Expr e;
  e.where = t.where;
  if (t.kind == TokenKind::Number) {
    e.number = in.Take().number;
    return e;
  }
  if (t.kind == TokenKind::Punct && t.text == "(") {
    in.Take();
    e = ParseBinary(in, 1);
    in.ExpectPunct(")", "to close the parenthesis");
    return e;
  }
  if (t.kind == TokenKind::Punct && (t.text == "-" || t.text == "!" || t.text == "~")) {
    e.op = Expr::Op::Unary;
    e.text = in.Take().text;
    e.operands.push_back(ParsePrimary(in));
    return e;
  }
  if (t.kind == TokenKind::Identifier && t.text.compare(0, 2, "$$") == 0) {
    e.op = Expr::Op::Function;
    for (char c : in.Take().text) e.text += static_cast<char>(std::tolower(c));
    if (in.TakePunct("(")) {
      if (!in.TakePunct(")")) {
        do {
          if (in.Peek().kind == TokenKind::String) {
            Expr s;
            s.op = Expr::Op::Name;  // a string argument, e.g. a file name
            s.where = in.Peek().where;
            s.text = in.Take().text;
            s.number = 1;
            e.operands.push_back(s);
          } else {
            e.operands.push_back(ParseBinary(in, 1));
          }
        } while (in.TakePunct(","));
        in.ExpectPunct(")", ("after the arguments of " + e.text).c_str());
      }
    }
    return e;
  }
  if (t.kind == TokenKind::Identifier) {
    e.op = Expr::Op::Name;
    e.text = in.Take().text;
    if (in.TakePunct("[")) {
      do e.subscripts.push_back(ParseBinary(in, 1));
      while (in.TakePunct(","));
      in.ExpectPunct("]", ("after the subscripts of label " + e.text).c_str());
    }
    return e;
  }
  in.Fail("a number, a name or '('");
}

Expr ParseBinary(TokenCursor& in, int minimum) {
  Expr left = ParsePrimary(in);
  while (true) {
    const Token& t = in.Peek();
    int level = t.kind == TokenKind::Punct ? Precedence(t.text) : 0;
    if (level < minimum || level == 0) return left;
    Expr e;
    e.op = Expr::Op::Binary;
    e.where = t.where;
    e.text = in.Take().text;
    e.operands.push_back(std::move(left));
    e.operands.push_back(ParseBinary(in, level + 1));
    left = std::move(e);
  }
}

}  // namespace

const Token& TokenCursor::Peek(std::size_t ahead) const {
  std::size_t at = at_ + ahead;
  if (at >= tokens_.size()) return tokens_.empty() ? EndToken() : tokens_.back();
  return tokens_[at];
}

const Token& TokenCursor::Take() {
  const Token& t = Peek();
  if (at_ < tokens_.size() && t.kind != TokenKind::End) ++at_;
  return t;
}

bool TokenCursor::IsPunct(const char* p, std::size_t ahead) const {
  // Punctuation is one or two characters; compared without strlen, since
  // the parser asks this for nearly every token.
  const Token& t = Peek(ahead);
  if (t.kind != TokenKind::Punct || t.text.empty() || t.text[0] != p[0]) return false;
  return p[1] == '\0' ? t.text.size() == 1 : t.text.size() == 2 && t.text[1] == p[1];
}

bool TokenCursor::TakePunct(const char* p) {
  if (!IsPunct(p)) return false;
  Take();
  return true;
}

void TokenCursor::ExpectPunct(const char* p, const char* context) {
  if (!TakePunct(p)) Fail(std::string("'") + p + "' " + context);
}

bool SameWord(const std::string& a, const char* b) {
  std::size_t i = 0;
  for (; b[i]; ++i)
    if (i >= a.size() || std::tolower(static_cast<unsigned char>(a[i])) != b[i]) return false;
  return i == a.size();
}

bool TokenCursor::IsWord(const char* word, std::size_t ahead) const {
  const Token& t = Peek(ahead);
  return t.kind == TokenKind::Identifier && SameWord(t.text, word);
}

bool TokenCursor::TakeWord(const char* word) {
  if (!IsWord(word)) return false;
  Take();
  return true;
}

std::string TokenCursor::ExpectIdentifier(const char* what) {
  if (Peek().kind != TokenKind::Identifier) Fail(what);
  return Take().text;
}

std::string Spell(const Token& t) {
  switch (t.kind) {
    case TokenKind::End: return "the end of the input";
    case TokenKind::Number: return t.charLiteral ? "'" + t.text + "'" : std::to_string(t.number);
    case TokenKind::String: return QuoteString(t.text);
    case TokenKind::HexString: return "a hex string";
    case TokenKind::Punct: return "'" + t.text + "'";
    case TokenKind::Identifier: return "'" + t.text + "'";
  }
  return "?";
}

void TokenCursor::Fail(const std::string& expected) const {
  sources_.Fail(Peek().where, "expected " + expected + " but found " + Spell(Peek()));
}

Expr ParseExpression(TokenCursor& in) { return ParseBinary(in, 1); }

bool StartsExpression(const TokenCursor& in) {
  const Token& t = in.Peek();
  return t.kind == TokenKind::Number || t.kind == TokenKind::Identifier ||
         (t.kind == TokenKind::Punct &&
          (t.text == "(" || t.text == "-" || t.text == "!" || t.text == "~"));
}

std::int64_t Evaluate(const Expr& e, Scope& scope, const SourceSet& sources) {
  std::int64_t value = 0;
  switch (e.op) {
    case Expr::Op::Number: return e.number;
    case Expr::Op::Name:
      if (!scope.Name(e, value)) sources.Fail(e.where, "unknown name '" + e.text + "'");
      return value;
    case Expr::Op::Function:
      if (!scope.Function(e, value))
        sources.Fail(e.where, e.text + " cannot be used here or has the wrong arguments");
      return value;
    case Expr::Op::Unary: {
      std::uint64_t v = static_cast<std::uint64_t>(Evaluate(e.operands[0], scope, sources));
      if (e.text == "-") return static_cast<std::int64_t>(0 - v);
      if (e.text == "~") return static_cast<std::int64_t>(~v);
      return v == 0;
    }
    case Expr::Op::Binary: break;
  }
  std::int64_t a = Evaluate(e.operands[0], scope, sources);
  const std::string& op = e.text;
  if (op == "&&") return a && Evaluate(e.operands[1], scope, sources);
  if (op == "||") return a || Evaluate(e.operands[1], scope, sources);
  std::int64_t b = Evaluate(e.operands[1], scope, sources);
  std::uint64_t ua = static_cast<std::uint64_t>(a), ub = static_cast<std::uint64_t>(b);
  if (op == "+") return static_cast<std::int64_t>(ua + ub);
  if (op == "-") return static_cast<std::int64_t>(ua - ub);
  if (op == "*") return static_cast<std::int64_t>(ua * ub);
  if (op == "/" || op == "%") {
    if (b == 0) sources.Fail(e.where, "division by zero");
    if (b == -1) return op == "/" ? static_cast<std::int64_t>(0 - ua) : 0;
    return op == "/" ? a / b : a % b;
  }
  if (op == "<<" || op == ">>") {
    if (b < 0 || b > 63) sources.Fail(e.where, "a shift count must be from 0 to 63");
    return op == "<<" ? static_cast<std::int64_t>(ua << b) : a >> b;
  }
  if (op == "&") return a & b;
  if (op == "|") return a | b;
  if (op == "^") return a ^ b;
  if (op == "==") return a == b;
  if (op == "!=") return a != b;
  if (op == "<") return a < b;
  if (op == ">") return a > b;
  if (op == "<=") return a <= b;
  return a >= b;
}

bool MentionsFunction(const Expr& e, const char* function) {
  if (e.op == Expr::Op::Function && e.text == function) return true;
  for (const Expr& o : e.operands)
    if (MentionsFunction(o, function)) return true;
  for (const Expr& o : e.subscripts)
    if (MentionsFunction(o, function)) return true;
  return false;
}

}  // namespace rez
