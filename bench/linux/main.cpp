#include <cstdio>

#include "../Times.h"
#include "Compare.h"

void PrintRatio(const Way& program, const Way& other) {
  const auto programTime = Median(program.times);
  const auto otherTime = Median(other.times);
  std::printf("%-36s %8.2f ms, %-28s %8.2f ms: %5.2f times its time\n", program.name.c_str(), programTime,
              other.name.c_str(), otherTime, programTime / otherTime);
}

int main() {
  try {
    CompareWalks();
    CompareStarts();
    CompareShares();
  } catch (const Failure& failure) {
    std::printf("FAILED: %s\n", failure.what());
    return 1;
  }
  return 0;
}
