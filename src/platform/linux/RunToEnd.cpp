#include "platform/linux/RunToEnd.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/Descriptor.h"
#include "platform/linux/Environment.h"
#include "platform/linux/Start.h"
#include "platform/linux/Toolkit.h"

namespace onlinux {
namespace {

int ExitCodeOf(pid_t child) {
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void WaitFor(const Descriptor& process) {
  if (auto* toolkit = LoadedToolkit()) return toolkit->WaitFor(process.get());
  pollfd wait{.fd = process.get(), .events = POLLIN, .revents = 0};
  ::poll(&wait, 1, -1);
}

}  // namespace

int RunToEnd(const std::vector<std::string>& words) {
  const auto pointers = Pointers(words);
  pid_t child = 0;
  if (::posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), StartEnvironment()) != 0) return -1;
  const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
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
  const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
  pollfd wait{.fd = process.get(), .events = POLLIN, .revents = 0};
  if (::poll(&wait, 1, static_cast<int>(limit.count())) <= 0) ::kill(child, SIGKILL);
  return ExitCodeOf(child);
}

}  // namespace onlinux
