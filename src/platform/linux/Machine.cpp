#include "platform/machine.h"

#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/ReadWhole.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

// The arguments of this program, without its own name; each ends with a NUL.
std::vector<std::string> Arguments() {
  const auto line = onlinux::ReadWhole("/proc/self/cmdline");
  std::vector<std::string> arguments;
  for (std::size_t at = line.find('\0'); at != std::string::npos && at + 1 < line.size(); at = line.find('\0', at + 1))
    arguments.push_back(line.substr(at + 1, line.find('\0', at + 1) - at - 1));
  return arguments;
}

// The shell has taken the quotes off an argument; the program reads one line, and what splits or unquotes words there
// needs them back. One with a double quote of its own was quoted by the user.
std::string Quoted(const std::string& argument) {
  const bool needed = argument.empty() || argument.find_first_of(" \t\n'\\") != std::string::npos;
  if (!needed || argument.find('"') != std::string::npos) return argument;
  std::string quoted = "\"";
  for (std::size_t i = 0; i < argument.size(); ++i) {
    quoted += argument[i];
    const bool escapes = argument[i] == '\\' && (i + 1 == argument.size() || argument[i + 1] == '\\');
    if (escapes) quoted += '\\';
  }
  return quoted + '"';
}

// Only "*" and "?" stand for other characters.
std::string AsShellPattern(const std::string& name) {
  std::string pattern;
  for (const char c : name) {
    if (c == '[' || c == '\\') pattern += '\\';
    pattern += c;
  }
  return pattern;
}

}  // namespace

std::string CommandLine() {
  const auto arguments = Arguments();
  if (arguments.size() == 1) return arguments.front();
  std::string line;
  for (const auto& argument : arguments) line += (line.empty() ? "" : " ") + Quoted(argument);
  return line;
}

char PathSeparator() { return '/'; }

bool SwitchesAreWords() { return true; }

std::string ProgramEnding() { return {}; }

bool LineFeedEndsLine() { return true; }

std::uint32_t AppInstance() { return 1; }

std::string Dir(const std::string& pattern) {
  const auto separator = pattern.rfind('/');
  const auto start = separator == std::string::npos ? 0 : separator + 1;
  const auto folder = start == 0 ? std::string(".") : pattern.substr(0, start);
  const auto wanted = AsShellPattern(pattern.substr(start));
  std::string first;
  std::error_code error;
  for (fs::directory_iterator at(folder, error), end; !error && at != end; at.increment(error)) {
    const auto name = at->path().filename().string();
    std::error_code unknown;
    if (::fnmatch(wanted.c_str(), name.c_str(), 0) != 0 || at->is_directory(unknown)) continue;
    // A folder tells its files in no order of its own.
    if (first.empty() || name < first) first = name;
  }
  return first;
}

void Sleep(std::uint32_t milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

}  // namespace platform
