#pragma once

#include "platform/types.h"

namespace onlinux {

// Closes a file descriptor.
void CloseDescriptor(int descriptor);

// A file descriptor that closes itself.
using Descriptor = platform::Owned<int, &CloseDescriptor, -1>;

}  // namespace onlinux
