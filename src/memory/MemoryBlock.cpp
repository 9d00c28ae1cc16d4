#include "memory/MemoryBlock.h"

#include <algorithm>
#include <cstring>

#include "runtime/Failures.h"

namespace velmaro {

MemoryBlock MemoryBlock::Claimed() {
  MemoryBlock block;
  block.data_ = platform::VirtualAlloc(Bytes);
  if (!block.data_) throw RuntimeError("there is no memory for a block");
  return block;
}

MemoryBlock MemoryBlock::Filled() {
  auto block = Claimed();
  std::fill_n(static_cast<char16_t*>(block.data_), Characters, u' ');
  return block;
}

MemoryBlock MemoryBlock::Copy() const {
  auto block = Claimed();
  std::memcpy(block.data_, data_, Bytes);
  return block;
}

}  // namespace velmaro
