#pragma once

#include <filesystem>
#include <string>

namespace onlinux {

// The folder that holds what the user set in an application, whether it is there or not: one of the application's own,
// where the XDG base directory rules want it.
std::filesystem::path UserFolder(const std::string& application);
// Makes that folder, which nobody else may read. False where it is not there then.
bool MakeUserFolder(const std::filesystem::path& folder);

}  // namespace onlinux
