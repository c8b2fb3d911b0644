// Walking a token stream, and the numeric expressions of the Rez language:
// C's operators over 64-bit integers, names (symbolic constants, labels)
// and the $$ functions that templates use ($$Countof, $$ArrayIndex,
// $$BitField, $$Byte, $$Word, $$Long, $$ID, $$Type, $$Attributes).
#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "rez/rez_source.h"

namespace rez {

class TokenCursor {
 public:
  TokenCursor(const std::vector<Token>& tokens, const SourceSet& sources)
      : tokens_(tokens), sources_(sources) {}
  const Token& Peek(std::size_t ahead = 0) const;
  const Token& Take();
  bool AtEnd() const { return Peek().kind == TokenKind::End; }
  bool IsPunct(const char* p, std::size_t ahead = 0) const;
  bool TakePunct(const char* p);
  // Fails with "expected 'p' <context> but found ..." when p is not next.
  void ExpectPunct(const char* p, const char* context);
  // Keywords are compared without case, as Rez does.
  bool IsWord(const char* word, std::size_t ahead = 0) const;
  bool TakeWord(const char* word);
  std::string ExpectIdentifier(const char* what);
  [[noreturn]] void Fail(const std::string& expected) const;
  [[noreturn]] void FailAt(const Location& at, const std::string& message) const {
    sources_.Fail(at, message);
  }
  const SourceSet& Sources() const { return sources_; }

 private:
  const std::vector<Token>& tokens_;
  const SourceSet& sources_;
  std::size_t at_ = 0;
};

// How a token reads in a message: 'foo', "string", the end of the input.
std::string Spell(const Token& token);
bool SameWord(const std::string& a, const char* b);

struct Expr {
  enum class Op { Number, Name, Function, Unary, Binary };
  Op op = Op::Number;
  std::int64_t number = 0;
  std::string text;              // name, function name (lower case), operator
  std::vector<Expr> operands;    // unary 1, binary 2, function arguments
  std::vector<Expr> subscripts;  // label[i, j]
  Location where;
};

Expr ParseExpression(TokenCursor& in);
bool StartsExpression(const TokenCursor& in);

// What names and functions mean where an expression is evaluated. Unknown
// returns false; the evaluator then reports the name at its place.
class Scope {
 public:
  virtual ~Scope() = default;
  virtual bool Name(const Expr& name, std::int64_t& value) = 0;
  virtual bool Function(const Expr& call, std::int64_t& value) = 0;
};

std::int64_t Evaluate(const Expr& e, Scope& scope, const SourceSet& sources);
// True when e calls $$Countof (of any array) or names a label somewhere.
bool MentionsFunction(const Expr& e, const char* function);

}  // namespace rez
