#include "platform/linux/Places.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/linux/UserFolder.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

std::string IfThere(const std::string& path) { return ::access(path.c_str(), R_OK) == 0 ? path : std::string(); }

std::string InstalledToolkit() { return IfThere(ProgramFolder() + "/../lib/velmaro/velmaro-toolkit.so"); }

}  // namespace

std::string ProgramFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string ToolkitPath() {
  const auto installed = InstalledToolkit();
  return installed.empty() ? IfThere(ProgramFolder() + "/velmaro-toolkit.so") : installed;
}

}  // namespace onlinux

namespace platform {

std::string AppFolder() {
  if (onlinux::InstalledToolkit().empty()) return onlinux::ProgramFolder();
  const auto folder = onlinux::UserFolder("velmaro");
  onlinux::MakeUserFolder(folder);
  return folder.string();
}

}  // namespace platform
