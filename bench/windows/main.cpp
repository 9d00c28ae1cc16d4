#include <cstdio>
#include <vector>

#include "../Times.h"
#include "Compare.h"

namespace {

void Often(const std::function<void()>& work) {
  for (int i = 0; i < 20; ++i) work();
}

}  // namespace

void Compare(const std::string& what, int rounds, const std::function<void()>& program,
             const std::function<void()>& bare, const std::function<void()>& tidy, double wanted) {
  std::vector<double> programTimes;
  std::vector<double> bareTimes;
  for (int i = 0; i < rounds; ++i) {
    programTimes.push_back(MillisecondsOf(program));
    tidy();
    bareTimes.push_back(MillisecondsOf(bare));
    tidy();
  }
  const auto programTime = Median(programTimes);
  const auto bareTime = Median(bareTimes);
  std::printf("%-52s %8.2f ms, bare %8.2f ms: %5.2f times the bare work", what.c_str(), programTime, bareTime,
              programTime / bareTime);
  if (wanted > 0) std::printf(", wanted: at most %.2f", wanted);
  std::printf("\n");
}

int main() {
  Compare(
      "20 list walks, against Toolhelp alone", 31, [] { Often(WalkIntoList); }, [] { Often(BareWalk); }, [] {});
  const bool started = CompareStarts();
  return CompareAttended() && started ? 0 : 1;
}
