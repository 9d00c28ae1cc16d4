#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "NaiveMatch.h"

// The first byte tells where the text ends and the pattern begins, and whether both are made of few letters, so that
// they often fit.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  constexpr std::string_view letters = "ab-[]!*?#19\xC3\xA4\xFF";
  std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  if (data[0] % 2 == 1)
    for (char& byte : bytes) byte = letters[static_cast<unsigned char>(byte) % letters.size()];
  const auto pattern = bytes.substr(data[0] / 2 % size);
  const auto text = bytes.substr(0, bytes.size() - pattern.size());
  if (naive::Tested(text, pattern) != naive::Match(text, pattern)) std::abort();
  return 0;
}
