#include <algorithm>

#include "platform/windows/Codepage.h"
#include "platform/windows/System.h"

namespace platform {
namespace {

struct Opening {
  DWORD access;
  DWORD disposition;
};

Opening OpeningFor(FileAccess access) {
  switch (access) {
    case FileAccess::Write:
      return {GENERIC_WRITE, CREATE_ALWAYS};
    case FileAccess::Append:
      return {FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS};
    case FileAccess::Binary:
      return {GENERIC_READ, OPEN_ALWAYS};
    default:
      return {GENERIC_READ, OPEN_EXISTING};
  }
}

}  // namespace

Handle CreateFileA(const std::string& path, FileAccess access) {
  const auto opening = OpeningFor(access);
  return ToNumber(::CreateFileW(Widen(path).c_str(), opening.access, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                opening.disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::size_t ReadFile(Handle file, void* buffer, std::size_t bytes) {
  DWORD read = 0;
  const auto most = static_cast<DWORD>(std::min<std::size_t>(bytes, 1U << 30));
  return ::ReadFile(ToNative<HANDLE>(file), buffer, most, &read, nullptr) ? read : 0;
}

bool WriteFile(Handle file, const void* buffer, std::size_t bytes) {
  auto* at = static_cast<const char*>(buffer);
  while (bytes > 0) {
    DWORD written = 0;
    const auto most = static_cast<DWORD>(std::min<std::size_t>(bytes, 1U << 30));
    if (!::WriteFile(ToNative<HANDLE>(file), at, most, &written, nullptr) || written == 0) return false;
    at += written;
    bytes -= written;
  }
  return true;
}

bool FlushFileBuffers(Handle file) { return ::FlushFileBuffers(ToNative<HANDLE>(file)); }

std::int64_t GetFileLength(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!::GetFileAttributesExW(Widen(path).c_str(), GetFileExInfoStandard, &data)) return -1;
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return -1;
  return static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

bool MoveFileReplace(const std::string& from, const std::string& to) {
  return ::MoveFileExW(Widen(from).c_str(), Widen(to).c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

bool DeleteFileA(const std::string& path) { return ::DeleteFileW(Widen(path).c_str()); }

}  // namespace platform
