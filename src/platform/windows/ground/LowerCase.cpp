#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

// The bytes stay as they are where the code page does not hold the small letter.
void AppendLower(std::string& lower, const Character& character, std::string_view bytes) {
  wchar_t small[4];
  const int count = character.isText ? ::LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, character.units,
                                                       character.unitCount, small, 4, nullptr, nullptr, 0)
                                     : 0;
  if (count < 1 || !AppendNarrow(lower, {small, static_cast<std::size_t>(count)})) lower += bytes;
}

}  // namespace

std::string LowerCase(std::string_view text) {
  std::string lower;
  lower.reserve(text.size());
  while (!text.empty()) {
    const char first = text[0];
    if (static_cast<unsigned char>(first) < 0x80) {
      lower += first >= 'A' && first <= 'Z' ? static_cast<char>(first + ('a' - 'A')) : first;
      text.remove_prefix(1);
      continue;
    }
    const auto character = FirstCharacter(text);
    AppendLower(lower, character, text.substr(0, character.bytes));
    text.remove_prefix(character.bytes);
  }
  return lower;
}

std::size_t CharacterLength(std::string_view text) { return text.empty() ? 1 : FirstCharacter(text).bytes; }

}  // namespace platform
