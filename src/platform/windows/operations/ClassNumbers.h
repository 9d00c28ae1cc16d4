#pragma once

#include "platform/windows/ground/System.h"

namespace platform {

// Finds out, once in the program's life, whether snapshots hold numbers of priority classes in place of base
// priorities: they do where the program's own entry does not fit its own class.
void LearnClassNumbers(HANDLE snapshot);
// The base priority that a snapshot's figure stands for.
std::int32_t BasePriority(std::int32_t figure);

}  // namespace platform
