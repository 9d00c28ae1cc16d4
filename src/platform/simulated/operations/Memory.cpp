#include <algorithm>
#include <cstdlib>

#include "platform/kernel32.h"
#include "platform/simulated/Desktop.h"

namespace platform {

void GlobalMemoryStatus(MEMORYSTATUS& status) {
  const auto& memory = simulated::TheDesktop().memory;
  status = {.dwTotalPhys = memory.total, .dwAvailPhys = memory.available};
}

// The blocks come from the C heap, so that a checked build sees every misuse of them.
void* VirtualAlloc(std::size_t bytes) {
  auto& memory = simulated::TheDesktop().memory;
  ++memory.claims;
  if (memory.failEvery != 0 && memory.claims % memory.failEvery == 0) return nullptr;
  auto* block = std::calloc(bytes, 1);
  if (!block) return nullptr;
  memory.live[block] = bytes;
  memory.liveBytes += bytes;
  memory.available -= std::min<std::uint64_t>(memory.available, bytes);
  memory.peakBytes = std::max(memory.peakBytes, memory.liveBytes);
  memory.peakBlocks = std::max(memory.peakBlocks, memory.live.size());
  return block;
}

void VirtualFree(void* block, std::size_t bytes) {
  if (!block) return;
  auto& desktop = simulated::TheDesktop();
  auto& memory = desktop.memory;
  const auto at = memory.live.find(block);
  if (at == memory.live.end() || at->second != bytes) {
    desktop.misuse.push_back("a block that was not claimed so was given back");
    return;
  }
  memory.live.erase(at);
  memory.released.push_back(block);
  memory.liveBytes -= bytes;
  memory.available = std::min<std::uint64_t>(memory.total, memory.available + bytes);
  std::free(block);
}

}  // namespace platform
