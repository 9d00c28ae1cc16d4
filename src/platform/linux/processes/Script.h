#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace onlinux {

// What stands behind the last separator of a path of any kind.
std::string BaseName(std::string_view path);
// True where the kernel's short name of a process, which it cuts at 15 bytes, is that of a file.
bool IsShortFor(std::string_view shortName, std::string_view fileName);

// True where a program of that path may be running a script, so that its command line is worth a look.
bool MayRunScript(std::string_view program, std::string_view shortName);
// The script that a program runs, as its command line tells it; empty where it runs none.
std::string ScriptOf(std::string_view program, std::string_view shortName, const std::vector<std::string>& words);

}  // namespace onlinux
