#include "Children.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "Compare.h"
#include "platform/linux/processes/EndProcess.h"

pid_t ForkBound(const std::function<void()>& work) {
  const auto parent = ::getpid();
  const auto child = ::fork();
  if (child < 0) throw Failure(std::string("no process can be forked: ") + std::strerror(errno));
  if (child > 0) return child;
  ::prctl(PR_SET_PDEATHSIG, SIGKILL);
  // A parent that ended before this sends no signal any more.
  if (::getppid() == parent) work();
  ::_exit(127);
}

pid_t StartSilent(const std::vector<std::string>& words) {
  std::vector<char*> pointers;
  for (const auto& word : words) pointers.push_back(const_cast<char*>(word.c_str()));
  pointers.push_back(nullptr);
  return ForkBound([&] {
    const int nothing = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::dup2(nothing, standard);
    ::execv(pointers[0], pointers.data());
  });
}

bool Reap(pid_t child) {
  int status = 0;
  return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// Once the other constructor is through, what fails here ends in the destructor too.
IdleChildren::IdleChildren(int count) : IdleChildren() {
  while (static_cast<int>(ids_.size()) < count)
    ids_.push_back(ForkBound([] {
      while (true) ::pause();
    }));
}

IdleChildren::~IdleChildren() {
  for (const auto id : ids_) onlinux::EndProcess(id);
  for (const auto id : ids_) Reap(id);
}
