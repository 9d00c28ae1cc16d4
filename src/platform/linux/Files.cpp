#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <memory>

#include "platform/kernel32.h"
#include "platform/linux/Handles.h"
#include "platform/linux/ReadWhole.h"

namespace onlinux {
namespace {

int FlagsOf(platform::FileAccess access) {
  switch (access) {
    case platform::FileAccess::Write:
      return O_WRONLY | O_CREAT | O_TRUNC;
    case platform::FileAccess::Append:
      return O_WRONLY | O_CREAT | O_APPEND;
    case platform::FileAccess::Binary:
      return O_RDONLY | O_CREAT;
    default:
      return O_RDONLY;
  }
}

bool IsFolder(const Descriptor& file) {
  struct stat facts {};
  return ::fstat(file.get(), &facts) != 0 || S_ISDIR(facts.st_mode);
}

// Reads or writes again where a signal came between.
template <class Call>
ssize_t Uninterrupted(Call call) {
  ssize_t done = 0;
  do {
    done = call();
  } while (done < 0 && errno == EINTR);
  return done;
}

// The file that a path ends at, links followed, so that a link to a file stays a link when the file is replaced.
std::string Target(const std::string& path) {
  struct FreeText {
    void operator()(char* text) const { std::free(text); }
  };
  const std::unique_ptr<char, FreeText> real(::realpath(path.c_str(), nullptr));
  return real ? std::string(real.get()) : path;
}

}  // namespace

std::string ReadWhole(const std::string& path) {
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
  std::string text;
  char chunk[16384];
  for (ssize_t got = 0; file;) {
    got = Uninterrupted([&] { return ::read(file.get(), chunk, sizeof chunk); });
    if (got <= 0) break;
    text.append(chunk, static_cast<std::size_t>(got));
  }
  return text;
}

}  // namespace onlinux

namespace platform {

Handle CreateFileA(const std::string& path, FileAccess access) {
  // A pipe in the place of a file must not hold the program up.
  constexpr int always = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  onlinux::Descriptor file(::open(path.c_str(), onlinux::FlagsOf(access) | always, 0666));
  if (!file || onlinux::IsFolder(file)) return InvalidHandle;
  return onlinux::Keep(onlinux::OpenFile{std::move(file)});
}

std::size_t ReadFile(Handle handle, void* buffer, std::size_t bytes) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  if (!file) return 0;
  std::size_t read = 0;
  while (read < bytes) {
    const auto got = onlinux::Uninterrupted(
        [&] { return ::read(file->descriptor.get(), static_cast<char*>(buffer) + read, bytes - read); });
    if (got <= 0) break;
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

bool FlushFileBuffers(Handle handle) {
  const auto* file = onlinux::FindAs<onlinux::OpenFile>(handle);
  return file && ::fsync(file->descriptor.get()) == 0;
}

std::int64_t GetFileLength(const std::string& path) {
  struct stat facts {};
  if (::stat(path.c_str(), &facts) != 0 || S_ISDIR(facts.st_mode)) return -1;
  return static_cast<std::int64_t>(facts.st_size);
}

bool MoveFileReplace(const std::string& from, const std::string& to) {
  const auto target = onlinux::Target(to);
  struct stat old {};
  if (::stat(target.c_str(), &old) == 0) {
    if (S_ISDIR(old.st_mode)) return false;
    ::chmod(from.c_str(), old.st_mode & 07777);
  }
  // A link may lead to another disk, where no file can be put in one step.
  if (::rename(from.c_str(), target.c_str()) != 0 && ::rename(from.c_str(), to.c_str()) != 0) return false;
  const auto parent = std::filesystem::path(target).parent_path().string();
  const onlinux::Descriptor folder(::open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder) ::fsync(folder.get());
  return true;
}

bool DeleteFileA(const std::string& path) { return ::unlink(path.c_str()) == 0; }

}  // namespace platform
