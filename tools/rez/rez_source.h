// The Rez language's source side: reading files through a loader, the
// preprocessor (#include, #define, #undef, #if, #ifdef, #ifndef, #elif,
// #else, #endif, #error) and the tokens it hands to the statement parser.
// Every token keeps its file, line and column, so that a mistake anywhere
// can be reported where the developer wrote it.
#pragma once
#include <bitset>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

namespace rez {

// Where a token came from: an index into the source set's file names.
struct Location {
  int file = -1;
  int line = 0;
  int column = 0;
};

// A mistake in the input; what() is "file:line:column: what was expected".
class RezError : public std::runtime_error {
 public:
  explicit RezError(const std::string& message) : std::runtime_error(message) {}
};

enum class TokenKind { End, Identifier, Number, String, HexString, Punct };

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;  // identifier, punctuation, or the string's bytes
  std::int64_t number = 0;
  bool charLiteral = false;  // a number written as 'ABCD'
  Location where;
};

// Reads a file by the name it is asked for; false when there is none. The
// compiler reads from disk; the fuzz target and the tests hand in text.
using FileLoader = std::function<bool(const std::string& path, std::string& contents)>;
FileLoader DiskLoader();

class SourceSet {
 public:
  explicit SourceSet(FileLoader loader) : loader_(std::move(loader)) {}
  std::vector<std::string> includeDirectories;

  // The whole preprocessed token stream of a file, ending with an End token.
  std::vector<Token> Preprocess(const std::string& path);
  // Predefines a macro as if by "#define name value".
  void Define(const std::string& name, const std::string& value);

  [[noreturn]] void Fail(const Location& at, const std::string& message) const;
  std::string Describe(const Location& at) const;
  const std::string& FileName(int file) const { return names_[static_cast<std::size_t>(file)]; }
  // Loads a file named in the source (read, include, $$Resource): relative
  // names are looked up beside the naming file, then in the include list.
  bool Load(const std::string& name, const Location& from, std::string& path,
            std::string& contents);

 private:
  struct Macro {
    std::vector<Token> body;
  };
  FileLoader loader_;
  std::vector<std::string> names_;
  std::unordered_map<std::string, Macro> macros_;
  std::bitset<256> macroStarts_;  // first characters of the names ever defined
  std::vector<std::string> includeStack_;

  void PreprocessFile(const std::string& path, const std::string& text, std::vector<Token>& out,
                      const Location& includedFrom);
  void Expand(Token token, std::vector<Token>& out, std::vector<std::string>& active);
  bool EvaluateCondition(const std::vector<Token>& line, const Location& at);
};

// Quotes bytes as a Rez string literal ("...", escapes for the rest).
std::string QuoteString(const std::string& bytes);
// A four-character code as Rez writes it: 'MENU', with escapes when needed.
std::string QuoteType(std::uint32_t type);

}  // namespace rez
