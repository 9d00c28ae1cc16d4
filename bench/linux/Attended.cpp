#include <poll.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>

#include "../Times.h"
#include "Children.h"
#include "Clock.h"
#include "Compare.h"
#include "Screen.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/starts/Start.h"

namespace {

constexpr double Most = 5000;   // milliseconds that a program may take to show something
constexpr double Still = 500;   // without a change, the picture counts as the last one
constexpr double Filled = 0.9;  // of the last picture's detail

struct Moment {
  double time;
  std::size_t detail;
};

// When a picture was first as full as in the end; nothing where nothing showed.
std::optional<double> FilledAt(const std::vector<Moment>& moments) {
  if (moments.size() < 2) return std::nullopt;
  const auto enough = static_cast<double>(moments.back().detail) * Filled;
  return std::ranges::find_if(moments, [&](const Moment& one) { return static_cast<double>(one.detail) >= enough; })
      ->time;
}

// Looks again and again, as long as something changes.
template <class Look>
std::vector<Moment> Watch(double start, Look look) {
  std::vector<Moment> moments;
  for (double now = start; now - start < Most; now = Now()) {
    const std::size_t detail = look();
    if (moments.empty() || moments.back().detail != detail) moments.push_back({now - start, detail});
    if (moments.size() > 1 && now - start - moments.back().time > Still) break;
  }
  return moments;
}

// Memory that no other process has, in megabytes.
double OwnMemory(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/smaps_rollup");
  double own = 0;
  for (std::string line; std::getline(file, line);) {
    long kilobytes = 0;
    if (std::sscanf(line.c_str(), "Private_%*[a-zA-Z]: %ld", &kilobytes) == 1)
      own += static_cast<double>(kilobytes) / 1024;
  }
  return own;
}

struct Viewer {
  std::string path;
  Way shown;
  Way used;  // of a processor
  bool inTerminal = false;
  double memory = 0;
};

Viewer Named(const std::string& name, const std::string& path) {
  return {.path = path, .shown = {name}, .used = {name}, .inTerminal = name == "htop"};
}

// One start; the program is gone when it returns. False where it shows nothing.
bool Show(Viewer& viewer, const Screen& screen) {
  const auto before = screen.Detail();
  const auto start = Now();
  int terminal = -1;
  winsize size{.ws_row = 40, .ws_col = 120, .ws_xpixel = 0, .ws_ypixel = 0};
  const auto child = viewer.inTerminal ? ::forkpty(&terminal, nullptr, nullptr, &size) : StartSilent({viewer.path});
  if (child == 0) {
    ::setenv("TERM", "xterm", 1);
    ::execl(viewer.path.c_str(), viewer.path.c_str(), nullptr);
    ::_exit(127);
  }
  if (child < 0) return false;
  const onlinux::Descriptor output(terminal);
  std::size_t written = 0;
  const auto moments = Watch(start, [&] {
    pollfd wait{.fd = terminal, .events = POLLIN, .revents = 0};
    const bool more = ::poll(&wait, 1, 1) > 0;
    if (terminal < 0) return screen.Detail();
    char text[4096];
    const auto got = more ? ::read(terminal, text, sizeof text) : 0;
    return written += got > 0 ? static_cast<std::size_t>(got) : 0;
  });
  const auto filled = FilledAt(moments);
  viewer.memory = OwnMemory(child);
  rusage usage{};
  onlinux::EndProcess(child);
  ::wait4(child, nullptr, 0, &usage);
  for (const auto end = Now(); screen.Detail() != before && Now() - end < Most;) ::usleep(10'000);
  if (!filled || viewer.memory == 0) return false;
  viewer.shown.times.push_back(*filled);
  viewer.used.times.push_back(ProcessorTime(usage));
  return true;
}

}  // namespace

void CompareAttended() {
  if (onlinux::FindFile("Xvfb").empty()) {
    std::printf("Xvfb is not installed: attended starts are left out\n");
    return;
  }
  const Screen screen;
  std::vector<Viewer> viewers = {Named("velmaro, filled window", Beside("velmaro")),
                                 Named("an empty window of the toolkit", Beside("velmaro_bench_empty"))};
  for (const std::string name : {"lxtask", "qps", "xfce4-taskmanager", "htop"}) {
    viewers.push_back(Named(name, onlinux::FindFile(name)));
    const bool there = !viewers.back().path.empty();
    // The first start of all makes files that later ones find.
    if (there && Show(viewers.back(), screen)) continue;
    std::printf("%s %s: left out\n", name.c_str(), there ? "shows nothing" : "is not installed");
    viewers.pop_back();
  }
  constexpr int rounds = 9;
  for (int i = 0; i < rounds; ++i)
    for (auto& viewer : viewers) Show(viewer, screen);
  const auto timeOf = [](const Viewer& viewer) { return Median(viewer.shown.times); };
  const auto quickest = std::min_element(viewers.begin() + 2, viewers.end(),
                                         [&](const auto& a, const auto& b) { return timeOf(a) < timeOf(b); });
  for (auto other = viewers.begin() + 1; other != viewers.end(); ++other) {
    PrintRatio(viewers[0].shown, other->shown, other == quickest ? 0.8 : 0);
    PrintRatio({"... processor time", viewers[0].used.times}, other->used);
  }
  // Pages of a library count as a program's own where no other program has loaded it.
  for (const auto& viewer : viewers)
    std::printf("memory of its own: %5.1f MB, %s%s\n", viewer.memory, viewer.shown.name.c_str(),
                &viewer == &viewers[0] ? ", wanted: at most 20" : "");
}
