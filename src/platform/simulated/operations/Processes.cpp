#include <cstring>
#include <string_view>

#include "platform/kernel32.h"
#include "platform/machine.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {
namespace {

bool IsNone(Handle handle) { return handle == 0 || handle == InvalidHandle; }

// The process behind a handle, null where it has ended or takes no command. A handle that could not be had is passed
// on untested by design; any other one that is not open is a bug.
simulated::Process* Commanded(Handle handle) {
  auto& desktop = TheDesktop();
  const auto* opened = desktop.Find<simulated::OpenedProcess>(handle);
  if (!opened) {
    if (!IsNone(handle)) desktop.misuse.push_back("a command to a process that is not open");
    return nullptr;
  }
  auto& process = desktop.ProcessById(opened->id);
  return process.alive && !process.stubborn ? &process : nullptr;
}

std::int32_t BasePriorityOf(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case IDLE_PRIORITY_CLASS:
      return 4;
    case NORMAL_PRIORITY_CLASS:
      return 8;
    case HIGH_PRIORITY_CLASS:
      return 13;
    case REALTIME_PRIORITY_CLASS:
      return 24;
    default:
      return 0;
  }
}

}  // namespace

void CloseHandle(Handle handle) {
  if (handle == 0 || handle == InvalidHandle) return;
  auto& desktop = TheDesktop();
  if (desktop.objects.erase(handle) == 0) desktop.misuse.push_back("a handle that is not open was closed");
}

Handle CreateToolhelp32Snapshot(std::uint32_t flags) {
  auto& desktop = TheDesktop();
  if (desktop.snapshotFails || !(flags & TH32CS_SNAPPROCESS)) return InvalidHandle;
  ++desktop.snapshotsTaken;
  simulated::Snapshot snapshot;
  for (const auto& process : desktop.processes)
    if (process.alive || process.lingers) snapshot.processes.push_back(process);
  const auto handle = desktop.NewHandle();
  desktop.objects[handle] = std::move(snapshot);
  return handle;
}

bool Process32Next(Handle handle, PROCESSENTRY32& entry) {
  auto* snapshot = TheDesktop().Find<simulated::Snapshot>(handle);
  if (!snapshot && !IsNone(handle)) TheDesktop().misuse.push_back("a walk through a snapshot that is not open");
  if (!snapshot || entry.dwSize != sizeof entry || snapshot->next == snapshot->processes.size()) return false;
  const auto& process = snapshot->processes[snapshot->next++];
  entry.th32ProcessID = process.id;
  entry.pcPriClassBase = process.basePriority;
  // What an earlier, longer name left behind the NUL stays there.
  std::string_view name = process.name;
  while (name.size() >= sizeof entry.szExeFile) name.remove_prefix(CharacterLength(name));
  std::memcpy(entry.szExeFile, name.data(), name.size());
  entry.szExeFile[name.size()] = '\0';
  return true;
}

bool Process32First(Handle handle, PROCESSENTRY32& entry) {
  if (auto* snapshot = TheDesktop().Find<simulated::Snapshot>(handle)) snapshot->next = 0;
  return Process32Next(handle, entry);
}

Handle OpenProcess(std::uint32_t, bool, std::uint32_t processId) {
  auto& desktop = TheDesktop();
  for (const auto& process : desktop.processes) {
    if (process.id != processId) continue;
    if ((!process.alive && !process.lingers) || process.denied) return 0;
    const auto handle = desktop.NewHandle();
    desktop.objects[handle] = simulated::OpenedProcess{processId};
    return handle;
  }
  return 0;
}

bool SetPriorityClass(Handle handle, std::uint32_t priorityClass) {
  auto* process = Commanded(handle);
  if (!process || BasePriorityOf(priorityClass) == 0) return false;
  const bool lowered = priorityClass == REALTIME_PRIORITY_CLASS && !TheDesktop().realTimeAllowed;
  process->classSet = priorityClass;
  process->basePriority = BasePriorityOf(lowered ? HIGH_PRIORITY_CLASS : priorityClass);
  return true;
}

bool TerminateProcess(Handle handle, std::uint32_t) {
  auto* process = Commanded(handle);
  if (!process) return false;
  process->alive = false;
  process->lingers = true;
  TheDesktop().terminated.push_back(process->id);
  return true;
}

bool WaitForEnd(Handle handle, std::uint32_t) {
  const auto* opened = TheDesktop().Find<simulated::OpenedProcess>(handle);
  if (!opened) return false;
  auto& process = TheDesktop().ProcessById(opened->id);
  process.lingers = false;
  return !process.alive;
}

}  // namespace platform
