#include <cstring>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"
#include "platform/windows/ground/SystemLibrary.h"
#include "platform/windows/operations/ClassNumbers.h"

namespace platform {
namespace {

// Leaves the end of a name, as far as the record has room.
void SetName(char (&name)[260], const wchar_t* wide) {
  const auto bytes = Narrow(wide);
  std::string_view end = bytes;
  while (end.size() >= sizeof name) end.remove_prefix(CharacterLength(end));
  std::memcpy(name, end.data(), end.size());
  std::memset(name + end.size(), 0, sizeof name - end.size());
}

using Time = std::uint64_t;

Time ToTime(const FILETIME& time) { return static_cast<Time>(time.dwHighDateTime) << 32 | time.dwLowDateTime; }

// To the fraction of a microsecond where the system can tell it: a coarse clock runs behind the times that it notes.
Time Now() {
  using Clock = void(WINAPI*)(FILETIME*);
  static const auto precise = SystemFunction<Clock>(L"kernel32.dll", "GetSystemTimePreciseAsFileTime");
  FILETIME now;
  precise ? precise(&now) : ::GetSystemTimeAsFileTime(&now);
  return ToTime(now);
}

// When the last snapshot was complete.
Time& Listed() {
  static Time time = 0;
  return time;
}

// True for a process that began after the last snapshot: it has the number of one that was listed there and has ended
// since. One that seems to begin in the future only shows that the clock was set back.
bool IsAnother(HANDLE process) {
  FILETIME began, ended, kernel, user;
  if (!::GetProcessTimes(process, &began, &ended, &kernel, &user)) return false;
  return ToTime(began) > Listed() && ToTime(began) <= Now();
}

// Services and processes of other users can be opened by an administrator who uses this right, which he holds and which
// is off at first. False where the user holds none.
bool UseRightToDebug() {
  HANDLE opened = nullptr;
  if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES, &opened)) return false;
  const OwnedHandle token(ToNumber(opened));
  TOKEN_PRIVILEGES wanted{};
  wanted.PrivilegeCount = 1;
  wanted.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
  return ::LookupPrivilegeValueW(nullptr, L"SeDebugPrivilege", &wanted.Privileges[0].Luid) &&
         ::AdjustTokenPrivileges(opened, FALSE, &wanted, 0, nullptr, nullptr) && ::GetLastError() == ERROR_SUCCESS;
}

// The end of a process that is marked so stops the machine.
bool IsCritical(HANDLE process) {
  using Ask = BOOL(WINAPI*)(HANDLE, BOOL*);
  static const auto ask = SystemFunction<Ask>(L"kernel32.dll", "IsProcessCritical");
  BOOL critical = FALSE;
  if (ask) return ask(process, &critical) && critical;
  // Before Windows 8.1 the mark is told by its number alone.
  using Query = LONG(WINAPI*)(HANDLE, int, void*, ULONG, ULONG*);
  static const auto query = SystemFunction<Query>(L"ntdll.dll", "NtQueryInformationProcess");
  constexpr int breakOnTermination = 29;
  ULONG mark = 0;
  return query && query(process, breakOnTermination, &mark, sizeof mark, nullptr) >= 0 && mark != 0;
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
  Listed() = Now();
  if (snapshot != INVALID_HANDLE_VALUE) LearnClassNumbers(snapshot);
  return ToNumber(snapshot);
}

bool Process32First(Handle snapshot, PROCESSENTRY32& entry) { return Deliver(&::Process32FirstW, snapshot, entry); }

bool Process32Next(Handle snapshot, PROCESSENTRY32& entry) { return Deliver(&::Process32NextW, snapshot, entry); }

Handle OpenProcess(std::uint32_t access, bool inherit, std::uint32_t processId) {
  [[maybe_unused]] static const bool used = UseRightToDebug();
  const auto process = ::OpenProcess(access, inherit, processId);
  if (!process || !IsAnother(process)) return ToNumber(process);
  ::CloseHandle(process);
  return 0;
}

bool SetPriorityClass(Handle process, std::uint32_t priorityClass) {
  return ::SetPriorityClass(ToNative<HANDLE>(process), priorityClass);
}

bool TerminateProcess(Handle process, std::uint32_t exitCode) {
  const auto native = ToNative<HANDLE>(process);
  return !IsCritical(native) && ::TerminateProcess(native, exitCode);
}

bool WaitForEnd(Handle process, std::uint32_t milliseconds) {
  return ::WaitForSingleObject(ToNative<HANDLE>(process), milliseconds) == WAIT_OBJECT_0;
}

void CloseHandle(Handle handle) {
  if (handle != 0 && handle != InvalidHandle) ::CloseHandle(ToNative<HANDLE>(handle));
}

void Sleep(std::uint32_t milliseconds) { ::Sleep(milliseconds); }

}  // namespace platform
