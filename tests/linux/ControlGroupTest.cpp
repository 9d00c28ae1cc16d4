#include "Children.h"
#include "platform/linux/memory/ControlGroup.h"
#include "platform/linux/processes/NiceGroup.h"

namespace {

constexpr int Megabyte = 1 << 20;

std::string Bytes(int megabytes) { return std::to_string(megabytes * Megabyte) + '\n'; }

class Groups : public TestFolder {
 public:
  void Write(const std::string& path, const std::string& text) const {
    fs::create_directories(fs::path(*this / path).parent_path());
    WriteBytes(*this / path, text);
  }
  // The megabytes that are left under the least limit, and that limit; -1 for none.
  std::pair<int, int> Read(const std::string& groups, const std::string& mounts) const {
    Write("groups", groups);
    Write("mounts", mounts);
    const auto found = Found();
    return found ? std::pair<int, int>(found->left / Megabyte, found->limit / Megabyte) : std::pair(-1, -1);
  }
  std::optional<onlinux::GroupMemory> Found() const {
    return onlinux::ReadGroupMemory(*this / "groups", *this / "mounts");
  }
  std::string Mount(const std::string& root, const std::string& folder, const std::string& kind) const {
    return "30 23 0:26 " + root + ' ' + (*this / folder) + " rw,nosuid shared:9 - " + kind + '\n';
  }
};

TEST(LinuxControlGroups, TheLeastLimitOfEitherVersionCounts) {
  const Groups groups;
  using Figures = std::pair<int, int>;
  const auto second = groups.Mount("/", "two", "cgroup2 cgroup2 rw");
  EXPECT_EQ(groups.Read("0::/user/app\n", second), Figures(-1, -1));
  groups.Write("two/user/app/memory.max", "max\n");
  groups.Write("two/user/app/memory.current", Bytes(500));
  EXPECT_EQ(groups.Read("0::/user/app\n", second), Figures(-1, -1));
  groups.Write("two/user/memory.max", Bytes(900));
  groups.Write("two/user/memory.high", Bytes(800));
  groups.Write("two/user/memory.events", "low 1\nhigh 2\nmax 4\noom 8\noom_kill 16\n");
  groups.Write("two/user/memory.current", Bytes(700));
  groups.Write("two/user/memory.stat", "anon 1\ninactive_file " + Bytes(300) + "active_file 9\n");
  EXPECT_EQ(groups.Read("0::/user/app\n", second), Figures(400, 800)) << "a group above has the limit";
  EXPECT_EQ(groups.Found()->strained, 14U);
  groups.Write("two/user/app/memory.max", Bytes(400));
  EXPECT_EQ(groups.Read("1:name=x:/user\n0::/user/app\n", second), Figures(0, 400)) << "more is used than it allows";
  const auto first = groups.Mount("/", "cpu", "cgroup cgroup rw,cpuset") +
                     groups.Mount("/outside", "one", "cgroup cgroup rw,cpu,memory");
  groups.Write("one/inner/memory.limit_in_bytes", Bytes(600));
  groups.Write("one/inner/memory.memsw.limit_in_bytes", Bytes(550));
  groups.Write("one/inner/memory.usage_in_bytes", Bytes(200));
  groups.Write("one/inner/memory.stat", "inactive_file 7\ntotal_inactive_file " + Bytes(50));
  groups.Write("one/inner/memory.failcnt", "7\n");
  groups.Write("one/memory.limit_in_bytes", "9223372036854771712\n");
  EXPECT_EQ(groups.Read("5:cpuset:/x\n4:cpu,memory:/outside/inner\n0::/\n", first), Figures(400, 550))
      << "in a container";
  EXPECT_EQ(groups.Found()->strained, 7U);
  EXPECT_EQ(groups.Read("nonsense\n::\n4:memory\n", first + " - \nx - y\n"), Figures(-1, -1));
}

TEST(LinuxControlGroups, TheNearestGroupWithAShareOfTheProcessorCounts) {
  const Groups groups;
  const auto group = [&](const std::string& text) { return onlinux::ProcessorGroup(text, groups.Path()); };
  fs::create_directories(groups / "user/app.scope");
  EXPECT_EQ(group("0::/user/app.scope\n"), "");
  groups.Write("user/cpu.weight.nice", "0\n");
  EXPECT_EQ(group("1:cpu:/a\n0::/user/app.scope\n"), groups / "user");
  groups.Write("user/app.scope/cpu.weight.nice", "0\n");
  EXPECT_EQ(group("0::/user/app.scope"), groups / "user/app.scope");
  EXPECT_EQ(group("0::/\n"), "") << "what the groups themselves belong to has no share";
  groups.Write("cpu.weight.nice", "0\n");
  EXPECT_EQ(group("0::/\n"), groups.Path()) << "a container has one";
}

TEST(LinuxControlGroups, WhatStrainedAGroupBeforeARunDoesNotStopIt) {
  const Groups groups;
  groups.Read("0::/\n", groups.Mount("/", "two", "cgroup2 cgroup2 rw"));
  groups.Write("two/memory.max", Bytes(2000));
  groups.Write("two/memory.current", Bytes(0));
  const auto put = [&](const char* name, const char* over) { return PutOver(groups / name, over); };
  if (InChild([&] { return put("groups", "/proc/self/cgroup"); }) == 0) GTEST_SKIP() << "no file can stand for another";
  Alone([&] {
    ASSERT_TRUE(put("groups", "/proc/self/cgroup") && put("mounts", "/proc/self/mountinfo"));
    for (const auto* events : {"max 1\n", "max 2\n"}) {
      groups.Write("two/memory.events", events);
      platform::VirtualFree(platform::VirtualAlloc(Megabyte), Megabyte);
      void* const block = platform::VirtualAlloc(Megabyte);
      EXPECT_NE(block, nullptr) << events;
      groups.Write("two/memory.events", "max 3\n");
      EXPECT_EQ(platform::VirtualAlloc(Megabyte), nullptr) << "others claim at the same time";
      platform::VirtualFree(block, Megabyte);
    }
  });
}

// A group of the real system with a limit, of whichever version this machine has.
std::string NewLimitedGroup(int megabytes) {
  for (const auto& [folder, limit] :
       {std::pair{"/sys/fs/cgroup/memory", "memory.limit_in_bytes"}, {"/sys/fs/cgroup", "memory.max"}}) {
    const auto group = std::string(folder) + "/velmaro-test-" + std::to_string(::getpid());
    std::error_code error;
    if (!fs::create_directory(group, error)) continue;
    if (fs::exists(group + '/' + limit)) {
      WriteBytes(group + '/' + limit, Bytes(megabytes));
      return group;
    }
    fs::remove(group, error);
  }
  return {};
}

TEST(LinuxControlGroups, WhateverBecomesOfAMemoryRunItsTargetStarts) {
  const auto group = NewLimitedGroup(300);
  if (group.empty()) GTEST_SKIP() << "this user may not make a control group with a limit";
  const TestFolder folder;
  const auto enter = [&] { return (std::ofstream(group + "/cgroup.procs") << ::getpid() << std::flush).good(); };
  const auto run = [&] {
    return Start({VELMARO_PROGRAM, "/q", "/m", "/usr/bin/touch", folder / "started"}, {}, enter);
  };
  const auto expectStarted = [&](pid_t id, const std::string& when) {
    EXPECT_EQ(Ended(id), 0) << when;
    EXPECT_TRUE(fs::remove(folder / "started")) << when;
  };
  expectStarted(run(), "alone");
  const auto ended = run();
  const auto children = ProcOf(ended, "task/" + std::to_string(ended) + "/children");
  bool wasEnded = false;
  while (!wasEnded && !fs::exists(folder / "started"))
    if (const auto child = std::atoi(ReadBytes(children).c_str());
        ReadBytes(ProcOf(child, "oom_score_adj")) == "1000\n")
      wasEnded = onlinux::EndProcess(child);
  EXPECT_TRUE(wasEnded) << "the run has a process of its own, and the first to go where memory ends";
  expectStarted(ended, "the run was ended");
  EXPECT_TRUE(Eventually([&] { return ::rmdir(group.c_str()) == 0; }));
}

}  // namespace
