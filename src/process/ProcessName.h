#pragma once

#include <optional>
#include <string>

namespace velmaro {

// The process that a command is expected to make: what stands up to its first ".exe", else the quoted text in front of
// a space, else the text before the first space behind its first character, both followed by the ending that programs
// have on this platform. A command whose one space is its first character stands for itself. Nothing for a command
// with none of these; a folder stays in front of the name, and an opening quote may. Where programs have no ending, a
// command that is one quoted text or the name of a file is the program.
std::optional<std::string> ProcessOfCommand(const std::string& command);

}  // namespace velmaro
