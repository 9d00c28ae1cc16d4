#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "NaiveMatch.h"
#include "runtime/Failures.h"
#include "runtime/Text.h"

namespace {

std::optional<bool> Match(std::string_view text, std::string_view pattern) {
  try {
    return velmaro::WildcardMatch(text, pattern);
  } catch (const velmaro::RuntimeError&) {
    return std::nullopt;
  }
}

}  // namespace

// The first byte tells how long the text is; the pattern is the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
  const auto text = bytes.substr(0, data[0]);
  const auto pattern = bytes.substr(text.size());
  if (Match(text, pattern) != naive::Match(text, pattern)) std::abort();
  return 0;
}
