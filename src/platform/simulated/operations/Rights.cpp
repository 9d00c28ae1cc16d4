#include "platform/rights.h"

#include "platform/kernel32.h"
#include "platform/simulated/Desktop.h"

using simulated::TheDesktop;

namespace platform {

bool ClassIsReadBack() { return TheDesktop().classIsReadBack; }

std::uint32_t GetPriorityClass(Handle handle) {
  const auto* opened = TheDesktop().Find<simulated::OpenedProcess>(handle);
  if (!opened || !TheDesktop().ProcessById(opened->id).alive) return 0;
  switch (TheDesktop().ProcessById(opened->id).basePriority) {
    case 4:
      return IDLE_PRIORITY_CLASS;
    case 13:
      return HIGH_PRIORITY_CLASS;
    case 24:
      return REALTIME_PRIORITY_CLASS;
    default:
      return NORMAL_PRIORITY_CLASS;
  }
}

std::string WhySpared(std::uint32_t priorityClass) {
  return priorityClass == REALTIME_PRIORITY_CLASS ? TheDesktop().whyNoRealTime : std::string();
}

std::string WhatHighIsWorth(Handle) { return TheDesktop().whatHighIsWorth; }

bool HighLeavesSession(Handle) { return TheDesktop().highLeavesSession; }

std::string WhatWouldHelp(Handle) { return "ask the owner"; }

RoadToRight FindRoadToRight() { return TheDesktop().roadToRight; }

bool SetPriorityClassAsking(Handle handle, std::uint32_t priorityClass) {
  const auto* opened = TheDesktop().Find<simulated::OpenedProcess>(handle);
  if (!opened || !TheDesktop().rightGiven) return false;
  TheDesktop().ProcessById(opened->id).stubborn = false;
  return SetPriorityClass(handle, priorityClass);
}

}  // namespace platform
