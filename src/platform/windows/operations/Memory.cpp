#include "platform/windows/ground/System.h"

namespace platform {

void GlobalMemoryStatus(MEMORYSTATUS& status) {
  MEMORYSTATUSEX figures{};
  figures.dwLength = sizeof figures;
  if (!::GlobalMemoryStatusEx(&figures)) return;
  status.dwTotalPhys = figures.ullTotalPhys;
  status.dwAvailPhys = figures.ullAvailPhys;
}

namespace {

// What is left alone, so that neither this program nor another one fails for want of it.
constexpr std::uint64_t KeptAddresses = 64U << 20;
constexpr std::uint64_t KeptCommit = 256U << 20;

bool HasRoom(std::size_t bytes) {
  MEMORYSTATUSEX figures{};
  figures.dwLength = sizeof figures;
  return !::GlobalMemoryStatusEx(&figures) ||
         (figures.ullAvailVirtual >= KeptAddresses + bytes && figures.ullAvailPageFile >= KeptCommit + bytes);
}

}  // namespace

void* VirtualAlloc(std::size_t bytes) {
  if (!HasRoom(bytes)) return nullptr;
  return ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void VirtualFree(void* block, std::size_t) { ::VirtualFree(block, 0, MEM_RELEASE); }

}  // namespace platform
