#include "platform/linux/processes/Descent.h"

#include <time.h>
#include <unistd.h>

#include <cstdlib>

#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/ProcessStatus.h"

namespace onlinux {
namespace {

constexpr const char* Variable = "VELMARO_START";

bool BearsMark(std::uint32_t process, const std::string& mark) {
  if (mark.empty()) return false;
  const auto environment = '\0' + ReadWhole("/proc/" + std::to_string(process) + "/environ");
  return environment.find('\0' + mark + '\0') != std::string::npos;
}

}  // namespace

Mark::Mark() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  const auto value = std::to_string(::getpid()) + '.' + std::to_string(now.tv_sec) + '.' + std::to_string(now.tv_nsec);
  ::setenv(Variable, value.c_str(), 1);
  line_ = std::string(Variable) + '=' + value;
}

Mark::~Mark() { ::unsetenv(Variable); }

bool CameFrom(std::uint32_t process, const Descent& descent) {
  constexpr int deepest = 64;
  for (int depth = 0; depth < deepest && process > 1; ++depth) {
    if (process == descent.process || BearsMark(process, descent.mark)) return true;
    const auto status = ReadStatus(process);
    process = status ? status->parent : 0;
  }
  return false;
}

bool StillRuns(const Descent& descent) {
  const auto status = ReadStatus(descent.process);
  bool any = status && !status->Ended();
  if (!any)
    ForEachPlace([&](const ProcessPlace& place) { any = any || (CameFrom(place.id, descent) && ReadProcess(place)); });
  return any;
}

}  // namespace onlinux
