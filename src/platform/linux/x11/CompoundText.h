#pragma once

#include <string>

namespace onlinux {

// The text of a title that is written in the X library's mixture of character sets, as UTF-8; what stands behind its
// first NUL is left out. Empty where it can't be read.
std::string FromCompoundText(const std::string& bytes);

}  // namespace onlinux
