#pragma once

#include <ctime>

// Milliseconds of the monotonic clock, which all processes share.
inline double Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// What a started probe tells: when it began to run, when it found itself at the nice value that it was told to wait for
// or gave up, and the value that it then had.
struct ProbeReport {
  double began;
  double settled;
  int nice;
};
