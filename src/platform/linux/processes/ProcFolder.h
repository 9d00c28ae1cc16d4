#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/processes/ProcessNames.h"
#include "platform/linux/processes/ProcessStatus.h"

namespace onlinux {

struct ProcessRecord {
  std::uint32_t id = 0;
  ProcessStatus status;
  ProcessNames names;
};

// The short name of the processes of this program that do something aside, such as to give a group's nice value back.
// They are in no list, so that nothing of the program's own ends them.
inline constexpr const char* AsideName = "velmaro-aside";

// Where a process has its own folder in the process folder.
struct ProcessPlace {
  int folder = -1;               // the process folder, open
  std::uint32_t id = 0;          // of the process
  std::string path;              // of its own folder in there
  std::uint64_t fileNumber = 0;  // that its own folder has
};

// Visits all processes in the order of their numbers, also those that have ended and the kernel's own threads. False
// when they can't be had.
bool ForEachPlace(const std::function<void(const ProcessPlace&)>& visit);
// Reads what is known of a process; nothing when it is gone or has ended, and for one of this program's aside. One of
// the kernel's own threads has no names.
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
