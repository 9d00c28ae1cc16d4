#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "../Times.h"
#include "Children.h"
#include "Clock.h"
#include "Compare.h"
#include "platform/linux/processes/EndProcess.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/starts/Start.h"

namespace {

namespace fs = std::filesystem;

constexpr int High = -10;

struct Starter {
  Way toRun;  // until the program runs
  Way used;   // of a processor, with the program itself
  std::vector<std::string> words;
};

Way QuickestOf(const Way& all) {
  Way quickest{"... the quickest of them", all.times};
  std::ranges::sort(quickest.times);
  quickest.times.resize(all.times.size() / 4);
  return quickest;
}

// Where the user's service manager runs apps, what came of a start is followed aside for a while.
void EndChildren() {
  std::ifstream numbers("/proc/thread-self/children");
  for (pid_t child = 0; numbers >> child;) onlinux::EndProcess(child);
}

bool MayRaise() {
  return Reap(ForkBound([] { ::_exit(::setpriority(PRIO_PROCESS, 0, High) == 0 ? 0 : 1); }));
}

// One start; all of its processes have ended when it returns.
void Start(Starter& starter, int reports, int wantedNice) {
  const auto used = Used();
  const auto start = Now();
  const auto child = StartSilent(starter.words);
  ProbeReport report{};
  pollfd wait{.fd = reports, .events = POLLIN, .revents = 0};
  constexpr int patience = 10'000;
  const bool told =
      ::poll(&wait, 1, patience) > 0 && ::read(reports, &report, sizeof report) == static_cast<ssize_t>(sizeof report);
  if (!told) onlinux::EndProcess(child);
  if (onlinux::HasManager()) {
    ::waitpid(child, nullptr, 0);
    EndChildren();
  }
  while (::waitpid(-1, nullptr, 0) > 0) continue;
  if (!told) throw Failure(starter.words.front() + " did not start the program");
  if (report.nice != wantedNice)
    throw Failure(starter.words.front() + " left the program at nice " + std::to_string(report.nice));
  starter.toRun.times.push_back(report.began - start);
  starter.used.times.push_back(Used() - used);
}

// A quiet start as an app of the user's service manager, which is asked for the class, against nice in the same place.
void CompareManaged(const std::vector<std::string>& velmaro, const std::vector<std::string>& nice, int reports,
                    int wanted) {
  const auto runner = onlinux::FindFile("systemd-run");
  if (!onlinux::HasManager() || runner.empty()) {
    std::printf("no service manager runs this user's apps: what it adds to a quiet start is left out\n");
    return;
  }
  Starter managed{{"velmaro /q /h PROGRAM as an app"}, {}, {runner, "--user", "--scope", "-q"}};
  Starter bare{{"nice -n -10 PROGRAM as an app"}, {}, managed.words};
  managed.words.insert(managed.words.end(), velmaro.begin(), velmaro.end());
  bare.words.insert(bare.words.end(), nice.begin(), nice.end());
  constexpr int rounds = 25;
  for (int i = 0; i < rounds; ++i)
    for (auto* starter : {&managed, &bare}) Start(*starter, reports, wanted);
  PrintRatio(managed.toRun, bare.toRun);
  std::printf("the manager adds %.2f ms, wanted: at most 10\n", Median(managed.toRun.times) - Median(bare.toRun.times));
}

}  // namespace

std::string Beside(const std::string& name) {
  const auto path = fs::read_symlink("/proc/self/exe").parent_path() / name;
  if (!fs::exists(path)) throw Failure(name + " is missing beside this program");
  return path;
}

void CompareStarts() {
  // A program that velmaro starts is nobody's child at first; this makes it one of ours, to wait for.
  ::prctl(PR_SET_CHILD_SUBREAPER, 1);
  const auto nice = onlinux::FindFile("nice");
  if (nice.empty()) throw Failure("nice is not installed");
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) throw Failure("no pipe can be had");
  const onlinux::Descriptor reports(ends[0]);
  const onlinux::Descriptor writing(ends[1]);
  const auto pipe = "/proc/" + std::to_string(::getpid()) + "/fd/" + std::to_string(writing.get());
  const bool mayRaise = MayRaise();
  const int wanted = mayRaise ? High : ::getpriority(PRIO_PROCESS, 0);
  Starter unattended{{"velmaro /q /h PROGRAM, until it runs"}, {"... processor time"}, {Beside("velmaro"), "/q", "/h"}};
  Starter bare{{"nice -n -10 PROGRAM"}, {"nice -n -10 PROGRAM"}, {nice, "-n", std::to_string(High)}};
  for (auto* starter : {&unattended, &bare})
    for (const auto& word : {Beside("velmaro_bench_probe"), pipe}) starter->words.push_back(word);
  constexpr int rounds = 101;
  for (int i = 0; i < rounds; ++i)
    for (auto* starter : {&unattended, &bare}) Start(*starter, reports.get(), wanted);
  PrintRatio(unattended.toRun, bare.toRun, 1.15);
  // A start in a group of its own waits its turn where others want the core; the quickest ones had it for themselves.
  PrintRatio(QuickestOf(unattended.toRun), QuickestOf(bare.toRun), 1.15);
  PrintRatio(unattended.used, bare.used, 1.15);
  std::printf(mayRaise ? "all %d starts came to run at nice %d\n"
                       : "nice -10 is refused to this user: all %d starts ran at nice %d\n",
              2 * rounds, wanted);
  CompareManaged(unattended.words, bare.words, reports.get(), wanted);
}
