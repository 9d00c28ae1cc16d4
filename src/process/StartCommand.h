#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/start.h"

namespace velmaro {

// Starts a command with a show command (0 hidden, 1 normal, 2 minimized, 3 maximized), in the folder "C:\": a program
// or document through the shell, and as a command line what the shell does not find. A failure is not reported.
void StartCommand(const std::string& command, int showCommand);

// Starts a command line in the program's own folder, with the focus. A failure is not reported.
void StartCommandLine(const std::string& commandLine);

// The program of a command line, and what stands behind it. It is found as the system finds it: in quotes, or up to the
// first blank behind which a program ends.
struct CommandParts {
  std::string program;
  std::string parameters;
};
CommandParts PartsOf(const std::string& commandLine);

// Starts a program with the priority class of a mode (0 Normal, 1 High, 2 Real Time, 3 Idle), and tells in a box,
// unless `quiet`, which class it has then. Nothing where the platform starts no program with a class; nothing is
// started then.
std::optional<platform::Started> StartAtMode(platform::Start start, std::int16_t mode, bool quiet);

// Tells in a box of a start that was refused every class above the usual one, and what would help.
void TellIfNotRaised(const platform::Started& started, std::int16_t mode);

}  // namespace velmaro
