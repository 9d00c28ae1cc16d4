#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace onlinux {

// Splits a command line into words at blanks. Double or single quotes hold a word together; a backslash takes the
// character behind it as it is, outside of quotes and, before a quote or backslash, in double ones.
std::vector<std::string> SplitWords(std::string_view line);
// The file that a name stands for: a path as it is, "~/" in the home folder, a bare name in the folders of PATH, where
// it must be a program, else in the current folder. Empty when there is none.
std::string FindFile(const std::string& name);
// True for a file, not a folder, that may be executed.
bool IsProgram(const std::string& path);

// Starts a program apart from this one: it takes over none of its open files and outlives it. The words are the
// program's path and its arguments; an empty folder leaves the current one. Returns when the program runs, with 0, or
// with the system's error.
int StartApart(const std::vector<std::string>& words, const std::string& folder);
// Opens a file or an address with the desktop's opener. Gives 0 or the system's error.
int OpenWithDesktop(const std::string& what, const std::string& folder);

}  // namespace onlinux
