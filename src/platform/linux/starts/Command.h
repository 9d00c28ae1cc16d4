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
};
// What a program's words come down to: the program, or the desktop's opener for a document or an address. Nothing where
// there is no such file or no opener; `error` is then the system's.
std::optional<Command> Resolve(const std::vector<std::string>& words, int& error);
// The command that opens a file or an address with the desktop's opener; nothing where there is no opener.
std::optional<Command> Opener(const std::string& what);

}  // namespace onlinux
