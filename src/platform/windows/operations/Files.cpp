#include <algorithm>
#include <vector>

#include "platform/windows/ground/Codepage.h"
#include "platform/windows/ground/System.h"

namespace platform {
namespace {

struct Opening {
  DWORD access;
  DWORD disposition;
};

Opening OpeningFor(FileAccess access) {
  switch (access) {
    case FileAccess::Over:
      return {GENERIC_READ | GENERIC_WRITE, OPEN_ALWAYS};
    case FileAccess::Append:
      return {FILE_APPEND_DATA | SYNCHRONIZE, OPEN_ALWAYS};
    case FileAccess::Binary:
      return {GENERIC_READ, OPEN_ALWAYS};
    default:
      return {GENERIC_READ, OPEN_EXISTING};
  }
}

// Whoever wants to replace or remove the file meanwhile may do so.
HANDLE Create(const std::string& path, Opening opening, DWORD flags = FILE_ATTRIBUTE_NORMAL) {
  return ::CreateFileW(Widen(path).c_str(), opening.access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                       nullptr, opening.disposition, flags, nullptr);
}

// The names that a file has.
DWORD CountNames(const std::string& path) {
  const OwnedFile file(ToNumber(Create(path, {FILE_READ_ATTRIBUTES, OPEN_EXISTING})));
  BY_HANDLE_FILE_INFORMATION facts{};
  return ::GetFileInformationByHandle(ToNative<HANDLE>(file.get()), &facts) ? facts.nNumberOfLinks : 0;
}

// The owner of a file and who may do what with it; empty where that can't be read.
std::vector<char> RightsOf(const std::string& path) {
  constexpr SECURITY_INFORMATION wanted = OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION;
  const auto name = Widen(path);
  DWORD size = 0;
  ::GetFileSecurityW(name.c_str(), wanted, nullptr, 0, &size);
  std::vector<char> rights(size);
  return ::GetFileSecurityW(name.c_str(), wanted, rights.data(), size, &size) ? rights : std::vector<char>();
}

// Gives a new file the marks of an old one. False where it would be another one to somebody: a link, a file of several
// names or of an owner or rights of its own.
bool CanReplace(const std::string& from, const std::string& to, DWORD marks) {
  constexpr DWORD own = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_ENCRYPTED;
  return !(marks & own) && CountNames(to) == 1 && RightsOf(from) == RightsOf(to) &&
         ::SetFileAttributesW(Widen(from).c_str(), marks);
}

}  // namespace

Handle CreateFileA(const std::string& path, FileAccess access) {
  OwnedFile file(ToNumber(Create(path, OpeningFor(access))));
  const bool reads = access == FileAccess::Read || access == FileAccess::Binary;
  // A pipe or a device may never come to an end.
  if (reads && file && ::GetFileType(ToNative<HANDLE>(file.get())) != FILE_TYPE_DISK) return InvalidHandle;
  return file.Release();
}

std::optional<std::size_t> ReadFile(Handle file, void* buffer, std::size_t bytes) {
  DWORD read = 0;
  const auto most = static_cast<DWORD>(std::min<std::size_t>(bytes, 1U << 30));
  if (!::ReadFile(ToNative<HANDLE>(file), buffer, most, &read, nullptr)) return std::nullopt;
  return read;
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

bool Rewind(Handle file) { return ::SetFilePointerEx(ToNative<HANDLE>(file), LARGE_INTEGER{}, nullptr, FILE_BEGIN); }

bool SetFileLength(Handle file, std::size_t bytes) {
  const auto native = ToNative<HANDLE>(file);
  const LARGE_INTEGER none{};
  LARGE_INTEGER before{};
  LARGE_INTEGER length{};
  length.QuadPart = static_cast<LONGLONG>(bytes);
  return ::SetFilePointerEx(native, none, &before, FILE_CURRENT) &&
         ::SetFilePointerEx(native, length, nullptr, FILE_BEGIN) && ::SetEndOfFile(native) &&
         ::SetFilePointerEx(native, before, nullptr, FILE_BEGIN);
}

bool FlushFileBuffers(Handle file) {
  // Some disks know no such call.
  return ::FlushFileBuffers(ToNative<HANDLE>(file)) || ::GetLastError() == ERROR_INVALID_FUNCTION;
}

bool IsThere(const std::string& path) {
  if (::GetFileAttributesW(Widen(path).c_str()) != INVALID_FILE_ATTRIBUTES) return true;
  constexpr DWORD missing[] = {ERROR_FILE_NOT_FOUND, ERROR_PATH_NOT_FOUND, ERROR_INVALID_NAME, ERROR_BAD_PATHNAME,
                               ERROR_FILENAME_EXCED_RANGE};
  return std::ranges::find(missing, ::GetLastError()) == std::end(missing);
}

std::int64_t GetFileLength(const std::string& path) {
  WIN32_FILE_ATTRIBUTE_DATA data{};
  if (!::GetFileAttributesExW(Widen(path).c_str(), GetFileExInfoStandard, &data)) return -1;
  if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) return -1;
  return static_cast<std::int64_t>(data.nFileSizeHigh) << 32 | data.nFileSizeLow;
}

bool IsWriteProtected(const std::string& path) {
  // An administrator of another system below this one may write in spite of the mark.
  const auto marks = ::GetFileAttributesW(Widen(path).c_str());
  if (marks != INVALID_FILE_ATTRIBUTES && (marks & FILE_ATTRIBUTE_READONLY)) return true;
  const OwnedFile file(ToNumber(Create(path, {FILE_WRITE_DATA, OPEN_EXISTING})));
  return !file && ::GetLastError() == ERROR_ACCESS_DENIED;
}

Replacement CreateReplacement(const std::string& path) {
  Replacement replacement{.target = path};
  for (int number = 0; number < 1000; ++number) {
    replacement.name = path + '.' + std::to_string(number) + ".tmp";
    const auto file = Create(replacement.name, {GENERIC_WRITE, CREATE_NEW}, FILE_FLAG_OPEN_REPARSE_POINT);
    if (file != INVALID_HANDLE_VALUE) {
      replacement.file.Reset(ToNumber(file));
      break;
    }
    if (::GetLastError() != ERROR_FILE_EXISTS) break;
  }
  return replacement;
}

bool TakePlace(Replacement& replacement) {
  const auto& [file, folder, from, to] = replacement;
  replacement.file.Reset();
  const auto marks = ::GetFileAttributesW(Widen(to).c_str());
  const bool fits = marks == INVALID_FILE_ATTRIBUTES || CanReplace(from, to, marks);
  constexpr DWORD way = MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH;
  if (fits && ::MoveFileExW(Widen(from).c_str(), Widen(to).c_str(), way)) return true;
  Discard(replacement);
  return false;
}

void Discard(Replacement& replacement) {
  replacement.file.Reset();
  ::DeleteFileW(Widen(replacement.name).c_str());
}

}  // namespace platform
