#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/types.h"

namespace platform {

// Takes a snapshot for a list that is only looked at: names, classes and identities are up to date, and where the
// platform reads all else process by process, it may be that of an earlier list. Where programs have their time in
// groups, these classes are those that count against other apps. What acts on a process takes the other kind, which
// looks at no group: it is to be had at once.
Handle CreateListSnapshot();

// True where a command of the window goes to the process of the selected row itself, false where it goes to the first
// process of that name.
bool CommandsMeanTheRow();
// Tells the process that a snapshot delivered last from all others, also from a later one of its number. 0, which is no
// process, where rows are not told apart.
std::uint64_t ProcessIdentity(Handle snapshot);

// True where a name stands for whole parts of a path, false where it stands for the end of any name.
bool NamesAreWholeParts();
// The names of the process that a snapshot delivered last which its entry does not hold as they are, such as that of a
// script, or one that is too long for it.
std::vector<std::string> MoreNames(Handle snapshot);
// All names by which an opened process goes now, whole, those that it gave itself among them; for what must not be
// slipped by a new name. Empty when it is gone.
std::vector<std::string> NamesOf(Handle process);
// The path that a program bears when it was started from a whole path, which may lead through links.
std::string ResolvedPath(const std::string& path);

// The emulators that the platform knows beside those for Windows, in lower case, joined by ";".
std::string_view NativeEmulators();

}  // namespace platform
