#pragma once

#include <cstdint>
#include <string>

#include "platform/types.h"

namespace platform {

inline constexpr std::uint32_t BELOW_NORMAL_PRIORITY_CLASS = 16384;
inline constexpr std::uint32_t ABOVE_NORMAL_PRIORITY_CLASS = 32768;

// True where users are told the class that a process really has after a change, and what would help where it was
// refused.
bool ClassIsReadBack();
// The priority class that an opened process has now; 0 when it is gone.
std::uint32_t GetPriorityClass(Handle process);
// Why no program is given a class here, whatever rights a user has, as the end of a sentence without its full stop;
// empty where it is. It gets the next lower one then.
std::string WhySpared(std::uint32_t priorityClass);
// What High is worth to an opened process that has it, where that is less than elsewhere, as a sentence; else empty.
std::string WhatHighIsWorth(Handle process);
// True where High would take an opened process out of the unit that it shares with the programs of this session, for
// want of a right. With the right it has more where it is, and no user may put it back there.
bool HighLeavesSession(Handle process);
// What would let this user change the class of an opened process, as the end of a sentence without its full stop.
std::string WhatWouldHelp(Handle process);
// How a right that was refused can be had now: not at all, for an administrator's password, which somebody here asks
// the user for, or at once, since it was given a moment ago or by a rule.
enum class RoadToRight { None, Password, Open };
RoadToRight FindRoadToRight();
// Asks the user for the right to set the class of an opened process, and sets it with that. False when it was not
// given.
bool SetPriorityClassAsking(Handle process, std::uint32_t priorityClass);

}  // namespace platform
