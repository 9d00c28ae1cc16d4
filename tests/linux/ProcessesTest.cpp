#include <gtest/gtest.h>
#include <linux/sched.h>
#include <sys/syscall.h>

#include <atomic>

#include "Children.h"
#include "platform/identity.h"
#include "platform/linux/PriorityClass.h"
#include "platform/linux/ProcFolder.h"
#include "platform/linux/Script.h"
#include "platform/linux/Start.h"
#include "platform/rights.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "process/WalkProcesses.h"

namespace velmaro {
namespace {

using namespace platform;

OwnedHandle Open(pid_t id) {
  return OwnedHandle(OpenProcess(PROCESS_ALL_ACCESS, false, static_cast<std::uint32_t>(id)));
}

// Makes a process of a number that was another's before. 0 where that is not allowed.
pid_t ForkAs(pid_t id) {
  clone_args args{};
  args.set_tid = reinterpret_cast<std::uint64_t>(&id);
  args.set_tid_size = 1;
  args.exit_signal = SIGCHLD;
  const auto child = static_cast<pid_t>(::syscall(SYS_clone3, &args, sizeof args));
  if (child == 0)
    for (;;) ::pause();
  return std::max(child, 0);
}

TEST(LinuxProcesses, EveryPolicyAndNiceValueHasItsPriority) {
  std::string told;
  for (const int nice : {-20, -10, -9, -1, 0, 1, 14, 15, 19})
    told += std::to_string(onlinux::BasePriority(SCHED_OTHER, nice)) + ' ';
  for (const int policy : {SCHED_FIFO, SCHED_RR, SCHED_BATCH, SCHED_IDLE})
    told += std::to_string(onlinux::BasePriority(policy, 0)) + ' ';
  EXPECT_EQ(told, "13 13 10 10 8 6 6 4 4 24 24 8 4 ");
}

TEST(LinuxProcesses, WithoutRightsNothingBreaksAndNothingIsPretended) {
  EXPECT_EQ(InChild([] {
              const sched_param none{};
              ::sched_setscheduler(0, SCHED_OTHER | SCHED_RESET_ON_FORK, &none);
              if (!BecomeNobody()) return 1;
              const auto own = Open(::getpid());
              const auto first = Open(1);
              const auto before = onlinux::BasePriority(SCHED_OTHER, ::getpriority(PRIO_PROCESS, 0));
              if (SetPriorityClass(own.get(), HIGH_PRIORITY_CLASS) || SetPriorityClass(own.get(), 7)) return 2;
              if (Listed(::getpid())->pcPriClassBase != before) return 2;
              if (WhatWouldHelp(own.get()).find("usermod -aG velmaro ") == std::string::npos) return 6;
              if (WhatWouldHelp(first.get()).find("belongs to root") == std::string::npos) return 7;
              if (SetPriorityClass(first.get(), IDLE_PRIORITY_CLASS) || TerminateProcess(first.get(), 0)) return 3;
              if (!SetPriorityClass(own.get(), IDLE_PRIORITY_CLASS)) return 5;
              return Listed(1) && *Listed(1)->szExeFile != '\0' ? 0 : 4;
            }),
            0);
}

// A thread of this process that waits under a policy and nice value of its own.
pid_t StartThread(int policy, int priority, int nice) {
  std::atomic<pid_t> id = 0;
  std::thread([&id, policy, priority, nice] {
    const sched_param parameters{.sched_priority = priority};
    ::sched_setscheduler(0, policy, &parameters);
    ::setpriority(PRIO_PROCESS, 0, nice);
    id = ::gettid();
    for (;;) ::pause();
  }).detach();
  while (id == 0) std::this_thread::yield();
  return id;
}

// Policies and nice values of threads: "0 -10, 3 0".
std::string SchedulingOf(const std::vector<pid_t>& threads) {
  std::string text;
  for (const auto id : threads)
    text += (text.empty() ? "" : ", ") + std::to_string(::sched_getscheduler(id)) + ' ' +
            std::to_string(::getpriority(PRIO_PROCESS, static_cast<id_t>(id)));
  return text;
}

TEST(LinuxProcesses, ThreadsWithAPolicyOfTheirOwnKeepItAndTheOthersFollow) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may raise a class";
  const auto run = [] {
    const std::vector<pid_t> threads = {::getpid(), StartThread(SCHED_OTHER, 0, 5), StartThread(SCHED_BATCH, 0, 3),
                                        StartThread(SCHED_FIFO, 20, 0)};
    const auto own = Open(::getpid());
    int failed = 0;
    const auto expect = [&](std::uint32_t set, const std::string& read) {
      EXPECT_TRUE(SetPriorityClass(own.get(), set));
      EXPECT_EQ(SchedulingOf(threads), read) << set;
      failed += SchedulingOf(threads) != read || GetPriorityClass(own.get()) != set;
    };
    expect(HIGH_PRIORITY_CLASS, "0 -10, 0 -10, 3 3, 1 0");
    expect(IDLE_PRIORITY_CLASS, "0 19, 0 19, 3 3, 1 0");
    expect(REALTIME_PRIORITY_CLASS, "2 19, 2 19, 2 3, 1 0");
    expect(NORMAL_PRIORITY_CLASS, "0 0, 0 0, 0 0, 1 0");
    return failed;
  };
  EXPECT_EQ(InChild(run), 0);
}

TEST(LinuxProcesses, AChangeThatIsRefusedLeavesEveryThreadAsItWas) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may set up what others may not change";
  for (const auto& [wanted, main, other] : std::vector<std::tuple<std::uint32_t, int, int>>{
           {HIGH_PRIORITY_CLASS, 0, 0}, {NORMAL_PRIORITY_CLASS, -5, 5}, {REALTIME_PRIORITY_CLASS, 19, 0}}) {
    const auto run = [&] {
      const auto own = Open(::getpid());
      const std::vector<pid_t> threads = {::getpid(), StartThread(SCHED_OTHER, 0, other)};
      if (main == 0) SetPriorityClass(own.get(), REALTIME_PRIORITY_CLASS);
      ::setpriority(PRIO_PROCESS, 0, main);
      const auto before = SchedulingOf(threads);
      if (!BecomeNobody()) return 1;
      if (SetPriorityClass(own.get(), wanted)) return 2;
      EXPECT_EQ(SchedulingOf(threads), before);
      return SchedulingOf(threads) == before ? 0 : 3;
    };
    EXPECT_EQ(InChild(run), 0) << wanted;
  }
}

