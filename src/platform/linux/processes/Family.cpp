#include "platform/linux/processes/Family.h"

#include <string>

#include "platform/kernel32.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ProcessStatus.h"
#include "platform/linux/processes/Unit.h"

namespace onlinux {
namespace {

std::string UnitName(std::uint32_t process) {
  const auto unit = UnitOf(process);
  return unit ? unit->name : std::string();
}

}  // namespace

std::vector<ProcessRecord> DescendantsInUnit(std::uint32_t processId) {
  auto all = ReadProcesses().value_or(std::vector<ProcessRecord>());
  const Parents parents(all);
  const auto unit = UnitName(processId);
  std::erase_if(all, [&](const ProcessRecord& other) {
    return other.id == processId || !parents.Descends(other.id, processId) || UnitName(other.id) != unit;
  });
  return all;
}

bool SharesSession(std::uint32_t processId) { return HasManager() && !UnitOf(processId); }

std::vector<ProcessRecord> FollowersOf(std::uint32_t processId, std::uint32_t priorityClass) {
  const auto status = ReadStatus(processId);
  const auto high = *NiceOfClass(platform::HIGH_PRIORITY_CLASS);
  if (!status || !NiceOfClass(priorityClass) || !SharesSession(processId)) return {};
  if (priorityClass != platform::HIGH_PRIORITY_CLASS && status->nice != high) return {};
  auto followers = DescendantsInUnit(processId);
  std::erase_if(followers, [&](const ProcessRecord& one) { return one.status.nice != status->nice; });
  return followers;
}

}  // namespace onlinux
