#include "Children.h"
#include "platform/linux/processes/NiceGroup.h"

namespace {

// What they measure, other tests at the same time would disturb.
using LinuxShares = InFolder;

void OntoFirstCore() {
  cpu_set_t first;
  CPU_ZERO(&first);
  CPU_SET(0, &first);
  ::sched_setaffinity(0, sizeof first, &first);
}

// A process in a session of its own that does nothing but take time of one core.
template <class Prepare>
pid_t Spin(Prepare prepare) {
  const auto child = Fork();
  if (child == 0) {
    ::setsid();
    OntoFirstCore();
    prepare();
    for (volatile unsigned i = 0;;) i = i + 1;
  }
  Eventually([&] { return ::getsid(child) == child; });
  return child;
}

// What one process gets of a core, by what another gets meanwhile.
double TimeBy(pid_t one, pid_t other) {
  const auto seconds = [](pid_t id) { return std::stod(ReadBytes(ProcOf(id, "schedstat"))) / 1e9; };
  const auto before = std::pair(seconds(one), seconds(other));
  Eventually([&] { return seconds(one) + seconds(other) > before.first + before.second + 1; });
  return (seconds(one) - before.first) / (seconds(other) - before.second);
}

// Lets a program spin on one core against a rival of another session, and of another control group where two are told.
// True where the one that is to get more gets three times as much, a moment after the start.
bool CountsAgainstARival(const std::string& priority, const std::array<std::string, 2>& groups = {}) {
  const auto enter = [](const std::string& group) {
    if (!group.empty()) WriteBytes(group + "/cgroup.procs", "0");
  };
  const Child rival(Spin([&] { enter(groups[1]); }));
  const Child game(Start({VELMARO_PROGRAM, "/q", priority, "/bin/sh", "-c", "while :; do :; done"}, {}, [&] {
    OntoFirstCore();
    enter(groups[0]);
    return true;
  }));
  for (int i = 0; i < 12; ++i)
    if (const auto share = TimeBy(game.Id(), rival.Id()); priority == "/i" ? share < 1.0 / 3 : share > 3) return true;
  return false;
}

TEST_F(LinuxShares, APriorityCountsAgainstOtherSessions) {
  if (!fs::exists("/proc/self/autogroup")) GTEST_SKIP() << "the kernel keeps no groups of sessions";
  EXPECT_TRUE(CountsAgainstARival("/i"));
  if (!MayRaise()) GTEST_SKIP() << "High is refused to this user";
  EXPECT_TRUE(CountsAgainstARival("/h"));
}

TEST_F(LinuxShares, APriorityCountsAgainstOtherControlGroups) {
  const auto folder = "/sys/fs/cgroup/velmaro-test-" + std::to_string(::getpid());
  const std::array groups = {folder + "-game", folder + "-rival"};
  std::error_code error;
  for (const auto& group : groups) fs::create_directory(group, error);
  const bool share = fs::exists(groups[0] + "/cpu.weight.nice");
  EXPECT_TRUE(!share || !MayRaise() || CountsAgainstARival("/h", groups));
  EXPECT_TRUE(!share || CountsAgainstARival("/i", groups));
  for (const auto& group : groups) Eventually([&] { return ::rmdir(group.c_str()) == 0 || errno == ENOENT; });
  if (!share) GTEST_SKIP() << "this user may not make control groups that share the processor";
}

TEST_F(LinuxShares, AClassCountsAgainstProgramsOfOtherSessionsToo) {
  if (::geteuid() != 0 || !ReadBytes("/proc/sys/kernel/sched_autogroup_enabled").starts_with("1"))
    GTEST_SKIP() << "the right to raise a class is missing, or groups of the system's own making";
  const Child game(Spin([] {}));
  const Child rival(Spin([] {}));
  for (const auto set : {platform::HIGH_PRIORITY_CLASS, platform::IDLE_PRIORITY_CLASS}) {
    EXPECT_TRUE(platform::SetPriorityClass(Open(game.Id()).get(), set));
    const auto share = TimeBy(game.Id(), rival.Id());
    EXPECT_TRUE(set == platform::HIGH_PRIORITY_CLASS ? share > 3 : share < 1 / 3.0) << share;
  }
  // This process shares a group with its callers, who did not ask for anything.
  const auto group = ReadBytes("/proc/self/autogroup");
  Alone([] { EXPECT_TRUE(platform::SetPriorityClass(Open(::getpid()).get(), platform::IDLE_PRIORITY_CLASS)); });
  EXPECT_EQ(ReadBytes("/proc/self/autogroup"), group);
  Alone([] {
    // The files of a process belong to its user only while it can be looked into.
    ASSERT_TRUE(BecomeNobody() && ::setsid() > 0 && ::prctl(PR_SET_DUMPABLE, 1) == 0);
    const auto own = onlinux::OpenGroup(onlinux::GroupOf(static_cast<std::uint32_t>(::getpid())));
    for (const int nice : {1, 2, 3}) EXPECT_TRUE(onlinux::SetGroupNice(own, nice)) << "the kernel takes few in a row";
  });
}

}  // namespace
