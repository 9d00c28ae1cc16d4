#include "platform/linux/starts/Command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/ground/Words.h"
#include "platform/linux/starts/DesktopEntry.h"
#include "platform/machine.h"

namespace onlinux {
namespace {

bool Exists(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

std::string FindInPath(const std::string& name) {
  const char* told = std::getenv("PATH");
  std::string_view folders = told ? told : "/usr/local/bin:/usr/bin:/bin";
  for (bool more = true; more;) {
    const auto end = folders.find(':');
    more = end != std::string_view::npos;
    auto path = std::string(folders.substr(0, end)) + '/' + name;
    if (path.front() == '/' && path.size() > name.size() + 1 && IsProgram(path)) return path;
    if (more) folders.remove_prefix(end + 1);
  }
  return {};
}

std::string WithoutQuotes(const std::string& file) {
  const bool quoted = file.size() >= 2 && file.front() == '"' && file.find('"', 1) == file.size() - 1;
  return quoted ? file.substr(1, file.size() - 2) : file;
}

// The opener's command. Where the desktop gives a document back to this program, it has nothing else for it.
std::optional<Command> Opener(const std::string& what) {
  constexpr auto variable = "VELMARO_OPENS";
  const char* opens = std::getenv(variable);
  const auto opener = opens && opens == what ? std::string() : FindInPath("xdg-open");
  if (opener.empty()) return std::nullopt;
  const std::string setter = "/usr/bin/env";
  return Command{setter, {setter, std::string(variable) + '=' + what, opener, what}};
}

bool IsBinary(const std::string& path) {
  std::error_code error;
  std::array<char, 4> start{};
  return std::filesystem::is_regular_file(path, error) && std::ifstream(path).read(start.data(), start.size()) &&
         std::string_view(start.data(), start.size()) ==
             "\x7F"
             "ELF";
}

// Opens a terminal of the desktop's for a program.
std::optional<Command> InTerminal(Command command, Refusal& refusal) {
  constexpr std::array<std::array<const char*, 2>, 5> terminals = {
      {{"xdg-terminal-exec", ""}, {"x-terminal-emulator", "-e"}, {"konsole", "-e"}, {"kgx", "--"}, {"xterm", "-e"}}};
  for (const auto& [name, option] : terminals) {
    const auto terminal = FindInPath(name);
    if (terminal.empty()) continue;
    command.words.front() = command.path;
    if (*option) command.words.insert(command.words.begin(), option);
    command.words.insert(command.words.begin(), terminal);
    command.path = terminal;
    return command;
  }
  refusal = {ENOENT, "a terminal for " + command.path};
  return std::nullopt;
}

// The command of a desktop entry.
std::optional<Command> CommandOf(const EntryStart& start, Refusal& refusal) {
  refusal = {ENOENT, start.needs.empty() ? start.words.front() : start.needs};
  if (!start.needs.empty() && !IsProgram(FindFile(start.needs))) return std::nullopt;
  refusal.name = start.words.front();
  const auto path = FindFile(refusal.name);
  if (!path.empty()) refusal.error = EACCES;
  if (!IsProgram(path)) return std::nullopt;
  Command command{Absolute(path), start.words, start.folder};
  return start.inTerminal ? InTerminal(std::move(command), refusal) : command;
}

bool IsAddress(const std::string& file) {
  const auto at = file.find("://");
  return at != std::string::npos && at > 1 && file.find_first_of("/ \"") == at + 1;
}

}  // namespace

std::vector<std::string> SplitCommand(const std::string& command) {
  const auto bare = WithoutQuotes(command);
  return bare.size() != command.size() || !FindFile(bare).empty() ? std::vector{bare} : SplitWords(command);
}

bool IsProgram(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

std::string FindFile(const std::string& name) {
  if (name.empty()) return {};
  const char* home = std::getenv("HOME");
  const auto path = name.starts_with("~/") && home ? home + name.substr(1) : name;
  if (path.find('/') == std::string::npos)
    if (auto program = FindInPath(path); !program.empty()) return program;
  if (!Exists(path)) return {};
  return path.find('/') == std::string::npos ? "./" + path : path;
}

std::string Absolute(const std::string& path) {
  std::error_code error;
  auto absolute = std::filesystem::absolute(path, error);
  return error ? path : absolute.string();
}

std::optional<Command> InPlaceOf(const Command& command) {
  const auto path = Absolute(command.path);
  const auto told = [&](const std::string& runner) {
    auto words = command.words;
    words.front() = path;
    words.insert(words.begin(), runner);
    return Command{runner, std::move(words), command.folder};
  };
  if (path.ends_with(".sh") && IsProgram(path)) return told("/bin/sh");
  if (const auto wine = platform::LowerCase(path).ends_with(".exe") ? FindInPath("wine") : ""; !wine.empty())
    return told(wine);
  // No desktop opens a program that may not be executed, and one of another machine is no document either.
  return IsBinary(path) ? std::nullopt : Opener(path);
}

std::optional<Command> Resolve(const std::vector<std::string>& words, Refusal& refusal) {
  refusal = {ENOENT, words.empty() ? std::string() : words.front()};
  if (words.empty()) return std::nullopt;
  if (IsAddress(words.front())) {
    refusal.error = EACCES;
    return Opener(words.front());
  }
  if (const auto entry = FindEntry(words.front()); !entry.empty())
    if (const auto start = ReadEntry(entry, {words.begin() + 1, words.end()})) return CommandOf(*start, refusal);
  const auto path = FindFile(words.front());
  if (path.empty()) return std::nullopt;
  refusal.error = EACCES;
  return IsProgram(path) ? std::optional(Command{path, words}) : InPlaceOf({path, words});
}

}  // namespace onlinux
