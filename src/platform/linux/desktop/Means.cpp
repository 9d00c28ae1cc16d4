#include "platform/linux/desktop/Means.h"

#include <fcntl.h>
#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <latch>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {
namespace {

bool CanMakeThreads(int count) {
  std::latch seen(1);
  std::vector<std::jthread> threads;
  bool made = true;
  try {
    while (count-- > 0) threads.emplace_back([&seen] { seen.wait(); });
  } catch (const std::system_error&) {
    made = false;
  }
  seen.count_down();
  return made;
}

bool CanOpenFiles() {
  std::array<Descriptor, 8> files;
  for (auto& file : files) file = Descriptor(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  return std::ranges::all_of(files, [](const Descriptor& file) { return static_cast<bool>(file); });
}

bool CanHaveMemory() {
  constexpr std::size_t size = 16 << 20;
  void* const memory = ::mmap(nullptr, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  return memory != MAP_FAILED && ::munmap(memory, size) == 0;
}

}  // namespace

bool HasMeansForToolkit() { return CanMakeThreads(2) && CanOpenFiles() && CanHaveMemory(); }

}  // namespace onlinux
