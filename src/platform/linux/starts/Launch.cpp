#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/starts/Start.h"
#include "platform/machine.h"
#include "platform/shell32.h"

namespace platform {
namespace {

constexpr std::uint32_t Started = 33;
constexpr int NotFound = 2;
constexpr int AccessDenied = 5;
constexpr int NoProgram = 31;

// Programs are told the root of the system's disk where they have no folder of their own.
std::string WorkingFolder(const std::string& folder) {
  if (folder.empty()) return {};
  std::error_code error;
  return std::filesystem::is_directory(folder, error) ? folder : "/";
}

// The opener itself would look for any browser that takes the file, or end without a word.
bool OpensTexts() {
  const std::unique_ptr<FILE, int (*)(FILE*)> answer(::popen("xdg-mime query default text/plain 2>/dev/null", "re"),
                                                     ::pclose);
  return answer && std::fgetc(answer.get()) != EOF;
}

std::uint32_t Run(const std::vector<std::string>& words, const std::string& folder) {
  onlinux::Refusal refusal;
  auto command = onlinux::Resolve(words, refusal);
  if (command) command->path = onlinux::Absolute(command->path);
  const int error = command ? onlinux::StartApart(*command, folder).error : refusal.error;
  if (command && error == 0) return Started;
  return error == ENOENT ? NotFound : AccessDenied;
}

}  // namespace

int ShellExecuteA(WindowHandle, const std::string&, const std::string& file, const std::string& parameters,
                  const std::string& folder, int) {
  auto words = onlinux::SplitWords(parameters);
  words.insert(words.begin(), file);
  // Every document that comes here is a text.
  if (file.starts_with('/') && !onlinux::IsProgram(file) && !OpensTexts()) return NoProgram;
  return static_cast<int>(Run(words, WorkingFolder(folder)));
}

bool ShellTakesEveryFile() { return false; }

// Without a folder of its own, a command runs at the root, as a file that the desktop starts does.
std::uint32_t WinExec(const std::string& commandLine, int) { return Run(onlinux::SplitCommand(commandLine), "/"); }

std::uint32_t Shell(const std::string& commandLine, int) { return Run(onlinux::SplitCommand(commandLine), ""); }

// No start here asks for it.
std::string FindProgram(const std::string&) { return {}; }

}  // namespace platform
