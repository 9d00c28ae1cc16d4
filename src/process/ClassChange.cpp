#include "process/ClassChange.h"

#include <optional>

#include "platform/kernel32.h"
#include "platform/rights.h"
#include "runtime/Boxes.h"

namespace velmaro {
namespace {

const char* NameOf(std::uint32_t priorityClass) {
  switch (priorityClass) {
    case platform::HIGH_PRIORITY_CLASS:
      return "HIGH";
    case platform::REALTIME_PRIORITY_CLASS:
      return "REAL TIME";
    case platform::IDLE_PRIORITY_CLASS:
      return "IDLE";
    case platform::ABOVE_NORMAL_PRIORITY_CLASS:
      return "ABOVE NORMAL";
    case platform::BELOW_NORMAL_PRIORITY_CLASS:
      return "BELOW NORMAL";
    default:
      return "NORMAL";
  }
}

bool IsRefused(std::uint32_t asked, const ClassOutcome& outcome) {
  return !outcome.made && outcome.now != asked && outcome.now != 0;
}

// True where the user wants to get the right on that road.
bool Agrees(platform::RoadToRight road, const std::string& question) {
  if (road != platform::RoadToRight::Password) return road == platform::RoadToRight::Open;
  constexpr auto asks = platform::MB_YESNO | platform::MB_ICONQUESTION;
  return MsgBox(question, asks) == platform::IDYES;
}

// Asks for the right before High is given without it, where that can't be made good afterwards. Tells whether it was
// set with the right; nothing where nobody is asked.
std::optional<bool> RaiseByRight(platform::Handle process, const std::string& name, std::uint32_t priorityClass) {
  if (priorityClass != platform::HIGH_PRIORITY_CLASS || !platform::HighLeavesSession(process)) return std::nullopt;
  const auto question = name +
                        " process gets no more than half of a core at HIGH without the right to raise "
                        "priorities: do you want to enter an administrator's password for it?";
  return Agrees(platform::FindRoadToRight(), question) && platform::SetPriorityClassAsking(process, priorityClass);
}

}  // namespace

std::string ClassSentence(const std::string& name, std::uint32_t asked, const ClassOutcome& outcome,
                          const std::string& help) {
  const auto process = name + " process ";
  const auto now = std::string("at ") + NameOf(outcome.now);
  if (outcome.now == 0) return process + "has ended before it could be set to " + NameOf(asked) + '.';
  if (outcome.now == asked) return process + "has been set to " + NameOf(asked) + '.';
  if (outcome.made) return process + "stays " + now + ", which it has chosen for itself.";
  return process + "was refused " + NameOf(asked) + " and is " + now + ": " + help;
}

void ChangeClass(platform::Handle process, const std::string& name, std::uint32_t priorityClass, bool quiet) {
  const auto raised = quiet ? std::nullopt : RaiseByRight(process, name, priorityClass);
  const bool made = raised.value_or(false) || platform::SetPriorityClass(process, priorityClass);
  ClassOutcome outcome{.made = made, .now = priorityClass};
  if (quiet) return;
  const auto sentence = [&](const std::string& help) { return ClassSentence(name, priorityClass, outcome, help); };
  const auto spared = platform::WhySpared(priorityClass);
  if (!spared.empty()) outcome.made = false;
  if (platform::ClassIsReadBack()) outcome.now = platform::GetPriorityClass(process);
  using platform::RoadToRight;
  const bool wantsRight = IsRefused(priorityClass, outcome) && spared.empty() && !raised;
  if (const auto road = wantsRight ? platform::FindRoadToRight() : RoadToRight::None; road != RoadToRight::None) {
    if (!Agrees(road, sentence("do you want to enter an administrator's password for it?"))) return;
    outcome.made = platform::SetPriorityClassAsking(process, priorityClass);
    outcome.now = platform::GetPriorityClass(process);
  }
  const bool refused = IsRefused(priorityClass, outcome);
  const auto help = spared.empty() && refused ? platform::WhatWouldHelp(process) : spared;
  const bool wantedMore =
      priorityClass == platform::HIGH_PRIORITY_CLASS || priorityClass == platform::REALTIME_PRIORITY_CLASS;
  const bool isHigh = wantedMore && outcome.now == platform::HIGH_PRIORITY_CLASS;
  const auto worth = isHigh ? platform::WhatHighIsWorth(process) : std::string();
  MsgBox(sentence(help + '.') + (worth.empty() ? "" : ' ' + worth), platform::MB_ICONINFORMATION);
}

}  // namespace velmaro
