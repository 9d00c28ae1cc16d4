#pragma once

namespace onlinux {

// True where a program of the desktop's would ask this user for a password: an authentication agent of polkit's in his
// session. Without one nobody is asked, and what needs the password is refused.
bool AgentRuns();

}  // namespace onlinux
