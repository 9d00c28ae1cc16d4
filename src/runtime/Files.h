#pragma once

#include <string>
#include <string_view>

namespace velmaro {

// Reads a whole file. Throws RuntimeError when it can't be opened, not be read to its end or not be held in memory.
std::string ReadWholeFile(const std::string& path);
// The same with binary access, which makes a missing file first.
std::string ReadBinaryFile(const std::string& path);
// Writes a text behind the old contents of a file, which is made when missing. Throws RuntimeError when it can't be.
void AppendToFile(const std::string& path, std::string_view text);
// Makes or replaces a file, and leaves the old one whole where that fails: a temporary file is written beside it and
// put in its place. Where the folder or the file allows none of that, the file itself is written over, its room claimed
// first. A write-protected file stays as it is. Throws RuntimeError when it can't be done.
void WriteFileWhole(const std::string& path, std::string_view text);

}  // namespace velmaro
