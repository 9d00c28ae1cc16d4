#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <fstream>

#include "platform/linux/desktop/Toolkit.h"
#include "platform/start.h"

namespace platform {

void DoBeforeStart(const std::function<void()>& work) {
  // Windows that are there already belong to this process, and a copy of it can't go on with them.
  const auto child = onlinux::LoadedToolkit() ? -1 : ::fork();
  if (child < 0) return work();
  if (child == 0) {
    // Where the memory ends all the same, this is whom the kernel ends for it.
    std::ofstream("/proc/self/oom_score_adj") << 1000;
    work();
    ::_exit(0);
  }
  while (::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
}

}  // namespace platform
