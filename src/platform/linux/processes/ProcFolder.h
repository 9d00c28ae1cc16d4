#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/processes/ProcessNames.h"

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

struct ProcessRecord {
  std::uint32_t id = 0;
  ProcessStatus status;
  ProcessNames names;
};

// Where a process has its own folder in the process folder.
struct ProcessPlace {
  int folder = -1;               // the process folder, open
  std::uint32_t id = 0;          // of the process
  std::string path;              // of its own folder in there
  std::uint64_t fileNumber = 0;  // that its own folder has
};

// Reads a file under an open folder in one call, as far as `room` goes; empty when it can't be read.
std::string ReadSmall(int folder, const std::string& path, std::size_t room);
// Takes a status line apart. Nothing for a line that is no status line. The name in it may hold blanks, brackets and
// line ends.
std::optional<ProcessStatus> ParseStatus(std::string_view line);
// Reads the status of a process; nothing when it is gone.
std::optional<ProcessStatus> ReadStatus(std::uint32_t processId);
// Visits all processes in the order of their numbers, also those that have ended and the kernel's own threads. False
// when they can't be had.
bool ForEachPlace(const std::function<void(const ProcessPlace&)>& visit);
// Reads what is known of a process; nothing when it is gone or has ended. One of the kernel's own threads has no names.
std::optional<ProcessRecord> ReadProcess(const ProcessPlace& place);
// All running processes in the order of their numbers, without the kernel's own threads. Nothing when they can't be
// had; a process that goes away meanwhile is left out.
std::optional<std::vector<ProcessRecord>> ReadProcesses();
// Who is whose parent among processes that were read.
class Parents {
 public:
  explicit Parents(const std::vector<ProcessRecord>& processes);
  // True where one process descends from another, or is that one.
  bool Descends(std::uint32_t from, std::uint32_t to) const;

 private:
  std::map<std::uint32_t, std::uint32_t> parents_;
};
// The numbers of the threads of a process, empty when it is gone.
std::vector<std::uint32_t> ReadThreads(std::uint32_t processId);

}  // namespace onlinux
