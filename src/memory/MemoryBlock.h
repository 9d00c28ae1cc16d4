#pragma once

#include <cstddef>
#include <utility>

#include "platform/kernel32.h"

namespace velmaro {

// One block of a free-memory run: 1,048,576 blanks in 16-bit characters, 2 MiB, that really take physical memory.
class MemoryBlock {
 public:
  static constexpr std::size_t Characters = 1048576;
  static constexpr std::size_t Bytes = Characters * sizeof(char16_t);

  // A block that holds nothing.
  MemoryBlock() = default;
  // A block filled with blanks. Throws RuntimeError when the memory can't be had.
  static MemoryBlock Filled();
  // A copy of a block in memory of its own. Throws RuntimeError when the memory can't be had.
  MemoryBlock Copy() const;

  MemoryBlock(MemoryBlock&& other) noexcept : data_(std::exchange(other.data_, nullptr)) {}
  MemoryBlock& operator=(MemoryBlock&& other) noexcept {
    std::swap(data_, other.data_);
    return *this;
  }
  ~MemoryBlock() {
    if (data_) platform::VirtualFree(data_, Bytes);
  }

 private:
  static MemoryBlock Claimed();

  void* data_ = nullptr;
};

}  // namespace velmaro
