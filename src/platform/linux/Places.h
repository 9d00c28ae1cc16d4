#pragma once

#include <string>

namespace onlinux {

// The folder of the running executable.
std::string ProgramFolder();
// The path of a library of the program's own: where it was installed to, else beside the executable. Empty where it is
// in neither place.
std::string LibraryPath(const std::string& name);

}  // namespace onlinux
