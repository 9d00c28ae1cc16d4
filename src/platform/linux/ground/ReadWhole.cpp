#include "platform/linux/ground/ReadWhole.h"

#include <fcntl.h>
#include <unistd.h>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

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

std::string ReadSmall(int folder, const std::string& path, std::size_t room) {
  const Descriptor file(::openat(folder, path.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file) return {};
  std::string text(room, '\0');
  const auto got = ::read(file.get(), text.data(), room);
  text.resize(got > 0 ? static_cast<std::size_t>(got) : 0);
  return text;
}

}  // namespace onlinux
