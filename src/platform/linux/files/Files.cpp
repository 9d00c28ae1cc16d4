#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/kernel32.h"
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

bool IsFolder(const Descriptor& file) {
  struct stat facts {};
  return ::fstat(file.get(), &facts) != 0 || S_ISDIR(facts.st_mode);
}

// A pipe in the place of a file must not hold the program up.
constexpr int Always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

Descriptor Open(const std::string& path, platform::FileAccess access) {
  const int flags = FlagsOf(access) | Always;
  Descriptor file(::open(path.c_str(), flags));
  // In a folder that all may write to, the kernel can refuse another user's file to whoever would also make it.
  if (!file && errno == ENOENT && access != platform::FileAccess::Read)
    file.Reset(::open(path.c_str(), flags | O_CREAT, 0666));
  return file;
}

// The file that a path ends at, links followed, so that a link to a file stays a link when the file is replaced.
std::string Target(const std::string& path) {
  struct FreeText {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, FreeText> real(::realpath(path.c_str(), nullptr));
  return real ? std::string(real.get()) : path;
}

// True where a new file in the place of this one would be the same to everybody: it is an ordinary file, of one name,
// with rights that its mode tells in full.
bool CanBeReplaced(const std::string& path, const struct stat& facts) {
  return S_ISREG(facts.st_mode) && facts.st_nlink == 1 &&
         ::getxattr(path.c_str(), "system.posix_acl_access", nullptr, 0) <= 0;
}

// Gives a file the owner and the rights of another one. A change of the owner takes rights away, so it comes first.
bool Take(const std::string& path, const struct stat& facts) {
  struct stat own {};
  if (::stat(path.c_str(), &own) != 0) return false;
  const bool owned = own.st_uid == facts.st_uid && own.st_gid == facts.st_gid;
  if (!owned && ::chown(path.c_str(), facts.st_uid, facts.st_gid) != 0) return false;
  return ::chmod(path.c_str(), facts.st_mode & 07777) == 0;
}

}  // namespace

}  // namespace onlinux

namespace platform {

Handle CreateFileA(const std::string& path, FileAccess access) {
  auto file = onlinux::Open(path, access);
  if (!file || onlinux::IsFolder(file)) return InvalidHandle;
  return onlinux::Keep(onlinux::OpenFile{std::move(file)});
}

Handle CreateFileBeside(const std::string& path, std::string& made) {
  const auto target = onlinux::Target(path);
  struct stat old {};
  // What the old file keeps from others, they may not read in the new one either.
  const mode_t mode = ::stat(target.c_str(), &old) == 0 ? 0600 : 0666;
  for (int number = 0; number < 1000; ++number) {
    made = target + '.' + std::to_string(number) + ".tmp";
    onlinux::Descriptor file(::open(made.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (file) return onlinux::Keep(onlinux::OpenFile{std::move(file)});
    if (errno != EEXIST) break;
  }
  return InvalidHandle;
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

std::int64_t GetFileLength(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0 || S_ISDIR(facts.st_mode)) return -1;
  return static_cast<std::int64_t>(facts.st_size);
}

bool IsWriteProtected(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0) return false;
  // An administrator may write to every file, also to one that nobody is to write to.
  return (facts.st_mode & 0222) == 0 || ::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0;
}

bool MoveFileReplace(const std::string& from, const std::string& to) {
  const auto target = onlinux::Target(to);
  struct stat old {};
  // A link may lead to a file that is not there yet.
  if (::lstat(target.c_str(), &old) == 0 && !(onlinux::CanBeReplaced(target, old) && onlinux::Take(from, old)))
    return false;
  if (::rename(from.c_str(), target.c_str()) != 0) return false;
  const auto parent = std::filesystem::path(target).parent_path().string();
  const onlinux::Descriptor folder(::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.get());
  return true;
}

bool DeleteFileA(const std::string& path) { return ::unlink(path.c_str()) == 0; }

}  // namespace platform
