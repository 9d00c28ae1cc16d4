#pragma once

#include <chrono>
#include <string>
#include <vector>

namespace onlinux {

// Runs a program, whose path is the first word, to its end and gives its exit code; -1 where it did not run or was
// ended by a signal. The program's windows are drawn meanwhile, but hear nothing.
int RunToEnd(const std::vector<std::string>& words);
// The same, without windows: what the program says goes nowhere, and it is ended when it takes longer than the limit.
int RunSilently(const std::vector<std::string>& words, std::chrono::milliseconds limit);

}  // namespace onlinux
