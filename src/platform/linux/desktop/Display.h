#pragma once

#include <string>

namespace onlinux {

// The ways of showing windows that the toolkit may take, by the names of Qt's plugins for them with ";" between: those
// that the user names, else X before Wayland, for only there windows can be pinned, and those of other programs be
// listed. One whose server does not answer in time is left out; Qt would wait for it, or end the whole program.
std::string WaysToShow();

}  // namespace onlinux
