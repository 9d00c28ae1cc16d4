#pragma once

#include <charconv>
#include <string_view>
#include <system_error>

namespace onlinux {

// Reads a number that is all of a text. False, and a number of any value, where it is not.
template <class Number>
bool ReadNumber(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace onlinux
