#pragma once

#include <cstdlib>

namespace onlinux {

// Gives back what a library of C has allocated for its caller.
struct FreeMemory {
  void operator()(void* memory) const { std::free(memory); }
};

}  // namespace onlinux
