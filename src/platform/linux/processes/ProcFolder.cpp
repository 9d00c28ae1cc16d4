#include "platform/linux/processes/ProcFolder.h"

#include <dirent.h>

#include <memory>

#include "platform/linux/ground/ReadNumber.h"
#include "platform/linux/ground/ReadWhole.h"

namespace onlinux {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

template <class Visit>
void ForEachNumber(DIR* folder, Visit visit) {
  while (const auto* entry = ::readdir(folder)) {
    std::uint32_t number = 0;
    if (ReadNumber(std::string_view(entry->d_name), number)) visit(number, *entry);
  }
}

// Any process can give itself that name, but not this program.
bool IsAside(const ProcessPlace& place, const ProcessStatus& status) {
  return status.shortName == AsideName && ReadProgram(place.folder, place.path) == ReadProgram(place.folder, "self");
}

}  // namespace

bool ForEachPlace(const std::function<void(const ProcessPlace&)>& visit) {
  const Folder proc(::opendir("/proc"));
  if (!proc) return false;
  std::vector<ProcessPlace> places;
  ForEachNumber(proc.get(), [&](std::uint32_t id, const dirent& entry) {
    places.push_back({::dirfd(proc.get()), id, entry.d_name, entry.d_ino});
  });
  for (const auto& place : places) visit(place);
  return true;
}

std::optional<ProcessRecord> ReadProcess(const ProcessPlace& place) {
  auto status = ParseStatus(ReadSmall(place.folder, place.path + "/stat", 1024));
  if (!status || status->Ended() || IsAside(place, *status)) return std::nullopt;
  ProcessRecord process{.id = place.id, .status = std::move(*status), .names = {}};
  if (!process.status.IsKernelThread()) process.names = ReadNames(place.folder, place.path, process.status.shortName);
  return process;
}

std::optional<std::vector<ProcessRecord>> ReadProcesses() {
  std::vector<ProcessRecord> processes;
  const bool read = ForEachPlace([&](const ProcessPlace& place) {
    auto process = ReadProcess(place);
    if (process && !process->status.IsKernelThread()) processes.push_back(std::move(*process));
  });
  return read ? std::optional(std::move(processes)) : std::nullopt;
}

Parents::Parents(const std::vector<ProcessRecord>& processes) {
  for (const auto& process : processes) parents_[process.id] = process.status.parent;
}

// Numbers change hands while they are read, so the way up could run in a circle.
bool Parents::Descends(std::uint32_t from, std::uint32_t to) const {
  for (std::size_t steps = parents_.size(); from != to && steps > 0; --steps) {
    const auto at = parents_.find(from);
    if (at == parents_.end()) return false;
    from = at->second;
  }
  return from == to;
}

std::vector<std::uint32_t> ReadThreads(std::uint32_t processId) {
  const Folder tasks(::opendir(("/proc/" + std::to_string(processId) + "/task").c_str()));
  std::vector<std::uint32_t> threads;
  if (tasks) ForEachNumber(tasks.get(), [&](std::uint32_t id, const dirent&) { threads.push_back(id); });
  return threads;
}

}  // namespace onlinux
