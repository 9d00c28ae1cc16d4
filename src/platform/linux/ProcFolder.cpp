#include "platform/linux/ProcFolder.h"

#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <memory>

#include "platform/linux/Descriptor.h"

namespace onlinux {
namespace {

struct CloseFolder {
  void operator()(DIR* folder) const { ::closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

// The kernel cuts its short names at so many bytes.
constexpr std::size_t ShortNameLimit = 15;
constexpr std::uint64_t KernelThread = 0x00200000;

// Reads a file of the process folder in one call, as far as `room` goes. Its status line is shorter than that.
std::string ReadSmall(int folder, const std::string& path, std::size_t room) {
  const Descriptor file(::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return {};
  std::string text(room, '\0');
  const auto got = ::read(file.get(), text.data(), room);
  text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return text;
}

template <class Number>
bool ReadNumber(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

// The library's search for one of several characters calls a function for each one that it passes.
bool IsBlank(char c) { return c == ' ' || c == '\n'; }

std::string BaseName(std::string_view path) { return std::string(path.substr(path.find_last_of("/\\") + 1)); }

// A program for Windows runs inside a loader, whose path would say nothing of it.
bool IsLoader(const std::string& path) { return BaseName(path).starts_with("wine"); }

// A program that was replaced while it runs is told with a remark behind its path.
std::string WithoutRemark(std::string path) {
  constexpr std::string_view remark = " (deleted)";
  if (path.ends_with(remark) && ::access(path.c_str(), F_OK) != 0) path.resize(path.size() - remark.size());
  return path;
}

// A name that the kernel keeps is no path, and what it holds of "/" must not be taken for a folder: a look-alike stands
// for it.
std::string AsName(const std::string& shortName) {
  std::string name;
  for (const char c : shortName) name += c == '/' ? std::string("\u2215") : std::string(1, c);
  return name;
}

// The name of a process whose executable can't be read or tells nothing. A short name that may have been cut is made
// whole from the command line, where that begins with the same name.
std::string PlainName(int folder, const std::string& id, const std::string& shortName) {
  if (shortName.size() < ShortNameLimit) return AsName(shortName);
  const auto line = ReadSmall(folder, id + "/cmdline", PATH_MAX);
  const auto base = BaseName(std::string_view(line).substr(0, line.find('\0')));
  return base.starts_with(shortName) ? base : AsName(shortName);
}

std::string NameOf(int folder, const std::string& id, const ProcessStatus& status) {
  if (status.flags & KernelThread) return AsName(status.shortName);
  char path[PATH_MAX];
  const auto length = ::readlinkat(folder, (id + "/exe").c_str(), path, sizeof path);
  const std::string read(path, length > 0 ? static_cast<std::size_t>(length) : 0);
  if (!read.empty() && !IsLoader(read)) return WithoutRemark(read);
  return PlainName(folder, id, status.shortName);
}

std::vector<std::uint32_t> ReadNumbers(DIR* folder) {
  std::vector<std::uint32_t> numbers;
  while (const auto* entry = ::readdir(folder)) {
    std::uint32_t number = 0;
    if (ReadNumber(std::string_view(entry->d_name), number)) numbers.push_back(number);
  }
  return numbers;
}

}  // namespace

std::optional<ProcessStatus> ParseStatus(std::string_view line) {
  const auto open = line.find('(');
  const auto close = line.rfind(')');
  if (open == std::string_view::npos || close == std::string_view::npos || close < open) return std::nullopt;
  constexpr std::size_t count = 41;
  std::array<std::string_view, count + 1> fields;  // by the numbers of the manual, which begin at 1
  std::size_t filled = 2;
  for (auto at = line.begin() + static_cast<std::ptrdiff_t>(close) + 1; filled < count;) {
    const auto start = std::find_if_not(at, line.end(), IsBlank);
    if (start == line.end()) return std::nullopt;
    at = std::find_if(start, line.end(), IsBlank);
    fields[++filled] = {start, at};
  }
  ProcessStatus status;
  status.state = fields[3].front();
  status.shortName = line.substr(open + 1, close - open - 1);
  const bool whole = ReadNumber(fields[4], status.parent) && ReadNumber(fields[9], status.flags) &&
                     ReadNumber(fields[19], status.nice) && ReadNumber(fields[20], status.threads) &&
                     ReadNumber(fields[22], status.startTime) && ReadNumber(fields[41], status.policy);
  return whole ? std::optional(std::move(status)) : std::nullopt;
}

std::optional<ProcessStatus> ReadStatus(std::uint32_t processId) {
  return ParseStatus(ReadSmall(AT_FDCWD, "/proc/" + std::to_string(processId) + "/stat", 1024));
}

std::optional<std::vector<ProcessRecord>> ReadProcesses() {
  const Folder proc(::opendir("/proc"));
  if (!proc) return std::nullopt;
  const int folder = ::dirfd(proc.get());
  const auto numbers = ReadNumbers(proc.get());
  std::vector<ProcessRecord> processes;
  processes.reserve(numbers.size());
  for (const auto number : numbers) {
    const auto id = std::to_string(number);
    auto status = ParseStatus(ReadSmall(folder, id + "/stat", 1024));
    if (!status || status->Ended()) continue;
    auto name = NameOf(folder, id, *status);
    processes.push_back({number, std::move(*status), std::move(name)});
  }
  return processes;
}

std::vector<std::uint32_t> ReadThreads(std::uint32_t processId) {
  const Folder tasks(::opendir(("/proc/" + std::to_string(processId) + "/task").c_str()));
  return tasks ? ReadNumbers(tasks.get()) : std::vector<std::uint32_t>{};
}

}  // namespace onlinux
