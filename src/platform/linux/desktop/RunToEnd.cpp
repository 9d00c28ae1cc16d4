#include "platform/linux/desktop/RunToEnd.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/linux/desktop/Toolkit.h"
#include "platform/linux/ground/Environment.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/processes/EndProcess.h"

namespace onlinux {
namespace {

int ExitCodeOf(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void WaitFor(const Descriptor& process) {
  if (auto* toolkit = LoadedToolkit()) return toolkit->WaitFor(process.get());
  HasEnded(process, -1);
}

// True where a child has ended in time; it is still to be reaped.
bool EndsWithin(pid_t child, const Descriptor& process, std::chrono::milliseconds limit) {
  if (process) return HasEnded(process, static_cast<int>(limit.count()));
  constexpr std::chrono::milliseconds pause{5};
  for (;; limit -= pause) {
    siginfo_t info{};
    if (::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOHANG | WNOWAIT) != 0 || info.si_pid == child)
      return true;
    if (limit <= pause) return false;
    std::this_thread::sleep_for(pause);
  }
}

}  // namespace

int RunToEnd(const std::vector<std::string>& words) {
  const auto pointers = Pointers(words);
  pid_t child = 0;
  if (::posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), StartEnvironment()) != 0) return -1;
  const auto process = HoldProcess(child);
  if (process) WaitFor(process);
  return ExitCodeOf(child);
}

int RunSilently(const std::vector<std::string>& words, std::chrono::milliseconds limit) {
  const auto pointers = Pointers(words);
  const Descriptor nothing(::open("/dev/null", O_RDWR | O_CLOEXEC));
  const auto child = ::vfork();
  if (child == 0) {
    for (int standard = 0; standard <= STDERR_FILENO; ++standard) ::dup2(nothing.get(), standard);
    ::execve(pointers[0], pointers.data(), StartEnvironment());
    ::_exit(1);
  }
  if (child < 0) return -1;
  const auto process = HoldProcess(child);
  if (!EndsWithin(child, process, limit)) EndProcess(child, process);
  return ExitCodeOf(child);
}

}  // namespace onlinux
