#pragma once

#include <string>

namespace onlinux {

// True for a file or folder that nobody but root and the user who runs this program may write. It is theirs, and no
// group may write it but one that bears its user's name and has no other members. The sticky bit makes no difference:
// whoever may lay files there counts. Where this process has a right that its user lacks, root alone is trusted, and a
// link never is.
bool IsOnlyOurs(const std::string& path);

}  // namespace onlinux