TEST(LinuxProcesses, AClassCountsAgainstProgramsOfOtherSessionsToo) {
  if (::geteuid() != 0 || !ReadBytes("/proc/sys/kernel/sched_autogroup_enabled").starts_with("1"))
    GTEST_SKIP() << "the right to raise a class is missing, or groups of the system's own making";
  const Child game(Spin([] {}));
  const Child rival(Spin([] {}));
  for (const auto set : {HIGH_PRIORITY_CLASS, IDLE_PRIORITY_CLASS}) {
    EXPECT_TRUE(SetPriorityClass(Open(game.Id()).get(), set));
    const auto share = TimeBy(game.Id(), rival.Id());
    EXPECT_TRUE(set == HIGH_PRIORITY_CLASS ? share > 3 : share < 1 / 3.0) << share;
  }
  // This process shares a group with its callers, who did not ask for anything.
  const auto group = ReadBytes("/proc/self/autogroup");
  EXPECT_EQ(InChild([] { return SetPriorityClass(Open(::getpid()).get(), IDLE_PRIORITY_CLASS) ? 0 : 1; }), 0);
  EXPECT_EQ(ReadBytes("/proc/self/autogroup"), group);
}

TEST(LinuxProcesses, AnEndedProcessIsGoneFromTheListAtOnce) {
  const TestFolder folder;
  for (const int end : {SIGTERM, SIGINT, SIGHUP}) ::signal(end, SIG_IGN);  // a program takes over what is ignored
  const Child child(folder.Sleeper("zzend"));
  for (const int end : {SIGTERM, SIGINT, SIGHUP}) ::signal(end, SIG_DFL);
  const auto process = Open(child.Id());
  EXPECT_TRUE(TerminateProcess(process.get(), 0));
  EXPECT_FALSE(Listed(child.Id()));
  EXPECT_FALSE(child.Runs());
  EXPECT_FALSE(SetPriorityClass(process.get(), IDLE_PRIORITY_CLASS));
  EXPECT_EQ(GetPriorityClass(process.get()), 0U);
}

