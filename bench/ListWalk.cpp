#include "ListForm.h"
#include "Pairs.h"
#include "platform/kernel32.h"
#include "platform/simulated/Desktop.h"
#include "process/WalkProcesses.h"
#include "runtime/Application.h"

namespace {

void RunProcesses(simulated::Desktop& desktop, int count) {
  constexpr std::int32_t priorities[] = {8, 8, 8, 13, 4, 24, 9, 10};
  for (int i = 0; i < count; ++i)
    desktop.AddProcess("Program-" + std::to_string(i) + ".exe", priorities[static_cast<std::size_t>(i) % 8]);
}

void FillList(benchmark::State& state, int count) {
  simulated::Desktop desktop;
  velmaro::Application application;
  RunProcesses(desktop, count);
  auto& form = application.New<ListForm>();
  for (auto _ : state) velmaro::WalkProcesses("", 0, true, &form.list);
  if (form.list.ListCount() != count) state.SkipWithError("rows are missing");
}

// The platform's calls alone; every entry is read.
void ReadSnapshot(benchmark::State& state, int count) {
  simulated::Desktop desktop;
  RunProcesses(desktop, count);
  for (auto _ : state) {
    platform::PROCESSENTRY32 entry;
    entry.dwSize = sizeof entry;
    const platform::OwnedHandle snapshot(platform::CreateToolhelp32Snapshot(platform::TH32CS_SNAPPROCESS));
    for (bool more = platform::Process32First(snapshot.get(), entry); more;
         more = platform::Process32Next(snapshot.get(), entry))
      benchmark::DoNotOptimize(entry);
  }
}

Pair PairOf(const std::string& name, int count) {
  return {name, [count](benchmark::State& state) { FillList(state, count); },
          [count](benchmark::State& state) { ReadSnapshot(state, count); }};
}

}  // namespace

std::vector<Pair> ListWalkPairs() {
  return {PairOf("list walk of 1,000 processes", 1000), PairOf("list walk of 10,000 processes", 10000)};
}
