#include "platform/windows/ground/System.h"

namespace platform {

void GlobalMemoryStatus(MEMORYSTATUS& status) {
  MEMORYSTATUSEX figures{};
  figures.dwLength = sizeof figures;
  if (!::GlobalMemoryStatusEx(&figures)) return;
  status.dwTotalPhys = figures.ullTotalPhys;
  status.dwAvailPhys = figures.ullAvailPhys;
}

void* VirtualAlloc(std::size_t bytes) {
  return ::VirtualAlloc(nullptr, bytes, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}

void VirtualFree(void* block, std::size_t) { ::VirtualFree(block, 0, MEM_RELEASE); }

}  // namespace platform
