#include "platform/linux/ground/Say.h"

#include <signal.h>
#include <unistd.h>

namespace onlinux {

void Say(const std::string& line) {
  // Nobody may read it any more, and this program must not end by that.
  struct sigaction ignore {};
  struct sigaction before {};
  ignore.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &ignore, &before);
  const auto text = "velmaro: " + line + '\n';
  [[maybe_unused]] const auto written = ::write(STDERR_FILENO, text.data(), text.size());
  ::sigaction(SIGPIPE, &before, nullptr);
}

}  // namespace onlinux
