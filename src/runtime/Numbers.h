#pragma once

#include <string>
#include <string_view>

namespace velmaro {

// Writes a number by a pattern: "#" a digit only if needed, "0" a digit always, "." the decimal point, "," between
// digits grouping by thousands, "%" multiplies by 100 and shows the sign, anything else as it stands. Rounds halves
// away from zero to the digits shown. Throws RuntimeError for a number that is not finite.
std::string Format(double value, std::string_view pattern);

}  // namespace velmaro
