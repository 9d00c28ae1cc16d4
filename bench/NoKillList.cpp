#include "Pairs.h"
#include "platform/simulated/Desktop.h"
#include "process/KillLists.h"
#include "runtime/LineReader.h"

namespace {

constexpr auto ListPath = "C:\\nokilllist.txt";

// Patterns of all kinds, none of which fits.
void WriteList(simulated::Desktop& desktop, int lines) {
  constexpr const char* kinds[] = {"program-", "Tool?-", "*driver*", "game#[0-9a-f]", "; a remark "};
  auto& bytes = desktop.files[ListPath].bytes;
  for (int i = 0; i < lines; ++i) bytes += kinds[i % 5] + std::to_string(i) + ".exe\r\n";
  velmaro::NoKillListPath = ListPath;
}

void AskGuard(benchmark::State& state) {
  simulated::Desktop desktop;
  WriteList(desktop, 10000);
  for (auto _ : state)
    if (!velmaro::CanKillProcess("explorer.exe")) state.SkipWithError("the list fits");
}

// The file alone, line by line.
void ReadLines(benchmark::State& state) {
  simulated::Desktop desktop;
  WriteList(desktop, 10000);
  std::string line;
  for (auto _ : state)
    for (velmaro::LineReader file(ListPath); file.ReadLine(line);) benchmark::DoNotOptimize(line.data());
}

}  // namespace

std::vector<Pair> NoKillListPairs() { return {{"no-kill list of 10,000 lines", AskGuard, ReadLines}}; }
