#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/machine.h"
#include "runtime/Failures.h"
#include "runtime/Text.h"

namespace naive {

using Characters = std::vector<std::string_view>;

inline Characters Split(std::string_view text) {
  Characters characters;
  for (std::size_t at = 0; at < text.size(); at += characters.back().size())
    characters.push_back(text.substr(at, platform::CharacterLength(text.substr(at))));
  return characters;
}

// Characters of few bytes stand before those of many.
inline bool NotAfter(std::string_view a, std::string_view b) {
  return a.size() != b.size() ? a.size() < b.size() : a <= b;
}

// Whether the list between `from` and `to` holds a character; nothing where a range of it descends.
inline std::optional<bool> Holds(const Characters& pattern, std::size_t from, std::size_t to, std::string_view wanted) {
  const bool negated = to - from > 1 && pattern[from] == "!";
  bool inside = false;
  for (auto i = negated ? from + 1 : from; i < to; ++i) {
    const auto first = pattern[i];
    if (i + 2 < to && pattern[i + 1] == "-") i += 2;
    if (!NotAfter(first, pattern[i])) return std::nullopt;
    inside = inside || (NotAfter(first, wanted) && NotAfter(wanted, pattern[i]));
  }
  return inside != negated;
}

// What WildcardMatch says; nothing where it fails.
inline std::optional<bool> Tested(std::string_view text, std::string_view pattern) {
  try {
    return velmaro::WildcardMatch(text, pattern);
  } catch (const velmaro::RuntimeError&) {
    return std::nullopt;
  }
}

// A second WildcardMatch that keeps, piece by piece, every place of the text that the pattern so far can reach. Nothing
// for an invalid pattern.
inline std::optional<bool> Match(std::string_view text, std::string_view pattern) {
  const auto letters = Split(text);
  const auto pieces = Split(pattern);
  std::vector<char> reached(letters.size() + 1);
  reached[0] = 1;
  for (std::size_t p = 0; p < pieces.size(); ++p) {
    auto end = p;
    if (pieces[p] == "[") {
      while (end < pieces.size() && pieces[end] != "]") ++end;
      if (end == pieces.size() || !Holds(pieces, p + 1, end, "")) return std::nullopt;
      if (end == p + 1) {
        p = end;
        continue;
      }
    }
    auto next = pieces[p] == "*" ? reached : std::vector<char>(reached.size());
    for (std::size_t i = 0; i < letters.size(); ++i) {
      const auto fits = pieces[p] == "*"   ? next[i] != 0
                        : pieces[p] == "?" ? true
                        : pieces[p] == "#" ? letters[i] >= "0" && letters[i] <= "9" && letters[i].size() == 1
                        : end > p          ? *Holds(pieces, p + 1, end, letters[i])
                                           : letters[i] == pieces[p];
      if (fits && (reached[i] || pieces[p] == "*")) next[i + 1] = 1;
    }
    reached = next;
    p = end;
  }
  return reached.back() != 0;
}

}  // namespace naive
