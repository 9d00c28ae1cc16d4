#include <cerrno>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/Start.h"
#include "platform/machine.h"
#include "platform/shell32.h"

namespace platform {
namespace {

constexpr std::uint32_t Started = 33;
constexpr int NotFound = 2;
constexpr int AccessDenied = 5;

// Programs are told the root of the system's disk where they have no folder of their own.
std::string WorkingFolder(const std::string& folder) {
  if (folder.empty()) return {};
  std::error_code error;
  return std::filesystem::is_directory(folder, error) ? folder : "/";
}

std::uint32_t Run(const std::vector<std::string>& words, const std::string& folder) {
  int error = 0;
  auto command = onlinux::Resolve(words, error);
  if (command) command->path = onlinux::Absolute(command->path);
  if (command) error = onlinux::StartApart(*command, folder).error;
  if (command && error == 0) return Started;
  return error == ENOENT ? NotFound : AccessDenied;
}

}  // namespace

int ShellExecuteA(WindowHandle, const std::string&, const std::string& file, const std::string& parameters,
                  const std::string& folder, int) {
  auto words = onlinux::SplitWords(parameters);
  words.insert(words.begin(), file);
  return static_cast<int>(Run(words, WorkingFolder(folder)));
}

// Without a folder of its own, a command runs at the root, as a file that the desktop starts does.
std::uint32_t WinExec(const std::string& commandLine, int) { return Run(onlinux::SplitCommand(commandLine), "/"); }

bool Shell(const std::string& commandLine, int) { return Run(onlinux::SplitCommand(commandLine), "") == Started; }

}  // namespace platform
