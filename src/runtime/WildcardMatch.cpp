#include <optional>
#include <string_view>

#include "platform/machine.h"
#include "runtime/Failures.h"
#include "runtime/Text.h"

namespace velmaro {
namespace {

enum class Kind { End, Run, Any, Digit, Letter, List };

// One piece of a pattern: for a list, what stands between its brackets.
struct Piece {
  Kind kind = Kind::End;
  char32_t letter = 0;
  std::string_view list = {};
};

char32_t TakeLongCharacter(std::string_view text, std::size_t& at) {
  const auto length = platform::CharacterLength(text.substr(at));
  char32_t number = 0;
  for (std::size_t i = 0; i < length && at < text.size(); ++i)
    number = number << 8 | static_cast<unsigned char>(text[at++]);
  return number;
}

// A number for the character at `at`, which is moved behind it. All its bytes count, so that bytes which are no text
// still have numbers of their own, and so that ranges hold for every script.
inline char32_t TakeCharacter(std::string_view text, std::size_t& at) {
  const auto byte = static_cast<unsigned char>(text[at]);
  if (byte >= 0x80) return TakeLongCharacter(text, at);
  ++at;
  return byte;
}

// The piece at `at`, which is moved behind it.
Piece TakePiece(std::string_view pattern, std::size_t& at) {
  switch (pattern[at]) {
    case '*':
      ++at;
      return {.kind = Kind::Run};
    case '?':
      ++at;
      return {.kind = Kind::Any};
    case '#':
      ++at;
      return {.kind = Kind::Digit};
    case '[': {
      const auto end = pattern.find(']', at);
      if (end == std::string_view::npos) throw RuntimeError("a list of characters is not closed");
      const auto list = pattern.substr(at + 1, end - at - 1);
      at = end + 1;
      return {.kind = Kind::List, .list = list};
    }
    default:
      return {.kind = Kind::Letter, .letter = TakeCharacter(pattern, at)};
  }
}

// A range of characters inside a list; one character alone is a range of one.
struct Range {
  char32_t first;
  char32_t last;
};

Range TakeRange(std::string_view list, std::size_t& at) {
  const auto first = TakeCharacter(list, at);
  // A dash makes a range only between two characters.
  if (at + 1 >= list.size() || list[at] != '-') return {first, first};
  ++at;
  return {first, TakeCharacter(list, at)};
}

bool IsNegated(std::string_view list) { return list.size() > 1 && list[0] == '!'; }

bool InList(std::string_view list, char32_t letter) {
  const bool negated = IsNegated(list);
  for (std::size_t at = negated ? 1 : 0; at < list.size();) {
    const auto range = TakeRange(list, at);
    if (letter >= range.first && letter <= range.last) return !negated;
  }
  return negated;
}

// Throws for a list that is not closed or holds a descending range.
void Check(std::string_view pattern) {
  for (auto at = pattern.find('['); at < pattern.size(); at = pattern.find('[', at)) {
    const auto list = TakePiece(pattern, at).list;
    for (std::size_t inside = IsNegated(list) ? 1 : 0; inside < list.size();)
      if (const auto range = TakeRange(list, inside); range.last < range.first)
        throw RuntimeError("a range of characters descends");
  }
}

bool Fits(const Piece& piece, char32_t letter) {
  switch (piece.kind) {
    case Kind::Any:
      return true;
    case Kind::Digit:
      return letter >= '0' && letter <= '9';
    case Kind::List:
      return InList(piece.list, letter);
    case Kind::Letter:
      return letter == piece.letter;
    case Kind::Run:
    case Kind::End:
      break;
  }
  return false;
}

// A place in a pattern: the piece that stands there, and where the next one begins.
struct Place {
  Piece piece;
  std::size_t behind;
};

// The place at `at`. Empty lists are passed over, since they stand for nothing at all.
Place PlaceAt(std::string_view pattern, std::size_t at) {
  while (pattern.substr(at).starts_with("[]")) at += 2;
  const auto piece = at < pattern.size() ? TakePiece(pattern, at) : Piece{};
  return {piece, at};
}

}  // namespace

bool WildcardMatch(std::string_view text, std::string_view pattern) {
  Check(pattern);
  auto place = PlaceAt(pattern, 0);
  // Only the last run ever needs another try: what stood before it fits already with the shortest possible runs.
  std::optional<Place> behindRun;
  std::size_t at = 0;
  std::size_t runText = 0;
  while (at < text.size()) {
    if (place.piece.kind == Kind::Run) {
      behindRun = place = PlaceAt(pattern, place.behind);
      runText = at;
      continue;
    }
    auto textBehind = at;
    if (Fits(place.piece, TakeCharacter(text, textBehind))) {
      place = PlaceAt(pattern, place.behind);
      at = textBehind;
    } else if (behindRun) {
      TakeCharacter(text, runText);
      at = runText;
      place = *behindRun;
    } else {
      return false;
    }
  }
  while (place.piece.kind == Kind::Run) place = PlaceAt(pattern, place.behind);
  return place.piece.kind == Kind::End;
}

}  // namespace velmaro
