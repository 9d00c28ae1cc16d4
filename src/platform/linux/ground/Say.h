#pragma once

#include <string>

namespace onlinux {

// Writes one line to the error output, which may be closed.
void Say(const std::string& line);

}  // namespace onlinux
