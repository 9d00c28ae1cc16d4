#pragma once

namespace onlinux {

// True where this program gets the few threads and open files, and the memory, that the toolkit can't do without: the
// libraries below it end the whole program, or wait for ever, where they get none.
bool HasMeansForToolkit();

}  // namespace onlinux
