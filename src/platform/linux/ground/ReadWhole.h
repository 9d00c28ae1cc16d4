#pragma once

#include <string>

namespace onlinux {

// All bytes of a file, empty when it can't be read.
std::string ReadWhole(const std::string& path);

}  // namespace onlinux
