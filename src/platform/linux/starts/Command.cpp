#include "platform/linux/starts/Command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/linux/ground/Words.h"

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

std::optional<Command> Opener(const std::string& what) {
  const auto opener = FindInPath("xdg-open");
  return opener.empty() ? std::nullopt : std::optional(Command{opener, {opener, what}});
}

std::optional<Command> Resolve(const std::vector<std::string>& words, int& error) {
  error = EACCES;
  if (!words.empty() && IsAddress(words.front())) return Opener(words.front());
  const auto path = words.empty() ? std::string() : FindFile(words.front());
  if (path.empty()) {
    error = ENOENT;
    return std::nullopt;
  }
  return IsProgram(path) ? std::optional(Command{path, words}) : Opener(Absolute(path));
}

}  // namespace onlinux
