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

DWORD ClassOf(DWORD process) { return ::GetPriorityClass(Open(process, PROCESS_QUERY_LIMITED_INFORMATION).get()); }

void SetClass(DWORD process, DWORD priorityClass) {
  EXPECT_TRUE(::SetPriorityClass(Open(process, PROCESS_SET_INFORMATION).get(), priorityClass));
}

void End(DWORD process) {
  const auto opened = Open(process, PROCESS_TERMINATE | SYNCHRONIZE);
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
  DWORD count = 0;
  return ::GetProcessHandleCount(Open(process, PROCESS_QUERY_INFORMATION).get(), &count) ? count : 0;
}

Settings::Settings() { ::RegDeleteTreeW(HKEY_CURRENT_USER, SettingsPath); }

std::wstring Settings::Read(const std::wstring& key) const {
  std::wstring value(40000, L'\0');
  auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
  ::RegGetValueW(HKEY_CURRENT_USER, SettingsPath, key.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &bytes);
  return value.c_str();
}

void Settings::Write(const std::wstring& key, const std::wstring& value) const {
  ::RegSetKeyValueW(HKEY_CURRENT_USER, SettingsPath, key.c_str(), REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

}  // namespace drive
