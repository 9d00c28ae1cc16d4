// What the system itself tells of processes and settings.

#include <array>

#include "Drive.h"

namespace drive {
namespace {

constexpr auto SettingsPath = L"Software\\Velmaro\\Settings";

OwnedHandle Open(DWORD process, DWORD access) { return OwnedHandle(::OpenProcess(access, FALSE, process)); }

std::map<std::wstring, std::wstring> AllSettings() {
  std::map<std::wstring, std::wstring> all;
  HKEY key = nullptr;
  if (::RegOpenKeyExW(HKEY_CURRENT_USER, SettingsPath, 0, KEY_READ, &key) != ERROR_SUCCESS) return all;
  for (DWORD i = 0;; ++i) {
    std::array<wchar_t, 300> name{};
    std::wstring value(40000, L'\0');
    auto length = static_cast<DWORD>(name.size());
    auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    if (::RegEnumValueW(key, i, name.data(), &length, nullptr, nullptr, reinterpret_cast<BYTE*>(value.data()),
                        &bytes) != ERROR_SUCCESS)
      break;
    all[name.data()] = value.c_str();
  }
  ::RegCloseKey(key);
  return all;
}

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

Settings::Settings() : before_(AllSettings()) { ::RegDeleteTreeW(HKEY_CURRENT_USER, SettingsPath); }

Settings::~Settings() {
  ::RegDeleteTreeW(HKEY_CURRENT_USER, SettingsPath);
  for (const auto& [key, value] : before_) Write(key, value);
}

std::wstring Settings::Read(const std::wstring& key) const {
  const auto all = AllSettings();
  const auto at = all.find(key);
  return at == all.end() ? L"(none)" : at->second;
}

void Settings::Write(const std::wstring& key, const std::wstring& value) const {
  ::RegSetKeyValueW(HKEY_CURRENT_USER, SettingsPath, key.c_str(), REG_SZ, value.c_str(),
                    static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
}

}  // namespace drive
