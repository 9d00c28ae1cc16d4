#pragma once

#include <cstdint>
#include <string>

namespace onlinux {

// What tells the processes of one start from all others.
struct Descent {
  std::uint32_t process = 0;  // the process that was started
  std::string mark;           // a line of its environment, which its children inherit; may be empty
};

// A mark in this program's environment, and so in that of all that it starts or becomes meanwhile. No other start has
// the same.
class Mark {
 public:
  Mark();
  Mark(const Mark&) = delete;
  Mark& operator=(const Mark&) = delete;
  ~Mark();
  const std::string& Line() const { return line_; }

 private:
  std::string line_;
};

// True for the process that was started and for all that came from it, also where those between have ended.
bool CameFrom(std::uint32_t process, const Descent& descent);
// True while any of these runs.
bool StillRuns(const Descent& descent);

}  // namespace onlinux
