#include "platform/rights.h"

#include "platform/windows/ground/System.h"

namespace platform {

// The list tells the class that a process really has; its reports tell what was asked for.
bool ClassIsReadBack() { return false; }

std::uint32_t GetPriorityClass(Handle process) { return ::GetPriorityClass(ToNative<HANDLE>(process)); }

std::string WhySpared(std::uint32_t) { return {}; }

std::string WhatHighIsWorth(Handle) { return {}; }

bool HighLeavesSession(Handle) { return false; }

std::string WhatWouldHelp(Handle) { return "it needs an administrator"; }

RoadToRight FindRoadToRight() { return RoadToRight::None; }

bool SetPriorityClassAsking(Handle, std::uint32_t) { return false; }

}  // namespace platform
