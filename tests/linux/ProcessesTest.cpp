#include <gtest/gtest.h>
#include <linux/sched.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <atomic>

#include "Children.h"
#include "platform/identity.h"
#include "platform/linux/desktop/RunToEnd.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/Script.h"
#include "platform/linux/starts/Start.h"
#include "platform/rights.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "process/WalkProcesses.h"

namespace velmaro {
namespace {

using LinuxProcesses = InFolder;

using namespace platform;

OwnedHandle Open(pid_t id) {
  return OwnedHandle(OpenProcess(PROCESS_ALL_ACCESS, false, static_cast<std::uint32_t>(id)));
}

int OwnNice() { return ::getpriority(PRIO_PROCESS, 0); }

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

TEST_F(LinuxProcesses, EveryPolicyAndNiceValueHasItsPriority) {
  std::string told;
  for (const int nice : {-20, -10, -9, -1, 0, 1, 14, 15, 19})
    told += std::to_string(onlinux::BasePriority(SCHED_OTHER, nice)) + ' ';
  for (const int policy : {SCHED_FIFO, SCHED_RR, SCHED_DEADLINE, SCHED_BATCH, SCHED_IDLE})
    told += std::to_string(onlinux::BasePriority(policy, 0)) + ' ';
  for (const int base : {4, 6, 8, 10, 13, 24}) told += std::to_string(onlinux::ClassOfBasePriority(base)) + ' ';
  EXPECT_EQ(told, "13 13 10 10 8 6 6 4 4 24 24 24 8 4 64 16384 32 32768 128 256 ");
}

TEST_F(LinuxProcesses, WithoutRightsNothingBreaksAndNothingIsPretended) {
  WriteBytes(folder / "group", "root:x:0:\nvelmaro:x:999:daemon,root\n");
  Alone([&] {
    const sched_param none{};
    ::sched_setscheduler(0, SCHED_OTHER | SCHED_RESET_ON_FORK, &none);
    const auto own = Open(::getpid());
    EXPECT_TRUE(!PutOver(folder / "group", "/etc/group") ||
                WhatWouldHelp(own.get()) == "log in again, and your membership of the group velmaro counts");
    ASSERT_TRUE(BecomeNobody());
    const auto first = Open(1);
    const auto before = onlinux::BasePriority(SCHED_OTHER, OwnNice());
    EXPECT_FALSE(SetPriorityClass(own.get(), HIGH_PRIORITY_CLASS) || SetPriorityClass(own.get(), 7));
    EXPECT_EQ(Listed(::getpid())->pcPriClassBase, before);
    EXPECT_NE(WhatWouldHelp(own.get()).find(" -f velmaro && sudo usermod -aG velmaro "), std::string::npos);
    struct stat facts {};
    // Among processes of its own even the first one is this user's.
    if (::stat("/proc/1", &facts) == 0 && facts.st_uid != ::geteuid()) {
      EXPECT_EQ(WhatWouldHelp(first.get()), "it belongs to root, so only an administrator may change it");
      EXPECT_FALSE(SetPriorityClass(first.get(), IDLE_PRIORITY_CLASS));
    }
    EXPECT_FALSE(TerminateProcess(first.get(), 0)) << "all else hangs on the first process";
    EXPECT_TRUE(SetPriorityClass(own.get(), IDLE_PRIORITY_CLASS));
    EXPECT_NE(*Listed(1).value().szExeFile, '\0');
  });
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

TEST_F(LinuxProcesses, ThreadsWithAPolicyOfTheirOwnKeepItAndTheOthersFollow) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may raise a class";
  Alone([] {
    const std::vector<pid_t> threads = {::getpid(), StartThread(SCHED_OTHER, 0, 5), StartThread(SCHED_BATCH, 0, 3),
                                        StartThread(SCHED_FIFO, 20, 0), StartThread(SCHED_RR, 5, 0)};
    const auto own = Open(::getpid());
    const auto expect = [&](std::uint32_t set, const std::string& read) {
      EXPECT_TRUE(SetPriorityClass(own.get(), set));
      EXPECT_EQ(SchedulingOf(threads), read) << set;
      EXPECT_EQ(GetPriorityClass(own.get()), set);
    };
    expect(HIGH_PRIORITY_CLASS, "0 -10, 0 -10, 3 3, 1 0, 2 0");
    expect(IDLE_PRIORITY_CLASS, "0 19, 0 19, 3 3, 1 0, 2 0");
    expect(REALTIME_PRIORITY_CLASS, "2 19, 2 19, 2 3, 1 0, 2 0");
    expect(NORMAL_PRIORITY_CLASS, "0 0, 0 0, 0 0, 1 0, 2 0");
  });
}

TEST_F(LinuxProcesses, AChangeThatIsRefusedLeavesEveryThreadAsItWas) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may set up what others may not change";
  for (const auto& [wanted, main, other] : std::vector<std::tuple<std::uint32_t, int, int>>{
           {HIGH_PRIORITY_CLASS, 0, 0}, {NORMAL_PRIORITY_CLASS, -5, 5}, {REALTIME_PRIORITY_CLASS, 19, 0}}) {
    Alone([&, wanted = wanted, main = main, other = other] {
      const auto own = Open(::getpid());
      const std::vector<pid_t> threads = {::getpid(), StartThread(SCHED_OTHER, 0, other)};
      if (main == 0) SetPriorityClass(own.get(), REALTIME_PRIORITY_CLASS);
      ::setpriority(PRIO_PROCESS, 0, main);
      const auto before = SchedulingOf(threads);
      EXPECT_TRUE(BecomeNobody() && !SetPriorityClass(own.get(), wanted));
      EXPECT_EQ(SchedulingOf(threads), before) << wanted;
    });
  }
}

TEST_F(LinuxProcesses, AClassCountsAgainstProgramsOfOtherSessionsToo) {
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
  Alone([] { EXPECT_TRUE(SetPriorityClass(Open(::getpid()).get(), IDLE_PRIORITY_CLASS)); });
  EXPECT_EQ(ReadBytes("/proc/self/autogroup"), group);
}

TEST_F(LinuxProcesses, WhatRunsAsideHasItsTimeAndNoMoreWithoutADescriptorToo) {
  using namespace std::chrono_literals;
  for (const bool held : {true, false})
    Alone([&] {
      // What runs aside is given one descriptor, and there is none left to hold it by.
      const rlimit most{static_cast<rlim_t>(::dup(0)) + 1, 1024};
      ::close(static_cast<int>(most.rlim_cur) - 1);
      ASSERT_TRUE(held || ::setrlimit(RLIMIT_NOFILE, &most) == 0);
      const auto start = std::chrono::steady_clock::now();
      EXPECT_EQ(onlinux::RunSilently({"/bin/sh", "-c", "exit 7"}, 60s), 7);
      EXPECT_EQ(onlinux::RunSilently({"/bin/sleep", "300"}, 50ms), -1);
      EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
    });
}

TEST_F(LinuxProcesses, AnEndedProcessIsGoneFromTheListAtOnce) {
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

TEST_F(LinuxProcesses, ANumberThatWentToAnotherProcessIsNotTouched) {
  Child listed(folder.Sleeper("zzfirst"));
  const auto id = listed.Id();
  const auto before = Open(id);
  OwnedHandle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS));
  listed.End();
  // Start times count in hundredths of a second.
  std::this_thread::sleep_for(std::chrono::milliseconds(50));
  const Child other(ForkAs(id));
  if (other.Id() == 0) GTEST_SKIP() << "this user may not choose the number of a process";
  EXPECT_FALSE(Open(id));
  EXPECT_FALSE(TerminateProcess(before.get(), 0));
  EXPECT_FALSE(SetPriorityClass(before.get(), IDLE_PRIORITY_CLASS));
  EXPECT_EQ(other.Nice(), OwnNice());
  EXPECT_TRUE(other.Runs());
  snapshot.Reset();
  EXPECT_TRUE(Open(id));
}

