#pragma once

#include <string>

namespace onlinux {

// What a variable of the environment tells; something else where it is empty or not there.
std::string Told(const char* variable, const std::string& otherwise = {});

// Where this process has a right that its user lacks: takes the variables away by which foreign code could come into it
// with the toolkit, and keeps them for the programs that it starts.
void ClearForeignVariables();
// The environment of the programs that this one starts: its own, with all that was taken away.
char* const* StartEnvironment();

}  // namespace onlinux
