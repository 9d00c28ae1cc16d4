#pragma once

#include <string>
#include <vector>

#include "platform/windows/ground/System.h"

namespace platform {

// The title of a window of any program, without a message to it: a program that hangs would never answer.
std::wstring TitleOf(HWND window);
// All top-level windows, from front to back.
std::vector<HWND> TopLevelWindows();

}  // namespace platform
