#pragma once

#include <optional>
#include <string>
#include <vector>

namespace onlinux {

// The words of a command line (`SplitWords`), which is one word where it is one quoted text or names a file as it
// stands, blanks and all.
std::vector<std::string> SplitCommand(const std::string& command);
// The file that a name stands for: a path as it is, "~/" in the home folder, a bare name in the folders of PATH, where
// it must be a program, else in the current folder. Empty when there is none.
std::string FindFile(const std::string& name);
// True for a file, not a folder, that may be executed.
bool IsProgram(const std::string& path);
// From a relative path, which counts from here, to one that does from any folder.
std::string Absolute(const std::string& path);
// What to execute, and the words that it is told, its own name first.
struct Command {
  std::string path;
  std::vector<std::string> words;
  std::string folder = {};  // where it begins; empty leaves that to whoever starts it
};
// Why nothing can be executed: the system's error, and the name that it is about.
struct Refusal {
  int error = 0;
  std::string name = {};
};
// What a program's words come down to: the program, what a desktop entry starts, or the desktop's opener for a document
// or an address. Nothing where there is no such file or nothing to open it.
std::optional<Command> Resolve(const std::vector<std::string>& words, Refusal& refusal);
// What runs or opens a file that is no program of this system: Wine for one of Windows, the shell for a script that may
// be executed and names no interpreter, else the desktop's opener. Nothing where that is not there, or would ask this
// program again.
std::optional<Command> InPlaceOf(const Command& command);

}  // namespace onlinux
