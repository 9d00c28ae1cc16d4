#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace onlinux {

// What the program wants to know of a process, all of it from its one status line.
struct ProcessStatus {
  char state = '?';
  std::uint32_t parent = 0;
  bool hasTerminal = false;
  std::uint64_t flags = 0;
  int nice = 0;
  std::uint32_t threads = 0;
  std::uint64_t startTime = 0;  // in clock ticks since the machine's start; tells two processes of one number apart
  int policy = 0;
  std::string shortName;  // the name that the kernel keeps, at most 15 bytes of any kind

  // True for a process that has ended and only waits to be forgotten.
  bool Ended() const { return state == 'Z' || state == 'X' || state == 'x'; }
  // True for a thread of the kernel's own: nobody can end it, or gain by its class.
  bool IsKernelThread() const { return (flags & 0x00200000) != 0; }
};

// Takes a status line apart. Nothing for a line that is no status line. The name in it may hold blanks, brackets and
// line ends.
std::optional<ProcessStatus> ParseStatus(std::string_view line);
// Reads the status of a process; nothing when it is gone.
std::optional<ProcessStatus> ReadStatus(std::uint32_t processId);

}  // namespace onlinux
