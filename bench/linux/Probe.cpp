// Started as "velmaro_bench_probe PIPE NICE": reports when it runs, and when it does so at that nice value.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

#include "Clock.h"

int main(int count, char** words) {
  ProbeReport report{.began = Now(), .settled = 0, .nice = 0};
  if (count != 3) return 2;
  const int wanted = std::atoi(words[2]);
  constexpr double patience = 2000;
  while ((report.nice = ::getpriority(PRIO_PROCESS, 0)) != wanted && Now() - report.began < patience) {
    const timespec pause{.tv_sec = 0, .tv_nsec = 20'000};
    ::nanosleep(&pause, nullptr);
  }
  report.settled = Now();
  const int pipe = ::open(words[1], O_WRONLY | O_CLOEXEC);
  return ::write(pipe, &report, sizeof report) == static_cast<ssize_t>(sizeof report) ? 0 : 1;
}
