#pragma once

namespace onlinux {

// Sees to it that the standard input, output and error output are open: one that was closed leads nowhere from now on,
// or the next file or socket would be taken for it. What is run in this program's place finds it closed again.
// A program that holds this function has it called before everything else.
void OpenStandardStreams();

}  // namespace onlinux
