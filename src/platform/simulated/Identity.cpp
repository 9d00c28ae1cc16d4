#include "platform/identity.h"

#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {

bool CommandsMeanTheRow() { return TheDesktop().commandsMeanTheRow; }

std::uint64_t ProcessIdentity(Handle handle) {
  const auto* snapshot = TheDesktop().Find<simulated::Snapshot>(handle);
  if (!CommandsMeanTheRow() || !snapshot || snapshot->next == 0) return 0;
  return snapshot->processes[snapshot->next - 1].id;
}

bool NamesAreWholeParts() { return TheDesktop().namesAreWholeParts; }

std::vector<std::string> MoreNames(Handle) { return {}; }

std::vector<std::string> NamesOf(Handle) { return {}; }

std::string ResolvedPath(const std::string& path) { return path; }

std::string_view NativeEmulators() { return {}; }

}  // namespace platform
