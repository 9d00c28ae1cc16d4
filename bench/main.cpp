#include <algorithm>
#include <cstdio>
#include <map>

#include "Pairs.h"

namespace {

// Keeps the median of each benchmark's repetitions: the processor's time in microseconds, which other work on the
// machine does not spoil.
class MedianReporter : public benchmark::ConsoleReporter {
 public:
  MedianReporter() : ConsoleReporter(OO_None) {}

  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const auto& run : runs)
      if (run.aggregate_name == "median") medians[run.run_name.function_name] = run.GetAdjustedCPUTime();
  }

  std::map<std::string, double> medians;
};

void Register(const std::string& name, const std::function<void(benchmark::State&)>& work) {
  benchmark::RegisterBenchmark(name.c_str(), work)
      ->Unit(benchmark::kMicrosecond)
      ->MinTime(0.1)
      ->Repetitions(9)
      ->ReportAggregatesOnly();
}

void PrintRatio(const std::string& name, double program, double bare) {
  std::printf("%-44s %10.1f us, bare %10.1f us: %5.2f times the bare work, %4.0f %% of its speed\n", name.c_str(),
              program, bare, program / bare, 100 * bare / program);
}

}  // namespace

int main(int argc, char** argv) {
  std::vector<Pair> pairs;
  for (const auto& subject : {ListWalkPairs(), FreeMemoryPairs(), NoKillListPairs()})
    pairs.insert(pairs.end(), subject.begin(), subject.end());
  for (const auto& pair : pairs) {
    Register(pair.name, pair.program);
    Register(pair.name + ", bare", pair.bare);
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  MedianReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nMedians of the program's way and of the bare work:\n");
  for (const auto& pair : pairs)
    if (reporter.medians.contains(pair.name) && reporter.medians.contains(pair.name + ", bare"))
      PrintRatio(pair.name, reporter.medians[pair.name], reporter.medians[pair.name + ", bare"]);
  return 0;
}
