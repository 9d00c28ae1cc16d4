#include "runtime/Numbers.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>

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
  // A double has no more than 15 decimals to show.
  if (point < number.size()) read.decimals = static_cast<int>(std::min<std::size_t>(number.size() - point - 1, 15));
  return read;
}

// From here on every double is a whole number, and an even one.
constexpr double AllWhole = 9007199254740992.0;

std::uint64_t WholePart(double value) { return static_cast<std::uint64_t>(value); }

// The digits of the nearest whole number. Halves go away from zero, as they do on paper.
std::string Digits(double value) {
  if (value < AllWhole)
    return std::to_string(WholePart(value) + (value - static_cast<double>(WholePart(value)) < 0.5 ? 0 : 1));
  auto digits = Digits(value / 2);
  int carry = 0;
  for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit) {
    const int twice = (*digit - '0') * 2 + carry;
    *digit = static_cast<char>('0' + twice % 10);
    carry = twice / 10;
  }
  return carry ? "1" + digits : digits;
}

std::string Rounded(double value, int decimals) {
  if (decimals == 0) return Digits(value);
  double scale = 1;
  for (int i = 0; i < decimals; ++i) scale *= 10;
  // Binary rounding of a half that is not exact must not pull it down, so the product is rounded, not the number. Where
  // the product would lose digits, the decimals are taken by themselves.
  const bool together = value * scale < AllWhole;
  const auto whole = value < AllWhole ? static_cast<double>(WholePart(value)) : value;
  auto text = together ? "" : Digits(whole);
  const auto rest = Digits(together ? value * scale : std::min((value - whole) * scale, scale - 1));
  const auto wanted = static_cast<std::size_t>(decimals) + (together ? 1 : 0);
  if (rest.size() < wanted) text.append(wanted - rest.size(), '0');
  text += rest;
  return text.insert(text.size() - static_cast<std::size_t>(decimals), 1, '.');
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
