#include "runtime/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>

#include "runtime/Failures.h"

namespace velmaro {
namespace {

// What a pattern asks for: the part in front of the digits, how many digits, and the part behind them.
struct Pattern {
  std::string_view before;
  std::string_view after;
  int integerDigits = 0;
  int decimals = 0;
  bool grouped = false;
  bool percent = false;
};

Pattern Read(std::string_view pattern) {
  constexpr std::string_view digits = "#0.,";
  Pattern read;
  const auto first = std::min(pattern.find_first_of(digits), pattern.size());
  const auto end = std::min(pattern.find_first_not_of(digits, first), pattern.size());
  read.before = pattern.substr(0, first);
  read.after = pattern.substr(end);
  read.percent = read.after.find('%') != std::string_view::npos;
  const auto number = pattern.substr(first, end - first);
  const auto point = std::min(number.find('.'), number.size());
  const auto integer = number.substr(0, point);
  read.integerDigits = static_cast<int>(std::ranges::count(integer, '0'));
  read.grouped = integer.find(',') != std::string_view::npos;
  if (point < number.size()) read.decimals = static_cast<int>(number.size() - point - 1);
  return read;
}

std::string Digits(double value, int decimals) {
  std::string text(400, '\0');
  text.resize(static_cast<std::size_t>(std::snprintf(text.data(), text.size(), "%.*f", decimals, value)));
  return text;
}

// Halves go away from zero, as they do on paper: 17 digits tell apart all that a double can hold, and binary rounding
// of a half that is not exact must not pull it down.
std::string Rounded(double value, int decimals) {
  double scale = 1;
  for (int i = 0; i < decimals; ++i) scale *= 10;
  const auto scaled = value * scale;
  // Above this every double is a whole number and there is nothing to round.
  if (std::abs(scaled) >= 9007199254740992.0) return Digits(value, decimals);
  const auto below = static_cast<double>(static_cast<std::int64_t>(scaled));
  return Digits((scaled - below < 0.5 ? below : below + 1) / scale, decimals);
}

}  // namespace

std::string Format(double value, std::string_view pattern) {
  if (!std::isfinite(value)) throw RuntimeError("a number that is not finite has no digits");
  const auto read = Read(pattern);
  auto text = Rounded(std::abs(read.percent ? value * 100 : value), read.decimals);
  const bool negative = value < 0 && text.find_first_of("123456789") != std::string::npos;
  auto point = std::min(text.find('.'), text.size());
  while (static_cast<int>(point) < read.integerDigits) {
    text.insert(0, 1, '0');
    ++point;
  }
  if (read.integerDigits == 0 && point == 1 && text[0] == '0') text.erase(0, 1), --point;
  if (read.grouped)
    for (auto at = static_cast<std::ptrdiff_t>(point) - 3; at > 0; at -= 3)
      text.insert(static_cast<std::size_t>(at), 1, ',');
  return std::string(read.before) + (negative ? "-" : "") + text + std::string(read.after);
}

}  // namespace velmaro
