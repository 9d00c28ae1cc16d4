#pragma once

#include <string>

namespace onlinux {

// Has the user's service manager give this process, which is about to become a program, a control group of its own, as
// each app of such a desktop has one: it gets a share of the processor of its own there, and doesn't end with the app
// that started it. Gives the last part of the group's name; empty where this process is under no such manager, or the
// manager refuses or does not answer within a second.
std::string TakeScope();

}  // namespace onlinux
