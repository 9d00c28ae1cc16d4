#include "platform/linux/RunToEnd.h"

#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>

#include "platform/linux/Descriptor.h"
#include "platform/linux/Environment.h"
#include "platform/linux/Toolkit.h"

namespace onlinux {
namespace {

void WaitFor(const Descriptor& process) {
  if (auto* toolkit = LoadedToolkit()) return toolkit->WaitFor(process.get());
  pollfd wait{.fd = process.get(), .events = POLLIN, .revents = 0};
  ::poll(&wait, 1, -1);
}

}  // namespace

int RunToEnd(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  pid_t child = 0;
  if (::posix_spawn(&child, pointers[0], nullptr, nullptr, pointers.data(), StartEnvironment()) != 0) return -1;
  const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, child, 0)));
  if (process) WaitFor(process);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace onlinux
