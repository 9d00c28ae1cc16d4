#pragma once

#include <sys/types.h>

#include <cerrno>
#include <string>

namespace onlinux {

// Reads or writes again where a signal came between.
template <class Call>
ssize_t Uninterrupted(Call call) {
  ssize_t done = 0;
  do {
    done = call();
  } while (done < 0 && errno == EINTR);
  return done;
}

// All bytes of a file, empty when it can't be read.
std::string ReadWhole(const std::string& path);
// Reads a file under an open folder in one call, as far as `room` goes; empty when it can't be read.
std::string ReadSmall(int folder, const std::string& path, std::size_t room);

}  // namespace onlinux
