#pragma once

namespace onlinux {

// Where this process has a right that its user lacks: takes the variables away by which foreign code could come into it
// with the toolkit, and keeps them for the programs that it starts.
void ClearForeignVariables();
// The environment of the programs that this one starts: its own, with all that was taken away.
char* const* StartEnvironment();

}  // namespace onlinux
