#pragma once

#include <sys/types.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/linux/processes/OwnClass.h"

namespace onlinux {

// What shells end with where a program is not there, and where it can't be run.
inline constexpr int NotThere = 127;
inline constexpr int CanNotBeRun = 126;

// Words as the kernel takes them for a program; they must outlive what is given.
std::vector<char*> Pointers(const std::vector<std::string>& words);
// Splits a command line into words at blanks. Double or single quotes hold a word together; a backslash takes the
// character behind it as it is, outside of quotes and, before a quote or backslash, in double ones.
std::vector<std::string> SplitWords(std::string_view line);
// The same for a command, which is one word where it is one quoted text or names a file as it stands, blanks and all.
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
// Becomes a program, and comes back only with the system's error. A file that may be executed and is no program after
// all, since it names no interpreter, is run by the shell where its name ends in ".sh" and else opened as a document,
// here and below.
int Become(const Command& command);

// A program that was started apart from this one.
struct Apart {
  int error = 0;  // the system's; 0 where it runs
  pid_t id = 0;
  Taken taken;
};
// Starts a program apart from this one, with a priority class or, for 0, this one's: it takes over none of its open
// files and outlives it and its terminal. An empty folder leaves the current one. Returns when the program runs.
Apart StartApart(const Command& command, const std::string& folder, std::uint32_t priorityClass = 0);

}  // namespace onlinux
