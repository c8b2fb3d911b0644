#include "resource_builder/resource_description.h"

#include <cstdint>
#include <sstream>

namespace resource_builder {

namespace {

struct Token {
  enum Kind { kWord, kString, kType } kind;
  std::string text;  // escapes already resolved for strings and types
};

int HexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// Splits one line into tokens; false with a reason on an unclosed quote or
// an unknown escape.
bool Tokenize(const std::string& line, std::vector<Token>& tokens, std::string& error) {
  std::size_t i = 0;
  while (i < line.size()) {
    char c = line[i];
    if (c == ' ' || c == '\t' || c == '\r') {
      ++i;
    } else if (c == '#') {
      break;
    } else if (c == '"' || c == '\'') {
      const char quote = c;
      std::string text;
      for (++i;; ++i) {
        if (i >= line.size()) {
          error = "a quote is not closed";
          return false;
        }
        c = line[i];
        if (c == quote) break;
        if (c != '\\') {
          text += c;
          continue;
        }
        if (++i >= line.size()) continue;  // reported as the unclosed quote
        switch (line[i]) {
          case 'n': text += '\n'; break;
          case 'r': text += '\r'; break;
          case 't': text += '\t'; break;
          case '\\':
          case '"':
          case '\'': text += line[i]; break;
          case 'x': {
            int high = i + 1 < line.size() ? HexDigit(line[i + 1]) : -1;
            int low = i + 2 < line.size() ? HexDigit(line[i + 2]) : -1;
            if (high < 0 || low < 0) {
              error = "\\x needs two hexadecimal digits";
              return false;
            }
            text += static_cast<char>(high * 16 + low);
            i += 2;
            break;
          }
          default: error = std::string("unknown escape \\") + line[i]; return false;
        }
      }
      ++i;
      tokens.push_back({quote == '"' ? Token::kString : Token::kType, text});
    } else {
      std::size_t end = line.find_first_of(" \t\r#\"'", i);
      if (end == std::string::npos) end = line.size();
      tokens.push_back({Token::kWord, line.substr(i, end - i)});
      i = end;
    }
  }
  return true;
}

// A decimal or 0x-hexadecimal number, optionally negative, within [low, high].
bool ParseNumber(const Token& token, long long low, long long high, long long& value) {
  if (token.kind != Token::kWord || token.text.empty()) return false;
  const std::string& t = token.text;
  std::size_t i = 0;
  bool negative = t[0] == '-';
  if (negative) ++i;
  int radix = 10;
  if (t.size() > i + 1 && t[i] == '0' && (t[i + 1] == 'x' || t[i + 1] == 'X')) {
    radix = 16;
    i += 2;
  }
  if (i == t.size()) return false;
  unsigned long long magnitude = 0;
  for (; i < t.size(); ++i) {
    int digit = HexDigit(t[i]);
    if (digit < 0 || digit >= radix) return false;
    magnitude = magnitude * radix + static_cast<unsigned>(digit);
    if (magnitude > (1ull << 40)) return false;
  }
  value = negative ? -static_cast<long long>(magnitude) : static_cast<long long>(magnitude);
  return value >= low && value <= high;
}

void AppendBig(Bytes& out, unsigned long long value, int width) {
  for (int shift = 8 * (width - 1); shift >= 0; shift -= 8)
    out.push_back(static_cast<std::uint8_t>(value >> shift));
}

bool AppendPascal(Bytes& out, const std::string& text, std::string& error) {
  if (text.size() > 255) {
    error = "a Pascal string is longer than 255 bytes";
    return false;
  }
  out.push_back(static_cast<std::uint8_t>(text.size()));
  Append(out, text);
  return true;
}

bool ParseStanzaStart(const std::vector<Token>& tokens, Resource& r, std::string& error) {
  if (tokens.size() < 3 || tokens[1].kind != Token::kType || tokens[1].text.size() != 4) {
    error = "expected: resource '<four characters>' <id> [\"name\"] [attrs <number>]";
    return false;
  }
  r = Resource{};
  for (char c : tokens[1].text) r.type = r.type << 8 | static_cast<std::uint8_t>(c);
  long long number = 0;
  if (!ParseNumber(tokens[2], -32768, 32767, number)) {
    error = "the resource ID must be a number from -32768 to 32767";
    return false;
  }
  r.id = static_cast<std::int16_t>(number);
  std::size_t i = 3;
  if (i < tokens.size() && tokens[i].kind == Token::kString) {
    if (tokens[i].text.size() > 255) {
      error = "a resource name is longer than 255 bytes";
      return false;
    }
    r.named = true;
    r.name = tokens[i++].text;
  }
  if (i + 1 < tokens.size() && tokens[i].kind == Token::kWord && tokens[i].text == "attrs") {
    if (!ParseNumber(tokens[i + 1], 0, 255, number)) {
      error = "attrs takes a number from 0 to 255";
      return false;
    }
    r.attributes = static_cast<std::uint8_t>(number);
    i += 2;
  }
  if (i != tokens.size()) {
    error = "unexpected \"" + tokens[i].text + "\" after the resource ID";
    return false;
  }
  return true;
}

bool AllStrings(const std::vector<Token>& tokens, std::string& error) {
  for (std::size_t i = 1; i < tokens.size(); ++i) {
    if (tokens[i].kind != Token::kString) {
      error = tokens[0].text + " takes double-quoted strings";
      return false;
    }
  }
  return true;
}

bool ParseDataLine(const std::vector<Token>& tokens, Bytes& out, std::string& error) {
  const std::string& what = tokens[0].text;
  if (what == "hex") {
    std::string digits;
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      if (tokens[i].kind != Token::kWord) {
        error = "hex takes hexadecimal digits";
        return false;
      }
      digits += tokens[i].text;
    }
    for (std::size_t i = 0; i < digits.size(); i += 2) {
      int high = HexDigit(digits[i]);
      int low = i + 1 < digits.size() ? HexDigit(digits[i + 1]) : -1;
      if (high < 0 || low < 0) {
        error = "hex takes pairs of hexadecimal digits";
        return false;
      }
      out.push_back(static_cast<std::uint8_t>(high * 16 + low));
    }
    return true;
  }
  if (what == "words" || what == "longs") {
    const bool words = what == "words";
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      long long value = 0;
      if (!ParseNumber(tokens[i], words ? -32768 : -2147483648LL, words ? 65535 : 4294967295LL,
                       value)) {
        error = what + ": \"" + tokens[i].text + "\" is not a number in range";
        return false;
      }
      AppendBig(out, static_cast<unsigned long long>(value), words ? 2 : 4);
    }
    return true;
  }
  if (what == "text" || what == "cstring" || what == "pstring") {
    if (!AllStrings(tokens, error)) return false;
    for (std::size_t i = 1; i < tokens.size(); ++i) {
      const std::string& s = tokens[i].text;
      if (what == "pstring") {
        if (!AppendPascal(out, s, error)) return false;
        continue;
      }
      Append(out, s);
      if (what == "cstring") out.push_back(0);
    }
    return true;
  }
  if (what == "strings") {
    if (!AllStrings(tokens, error)) return false;
    AppendBig(out, tokens.size() - 1, 2);
    for (std::size_t i = 1; i < tokens.size(); ++i)
      if (!AppendPascal(out, tokens[i].text, error)) return false;
    return true;
  }
  error = "unknown line \"" + what + "\" (hex, text, cstring, pstring, words, longs, strings)";
  return false;
}

}  // namespace

bool ParseResourceDescription(const std::string& text, std::vector<Resource>& resources,
                              std::string& error) {
  resources.clear();
  std::istringstream lines(text);
  std::string line;
  for (int number = 1; std::getline(lines, line); ++number) {
    std::vector<Token> tokens;
    std::string why;
    bool ok = Tokenize(line, tokens, why);
    if (ok && !tokens.empty()) {
      if (tokens[0].kind != Token::kWord) {
        why = "a line must start with a word";
        ok = false;
      } else if (tokens[0].text == "resource") {
        resources.emplace_back();
        ok = ParseStanzaStart(tokens, resources.back(), why);
      } else if (resources.empty()) {
        why = "data before the first \"resource\" line";
        ok = false;
      } else {
        ok = ParseDataLine(tokens, resources.back().data, why);
      }
    }
    if (!ok) {
      error = "line " + std::to_string(number) + ": " + why;
      resources.clear();
      return false;
    }
  }
  return true;
}

}  // namespace resource_builder
