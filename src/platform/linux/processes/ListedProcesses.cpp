#include "platform/linux/processes/ListedProcesses.h"

#include <sched.h>
#include <sys/resource.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/linux/processes/Script.h"

namespace onlinux {
namespace {

// How many lists in a row may go by what is known. Which processes are read anew is spread over them.
constexpr std::uint32_t MostLists = 16;

struct Known {
  ProcessRecord process;
  std::uint64_t fileNumber = 0;  // of its folder; no later process has the same
};

// Between two lists, what is known is kept here.
struct Last {
  std::vector<Known> known;  // by the numbers of the processes
  std::uint32_t lists = 0;
};

Last& TheLast() {
  static Last last;
  return last;
}

// True where the path of the executable is all that tells what a process is called. The short name and the command line
// of others can change while that stays.
bool GoesByPath(const ProcessRecord& process) {
  return process.names.script.empty() && !MayRunScript(process.names.program, process.status.shortName);
}

// Brings the class up to date. False for a process that is gone.
bool ReadClass(ProcessRecord& process) {
  errno = 0;
  process.status.nice = ::getpriority(PRIO_PROCESS, process.id);
  process.status.policy = ::sched_getscheduler(static_cast<pid_t>(process.id)) & ~SCHED_RESET_ON_FORK;
  return errno == 0;
}

bool BringUpToDate(Known& known, const ProcessPlace& place) {
  if (known.fileNumber != place.fileNumber) return false;
  if (known.process.status.IsKernelThread()) return true;
  // A process that has ended has no executable any more.
  return GoesByPath(known.process) && known.process.names.program == ReadProgram(place.folder, place.path) &&
         ReadClass(known.process);
}

}  // namespace

std::optional<std::vector<ProcessRecord>> ReadListedProcesses() {
  auto& last = TheLast();
  ++last.lists;
  std::vector<Known> known;
  std::vector<ProcessRecord> processes;
  known.reserve(last.known.size());
  processes.reserve(last.known.size());
  const bool read = ForEachPlace([&](const ProcessPlace& place) {
    const auto at = std::ranges::lower_bound(last.known, place.id, {}, [](const Known& one) { return one.process.id; });
    const bool there = at != last.known.end() && at->process.id == place.id;
    const bool serves = there && (place.id + last.lists) % MostLists != 0 && BringUpToDate(*at, place);
    auto process = serves ? std::optional(std::move(at->process)) : ReadProcess(place);
    if (!process) return;
    if (!process->status.IsKernelThread()) processes.push_back(*process);
    known.push_back({std::move(*process), place.fileNumber});
  });
  last.known = std::move(known);
  return read ? std::optional(std::move(processes)) : std::nullopt;
}

}  // namespace onlinux
