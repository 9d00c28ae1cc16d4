#pragma once

#include <sys/resource.h>

#include <ctime>

// Milliseconds of the monotonic clock, which all processes share.
inline double Now() {
  timespec now{};
  ::clock_gettime(CLOCK_MONOTONIC, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Milliseconds of a processor that were used.
inline double ProcessorTime(const rusage& used) {
  return static_cast<double>(used.ru_utime.tv_sec + used.ru_stime.tv_sec) * 1e3 +
         static_cast<double>(used.ru_utime.tv_usec + used.ru_stime.tv_usec) / 1e3;
}

// The same of this process and its ended children: what others do on the machine does not count.
inline double Used() {
  timespec own{};
  rusage children{};
  ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
  ::getrusage(RUSAGE_CHILDREN, &children);
  return static_cast<double>(own.tv_sec) * 1e3 + static_cast<double>(own.tv_nsec) / 1e6 + ProcessorTime(children);
}

// What a started probe tells: when it began to run, and the nice value that it then had.
struct ProbeReport {
  double began;
  int nice;
};
