#include "runtime/Text.h"

#include <algorithm>
#include <vector>

#include "platform/machine.h"
#include "runtime/Failures.h"

namespace velmaro {
namespace {

bool IsAscii(std::string_view text) {
  return std::ranges::all_of(text, [](unsigned char c) { return c < 0x80; });
}

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

// A text in lower case and, for each of its bytes, where the character came from: lower case can take more bytes or
// fewer than capitals do.
struct FoldedText {
  std::string text;
  std::vector<std::size_t> origin;
};

FoldedText Fold(std::string_view text) {
  FoldedText folded;
  for (std::size_t at = 0; at < text.size();) {
    const auto length = std::min(platform::CharacterLength(text.substr(at)), text.size() - at);
    folded.text += platform::LowerCase(text.substr(at, length));
    folded.origin.resize(folded.text.size(), at);
    at += length;
  }
  return folded;
}

std::size_t FindIgnoringCase(std::size_t from, std::string_view text, std::string_view what) {
  if (IsAscii(what)) {
    const auto hit = std::search(text.begin() + static_cast<std::ptrdiff_t>(from), text.end(), what.begin(), what.end(),
                                 [](char a, char b) { return LowerAscii(a) == LowerAscii(b); });
    return hit == text.end() && !what.empty() ? std::string_view::npos : static_cast<std::size_t>(hit - text.begin());
  }
  const auto folded = Fold(text.substr(from));
  const auto hit = folded.text.find(platform::LowerCase(what));
  return hit == std::string::npos ? hit : from + folded.origin[hit];
}

}  // namespace

std::size_t FindInText(std::size_t start, std::string_view text, std::string_view what, Compare compare) {
  if (start < 1 || start > text.size()) return 0;
  const auto from = start - 1;
  const auto hit = compare == Compare::Exact ? text.find(what, from) : FindIgnoringCase(from, text, what);
  return hit == std::string_view::npos ? 0 : hit + 1;
}

std::int16_t InStr(std::size_t start, std::string_view text, std::string_view what, Compare compare) {
  const auto position = FindInText(start, text, what, compare);
  return position > 32767 ? std::int16_t{0} : static_cast<std::int16_t>(position);
}

std::string_view Mid(std::string_view text, std::size_t start, std::size_t length) {
  return start > text.size() ? std::string_view{} : text.substr(start - 1, length);
}

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

std::string_view DropQuotes(std::string_view text) {
  if (text.starts_with('"')) text.remove_prefix(1);
  if (text.ends_with('"')) text.remove_suffix(1);
  return text;
}

std::string LCase(std::string_view text) { return platform::LowerCase(text); }

bool EqualIgnoringCase(std::string_view a, std::string_view b) { return LCase(a) == LCase(b); }

}  // namespace velmaro
