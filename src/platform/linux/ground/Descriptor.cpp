#include "platform/linux/ground/Descriptor.h"

#include <unistd.h>

namespace onlinux {

void CloseDescriptor(int descriptor) { ::close(descriptor); }

}  // namespace onlinux
