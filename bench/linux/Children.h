#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

// Runs `work` in a child process, which ends with this one at the latest. Gives the child's number.
pid_t ForkBound(const std::function<void()>& work);
// The same for a program, with nothing to read and what it prints thrown away.
pid_t StartSilent(const std::vector<std::string>& words);
// Waits for a child. False where it did not end well by itself.
bool Reap(pid_t child);

// Processes that do nothing at all. They are gone when the object is.
class IdleChildren {
 public:
  explicit IdleChildren(int count);
  ~IdleChildren();
  IdleChildren(const IdleChildren&) = delete;
  IdleChildren& operator=(const IdleChildren&) = delete;

 private:
  IdleChildren() = default;
  std::vector<pid_t> ids_;
};