TEST(LinuxProcesses, ANumberThatWentToAnotherProcessIsNotTouched) {
  const TestFolder folder;
  Child listed(folder.Sleeper("zzfirst"));
  const auto id = listed.Id();
  const auto before = Open(id);
  OwnedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS));
  listed.End();
  // Start times count in hundredths of a second.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const auto other = ForkAs(id);
  if (other == 0) GTEST_SKIP() << "this user may not choose the number of a process";
  EXPECT_FALSE(Open(id));
  EXPECT_FALSE(TerminateProcess(before.get(), 0));
  EXPECT_FALSE(SetPriorityClass(before.get(), IDLE_PRIORITY_CLASS));
  EXPECT_EQ(::getpriority(PRIO_PROCESS, static_cast<id_t>(other)), ::getpriority(PRIO_PROCESS, 0));
  EXPECT_EQ(::kill(other, 0), 0);
  snapshot.Reset();
  EXPECT_TRUE(Open(id));
  ::kill(other, SIGKILL);
  ::waitpid(other, nullptr, 0);
}

TEST(LinuxProcesses, NamesOfAnyBytesComeThrough) {
  const TestFolder folder;
  for (const auto* name : {"zz line\nend", "zz) R 1 (x", "zz [a] b", "zz\xff\xfe", "zz (deleted)", "zzÄöł日本"}) {
    const auto path = folder.Sleeper(name);
    const Child child(path);
    EXPECT_EQ(Listed(child.Id()).value().szExeFile, path);
    EXPECT_EQ(Listed(child.Id()).value().pcPriClassBase, onlinux::BasePriority(SCHED_OTHER, child.Nice())) << name;
    fs::remove(path);
    EXPECT_EQ(Listed(child.Id()).value().szExeFile, path) << "the file is gone, the process is not";
  }
  // A path that is too long for its record loses its front, in whole characters.
  std::string deep;
  for (int i = 0; i < 100; ++i) deep += i == 20 ? "/あ" : "あ";
  const auto path = folder.Sleeper(deep + "/x");
  const Child longest(path);
  const std::string listed = Listed(longest.Id()).value().szExeFile;
  EXPECT_TRUE(path.ends_with(listed) && listed.starts_with("あ") && listed.size() > 256) << listed;
  const auto names = NamesOf(Open(longest.Id()).get());
  EXPECT_GT(std::count(names.begin(), names.end(), path), 0);
  const auto status = onlinux::ParseStatus(
      "7 (a) (b) S 1\n) S 3 7 7 0 -1 64 0 0 0 0 1 2 0 0 20 -5 2 0 99 0 0 0 0 0 0 0 "
      "0 0 0 0 0 0 0 0 0 17 1 0 5 0");
  ASSERT_TRUE(status);
  EXPECT_EQ(status->shortName, "a) (b) S 1\n");
  EXPECT_EQ(status->nice, -5);
  EXPECT_EQ(status->startTime, 99U);
  for (const auto* line : {"", "7", "7 (a", "7 )a(", "7 (a) S 3", "7 (a) S x y z"})
    EXPECT_FALSE(onlinux::ParseStatus(line));
}

int OwnNice() { return ::getpriority(PRIO_PROCESS, 0); }

// True where a line of a list finds a process.
bool Finds(const std::string& line) { return WalkProcesses(line, 5, true, nullptr); }

TEST(LinuxProcesses, ANameStandsForWholePartsOfAPath) {
  const TestFolder folder;
  const Child longer(folder.Sleeper("zzgames/aazzstar"));
  const auto path = folder.Sleeper("zzgames/zzstar");
  const Child star(path);
  fs::create_symlink(path, folder / "link");
  for (const auto& line :
       {std::string("zzSTAR"), std::string("zzgames/zzstar"), path, " \"" + path + "\" ", folder / "link"})
    EXPECT_TRUE(Finds(line)) << line;
  for (const auto& line : {"zstar", "games/zzstar", "/zzgames/zzstar", "zzgames/", "/", "zz*", "link", "kthreadd"})
    EXPECT_FALSE(Finds(line)) << line;
  WalkProcesses("zzstar", 3, true, nullptr);
  EXPECT_EQ(star.Nice(), 19);
  EXPECT_EQ(longer.Nice(), OwnNice());
  for (const auto* emulator : {"/usr/games/stella", "mame.exe", "/opt/duckstation-qt", "86box", "zsnes"})
    EXPECT_TRUE(IsKnownEmulator(emulator)) << emulator;
  for (const auto* other : {"/usr/bin/e", "/stella/sh", "stella;tiemu", "mame.ex", "/"})
    EXPECT_FALSE(IsKnownEmulator(other)) << other;
}

