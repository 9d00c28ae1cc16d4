#include "platform/machine.h"

#include <fnmatch.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <string>
#include <system_error>
#include <thread>

#include "platform/kernel32.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/starts/Start.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

bool IsFile(const std::string& path) { return ::access(path.c_str(), F_OK) == 0; }

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
  auto words = onlinux::ReadWhole("/proc/self/cmdline");
  words.erase(0, words.find('\0') + 1);
  const auto end = words.find('\0');
  const bool isOneWord = end != std::string::npos && end + 1 == words.size();
  if (!isOneWord || IsFile(words.substr(0, end))) return words;
  // A single word can hold the whole line, as a file of shortcuts or a makefile passes it on.
  std::string split;
  for (const auto& word : onlinux::SplitWords(words.substr(0, end))) split += word + '\0';
  return split;
}

char PathSeparator() { return '/'; }

bool SwitchesAreWords() { return true; }

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
