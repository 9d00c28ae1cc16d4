#pragma once

#include <cstdint>
#include <string_view>

namespace velmaro {

class ListBox;

// The one routine through which all work on running processes passes: one snapshot, walked from its first entry.
//
// Without a name it fills `list` with a row for each process that the filter `mode` keeps: 0 all, 1 to 4 those of base
// priority 8, 13, 24 and 4, 5 the known emulators. A row is the tag, a Tab and the name in lower case; its number is
// the mode that sets the tagged class.
//
// With a name, in any case, bare or with a path, quoted or not, it seeks the first process that the name fits and acts
// on that one: 0 sets Normal, 1 High, 2 Real Time, 3 Idle, 4 ends it unless the no-kill list covers it. `quiet`, read
// when the process is found, suppresses the status box and the question before an end.
//
// The platform's class numbers 32, 64, 128 and 256 are taken as 0, 3, 1 and 2. Gives true where a process was found,
// whatever became of it, and false after every list walk. `list` may be null; then there are no rows.
bool WalkProcesses(std::string_view name, std::int32_t mode, const bool& quiet, ListBox* list);

// Does the same to one process, told by the key of its row in a list. Nothing happens where it is gone, or for the key
// 0.
void ActOnProcess(std::uint64_t key, std::int32_t mode, const bool& quiet);

}  // namespace velmaro
