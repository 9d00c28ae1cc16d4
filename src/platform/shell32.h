#pragma once

#include <string>

#include "platform/types.h"

namespace platform {

// Opens or runs a file through the desktop, with an owner window or 0 for the active one, a verb or "" for the default
// one, parameters, a working folder or "", and a show command. Above 32 when it was done, 2 when the file was not
// found, 31 when no program is there for it.
int ShellExecuteA(WindowHandle owner, const std::string& verb, const std::string& file, const std::string& parameters,
                  const std::string& folder, int showCommand);
// True where the shell is left to deal with any file that it is to open. False where a user would get nothing from it
// for a file that is missing, or that no program opens.
bool ShellTakesEveryFile();

}  // namespace platform
