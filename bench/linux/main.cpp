#include <sched.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>

#include "../Times.h"
#include "Compare.h"

namespace {

// Both sides run on one core, the last: what comes to the caches of another one would be luck.
void StayOnOneCore() {
  cpu_set_t core;
  CPU_ZERO(&core);
  CPU_SET(static_cast<std::size_t>(::sysconf(_SC_NPROCESSORS_ONLN) - 1), &core);
  ::sched_setaffinity(0, sizeof core, &core);
}

}  // namespace

void PrintRatio(const Way& program, const Way& other, double wanted) {
  const auto programTime = Median(program.times);
  const auto otherTime = Median(other.times);
  std::printf("%-36s %8.2f ms, %-28s %8.2f ms: %5.2f times its time", program.name.c_str(), programTime,
              other.name.c_str(), otherTime, programTime / otherTime);
  if (wanted > 0) std::printf(", wanted: at most %.2f", wanted);
  std::printf("\n");
}

// With a word, such as "starts", only that is measured.
int main(int count, char** words) {
  const std::string only = count > 1 ? words[1] : "";
  const auto isWanted = [&](const char* name) { return only.empty() || only == name; };
  try {
    if (double load = 0; ::getloadavg(&load, 1) == 1 && load > 1)
      std::printf("others use this machine (load %.1f): only processor times count\n", load);
    if (isWanted("attended")) CompareAttended();
    StayOnOneCore();
    if (isWanted("walks")) CompareWalks();
    if (isWanted("starts")) CompareStarts();
    if (isWanted("shares")) CompareShares();
  } catch (const Failure& failure) {
    std::printf("FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
