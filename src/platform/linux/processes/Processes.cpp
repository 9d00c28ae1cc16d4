#include <cstring>
#include <string>
#include <string_view>
#include <utility>

#include "platform/kernel32.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/processes/Family.h"
#include "platform/linux/processes/Handles.h"
#include "platform/linux/processes/NiceGroup.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/SetClass.h"
#include "platform/linux/processes/UnitClass.h"
#include "platform/machine.h"

namespace platform {
namespace {

using onlinux::Descriptor;
using onlinux::OpenedProcess;
using onlinux::ProcessRecord;
using onlinux::Snapshot;

// The end of a name, as far as an entry has room.
std::string_view InEntry(std::string_view name, std::size_t room) {
  while (name.size() > room) name.remove_prefix(CharacterLength(name));
  return name;
}

void Fill(PROCESSENTRY32& entry, const ProcessRecord& process) {
  entry.cntUsage = 0;
  entry.th32ProcessID = process.id;
  entry.th32DefaultHeapID = 0;
  entry.th32ModuleID = 0;
  entry.cntThreads = process.status.threads;
  entry.th32ParentProcessID = process.status.parent;
  entry.pcPriClassBase = onlinux::BasePriority(process.status.policy, process.status.nice);
  entry.dwFlags = 0;
  const auto shown = process.names.Shown();
  const auto name = InEntry(shown, sizeof entry.szExeFile - 1);
  std::memcpy(entry.szExeFile, name.data(), name.size());
  entry.szExeFile[name.size()] = '\0';
}

bool Deliver(Snapshot* snapshot, PROCESSENTRY32& entry) {
  if (!snapshot || entry.dwSize != sizeof entry || snapshot->next >= snapshot->processes.size()) return false;
  Fill(entry, snapshot->processes[snapshot->next++]);
  return true;
}

// True where the descriptor is that of the process that the program listed. The number may have gone to another
// process between listing and opening; read while the descriptor's process still lives, the status is its own.
bool IsTheListedOne(std::uint32_t processId, const Descriptor& process) {
  const auto* listed = onlinux::FindListed(processId);
  if (!listed) return true;
  const auto status = onlinux::ReadStatus(processId);
  return status && status->startTime == listed->status.startTime && !onlinux::HasEnded(process, 0);
}

}  // namespace

Handle CreateToolhelp32Snapshot(std::uint32_t flags) {
  if (!(flags & TH32CS_SNAPPROCESS)) return InvalidHandle;
  auto processes = onlinux::ReadProcesses();
  return processes ? onlinux::Keep(Snapshot{.processes = std::move(*processes)}) : InvalidHandle;
}

bool Process32First(Handle handle, PROCESSENTRY32& entry) {
  auto* snapshot = onlinux::FindAs<Snapshot>(handle);
  if (snapshot) snapshot->next = 0;
  return Deliver(snapshot, entry);
}

bool Process32Next(Handle handle, PROCESSENTRY32& entry) { return Deliver(onlinux::FindAs<Snapshot>(handle), entry); }

Handle OpenProcess(std::uint32_t, bool, std::uint32_t processId) {
  auto process = onlinux::HoldProcess(static_cast<pid_t>(processId));
  if (!process || !IsTheListedOne(processId, process)) return 0;
  return onlinux::Keep(OpenedProcess{.id = processId, .descriptor = std::move(process)});
}

bool SetPriorityClass(Handle handle, std::uint32_t priorityClass) {
  const auto* process = onlinux::FindAs<OpenedProcess>(handle);
  if (!process) return false;
  const auto hasEnded = [&] { return onlinux::HasEnded(process->descriptor, 0); };
  const auto followers = onlinux::FollowersOf(process->id, priorityClass);
  const bool taken = onlinux::SetProcessClass(process->id, priorityClass, hasEnded);
  const bool isReal = onlinux::SafeClass(priorityClass) == REALTIME_PRIORITY_CLASS;
  if (onlinux::SetUnitClass(process->id, priorityClass, !taken)) return taken || !isReal;
  if (!taken) return false;
  for (const auto& follower : followers) {
    const OwnedHandle held(OpenProcess(PROCESS_ALL_ACCESS, false, follower.id));
    const auto* other = onlinux::FindAs<OpenedProcess>(held.get());
    if (other)
      onlinux::SetProcessClass(other->id, priorityClass, [&] { return onlinux::HasEnded(other->descriptor, 0); });
  }
  // A group that can't be had leaves the threads their class, as any other program would give it to them.
  if (const auto nice = onlinux::NiceOfClass(onlinux::SafeClass(priorityClass)))
    if (const auto group = onlinux::GroupOfItsOwn(process->id))
      onlinux::SetGroupNice(onlinux::OpenGroup(*group), *nice);
  return true;
}

bool TerminateProcess(Handle handle, std::uint32_t) {
  const auto* process = onlinux::FindAs<OpenedProcess>(handle);
  return process && onlinux::EndProcess(static_cast<pid_t>(process->id), process->descriptor);
}

bool WaitForEnd(Handle handle, std::uint32_t milliseconds) {
  const auto* process = onlinux::FindAs<OpenedProcess>(handle);
  return process && onlinux::HasEnded(process->descriptor, static_cast<int>(milliseconds));
}

}  // namespace platform
