#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/kernel32.h"

namespace velmaro {

// A file of more bytes is not read: it is no list, and memory may not hold it.
inline constexpr std::size_t LargestFile = 16U << 20;

// Reads a text file, by its byte order mark, and gives it line by line. A line ends at CR LF or at a lone CR; a lone LF
// is an ordinary character, unless it ends lines on this platform.
class LineReader {
 public:
  // Reads the file. One that can't be opened, or can't be read to its end, has no lines.
  explicit LineReader(const std::string& path);
  // True where the file was opened.
  bool IsOpen() const { return isOpen_; }
  // True where all of it was read.
  bool IsWhole() const { return isWhole_; }
  // Takes the next line without its end. False when there is no more.
  bool ReadLine(std::string& line);

 private:
  bool isOpen_ = false;
  bool isWhole_ = false;
  std::string text_;
  std::size_t at_ = 0;
};

// Reads a whole file. Throws RuntimeError when it can't be opened, not be read to its end, or is too large.
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
