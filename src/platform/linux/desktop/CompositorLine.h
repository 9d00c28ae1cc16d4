#pragma once

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// True where the environment names a Wayland compositor, be it there or not.
bool NamesCompositor();
// A line to that compositor, on which nobody may be heard: nothing here waits. Empty where it takes none.
Descriptor LineToCompositor();

}  // namespace onlinux
