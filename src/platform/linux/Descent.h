#pragma once

#include <cstdint>
#include <string>

namespace onlinux {

// What tells the processes of one start from all others.
struct Descent {
  std::uint32_t process = 0;  // the process that was started
  std::string mark;           // a line of its environment, which its children inherit; may be empty
};

// A line for the environment of a program that is about to start, such as no other start has.
std::string NewMark();
// True for the process that was started and for all that came from it, also where those between have ended.
bool CameFrom(std::uint32_t process, const Descent& descent);

}  // namespace onlinux