TEST_F(LinuxProcesses, NamesOfAnyBytesComeThrough) {
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
  const auto s = onlinux::ParseStatus(
      "7 (a) (b) S 1\n) S 3 7 7 34816 -1 64 0 0 0 0 1 2 0 0 20 -5 2 0 99 0 0 0 0 0 0 0 "
      "0 0 0 0 0 0 0 0 17 1 0 5 0");
  ASSERT_TRUE(s);
  EXPECT_EQ(s->shortName, "a) (b) S 1\n");
  EXPECT_EQ(std::tuple(s->state, s->parent, s->hasTerminal, s->flags, s->nice, s->threads, s->startTime, s->policy),
            std::tuple('S', 3U, true, 64U, -5, 2U, 99U, 5));
  for (const auto* line : {"", "7", "7 (a", "7 )a(", "7 (a) S 3", "7 (a) S x y z"})
    EXPECT_FALSE(onlinux::ParseStatus(line));
}

// True where a line of a list finds a process.
bool Finds(const std::string& line) { return WalkProcesses(line, 5, true, nullptr); }

TEST_F(LinuxProcesses, ANameStandsForWholePartsOfAPath) {
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

TEST_F(LinuxProcesses, AListThatIsOnlyLookedAtKeepsUpWithWhatAProcessBecomes) {
  const auto after = folder.Sleeper("after/zzsame");
  const auto before = folder / "before/zzsame";
  fs::create_directories(folder / "before");
  fs::copy_file("/bin/sh", before);
  const Child child({before, "-c", "until [ -e \"$0\" ]; do :; done; exec " + after + " 300", folder / "go"});
  const auto isListedAs = [&](const std::string& path) {
    const auto entry = Listed(child.Id(), CreateListSnapshot());
    return (entry ? entry->szExeFile : "nothing") == path;
  };
  EXPECT_TRUE(Eventually([&] { return isListedAs(before); }));
  ::setpriority(PRIO_PROCESS, static_cast<id_t>(child.Id()), 19);
  EXPECT_EQ(Listed(child.Id(), CreateListSnapshot()).value().pcPriClassBase, 4);
  WriteBytes(folder / "go", "");
  EXPECT_TRUE(Eventually([&] { return Finds(after); }));
  EXPECT_TRUE(isListedAs(after));
  fs::rename(after, folder / "zzmoved");
  EXPECT_TRUE(isListedAs(folder / "zzmoved"));
  EXPECT_TRUE(!Listed(2, CreateListSnapshot()) || ReadBytes("/proc/2/comm") != "kthreadd\n") << "a kernel's thread";
  EXPECT_TRUE(onlinux::EndProcess(child.Id()));
  EXPECT_TRUE(Eventually([&] { return isListedAs("nothing"); }));
}

TEST_F(LinuxProcesses, AScriptIsKnownByItsOwnNameAndByItsInterpreters) {
  NoKillListPath = folder / "spared";
  const auto script = folder / "zz-tool.pl";
  for (const auto& [first, name] :
       {std::pair("#!/usr/bin/perl -w", script), {"#!/usr/bin/env perl", std::string("./zz-tool.pl")}}) {
    WriteProgram(script, first + std::string("\nsleep 300;\n"));
    const Child tool({"/bin/sh", "-c", "cd '" + folder.Path() + "'; exec " + name});
    ASSERT_TRUE(Eventually([&] { return Listed(tool.Id()).value().szExeFile == "/usr/bin/perl " + script; }));
    for (const auto* spared : {"zz-tool.pl", "perl", "/usr/bin/perl", "z?-tool*", "[", "*tool.pl"}) {
      WriteBytes(NoKillListPath, spared);
      EXPECT_TRUE(WalkProcesses("zz-tool.pl", 4, true, nullptr) && tool.Runs()) << spared;
    }
    WriteBytes(NoKillListPath, "tool.pl");
    WalkProcesses(script, 4, true, nullptr);
    EXPECT_FALSE(tool.Runs());
  }
  std::istringstream lines(
      "python3 -Es -W ignore /x/a.py b.py > /x/a.py\npython3 -m a > \npython3 -c a.py > \npython3 > \npython3 - a > \n"
      "python3 -- -a > -a\npython3ish a.py > \nbash -eu -o pipefail a.sh > a.sh\nbash -lc a.sh > \nvim a.sh > \n"
      "perl -MDateTime -w a.pl > a.pl\nperl -ne a.pl > \nruby -I l -rx -C d a.rb > a.rb\nnode -r m a.js > a.js\n"
      "lua5.4 -l m -e x=1 a.lua > a.lua\nphp -d x=1 -c i a.php > a.php\nphp -r a.php > \nexpect -f a.exp > a.exp\n"
      "guile -L l -s a.scm > a.scm\nfish -C x a.fish > a.fish\n");
  for (std::string line; std::getline(lines, line);) {
    const auto end = line.find(" > ");
    const auto words = onlinux::SplitWords(line.substr(0, end));
    EXPECT_EQ(onlinux::ScriptOf(words[0], words[0], words), line.substr(end + 3)) << line;
  }
  EXPECT_EQ(onlinux::ScriptOf("/opt/lang", "a-script-of-15-", {"lang", "-x", "/a-script-of-15-and-more"}),
            "/a-script-of-15-and-more");
}

TEST_F(LinuxProcesses, NoNameThatAProcessGivesItselfSlipsTheNoKillList) {
  NoKillListPath = folder / "spared";
  fs::copy_file("/usr/bin/perl", folder / "wine-zz");
  const auto script = folder / "zz-tool.pl";
  WriteProgram(script, "#!" + folder / "wine-zz" + "\n$0 = 'X:\\zz-other-than-all.exe'; open(F, '>/proc/self/comm');" +
                           " print F 'zz-other-than-a'; close F; sleep 300;\n");
  const Child tool({script, ""});
  const std::string name = "zz-other-than-all.exe";  // the kernel keeps less of it
  ASSERT_TRUE(Eventually([&] { return Finds(name); }));
  for (const auto& spared : {std::string("zz-tool.pl"), std::string("wine-zz"), name}) {
    WriteBytes(NoKillListPath, spared);
    WalkProcesses(name, 4, true, nullptr);
    EXPECT_TRUE(tool.Runs()) << spared;
  }
}

TEST_F(LinuxProcesses, AProtectedScriptRunsOnHoweverItsInterpreterWasTold) {
  NoKillListPath = folder / "spared";
  for (const auto* name : {"bin", "sub"}) fs::create_directory(folder / name);
  WriteBytes(folder / "app.sh", "kill -STOP $$\n");
  WriteBytes(folder / "sub/app.sh", "cd /; kill -STOP $$\n");
  WriteBytes(folder / "app.pl", "kill STOP, $$;\n");
  WriteBytes(folder / "app.py", "import os; os.kill(os.getpid(), 19)\n");
  const std::string behindMuch = "-c 'kill -STOP $$' " + std::string(9000, 'x') + " zz-last";
  for (const auto& [interpreter, words, spared] :
       std::vector<std::array<std::string, 3>>{{"bash", "--rcfile x app.sh", "app.sh"},
                                               {"bash", "+o posix app.sh", folder / "app.sh"},
                                               {"bash", "sub/app.sh", folder / "sub/app.sh"},
                                               {"bash", "-c 'kill -STOP $$' --of=app.sh", "app.sh"},
                                               {"bash", "-c 'kill -STOP $$' 'X:\\app.sh'", "app.sh"},
                                               {"bash", behindMuch, "zz-last"},
                                               {"perl", "-i.bake app.pl", "app.pl"},
                                               {"python3", "--check-hash-based-pycs default app.py", "app.p?"}}) {
    const auto program = folder / ("bin/" + interpreter);
    if (!fs::exists(program)) fs::copy_file("/usr/bin/" + interpreter, program);
    const Child child({"/bin/sh", "-c", "cd '" + folder.Path() + "'; exec " + program + ' ' + words});
    const auto id = static_cast<std::uint32_t>(child.Id());
    ASSERT_TRUE(Eventually([&] { return onlinux::ReadStatus(id).value().state == 'T' && Finds(program); })) << words;
    for (const bool isSpared : {true, false}) {
      WriteBytes(NoKillListPath, isSpared ? spared : "pp.sh\npp.pl\npp.py\nlast\nsub");
      WalkProcesses(program, 4, true, nullptr);
      EXPECT_EQ(child.Runs(), isSpared) << words;
    }
  }
}

}  // namespace
}  // namespace velmaro
