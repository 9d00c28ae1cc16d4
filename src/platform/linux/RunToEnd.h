#pragma once

#include <string>
#include <vector>

namespace onlinux {

// Runs a program, whose path is the first word, to its end and gives its exit code; -1 where it did not run or was
// ended by a signal. The program's windows are drawn meanwhile, but hear nothing.
int RunToEnd(const std::vector<std::string>& words);

}  // namespace onlinux
