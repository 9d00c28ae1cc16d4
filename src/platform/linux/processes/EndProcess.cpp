#include "platform/linux/processes/EndProcess.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>

namespace onlinux {

Descriptor HoldProcess(pid_t id) { return Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))); }

bool HasEnded(const Descriptor& held, int withinMilliseconds) {
  if (!held) return false;
  pollfd wait{.fd = held.get(), .events = POLLIN, .revents = 0};
  int ended = 0;
  while ((ended = ::poll(&wait, 1, withinMilliseconds)) < 0 && errno == EINTR) continue;
  return ended > 0;
}

bool EndProcess(pid_t id, const Descriptor& held, int signal) {
  if (id < 2) return false;

  if (held) return ::syscall(SYS_pidfd_send_signal, held.get(), signal, nullptr, 0) == 0;
  return ::kill(id, signal) == 0;
}

bool EndProcess(pid_t id, int signal) { return EndProcess(id, HoldProcess(id), signal); }

}  // namespace onlinux
