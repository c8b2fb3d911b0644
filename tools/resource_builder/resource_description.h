// A small text form of a resource file, compiled by make_resource_file.
//
//   # A comment runs from '#' (outside quotes) to the end of the line.
//   resource 'STR ' 128 "Greeting" attrs 0x20
//     pstring "Hello"          Pascal string: length byte, then the bytes
//
//   resource 'STR#' 129
//     strings "One" "Two"      'STR#' list: a count word, then Pascal strings
//
// A stanza starts with
//   resource '<type>' <id> ["<name>"] [attrs <number>]
// (the type is exactly four characters between single quotes; the name and
// the attribute byte are optional) and every following line until the next
// "resource" adds to its data, in order, in Macintosh byte order:
//   hex 0A 0b ff ...        bytes as hexadecimal pairs (blanks between pairs optional)
//   text "..."              the bytes of the string, nothing added
//   cstring "..."           the bytes and a terminating 0
//   pstring "..."           a length byte and the bytes (at most 255)
//   words <n> ...           16-bit big-endian numbers (-32768 to 65535)
//   longs <n> ...           32-bit big-endian numbers (-2147483648 to 4294967295)
//   strings "..." ...       a 16-bit count and that many Pascal strings
// Numbers are decimal or 0x hexadecimal, optionally negative. Strings and
// types take the escapes \" \\ \' \n (line feed), \r (carriage return), \t
// and \xHH. A stanza without data lines makes a resource of zero bytes.
#pragma once
#include <string>
#include <vector>

#include "resource_builder/resource_image.h"

namespace resource_builder {

// False, with "line N: what is wrong" in error, on the first mistake.
bool ParseResourceDescription(const std::string& text, std::vector<Resource>& resources,
                              std::string& error);

}  // namespace resource_builder
