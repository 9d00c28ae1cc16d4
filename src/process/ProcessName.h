#pragma once

#include <optional>
#include <string>

namespace velmaro {

// The process that a command is expected to make: what stands up to its first ".exe", else the quoted text in front of
// a space, else the text before the first space behind its first character, both followed by ".exe". A command whose
// one space is its first character stands for itself. Nothing for a command with none of these; a folder stays in front
// of the name, and an opening quote may.
std::optional<std::string> ProcessOfCommand(const std::string& command);

}  // namespace velmaro
