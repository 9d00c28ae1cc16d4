#include "platform/linux/Places.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/linux/Toolkit.h"
#include "platform/linux/UserFolder.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

std::string IfThere(const std::string& path) { return ::access(path.c_str(), R_OK) == 0 ? path : std::string(); }

std::string Installed(const std::string& name) { return IfThere(ProgramFolder() + "/../lib/velmaro/" + name); }

}  // namespace

std::string ProgramFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string LibraryPath(const std::string& name) {
  const auto installed = Installed(name);
  return installed.empty() ? IfThere(ProgramFolder() + '/' + name) : installed;
}

}  // namespace onlinux

namespace platform {

std::string AppFolder() {
  if (onlinux::Installed(onlinux::ToolkitName).empty()) return onlinux::ProgramFolder();
  const auto folder = onlinux::UserFolder("velmaro");
  onlinux::MakeUserFolder(folder);
  return folder.string();
}

}  // namespace platform
