// velmaro-set-class PROCESS START CLASS: what an administrator is asked for, and no more than that. It sets the
// priority class of one process, known by its number and its start time, and is run with the rights that were given for
// it.
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string_view>

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

}  // namespace

int main(int count, char** words) {
  onlinux::OpenStandardStreams();
  std::uint32_t process = 0;
  std::uint64_t start = 0;
  std::uint32_t priorityClass = 0;
  if (count != 4 || !onlinux::ReadNumber(words[1], process) || !onlinux::ReadNumber(words[2], start) ||
      !onlinux::ReadNumber(words[3], priorityClass))
    return Fail(2, "it takes a process number, a start time in clock ticks and a priority class");
  if (!IsClass(priorityClass)) return Fail(2, "the class is 32 (normal), 64 (idle), 128 (high) or 256 (real time)");
  // The process is held before it is looked at, so that a later one of the same number can't be meant.
  const platform::OwnedHandle held(platform::OpenProcess(platform::PROCESS_ALL_ACCESS, false, process));
  const auto status = held ? onlinux::ReadStatus(process) : std::nullopt;
  if (!status || status->startTime != start || status->Ended()) return Fail(3, "there is no such process any more");
  if (status->IsKernelThread()) return Fail(3, "the kernel's own threads are left alone");
  return platform::SetPriorityClass(held.get(), priorityClass) ? 0 : Fail(4, "the class was refused");
}
