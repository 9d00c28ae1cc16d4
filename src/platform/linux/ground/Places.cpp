#include "platform/linux/ground/Places.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "platform/linux/ground/Trust.h"
#include "platform/linux/ground/UserFolder.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

// The installation writes its prefix behind these words into the installed program. Whoever reads it must look, so it
// is volatile for the compiler.
constexpr std::size_t PrefixRoom = 1024;
constexpr std::size_t WordsLength = 24;
const volatile char Recorded[WordsLength + PrefixRoom] = "velmaro is installed in:";

std::string IfThere(const std::string& path) { return ::access(path.c_str(), R_OK) == 0 ? path : std::string(); }

}  // namespace

std::string ProgramFolder() {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/exe", error).parent_path().string();
}

std::string InstalledPrefix() {
  std::string prefix;
  for (std::size_t i = WordsLength; i < sizeof Recorded && Recorded[i] != '\0'; ++i) prefix += Recorded[i];
  return prefix;
}

std::string LibraryPath(const std::string& name) {
  auto beside = ProgramFolder() + '/' + name;
  if (IsOnlyOurs(ProgramFolder()) && IsOnlyOurs(beside)) return beside;
  const auto prefix = InstalledPrefix();
  return prefix.empty() ? prefix : IfThere(prefix + "/lib/velmaro/" + name);
}

}  // namespace onlinux

namespace platform {

std::string AppFolder() {
  return onlinux::InstalledPrefix().empty() ? onlinux::ProgramFolder() : onlinux::UserFolder("velmaro").string();
}

}  // namespace platform
