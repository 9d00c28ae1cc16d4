// clang-format off
#include <windows.h>
#include <tlhelp32.h>
// clang-format on

#include "Compare.h"

unsigned long BareWalk() {
  unsigned long read = 0;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry))
    read += entry.th32ProcessID + static_cast<unsigned long>(entry.pcPriClassBase) + entry.szExeFile[0];
  CloseHandle(snapshot);
  return read;
}
