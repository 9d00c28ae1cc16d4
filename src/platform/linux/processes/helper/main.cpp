// velmaro-set-class CLASS PROCESS START [PROCESS START...]: what an administrator is asked for, and no more than that.
// It sets the priority class of a process and of what belongs to it, each known by its number and its start time, and
// is run with the rights that were given for it. What comes of the first one is what it tells.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>
#include <vector>

#include "platform/kernel32.h"
#include "platform/linux/ground/ReadNumber.h"
#include "platform/linux/ground/StandardStreams.h"
#include "platform/linux/processes/ProcessStatus.h"

namespace {

bool IsClass(std::uint32_t number) {
  return number == platform::NORMAL_PRIORITY_CLASS || number == platform::IDLE_PRIORITY_CLASS ||
         number == platform::HIGH_PRIORITY_CLASS || number == platform::REALTIME_PRIORITY_CLASS;
}

int Fail(int code, const char* why) {
  std::fprintf(stderr, "velmaro-set-class: %s\n", why);
  return code;
}

// Gives a process a class; gives the exit code for that.
int SetClass(std::uint32_t process, std::uint64_t start, std::uint32_t priorityClass) {
  // The process is held before it is looked at, so that a later one of the same number can't be meant.
  const platform::OwnedHandle held(platform::OpenProcess(platform::PROCESS_ALL_ACCESS, false, process));
  const auto status = held ? onlinux::ReadStatus(process) : std::nullopt;
  if (!status || status->startTime != start || status->Ended()) return Fail(3, "there is no such process any more");
  if (status->IsKernelThread()) return Fail(3, "the kernel's own threads are left alone");
  return platform::SetPriorityClass(held.get(), priorityClass) ? 0 : Fail(4, "the class was refused");
}

}  // namespace

int main(int count, char** words) {
  onlinux::OpenStandardStreams();
  struct Known {
    std::uint32_t process = 0;
    std::uint64_t start = 0;
  };
  std::vector<Known> family(count < 4 ? 0 : static_cast<std::size_t>(count - 2) / 2);
  std::uint32_t priorityClass = 0;
  bool read = !family.empty() && count % 2 == 0 && onlinux::ReadNumber(words[1], priorityClass);
  for (std::size_t i = 0; read && i < family.size(); ++i)
    read = onlinux::ReadNumber(words[2 * i + 2], family[i].process) &&
           onlinux::ReadNumber(words[2 * i + 3], family[i].start);
  if (!read) return Fail(2, "it takes a priority class, and process numbers with their start times in clock ticks");
  if (!IsClass(priorityClass)) return Fail(2, "the class is 32 (normal), 64 (idle), 128 (high) or 256 (real time)");
  const int code = SetClass(family.front().process, family.front().start, priorityClass);
  for (std::size_t i = 1; code == 0 && i < family.size(); ++i)
    SetClass(family[i].process, family[i].start, priorityClass);
  return code;
}
