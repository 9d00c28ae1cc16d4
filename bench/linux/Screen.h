#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// An X server whose picture this process can read, and a bus for the desktop's messages where one is installed. Both
// are gone when the object is.
class Screen {
 public:
  Screen();
  Screen(const Screen&) = delete;
  Screen& operator=(const Screen&) = delete;
  ~Screen();
  // How much there is to see: letters and lines make the most of it, plain ground nothing.
  std::size_t Detail() const;

 private:
  std::string folder_;
  pid_t server_ = 0;
  pid_t bus_ = 0;
  void* file_ = nullptr;
  std::size_t size_ = 0;
  std::span<const std::uint32_t> pixels_;
};
