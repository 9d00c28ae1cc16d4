#pragma once

#include <thread>

namespace onlinux {

// Reads what fonts there are in a thread of its own, while the toolkit, which needs them for its first text, connects to
// the display. To begin while libraries are being loaded would hold those up: one is loaded at a time.
// The thread ends by itself; where the library for fonts is missing it does nothing.
std::jthread ReadFontsAhead();

}  // namespace onlinux
