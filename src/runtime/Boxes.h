#pragma once

#include <cstdint>
#include <string>

#include "platform/user32.h"

namespace velmaro {

// Shows a message box and gives the answer. Flags are the platform's sum; without a title it bears the program's name.
int MsgBox(const std::string& text, std::uint32_t flags = platform::MB_OK, const std::string& title = "");

// Asks for one line of text. Cancel and an emptied field both give an empty reply.
std::string InputBox(const std::string& prompt, const std::string& title, const std::string& defaultText);

}  // namespace velmaro
