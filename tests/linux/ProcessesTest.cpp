#include <linux/sched.h>
#include <sys/stat.h>
#include <sys/syscall.h>

#include <atomic>

#include "Children.h"
#include "platform/identity.h"
#include "platform/linux/desktop/RunToEnd.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/rights.h"

namespace {

using LinuxProcesses = InFolder;

using namespace platform;

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
  EXPECT_TRUE(TerminateProcess(process.get(), 0) && WaitForEnd(process.get(), 30000));
  EXPECT_FALSE(Listed(child.Id()) || child.Runs() || SetPriorityClass(process.get(), IDLE_PRIORITY_CLASS));
  EXPECT_EQ(GetPriorityClass(process.get()), 0U);
  // Signal 0 asks alone: it does no harm where a number that stands for many processes is taken.
  for (const pid_t many : {-1, 0, 1}) EXPECT_FALSE(onlinux::EndProcess(many, 0)) << many;
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
  EXPECT_FALSE(TerminateProcess(before.get(), 0) || SetPriorityClass(before.get(), IDLE_PRIORITY_CLASS));
  EXPECT_TRUE(other.Runs() && other.Nice() == OwnNice());
  const auto identity = [&](Handle of) {
    PROCESSENTRY32 entry;
    entry.dwSize = sizeof entry;
    for (bool more = Process32First(of, entry); more && entry.th32ProcessID != static_cast<std::uint32_t>(id);)
      more = Process32Next(of, entry);
    return ProcessIdentity(of);
  };
  const OwnedHandle later(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS));
  EXPECT_NE(identity(snapshot.get()), identity(later.get())) << "a row stands for the earlier one";
  snapshot.Reset();
  EXPECT_TRUE(Open(id));
}

}  // namespace
