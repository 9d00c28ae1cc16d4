#include "platform/linux/ground/StandardStreams.h"

#include <fcntl.h>
#include <unistd.h>

namespace onlinux {

[[gnu::constructor]] void OpenStandardStreams() {
  for (int standard = 0; standard <= STDERR_FILENO; ++standard)
    if (::fcntl(standard, F_GETFD) < 0) ::open("/dev/null", O_RDWR | O_CLOEXEC);
}

}  // namespace onlinux
