#pragma once

#include <string>

namespace onlinux {

// Loads a library of the program's own, for good, and gives the function in it that bears a name. Null where there is
// none; `error` then says why.
void* LoadEntry(const std::string& library, const char* name, std::string& error);

}  // namespace onlinux
