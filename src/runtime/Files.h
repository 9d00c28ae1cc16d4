#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/kernel32.h"

namespace velmaro {

// Reads a text file line by line. A line ends at CR LF or at a lone CR; a lone LF is an ordinary character,
// unless it ends lines on this platform.
class LineReader {
 public:
  // Opens the file. One that can't be opened reads as empty.
  explicit LineReader(const std::string& path);
  // True where the file was opened.
  bool IsOpen() const { return static_cast<bool>(file_); }
  // Takes the next line without its end. False when there is no more.
  bool ReadLine(std::string& line);

 private:
  bool Refill();

  platform::OwnedFile file_;
  std::string buffer_;
  std::size_t at_ = 0;
};

// Reads a whole file with binary access, which makes a missing file first. Throws RuntimeError when it can't be opened
// or read.
std::string ReadBinaryFile(const std::string& path);
// Writes the parts, one behind the other, behind the old contents of a file, which is made when missing. Throws
// RuntimeError when it can't be.
void AppendToFile(const std::string& path, std::string_view text);
// Makes or replaces a file: a temporary file is written beside it and put in its place, so a failure leaves the old
// file whole. Throws RuntimeError when it can't be done.
void WriteFileWhole(const std::string& path, std::string_view text);

}  // namespace velmaro
