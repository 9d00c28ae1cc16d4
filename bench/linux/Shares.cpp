#include <sched.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <thread>

#include "Children.h"
#include "Compare.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/starts/Start.h"

namespace {

constexpr std::chrono::seconds Duration(4);

// A program that never pauses; what it uses is what it is given.
const std::vector<std::string> Spinner = {"/bin/sh", "-c", "while :; do :; done"};

double End(pid_t child) {
  rusage usage{};
  onlinux::EndProcess(child);
  ::wait4(child, nullptr, 0, &usage);
  return static_cast<double>(usage.ru_utime.tv_sec) + static_cast<double>(usage.ru_utime.tv_usec) / 1e6;
}

// Starts a spinner behind other words on the last core, in a session of its own where that is asked for.
pid_t Spin(std::vector<std::string> words, bool ownSession) {
  words.insert(words.end(), Spinner.begin(), Spinner.end());
  return ForkBound([&] {
    cpu_set_t core;
    CPU_ZERO(&core);
    CPU_SET(static_cast<std::size_t>(::sysconf(_SC_NPROCESSORS_ONLN) - 1), &core);
    ::sched_setaffinity(0, sizeof core, &core);
    if (ownSession) ::setsid();
    onlinux::Become({words.front(), words});
  });
}

void PrintShare(const std::string& name, const std::vector<std::string>& words, bool rivalApart) {
  const auto rival = Spin({}, rivalApart);
  const auto game = Spin(words, false);
  std::this_thread::sleep_for(Duration);
  const auto used = End(game);
  const auto left = End(rival);
  std::printf("%-60s %5.2f s, its rival %5.2f s: %6.2f times its share\n", name.c_str(), used, left, used / left);
}

}  // namespace

void CompareShares() {
  const auto program = Beside("velmaro");
  PrintShare("velmaro /q /h SPINNER, rival of another session", {program, "/q", "/h"}, true);
  PrintShare("velmaro /q /i SPINNER, rival of another session", {program, "/q", "/i"}, true);
  const auto nice = onlinux::FindFile("nice");
  PrintShare("nice -n -10 SPINNER, rival of the same session", {nice, "-n", "-10"}, false);
  PrintShare("nice -n -10 SPINNER, rival of another session", {nice, "-n", "-10"}, true);
}
