#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace onlinux {

// What a process is known by: the whole path of its executable where that can be read, else its base name, and the path
// of the script that the executable runs, empty where it runs none. A program for Windows has its own name, not its
// loader's.
struct ProcessNames {
  std::string program;
  std::string script;

  // Both, as a command line has them.
  std::string Shown() const { return script.empty() ? program : program + ' ' + script; }
};

// The path of the executable of a process, told by the open process folder and its place in that; empty where it can't
// be read, and for a process that has ended.
std::string ReadProgram(int folder, const std::string& id);
// The names of a process, told by the open process folder, its place in that and the short name that the kernel keeps.
ProcessNames ReadNames(int folder, const std::string& id, const std::string& shortName);
// Every name that a process may go by, whether the system gave it or the process itself, and every word of its command
// line: no list of interpreters and of their options could tell in full which of those is what it runs.
std::vector<std::string> ReadAllNames(std::uint32_t processId);

}  // namespace onlinux
