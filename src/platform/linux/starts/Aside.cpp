#include "platform/linux/starts/Aside.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>

#include "platform/kernel32.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/SetClass.h"

namespace onlinux {
namespace {

void CloseFrom(int first, int last) {
  if (first <= last) ::syscall(SYS_close_range, first, last, 0);
}

[[noreturn]] void Work(int kept, const std::function<void()>& work) {
  ::setsid();
  ::prctl(PR_SET_NAME, AsideName);
  if (::chdir("/") != 0) ::_exit(1);
  // Whoever reads what the program writes must not wait for this process too.
  const int nothing = ::open("/dev/null", O_RDWR);
  for (int standard = 0; standard <= STDERR_FILENO; ++standard)
    if (standard != kept) ::dup2(nothing, standard);
  CloseFrom(STDERR_FILENO + 1, kept - 1);
  ::syscall(SYS_close_range, static_cast<unsigned>(kept < 0 ? STDERR_FILENO : kept) + 1, ~0U, 0);
  SetThreadClass(0, platform::NORMAL_PRIORITY_CLASS);
  work();
  ::_exit(0);
}

}  // namespace

void DoAside(int kept, const std::function<void()>& work) {
  // The process in between makes the other one nobody's child. It copies nothing, since it ends at once.
  const auto between = ::vfork();
  if (between == 0) {
    if (::fork() == 0) Work(kept, work);
    ::_exit(0);
  }
  while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) continue;
}

int ErrorOutputToKeep() {
  struct stat status {};
  const bool isThere = ::fstat(STDERR_FILENO, &status) == 0;
  return isThere && (S_ISCHR(status.st_mode) || S_ISREG(status.st_mode)) ? STDERR_FILENO : -1;
}

}  // namespace onlinux
