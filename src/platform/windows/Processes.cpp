#include <algorithm>
#include <cstring>

#include "platform/windows/ClassNumbers.h"
#include "platform/windows/Codepage.h"
#include "platform/windows/System.h"

namespace platform {
namespace {

// Cuts at a whole character what the record has no room for.
void SetName(char (&name)[260], const wchar_t* wide) {
  const auto bytes = Narrow(wide);
  std::size_t length = 0;
  while (length < bytes.size()) {
    const auto next = length + CharacterLength(std::string_view(bytes).substr(length));
    if (next >= sizeof name) break;
    length = next;
  }
  std::memcpy(name, bytes.data(), length);
  std::memset(name + length, 0, sizeof name - length);
}

template <class Step>
bool Deliver(Step step, Handle snapshot, PROCESSENTRY32& entry) {
  if (entry.dwSize != sizeof entry) return false;
  PROCESSENTRY32W wide{};
  wide.dwSize = sizeof wide;
  if (!step(ToNative<HANDLE>(snapshot), &wide)) return false;
  entry.cntUsage = wide.cntUsage;
  entry.th32ProcessID = wide.th32ProcessID;
  entry.th32DefaultHeapID = static_cast<std::uint32_t>(wide.th32DefaultHeapID);
  entry.th32ModuleID = wide.th32ModuleID;
  entry.cntThreads = wide.cntThreads;
  entry.th32ParentProcessID = wide.th32ParentProcessID;
  entry.pcPriClassBase = BasePriority(wide.pcPriClassBase);
  entry.dwFlags = wide.dwFlags;
  SetName(entry.szExeFile, wide.szExeFile);
  return true;
}

}  // namespace

Handle CreateToolhelp32Snapshot(std::uint32_t flags) {
  const auto snapshot = ::CreateToolhelp32Snapshot(flags, 0);
  if (snapshot != INVALID_HANDLE_VALUE) LearnClassNumbers(snapshot);
  return ToNumber(snapshot);
}

bool Process32First(Handle snapshot, PROCESSENTRY32& entry) { return Deliver(&::Process32FirstW, snapshot, entry); }

bool Process32Next(Handle snapshot, PROCESSENTRY32& entry) { return Deliver(&::Process32NextW, snapshot, entry); }

Handle OpenProcess(std::uint32_t access, bool inherit, std::uint32_t processId) {
  return ToNumber(::OpenProcess(access, inherit, processId));
}

bool SetPriorityClass(Handle process, std::uint32_t priorityClass) {
  return ::SetPriorityClass(ToNative<HANDLE>(process), priorityClass);
}

bool TerminateProcess(Handle process, std::uint32_t exitCode) {
  return ::TerminateProcess(ToNative<HANDLE>(process), exitCode);
}

void CloseHandle(Handle handle) {
  if (handle != 0 && handle != InvalidHandle) ::CloseHandle(ToNative<HANDLE>(handle));
}

void Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

}  // namespace platform
