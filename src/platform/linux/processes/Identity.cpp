#include "platform/identity.h"

#include <climits>
#include <cstdlib>
#include <utility>

#include "platform/linux/processes/Handles.h"
#include "platform/linux/processes/ListedProcesses.h"
#include "platform/linux/processes/ProcessNames.h"
#include "platform/linux/processes/UnitClass.h"

namespace platform {
namespace {

const onlinux::ProcessRecord* LastDelivered(Handle handle) {
  const auto* snapshot = onlinux::FindAs<onlinux::Snapshot>(handle);
  return snapshot && snapshot->next > 0 ? &snapshot->processes[snapshot->next - 1] : nullptr;
}

}  // namespace

Handle CreateListSnapshot() {
  auto processes = onlinux::ReadListedProcesses();
  if (processes) onlinux::TakeUnitsIntoAccount(*processes);
  return processes ? onlinux::Keep(onlinux::Snapshot{.processes = std::move(*processes)}) : InvalidHandle;
}

bool CommandsMeanTheRow() { return true; }

std::uint64_t ProcessIdentity(Handle snapshot) {
  constexpr int bitsOfNumbers = 22;  // the kernel gives none that is longer
  const auto* process = LastDelivered(snapshot);
  return process ? process->status.startTime << bitsOfNumbers | process->id : 0;
}

bool NamesAreWholeParts() { return true; }

std::vector<std::string> MoreNames(Handle snapshot) {
  const auto* process = LastDelivered(snapshot);
  if (!process) return {};
  if (process->names.script.empty()) return {process->names.program};
  return {process->names.program, process->names.script};
}

std::vector<std::string> NamesOf(Handle handle) {
  const auto* process = onlinux::FindAs<onlinux::OpenedProcess>(handle);
  return process ? onlinux::ReadAllNames(process->id) : std::vector<std::string>();
}

std::string ResolvedPath(const std::string& path) {
  char resolved[PATH_MAX];
  return ::realpath(path.c_str(), resolved) ? resolved : path;
}

}  // namespace platform
