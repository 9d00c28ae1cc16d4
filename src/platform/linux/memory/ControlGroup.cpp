#include "platform/linux/memory/ControlGroup.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>

#include "platform/linux/ground/GroupPlace.h"
#include "platform/linux/ground/ReadWhole.h"

namespace onlinux {
namespace {

// The files in which a version of the groups tells its figures. All of its limits hold at once.
struct Version {
  GroupVersion version;
  std::array<const char*, 2> limits;
  const char* used;
  const char* events;
  std::string_view cache;
};

constexpr Version First{{"cgroup", "memory"},
                        {"/memory.limit_in_bytes", "/memory.memsw.limit_in_bytes"},
                        "/memory.usage_in_bytes",
                        "/memory.failcnt",
                        "\ntotal_inactive_file "};
// Beyond the high mark a group is not ended, but slowed down until it stands still.
constexpr Version Second{
    SecondVersion, {"/memory.max", "/memory.high"}, "/memory.current", "/memory.events", "\ninactive_file "};

// The number that a text begins with; nothing for one that stands for no limit.
std::optional<std::uint64_t> Number(std::string_view text) {
  std::uint64_t number = 0;
  if (std::from_chars(text.data(), text.data() + text.size(), number).ec != std::errc()) return std::nullopt;
  // The first version tells the largest number of pages for want of a word.
  constexpr std::uint64_t none = std::uint64_t{1} << 60;
  return number < none ? std::optional(number) : std::nullopt;
}

// What the group keeps of files is given up for a claim, as far as nobody has used it of late.
std::uint64_t Cache(const std::string& folder, const Version& version) {
  const auto text = '\n' + ReadWhole(folder + "/memory.stat");
  const auto at = text.find(version.cache);
  return at == std::string::npos ? 0 : Number(std::string_view(text).substr(at + version.cache.size())).value_or(0);
}

// How often a group has come to one of its limits. The first version keeps one number, the second a line for each kind.
std::uint64_t Strained(const std::string& folder, const Version& version) {
  const auto text = ReadWhole(folder + version.events);
  if (const auto number = Number(text)) return *number;
  std::uint64_t times = 0;
  for (const std::string_view kind : {"\nhigh ", "\nmax ", "\noom "})
    if (const auto at = ('\n' + text).find(kind); at != std::string::npos)
      times += Number(std::string_view(text).substr(at + kind.size() - 1)).value_or(0);
  return times;
}

std::optional<GroupMemory> ReadGroup(const std::string& folder, const Version& version) {
  std::optional<std::uint64_t> limit;
  for (const auto* name : version.limits)
    if (const auto told = Number(ReadWhole(folder + name))) limit = std::min(*told, limit.value_or(*told));
  const auto used = limit ? Number(ReadWhole(folder + version.used)) : std::nullopt;
  if (!used) return std::nullopt;
  const auto held = *used - std::min(*used, Cache(folder, version));
  return GroupMemory{*limit, *limit - std::min(*limit, held), Strained(folder, version)};
}

std::optional<GroupMemory> Least(std::optional<GroupMemory> one, std::optional<GroupMemory> other) {
  if (!one || !other) return one ? one : other;
  auto least = one->left < other->left ? one : other;
  least->strained = one->strained + other->strained;
  return least;
}

std::optional<GroupMemory> ReadVersion(const std::string& groups, const std::string& mounts, const Version& version) {
  auto path = GroupPath(groups, version.version);
  const auto mount = path ? FindMount(mounts, version.version) : std::nullopt;
  if (!mount) return std::nullopt;
  // In a container the folder shows that container's group, under the name that it has outside.
  if (mount->root != "/") path = path->starts_with(mount->root) ? path->substr(mount->root.size()) : "";
  std::optional<GroupMemory> least;
  for (;; path->resize(path->rfind('/'))) {
    least = Least(least, ReadGroup(mount->folder + *path, version));
    if (path->empty() || path->front() != '/') return least;
  }
}

}  // namespace

std::optional<GroupMemory> ReadGroupMemory(const std::string& groups, const std::string& mounts) {
  const auto groupsText = ReadWhole(groups);
  const auto mountsText = ReadWhole(mounts);
  return Least(ReadVersion(groupsText, mountsText, First), ReadVersion(groupsText, mountsText, Second));
}

}  // namespace onlinux
