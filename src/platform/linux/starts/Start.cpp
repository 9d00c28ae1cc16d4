#include "platform/linux/starts/Start.h"

#include <fcntl.h>
#include <linux/close_range.h>
#include <sched.h>
#include <signal.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstddef>
#include <optional>

#include "platform/linux/ground/Environment.h"
#include "platform/linux/ground/Words.h"

namespace onlinux {
namespace {

// What the started program would otherwise take over from this one. Only calls that are safe behind a fork.
void BecomeOfItsOwn(const char* folder) {
  ::setsid();
  sigset_t none;
  ::sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  ::signal(SIGPIPE, SIG_DFL);
  if (*folder && ::chdir(folder) != 0 && ::chdir("/") != 0) ::_exit(1);
  const int nothing = ::open("/dev/null", O_RDONLY);
  if (nothing > 0) ::dup2(nothing, STDIN_FILENO);
  ::syscall(SYS_close_range, 3U, ~0U, CLOSE_RANGE_CLOEXEC);
}

struct Plan {
  const char* path;
  char* const* words;
  const char* folder;
  std::uint32_t priorityClass;
  Apart apart;
};

// Runs in the second child.
int Run(void* told) {
  auto& plan = *static_cast<Plan*>(told);
  BecomeOfItsOwn(plan.folder);
  plan.apart.id = ::getpid();
  plan.apart.taken = TakeClass(plan.priorityClass);
  if (!TakeUnit(plan.apart.taken, true)) TakeGroup(plan.apart.taken.got);
  ::execve(plan.path, plan.words, StartEnvironment());
  plan.apart.error = errno;
  return 1;
}

// Runs in the first child: the program is a child of that one, and of nobody once it has ended. Both children use this
// process's memory, which waits for them meanwhile, so what comes of it needs no other way back. The second one has a
// stack of its own: what a sanitizer remembers of a vfork is lost by another one inside.
[[noreturn]] void Fork(Plan& plan) {
  alignas(std::max_align_t) std::array<char, 1 << 18> stack;
  if (::clone(Run, stack.data() + stack.size(), CLONE_VM | CLONE_VFORK | SIGCHLD, &plan) < 0) plan.apart.error = errno;
  ::_exit(0);
}

Apart StartOne(const Command& command, const std::string& folder, std::uint32_t priorityClass) {
  const auto pointers = Pointers(command.words);
  const auto& begins = command.folder.empty() ? folder : command.folder;
  Plan plan{command.path.c_str(), pointers.data(), begins.c_str(), priorityClass, {}};
  // Two copies of the tables of this memory would take as long as the rest of a start.
  const auto child = ::vfork();
  if (child < 0) plan.apart.error = errno;
  if (child == 0) Fork(plan);
  while (child > 0 && ::waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  return plan.apart;
}

}  // namespace

int Become(const Command& command) {
  if (!command.folder.empty() && ::chdir(command.folder.c_str()) != 0 && ::chdir("/") != 0) return errno;
  ::execve(command.path.c_str(), Pointers(command.words).data(), StartEnvironment());
  const auto error = errno;
  const auto other = error == ENOEXEC ? InPlaceOf(command) : std::nullopt;
  if (other) ::execve(other->path.c_str(), Pointers(other->words).data(), StartEnvironment());
  return error;
}

Apart StartApart(const Command& command, const std::string& folder, std::uint32_t priorityClass) {
  const auto apart = StartOne(command, folder, priorityClass);
  const auto other = apart.error == ENOEXEC ? InPlaceOf(command) : std::nullopt;
  return other ? StartOne(*other, folder, priorityClass) : apart;
}

}  // namespace onlinux
