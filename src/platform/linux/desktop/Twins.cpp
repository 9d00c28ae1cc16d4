#include "platform/linux/desktop/Twins.h"

#include <algorithm>

#include "platform/machine.h"

namespace onlinux {
namespace {

bool ShareName(const WindowTraits& one, const WindowTraits& other) {
  return std::ranges::any_of(one.names, [&](const std::string& name) {
    return std::ranges::any_of(other.names, [&](const std::string& another) {
      return platform::LowerCase(name) == platform::LowerCase(another);
    });
  });
}

// A window without a name of its kind can't be listed elsewhere.
bool MayBeOne(const WindowTraits& one, const WindowTraits& other) {
  if (one.names.empty() || other.names.empty()) return false;
  if (!one.processes.empty() && !other.processes.empty())
    return std::ranges::find_first_of(one.processes, other.processes) != one.processes.end();
  return ShareName(one, other);
}

}  // namespace

std::vector<std::optional<std::size_t>> FindTwins(const std::vector<WindowTraits>& windows,
                                                  const std::vector<WindowTraits>& others) {
  std::vector<std::optional<std::size_t>> twins(windows.size());
  std::vector<bool> taken(others.size());
  for (const bool byTitle : {true, false})
    for (std::size_t i = 0; i < windows.size(); ++i)
      for (std::size_t j = 0; j < others.size() && !twins[i]; ++j) {
        if (taken[j] || !MayBeOne(windows[i], others[j]) || (byTitle && windows[i].title != others[j].title)) continue;
        twins[i] = j;
        taken[j] = true;
      }
  return twins;
}

}  // namespace onlinux
