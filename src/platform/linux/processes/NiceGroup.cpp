#include "platform/linux/processes/NiceGroup.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <utility>

#include "platform/kernel32.h"
#include "platform/linux/ground/GroupPlace.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/ProcFolder.h"

namespace onlinux {
namespace {

constexpr const char* NiceFile = "/cpu.weight.nice";

std::string FileOf(std::uint32_t processId, const char* name) {
  return "/proc/" + std::to_string(processId) + '/' + name;
}

}  // namespace

std::string ProcessorGroup(const std::string& groups, const std::string& folder) {
  auto path = GroupPath(groups, SecondVersion).value_or("");
  if (!path.starts_with('/')) return {};
  if (path == "/") path.clear();
  // The group of all groups has no such file, but a container's own view of them begins at one that has.
  for (;; path.resize(path.rfind('/'))) {
    if (::access((folder + path + NiceFile).c_str(), F_OK) == 0) return folder + path;
    if (path.empty()) return {};
  }
}

NiceGroup GroupOf(std::uint32_t processId) {
  if (const auto group = ProcessorGroup(ReadWhole(FileOf(processId, "cgroup"))); !group.empty())
    return {.name = group, .file = group + NiceFile, .isControlGroup = true};
  auto file = FileOf(processId, "autogroup");
  const auto line = ReadWhole(file);  // such as "/autogroup-12 nice 0"
  return {.name = line.substr(0, line.find(' ')), .file = std::move(file)};
}

int GroupNice(const NiceGroup& group) {
  const auto line = ReadWhole(group.file);
  const auto value = line.rfind(' ') + 1;
  int nice = 0;
  std::from_chars(line.data() + value, line.data() + line.size(), nice);
  return nice;
}

Descriptor OpenGroup(const NiceGroup& group) { return Descriptor(::open(group.file.c_str(), O_WRONLY | O_CLOEXEC)); }

bool SetGroupNice(const Descriptor& group, int nice) {
  constexpr int tries = 25;
  constexpr int pause = 20;  // milliseconds
  const auto text = std::to_string(nice);
  for (int i = 0; group && i < tries; ++i) {
    if (::write(group.get(), text.data(), text.size()) > 0) return true;
    if (errno != EAGAIN) return false;
    platform::Sleep(pause);
  }
  return false;
}

std::optional<NiceGroup> GroupOfItsOwn(std::uint32_t processId) {
  auto group = GroupOf(processId);
  const auto processes = ReadProcesses();
  if (group.name.empty() || !processes) return std::nullopt;
  const Parents parents(*processes);
  for (const auto& process : *processes) {
    const bool waits = parents.Descends(processId, process.id) && !process.status.hasTerminal;
    if (!(waits && group.isControlGroup) && !parents.Descends(process.id, processId) &&
        GroupOf(process.id).name == group.name)
      return std::nullopt;
  }
  return group;
}

}  // namespace onlinux
