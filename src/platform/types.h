#pragma once

#include <cstdint>
#include <utility>

namespace platform {

// A kernel object: a process, a snapshot or an open file. 0 and `InvalidHandle` stand for none.
using Handle = std::uint32_t;

// What the calls that make a snapshot or open a file give back when they fail.
inline constexpr Handle InvalidHandle = 0xFFFFFFFF;

// A window of any program on the desktop, 0 for none. It is 32 bits wide, so a list row can carry it.
using WindowHandle = std::uint32_t;

// A rectangle in pixels.
struct PixelRect {
  std::int32_t left = 0;
  std::int32_t top = 0;
  std::int32_t right = 0;
  std::int32_t bottom = 0;
};

// Owns one native handle of any kind and gives it to `Close` once, at the end of its life.
template <class T, auto Close, T None = T{}>
class Owned {
 public:
  Owned() = default;
  explicit Owned(T handle) : handle_(handle) {}
  Owned(Owned&& other) noexcept : handle_(std::exchange(other.handle_, None)) {}
  Owned& operator=(Owned&& other) noexcept {
    if (this != &other) Reset(std::exchange(other.handle_, None));
    return *this;
  }
  Owned(const Owned&) = delete;
  Owned& operator=(const Owned&) = delete;
  ~Owned() { Reset(); }

  // The handle itself, for the calls that use it.
  T get() const { return handle_; }
  // True while there is a handle to close.
  explicit operator bool() const { return handle_ != None; }
  // Closes what is held and takes `next` in its place.
  void Reset(T next = None) {
    if (handle_ != None) Close(handle_);
    handle_ = next;
  }
  // Gives the handle out of care without closing it.
  T Release() { return std::exchange(handle_, None); }

 private:
  T handle_ = None;
};

}  // namespace platform
