#include <algorithm>
#include <cstring>

#include "Pairs.h"
#include "memory/MemoryBlock.h"
#include "memory/formFreeMem.h"
#include "platform/kernel32.h"
#include "platform/simulated/Desktop.h"
#include "runtime/Application.h"

namespace {

using velmaro::MemoryBlock;

constexpr int Steps = 50;

void UseMemory(simulated::Desktop& desktop) {
  desktop.memory.total = 1024ULL << 20;
  desktop.memory.available = 512ULL << 20;
}

void TellThroughput(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * Steps * 2 * static_cast<std::int64_t>(MemoryBlock::Bytes));
}

void RunFromButton(benchmark::State& state) {
  simulated::Desktop desktop;
  velmaro::Application application;
  UseMemory(desktop);
  auto& form = application.Default<velmaro::formFreeMem>();
  form.Show();
  form.HScroll1.SetValue(Steps);
  for (auto _ : state) form.btnFree_Click();
  if (desktop.memory.peakBlocks != Steps + 1) state.SkipWithError("blocks are missing");
  TellThroughput(state);
}

// The same blocks, filled and copied and given back, and nothing told to anybody.
void FillAndCopy(benchmark::State& state) {
  simulated::Desktop desktop;
  UseMemory(desktop);
  for (auto _ : state) {
    void* blocks[Steps];
    for (auto*& block : blocks) {
      auto* filled = static_cast<char16_t*>(platform::VirtualAlloc(MemoryBlock::Bytes));
      std::fill_n(filled, MemoryBlock::Characters, u' ');
      block = platform::VirtualAlloc(MemoryBlock::Bytes);
      std::memcpy(block, filled, MemoryBlock::Bytes);
      platform::VirtualFree(filled, MemoryBlock::Bytes);
    }
    for (auto* block : blocks) platform::VirtualFree(block, MemoryBlock::Bytes);
  }
  TellThroughput(state);
}

}  // namespace

std::vector<Pair> FreeMemoryPairs() { return {{"free-memory run of 50 blocks", RunFromButton, FillAndCopy}}; }
