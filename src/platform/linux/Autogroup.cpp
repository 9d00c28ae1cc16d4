#include "platform/linux/Autogroup.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <map>

#include "platform/kernel32.h"
#include "platform/linux/Descriptor.h"
#include "platform/linux/ProcFolder.h"
#include "platform/linux/ReadWhole.h"

namespace onlinux {
namespace {

std::string FileOf(const std::string& process) { return "/proc/" + process + "/autogroup"; }

// "/autogroup-12 nice 0".
std::string LineOf(std::uint32_t processId) { return ReadWhole(FileOf(std::to_string(processId))); }

}  // namespace

std::string GroupOf(std::uint32_t processId) {
  const auto line = LineOf(processId);
  return line.substr(0, line.find(' '));
}

int GroupNice(std::uint32_t processId) {
  const auto line = LineOf(processId);
  const auto value = line.rfind(' ') + 1;
  int nice = 0;
  std::from_chars(line.data() + value, line.data() + line.size(), nice);
  return nice;
}

bool SetGroupNice(const std::string& process, int nice) {
  constexpr int tries = 25;
  constexpr int pause = 20;  // milliseconds
  const Descriptor file(::open(FileOf(process).c_str(), O_WRONLY | O_CLOEXEC));
  const auto text = std::to_string(nice);
  for (int i = 0; file && i < tries; ++i) {
    if (::write(file.get(), text.data(), text.size()) > 0) return true;
    if (errno != EAGAIN) return false;
    platform::Sleep(pause);
  }
  return false;
}

bool IsAloneInGroup(std::uint32_t processId) {
  const auto group = GroupOf(processId);
  const auto processes = ReadProcesses();
  if (group.empty() || !processes) return false;
  std::map<std::uint32_t, std::uint32_t> parents;
  for (const auto& process : *processes) parents[process.id] = process.status.parent;
  const auto descends = [&](std::uint32_t id) {
    // Numbers change hands while they are read, so the way up could run in a circle.
    for (std::size_t steps = parents.size(); id != processId && steps > 0; --steps) id = parents[id];
    return id == processId;
  };
  for (const auto& process : *processes)
    if (!descends(process.id) && GroupOf(process.id) == group) return false;
  return true;
}

}  // namespace onlinux
