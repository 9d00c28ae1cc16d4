#include "platform/identity.h"

#include "platform/kernel32.h"
#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {

Handle CreateListSnapshot() { return CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS); }

bool CommandsMeanTheRow() { return false; }

std::uint64_t ProcessIdentity(Handle) { return 0; }

bool NamesAreWholeParts() { return false; }

std::vector<std::string> MoreNames(Handle) { return {}; }

std::vector<std::string> NamesOf(Handle process) {
  const auto id = process != 0 ? ::GetProcessId(ToNative<HANDLE>(process)) : 0;
  const OwnedHandle snapshot(ToNumber(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0)));
  const auto entries = ToNative<HANDLE>(snapshot.get());
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL more = ::Process32FirstW(entries, &entry); id != 0 && more; more = ::Process32NextW(entries, &entry))
    if (entry.th32ProcessID == id) return {Narrow(entry.szExeFile)};
  return {};
}

std::string ResolvedPath(const std::string& path) { return path; }

std::string_view NativeEmulators() { return {}; }

}  // namespace platform
