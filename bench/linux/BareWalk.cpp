#include <dirent.h>
#include <fcntl.h>
#include <limits.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "Compare.h"

namespace {

template <class Visit>
void ForEachProcess(Visit visit) {
  DIR* proc = ::opendir("/proc");
  if (!proc) return;
  while (const dirent* entry = ::readdir(proc))
    if (const auto number = std::strtoul(entry->d_name, nullptr, 10)) visit(::dirfd(proc), number);
  ::closedir(proc);
}

bool ReadProgram(int proc, unsigned long number) {
  char path[32];
  char program[PATH_MAX];
  std::snprintf(path, sizeof path, "%lu/exe", number);
  return ::readlinkat(proc, path, program, sizeof program) >= 0;
}

bool ReadStatus(int proc, unsigned long number) {
  char path[32];
  char line[1024];
  std::snprintf(path, sizeof path, "%lu/stat", number);
  const int file = ::openat(proc, path, O_RDONLY | O_CLOEXEC);
  if (file < 0) return false;
  const auto got = ::read(file, line, sizeof line);
  ::close(file);
  return got > 0;
}

}  // namespace

std::vector<bool> HaveProgram() {
  std::vector<bool> have;
  ForEachProcess([&](int proc, unsigned long number) {
    if (number >= have.size()) have.resize(number + 1, true);
    have[number] = ReadProgram(proc, number) || errno != ENOENT;
  });
  return have;
}

int BareWalk(const std::vector<bool>& haveProgram) {
  int count = 0;
  ForEachProcess([&](int proc, unsigned long number) {
    if (!ReadStatus(proc, number)) return;
    if (number >= haveProgram.size() || haveProgram[number]) ReadProgram(proc, number);
    ++count;
  });
  return count;
}
