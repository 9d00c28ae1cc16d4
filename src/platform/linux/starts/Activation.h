#pragma once

#include <string>
#include <vector>

namespace onlinux {

// The apps that a command has the desktop start, by the names that such an app takes on the bus: of "gio launch
// /usr/share/applications/org.example.Game.desktop" and "gtk-launch org.example.Game" that is "org.example.Game".
std::vector<std::string> ActivatedApps(const std::vector<std::string>& words);
// The same without those that run already.
std::vector<std::string> AppsToCome(const std::vector<std::string>& words);

}  // namespace onlinux
