#pragma once

#include <string>

namespace onlinux {

// The folder of the running executable.
std::string ProgramFolder();
// The path of the widget toolkit's library: where it was installed to, else beside the executable. Empty where it is
// in neither place.
std::string ToolkitPath();

}  // namespace onlinux
