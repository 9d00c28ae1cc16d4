#pragma once

#include <string>

#include "platform/linux/ground/Descriptor.h"

namespace onlinux {

// Where a file lies: its folder, held open, and its name in it. Whoever swaps a folder on the way afterwards changes
// nothing.
struct Place {
  Descriptor folder;  // none where the folder is not there or must not be gone to
  std::string name;
  bool isShared = false;   // another user may put something else in the place of a part of the way
  bool isCommon = false;   // or may at least add to the folder
  bool isRefused = false;  // a link that another user may have made stands on the way
};

// The place that a path leads to, links followed, whether a file is there or not. No link is followed below a folder
// that another user may write; a user's own folder counts as his again, unless he is the administrator.
Place PlaceOf(const std::string& path);

}  // namespace onlinux
