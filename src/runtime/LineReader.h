#pragma once

#include <cstddef>
#include <string>

#include "platform/kernel32.h"
#include "runtime/TextForm.h"

namespace velmaro {

// Reads a text file line by line, whatever its length, by its byte order mark. A line ends at CR LF or at a lone CR; a
// lone LF is an ordinary character, unless it ends lines on this platform. Marks at the beginning of a line are no part
// of it.
class LineReader {
 public:
  // How far a file could be read: there is none, or it has no bytes; all of it, up to here; or not all of it, as where
  // another program holds it, where it is no file, and where it is in UTF-32.
  enum class Standing { Missing, Read, Unreadable };

  // Opens the file and reads its first part.
  explicit LineReader(const std::string& path);
  // What is known so far; `Unreadable` from the moment on where the reading failed.
  Standing State() const { return state_; }
  // True where nothing is left to be read from the disk.
  bool IsAtEnd() const { return !file_; }
  // Takes the next line without its end. False when there is no more, and where the rest can't be read.
  bool ReadLine(std::string& line);

 private:
  bool ReadMore();
  bool TakeLine(std::string& line);
  // Takes a step, or stops for good where reading or memory fails in it.
  template <class Step>
  bool Try(Step step);

  platform::OwnedFile file_;
  Standing state_ = Standing::Missing;
  TextDecoder decoder_{true};
  std::string text_;
  std::size_t at_ = 0;
};

// True where a file is there and can be read to its end.
bool CanBeRead(const std::string& path);

}  // namespace velmaro
