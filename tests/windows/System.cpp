// What the system itself tells of processes and settings.

#include <array>

#include "Drive.h"

namespace drive {
namespace {

constexpr auto SettingsPath = L"Software\\Velmaro\\Settings";

OwnedHandle Open(DWORD process, DWORD access) { return OwnedHandle(::OpenProcess(access, FALSE, process)); }

}  // namespace

std::vector<Process> Processes() {
  const OwnedHandle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  std::vector<Process> processes;
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (auto more = ::Process32FirstW(snapshot.get(), &entry); more; more = ::Process32NextW(snapshot.get(), &entry))
    processes.push_back({entry.th32ProcessID, entry.szExeFile});
  return processes;
}

DWORD ClassOf(DWORD process) {
  const auto opened = Open(process, PROCESS_QUERY_LIMITED_INFORMATION);
  return opened ? ::GetPriorityClass(opened.get()) : 0;
}

bool SetClass(DWORD process, DWORD priorityClass) {
  const auto opened = Open(process, PROCESS_SET_INFORMATION);
  return opened && ::SetPriorityClass(opened.get(), priorityClass);
}

void End(DWORD process) {
  const auto opened = Open(process, PROCESS_TERMINATE | SYNCHRONIZE);
  if (!opened) return;
  ::TerminateProcess(opened.get(), 1);
  ::WaitForSingleObject(opened.get(), 5000);
}

std::size_t PrivateBytes(DWORD process) {
  const auto opened = Open(process, PROCESS_QUERY_INFORMATION | PROCESS_VM_READ);
  PROCESS_MEMORY_COUNTERS memory{};
  memory.cb = sizeof memory;
  return ::K32GetProcessMemoryInfo(opened.get(), &memory, sizeof memory) ? memory.PagefileUsage : 0;
}

DWORD Handles(DWORD process) {
  const auto opened = Open(process, PROCESS_QUERY_INFORMATION);
  DWORD count = 0;
  return ::GetProcessHandleCount(opened.get(), &count) ? count : 0;
}

Settings::Settings() { ::RegDeleteTreeW(HKEY_CURRENT_USER, SettingsPath); }

std::wstring Settings::Read(const std::wstring& key) const {
  std::wstring value(40000, L'\0');
  auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
  const bool found = ::RegGetValueW(HKEY_CURRENT_USER, SettingsPath, key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(),
                                    &bytes) == ERROR_SUCCESS;
  return found ? value.c_str() : L"(none)";
}

void Settings::Write(const std::wstring& key, const std::wstring& value) const {
  ::RegSetKeyValueW(HKEY_CURRENT_USER, SettingsPath, key.c_str(), REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

}  // namespace drive
