#pragma once

#include <string>

#include "platform/types.h"

namespace platform {

// Opens or runs a file through the desktop, with an owner window or 0, a verb or "" for the default one, parameters,
// a working folder or "", and a show command. Above 32 when it was done, 2 when the file was not found.
int ShellExecuteA(WindowHandle owner, const std::string& verb, const std::string& file, const std::string& parameters,
                  const std::string& folder, int showCommand);

}  // namespace platform
