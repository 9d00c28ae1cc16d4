#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace onlinux {

// Words as the kernel takes them for a program; they must outlive what is given.
std::vector<char*> Pointers(const std::vector<std::string>& words);
// Splits a command line into words at blanks. Double or single quotes hold a word together; a backslash takes the
// character behind it as it is, outside of quotes and, before one of `escaped`, in double ones.
std::vector<std::string> SplitWords(std::string_view line, std::string_view escaped = "\"\\");

}  // namespace onlinux
