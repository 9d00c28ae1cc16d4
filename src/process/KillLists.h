#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velmaro {

// The path of the no-kill list: set once at start, read for every termination. It is the one global of the program.
extern std::string NoKillListPath;

// True where a process may be ended: no entry of the no-kill list covers its name, in any case. The file is read anew
// for each question; a list that is missing or empty protects nothing. A pattern that is invalid protects everything,
// and so does a list that is there and can't be read to its end within 300 ms.
bool CanKillProcess(std::string_view processName);
// The same for a process of several names, none of which may be covered; the file is read once for all of them.
bool CanKillByAll(std::vector<std::string> names);

}  // namespace velmaro
