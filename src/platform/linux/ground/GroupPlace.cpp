#include "platform/linux/ground/GroupPlace.h"

#include <algorithm>
#include <vector>

namespace onlinux {
namespace {

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; end != std::string_view::npos; text.remove_prefix(std::min(end + 1, text.size()))) {
    end = text.find(separator);
    parts.push_back(text.substr(0, end));
  }
  return parts;
}

bool Holds(std::string_view list, std::string_view word) { return std::ranges::count(Split(list, ','), word) != 0; }

}  // namespace

std::optional<std::string> GroupPath(std::string_view groups, const GroupVersion& version) {
  for (const auto line : Split(groups, '\n')) {
    const auto first = line.find(':');
    const auto second = first == std::string_view::npos ? first : line.find(':', first + 1);
    if (second == std::string_view::npos) continue;
    if (Holds(line.substr(first + 1, second - first - 1), version.controller))
      return std::string(line.substr(second + 1));
  }
  return std::nullopt;
}

std::optional<GroupMount> FindMount(std::string_view mounts, const GroupVersion& version) {
  for (const auto line : Split(mounts, '\n')) {
    const auto bar = line.find(" - ");
    if (bar == std::string_view::npos) continue;
    const auto before = Split(line.substr(0, bar), ' ');
    const auto behind = Split(line.substr(bar + 3), ' ');
    if (before.size() < 5 || behind.size() < 3 || behind[0] != version.fileSystem) continue;
    if (version.controller.empty() || Holds(behind[2], version.controller))
      return GroupMount{std::string(before[3]), std::string(before[4])};
  }
  return std::nullopt;
}

}  // namespace onlinux
