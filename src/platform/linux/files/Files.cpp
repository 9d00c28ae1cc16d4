#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/kernel32.h"
#include "platform/linux/files/Save.h"
#include "platform/linux/ground/ReadWhole.h"
#include "platform/linux/processes/Handles.h"

namespace onlinux {
namespace {

int FlagsOf(platform::FileAccess access) {
  switch (access) {
    case platform::FileAccess::Over:
      return O_RDWR;
    case platform::FileAccess::Append:
      return O_WRONLY | O_APPEND;
    default:
      return O_RDONLY;
  }
}

// True for what has an end: no folder, pipe or device.
bool IsRegular(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 && S_ISREG(facts.st_mode);
}

bool IsRegular(const Descriptor& file) {
  struct stat facts {};
  return ::fstat(file.get(), &facts) == 0 && S_ISREG(facts.st_mode);
}

// A pipe in the place of a file must not hold the program up.
constexpr int Always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

}  // namespace

}  // namespace onlinux

namespace platform {

Handle CreateFileA(const std::string& path, FileAccess access) {
  const int flags = onlinux::FlagsOf(access) | onlinux::Always;
  const bool writes = access == FileAccess::Over || access == FileAccess::Append;
  onlinux::Descriptor file;
  // To open a device can set it going.
  if (writes || (access == FileAccess::Binary && !IsThere(path)))
    file = onlinux::OpenToWrite(path, flags);
  else if (onlinux::IsRegular(path))
    file.Reset(::open(path.c_str(), flags));
  if (!file || (!writes && !onlinux::IsRegular(file))) return InvalidHandle;
  return onlinux::Keep(onlinux::OpenFile{std::move(file)});
}

std::optional<std::size_t> ReadFile(Handle handle, void* buffer, std::size_t bytes) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  if (!file) return std::nullopt;
  std::size_t read = 0;
  while (read < bytes) {
    const auto got = onlinux::Uninterrupted(
        [&] { return ::read(file->descriptor.get(), static_cast<char*>(buffer) + read, bytes - read); });
    if (got < 0) return std::nullopt;
    if (got == 0) break;
    read += static_cast<std::size_t>(got);
  }
  return read;
}

bool WriteFile(Handle handle, const void* buffer, std::size_t bytes) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  if (!file) return false;
  for (std::size_t written = 0; written < bytes;) {
    const auto put = onlinux::Uninterrupted(
        [&] { return ::write(file->descriptor.get(), static_cast<const char*>(buffer) + written, bytes - written); });
    if (put <= 0) return false;
    written += static_cast<std::size_t>(put);
  }
  return true;
}

bool Rewind(Handle handle) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  // What has no places, such as a device, is always at its start.
  return file && (::lseek(file->descriptor.get(), 0, SEEK_SET) == 0 || errno == ESPIPE);
}

bool SetFileLength(Handle handle, std::size_t bytes) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  struct stat facts {};
  if (!file || ::fstat(file->descriptor.get(), &facts) != 0) return false;
  if (!S_ISREG(facts.st_mode)) return true;
  const auto length = static_cast<off_t>(bytes);
  if (length <= facts.st_size) return ::ftruncate(file->descriptor.get(), length) == 0;
  return ::posix_fallocate(file->descriptor.get(), facts.st_size, length - facts.st_size) == 0;
}

bool FlushFileBuffers(Handle handle) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  // Some disks, and what is no file at all, know no such call.
  return file && (::fsync(file->descriptor.get()) == 0 || errno == EINVAL || errno == ENOTSUP);
}

bool IsThere(const std::string& path) {
  struct stat facts {};
  return ::stat(path.c_str(), &facts) == 0 || (errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG);
}

std::int64_t GetFileLength(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0 || !S_ISREG(facts.st_mode)) return -1;
  return static_cast<std::int64_t>(facts.st_size);
}

bool IsWriteProtected(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return false;
  // An administrator may write to every file, also to one that nobody is to write to.
  return (facts.st_mode & 0222) == 0 || ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0;
}

}  // namespace platform
