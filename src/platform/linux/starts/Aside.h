#pragma once

#include <functional>

namespace onlinux {

// Does work in a process of its own, with a session of its own and none of this one's open files but one, -1 for none.
// Nobody waits for that process: it goes when the work is done.
void DoAside(int kept, const std::function<void()>& work);

// What such work may keep to tell of failures: the error output, where nobody reads that to its end; else -1.
int ErrorOutputToKeep();

}  // namespace onlinux
