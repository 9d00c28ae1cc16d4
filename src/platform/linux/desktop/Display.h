#pragma once

#include <string>

namespace onlinux {

// The ways of showing windows that the toolkit may take, by the names of Qt's plugins for them with ";" between: those
// that the user names, else Wayland before X, for only there text is sharp at every scale. One whose server does not
// answer in time is left out; Qt would wait for it, or end the whole program. A compositor that is the last hope gets
// ten seconds. X behind another way is not asked: whoever takes it asks.
std::string WaysToShow();

}  // namespace onlinux
