#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>
#include <vector>

// What two ways to do the same work cost, measured side by side in one run.
struct Pair {
  std::string name;
  std::function<void(benchmark::State&)> program;  // as the program does it
  std::function<void(benchmark::State&)> bare;     // the bare work
};

// The pairs of each subject.
std::vector<Pair> ListWalkPairs();
std::vector<Pair> FreeMemoryPairs();
std::vector<Pair> NoKillListPairs();
