#include <sys/mman.h>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/kernel32.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/memory/ControlGroup.h"

namespace platform {
namespace {

// The bytes of a line such as "MemTotal:  16314588 kB".
std::optional<std::uint64_t> ReadFigure(std::string_view text, std::string_view name) {
  const auto at = text.find(name);
  if (at == std::string_view::npos) return std::nullopt;
  auto rest = text.substr(at + name.size());
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
  std::uint64_t kilobytes = 0;
  if (std::from_chars(rest.data(), rest.data() + rest.size(), kilobytes).ec != std::errc()) return std::nullopt;
  return kilobytes * 1024;
}

bool LeavesTooLittle(std::uint64_t total, std::uint64_t left, std::size_t bytes) {
  constexpr std::uint64_t least = 64U << 20;
  return left < bytes + std::max(least, total / 64);
}

// The blocks that are claimed, and how strained the control group was before the first of them.
struct Run {
  std::size_t blocks = 0;
  std::uint64_t strained = 0;
};

Run& TheRun() {
  static Run run;
  return run;
}

// Near the end of its memory, or of that of a control group, the system ends whole programs instead of refusing a
// claim, so some of it is left alone.
bool WouldStarveOthers(std::size_t bytes) {
  MEMORYSTATUS status;
  GlobalMemoryStatus(status);
  if (status.dwTotalPhys != 0 && LeavesTooLittle(status.dwTotalPhys, status.dwAvailPhys, bytes)) return true;
  const auto group = onlinux::ReadGroupMemory();
  if (!group) return false;
  auto& run = TheRun();
  if (run.blocks == 0) run.strained = group->strained;
  // What others in the group claim meanwhile may take what is left before this would be seen in its figures.
  return group->strained > run.strained || LeavesTooLittle(group->limit, group->left, bytes);
}

}  // namespace

void GlobalMemoryStatus(MEMORYSTATUS& status) {
  const auto text = onlinux::ReadWhole("/proc/meminfo");
  const auto total = ReadFigure(text, "MemTotal:");
  const auto available = ReadFigure(text, "MemAvailable:");
  if (total && available) status = {.dwTotalPhys = *total, .dwAvailPhys = *available};
}

void* VirtualAlloc(std::size_t bytes) {
  if (bytes == 0 || WouldStarveOthers(bytes)) return nullptr;
  auto* block = ::mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (block == MAP_FAILED) return nullptr;
  // A claim is filled at once: with large pages that takes one fault where small ones take hundreds.
  ::madvise(block, bytes, MADV_HUGEPAGE);
  ++TheRun().blocks;
  return block;
}

void VirtualFree(void* block, std::size_t bytes) {
  if (!block) return;
  ::munmap(block, bytes);
  --TheRun().blocks;
}

}  // namespace platform
