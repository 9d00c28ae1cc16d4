#pragma once

#include <string>
#include <string_view>

namespace velmaro {

// The path of the no-kill list: set once at start, read for every termination. It is the one global of the program.
extern std::string NoKillListPath;

// True where a process may be ended: no entry of the no-kill list covers its name, in any case. The file is read anew
// for each question; a list that is missing, empty or can't be opened protects nothing, and a pattern that is invalid
// protects everything.
bool CanKillProcess(std::string_view processName);

}  // namespace velmaro
