#pragma once

#include <string>

namespace onlinux {

// The folder of the running executable.
std::string ProgramFolder();
// The folder that the program was installed under, such as "/usr/local"; empty for one that was only built.
std::string InstalledPrefix();
// The path of a library of the program's own: beside the executable, where that one's owner or an administrator put it,
// else where the installation put it. Empty where it is in neither place.
std::string LibraryPath(const std::string& name);

}  // namespace onlinux
