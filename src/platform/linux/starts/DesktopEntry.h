#pragma once

#include <optional>
#include <string>
#include <vector>

namespace onlinux {

// What a desktop entry starts, as the rules for such files have it.
struct EntryStart {
  std::vector<std::string> words;  // the program and what it is told
  std::string folder = {};         // where it begins; empty leaves that open
  std::string needs = {};          // a program without which the entry counts as not installed; empty for none
  bool inTerminal = false;
};

// The file of a desktop entry: a name that ends in ".desktop" with a folder, or without one that of an application in
// the user's and the system's menus, else a file in the current folder. Empty for anything else.
std::string FindEntry(const std::string& name);
// What the entry in a file starts, told `arguments`: they stand where the entry wants files or addresses, else at the
// end. Nothing for a file that is no application's entry.
std::optional<EntryStart> ReadEntry(const std::string& path, const std::vector<std::string>& arguments);

}  // namespace onlinux