TEST(LinuxProcesses, AListThatIsOnlyLookedAtKeepsUpWithWhatAProcessBecomes) {
  const TestFolder folder;
  const auto after = folder.Sleeper("after/zzsame");
  const auto before = folder / "before/zzsame";
  fs::create_directories(folder / "before");
  fs::copy_file("/bin/sh", before);
  const auto child = ::fork();
  if (child == 0) Execute({before, "-c", "kill -STOP $$; exec " + after + " 300"});
  const auto isListedAs = [&](const std::string& path) {
    const auto entry = Listed(child, CreateListSnapshot());
    return (entry ? entry->szExeFile : "nothing") == path;
  };
  EXPECT_TRUE(Eventually([&] { return isListedAs(before); }));
  ::setpriority(PRIO_PROCESS, static_cast<id_t>(child), 19);
  EXPECT_EQ(Listed(child, CreateListSnapshot()).value().pcPriClassBase, 4);
  EXPECT_TRUE(Eventually([&] { return ::kill(child, SIGCONT) == 0 && Finds(after); }));
  EXPECT_TRUE(isListedAs(after));
  fs::rename(after, folder / "zzmoved");
  EXPECT_TRUE(isListedAs(folder / "zzmoved"));
  ::kill(child, SIGKILL);
  EXPECT_TRUE(Eventually([&] { return isListedAs("nothing"); }));
  ::waitpid(child, nullptr, 0);
}

TEST(LinuxProcesses, AScriptIsKnownByItsOwnNameAndByItsInterpreters) {
  const TestFolder folder;
  NoKillListPath = folder / "spared";
  const auto script = folder / "zz-tool.pl";
  for (const auto* first : {"#!/usr/bin/perl -w", "#!/usr/bin/env perl"}) {
    WriteBytes(script, first + std::string("\nsleep 300;\n"));
    fs::permissions(script, fs::perms::owner_all);
    const Child tool(script);
    ASSERT_TRUE(Eventually([&] { return Finds("zz-tool.pl"); }));
    EXPECT_EQ(std::string(Listed(tool.Id())->szExeFile), "/usr/bin/perl " + script);
    for (const auto* spared : {"zz-tool.pl", "perl", "/usr/bin/perl", "z?-tool*", "[", "*tool.pl"}) {
      WriteBytes(NoKillListPath, spared);
      EXPECT_TRUE(WalkProcesses("zz-tool.pl", 4, true, nullptr) && tool.Runs()) << spared;
    }
    WriteBytes(NoKillListPath, "tool.pl");
    WalkProcesses(script, 4, true, nullptr);
    EXPECT_FALSE(tool.Runs());
  }
  for (const std::string line :
       {"python3 -Es -W ignore /x/a.py b.py > /x/a.py", "python3 -m a > ", "python3 -c a.py > ", "python3 > ",
        "python3 - a > ", "python3 -- -a > -a", "bash -eu -o pipefail a.sh > a.sh", "bash -lc a.sh > ", "vim a.sh > ",
        "perl -MDateTime -w a.pl > a.pl", "perl -ne a.pl > ", "python3ish a.py > "}) {
    const auto end = line.find(" > ");
    const auto words = onlinux::SplitWords(line.substr(0, end));
    EXPECT_EQ(onlinux::ScriptOf(words[0], words[0], words), line.substr(end + 3)) << line;
  }
  EXPECT_EQ(onlinux::ScriptOf("/opt/lang", "a-script-of-15-", {"lang", "-x", "/a-script-of-15-and-more"}),
            "/a-script-of-15-and-more");
}

TEST(LinuxProcesses, NoNameThatAProcessGivesItselfSlipsTheNoKillList) {
  const TestFolder folder;
  NoKillListPath = folder / "spared";
  fs::copy_file("/usr/bin/perl", folder / "wine-zz");
  const auto script = folder / "zz-tool.pl";
  WriteBytes(script, "#!" + folder / "wine-zz" + "\n$0 = 'zzother'; sleep 300;\n");
  fs::permissions(script, fs::perms::owner_all);
  const Child tool(script);
  ASSERT_TRUE(Eventually([] { return Finds("zzother"); }));
  for (const auto* spared : {"zz-tool.pl", "wine-zz", "zzother"}) {
    WriteBytes(NoKillListPath, spared);
    WalkProcesses("zzother", 4, true, nullptr);
    EXPECT_TRUE(tool.Runs()) << spared;
  }
}

}  // namespace
}  // namespace velmaro
