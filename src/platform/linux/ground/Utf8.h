#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace onlinux {

// A character of a text and the bytes that it takes.
struct Character {
  char32_t code = 0;
  std::size_t length = 1;
  bool valid = false;  // a byte that is no text is a character of its own, with the byte as its code
};

// The first character of a text that is not empty.
Character FirstCharacter(std::string_view text);
// Appends a character, as UTF-8.
void AppendCharacter(std::string& text, char32_t code);

}  // namespace onlinux
