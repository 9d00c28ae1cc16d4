#include "platform/windows/operations/ClassNumbers.h"

#include <array>
#include <optional>

namespace platform {
namespace {

struct PriorityClass {
  DWORD priorityClass;
  std::int32_t number;
  std::int32_t base;
};

constexpr std::array<PriorityClass, 6> Classes{{{IDLE_PRIORITY_CLASS, 1, 4},
                                                {NORMAL_PRIORITY_CLASS, 2, 8},
                                                {HIGH_PRIORITY_CLASS, 3, 13},
                                                {REALTIME_PRIORITY_CLASS, 4, 24},
                                                {BELOW_NORMAL_PRIORITY_CLASS, 5, 6},
                                                {ABOVE_NORMAL_PRIORITY_CLASS, 6, 10}}};

std::optional<bool>& HoldsNumbers() {
  static std::optional<bool> holds;
  return holds;
}

std::optional<std::int32_t> OwnFigure(HANDLE snapshot) {
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  const auto own = ::GetCurrentProcessId();
  for (auto more = ::Process32FirstW(snapshot, &entry); more; more = ::Process32NextW(snapshot, &entry))
    if (entry.th32ProcessID == own) return entry.pcPriClassBase;
  return {};
}

}  // namespace

void LearnClassNumbers(HANDLE snapshot) {
  if (HoldsNumbers()) return;
  const auto figure = OwnFigure(snapshot);
  const auto own = ::GetPriorityClass(::GetCurrentProcess());
  for (const auto& known : Classes)
    if (figure && known.priorityClass == own) HoldsNumbers() = *figure == known.number && *figure != known.base;
}

std::int32_t BasePriority(std::int32_t figure) {
  if (HoldsNumbers().value_or(false))
    for (const auto& known : Classes)
      if (known.number == figure) return known.base;
  return figure;
}

}  // namespace platform
