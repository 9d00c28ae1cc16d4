#include <fnmatch.h>

#include <filesystem>
#include <string>
#include <system_error>

#include "platform/machine.h"

namespace platform {
namespace {

namespace fs = std::filesystem;

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

}  // namespace platform
