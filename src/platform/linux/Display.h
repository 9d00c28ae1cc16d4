#pragma once

namespace onlinux {

// True where the toolkit will find a display to show windows on. It ends the whole program where it finds none.
bool IsDisplayThere();

}  // namespace onlinux
