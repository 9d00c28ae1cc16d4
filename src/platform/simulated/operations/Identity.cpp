#include "platform/identity.h"

#include "platform/kernel32.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {

Handle CreateListSnapshot() { return CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS); }

bool CommandsMeanTheRow() { return TheDesktop().commandsMeanTheRow; }

std::uint64_t ProcessIdentity(Handle handle) {
  const auto* snapshot = TheDesktop().Find<simulated::Snapshot>(handle);
  if (!CommandsMeanTheRow() || !snapshot || snapshot->next == 0) return 0;
  return snapshot->processes[snapshot->next - 1].id;
}

bool NamesAreWholeParts() { return TheDesktop().namesAreWholeParts; }

std::vector<std::string> MoreNames(Handle) { return {}; }

std::vector<std::string> NamesOf(Handle handle) {
  const auto* opened = TheDesktop().Find<simulated::OpenedProcess>(handle);
  if (!opened) return {};
  const auto& process = TheDesktop().ProcessById(opened->id);
  return process.alive ? std::vector{process.name} : std::vector<std::string>();
}

std::string ResolvedPath(const std::string& path) { return path; }

std::string_view NativeEmulators() { return {}; }

}  // namespace platform
