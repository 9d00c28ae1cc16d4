#pragma once

#include <string>

namespace velmaro {

// Starts a command with a show command (0 hidden, 1 normal, 2 minimized, 3 maximized), in the folder "C:\": a program
// or document through the shell, and as a command line what the shell does not find. A failure is not reported.
void StartCommand(const std::string& command, int showCommand);

}  // namespace velmaro
