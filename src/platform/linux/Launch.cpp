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
constexpr int NothingOpensIt = 31;

bool IsAddress(const std::string& file) {
  const auto at = file.find("://");
  return at != std::string::npos && at > 1 && file.find_first_of("/ \"") == at + 1;
}

// Programs are told the root of the system's disk where they have no folder of their own.
std::string WorkingFolder(const std::string& folder) {
  if (folder.empty()) return {};
  std::error_code error;
  return std::filesystem::is_directory(folder, error) ? folder : "/";
}

std::string WithoutQuotes(const std::string& file) {
  const bool quoted = file.size() >= 2 && file.front() == '"' && file.find('"', 1) == file.size() - 1;
  return quoted ? file.substr(1, file.size() - 2) : file;
}

// From a relative path, which counts from here, to one that does from any folder.
std::string Absolute(const std::string& path) {
  std::error_code error;
  auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

std::uint32_t ResultOf(int error) {
  if (error == 0) return Started;
  return error == ENOENT ? NotFound : AccessDenied;
}

std::uint32_t Run(const std::string& commandLine, const std::string& folder) {
  auto words = onlinux::SplitWords(commandLine);
  const auto program = words.empty() ? std::string() : onlinux::FindFile(words.front());
  if (program.empty()) return NotFound;
  words.front() = Absolute(program);
  return ResultOf(onlinux::StartApart(words, folder));
}

}  // namespace

int ShellExecuteA(WindowHandle, const std::string&, const std::string& file, const std::string& parameters,
                  const std::string& folder, int) {
  const auto where = WorkingFolder(folder);
  const auto open = [&](const std::string& what) {
    return onlinux::OpenWithDesktop(what, where) == 0 ? static_cast<int>(Started) : NothingOpensIt;
  };
  if (IsAddress(file)) return open(file);
  auto path = onlinux::FindFile(WithoutQuotes(file));
  if (path.empty()) return NotFound;
  path = Absolute(path);
  if (!onlinux::IsProgram(path)) return open(path);
  auto words = onlinux::SplitWords(parameters);
  words.insert(words.begin(), path);
  const auto error = onlinux::StartApart(words, where);
  // A file that may be executed and is no program after all is one to look at.
  return error == ENOEXEC ? open(path) : static_cast<int>(ResultOf(error));
}

// Without a folder of its own, a command runs at the root, as a file that the desktop starts does.
std::uint32_t WinExec(const std::string& commandLine, int) { return Run(commandLine, "/"); }

bool Shell(const std::string& commandLine, int) { return Run(commandLine, "") == Started; }

}  // namespace platform
