#include "platform/linux/Descent.h"

#include <time.h>
#include <unistd.h>

#include "platform/linux/ProcFolder.h"
#include "platform/linux/ReadWhole.h"

namespace onlinux {
namespace {

bool BearsMark(std::uint32_t process, const std::string& mark) {
  if (mark.empty()) return false;
  const auto environment = '\0' + ReadWhole("/proc/" + std::to_string(process) + "/environ");
  return environment.find('\0' + mark + '\0') != std::string::npos;
}

}  // namespace

std::string NewMark() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return "VELMARO_START=" + std::to_string(::getpid()) + '.' + std::to_string(now.tv_sec) + '.' +
         std::to_string(now.tv_nsec);
}

bool CameFrom(std::uint32_t process, const Descent& descent) {
  constexpr int deepest = 64;
  for (int depth = 0; depth < deepest && process > 1; ++depth) {
    if (process == descent.process || BearsMark(process, descent.mark)) return true;
    const auto status = ReadStatus(process);
    process = status ? status->parent : 0;
  }
  return false;
}

}  // namespace onlinux
