#include <pty.h>
#include <unistd.h>

#include <fstream>

#include "Children.h"
#include "platform/linux/processes/Unit.h"
#include "platform/linux/starts/Activation.h"
#include "platform/rights.h"

namespace {

using namespace velmaro;

using LinuxSharedUnits = InFolder;

TEST_F(LinuxSharedUnits, AnAppIsWhatBeganItAndNoPartOfIt) {
  const Child game(std::vector<std::string>{"/bin/sleep", "300"});
  const auto below = static_cast<std::uint32_t>(game.Id());
  const auto launcher = static_cast<std::uint32_t>(::getpid());
  std::ofstream(folder / "cgroup.procs") << launcher << '\n' << below << '\n';
  const auto isAppOf = [&](const char* unit, std::uint32_t process) {
    return onlinux::IsAppOf({unit, folder.Path()}, process);
  };
  for (const auto* unit : {"app-library.scope", "velmaro-7.scope", "run-u7.service"}) {
    EXPECT_TRUE(isAppOf(unit, launcher)) << unit;
    EXPECT_FALSE(isAppOf(unit, below)) << unit << ": the class would go to what started it too";
  }
  for (const auto* unit : {"app-flatpak-org.example.Game-7.scope", "snap.game.game-7.scope"})
    EXPECT_TRUE(isAppOf(unit, below)) << unit << ": it is known to the desktop by its unit";
  for (const auto* unit : {"session-2.scope", "plasma-plasmashell.service"})
    EXPECT_FALSE(isAppOf(unit, launcher)) << unit;
  std::ofstream(folder / "cgroup.procs") << below << '\n';
  EXPECT_TRUE(isAppOf("app-game.scope", below)) << "who started it is elsewhere";
  int terminal = -1;
  const auto shell = ::forkpty(&terminal, nullptr, nullptr, nullptr);
  if (shell == 0) Execute({"/bin/sleep", "300"});
  const Child waiting(shell);
  std::ofstream(folder / "cgroup.procs") << below << '\n' << shell << '\n';
  EXPECT_TRUE(shell < 0 || Eventually([&] { return !isAppOf("app-terminal.scope", below); }))
      << "a shell waits at a terminal there";
  EXPECT_TRUE(isAppOf("velmaro-7.scope", below)) << "which was made for it";
  ::close(terminal);
}

TEST_F(LinuxSharedUnits, AreLeftForHighByWhoMayNotRaiseAnythingThere) {
  fs::permissions(folder.Path(), fs::perms::all);
  const auto own = [&](const std::string& name) {
    constexpr rlimit none{};
    return Start({folder.Sleeper(name), "300"}, {},
                 [&] { return ::setrlimit(RLIMIT_NICE, &none) == 0 && BecomeNobody(); });
  };
  const Child game(own("game")), raised(own("raised"));
  const auto leaves = [](pid_t process) {
    return platform::HighLeavesSession(platform::OpenProcess(0, false, static_cast<std::uint32_t>(process)));
  };
  const Child launcher({"/bin/sh", "-c", "for i in 1 2; do setpriv --pdeathsig KILL sleep 300 & done; wait"});
  const auto family = [&] {
    std::istringstream started(ReadBytes(ProcOf(launcher.Id(), "task/" + std::to_string(launcher.Id()) + "/children")));
    std::vector<id_t> ids = {static_cast<id_t>(launcher.Id())};
    for (id_t id = 0; started >> id;) ids.push_back(id);
    return ids;
  };
  ASSERT_TRUE(Eventually([&] { return family().size() == 3; }));
  for (const auto* child : {&game, &raised})
    ASSERT_TRUE(Eventually([&] { return Holds(ReadBytes(ProcOf(child->Id(), "cmdline")), "300"); }));
  constexpr int untried = 77;
  const auto outcome = InChild([&] {
    if (::unshare(CLONE_NEWNS) != 0 || ::mount("", "/", "", MS_PRIVATE | MS_REC, "") != 0 ||
        ::mount("none", "/sys", "tmpfs", 0, "") != 0)
      return untried;
    for (const auto* user : {"0", "65534"})
      fs::create_directories(std::string("/sys/fs/cgroup/user.slice/user-") + user + ".slice/user@" + user +
                             ".service");
    EXPECT_FALSE(leaves(::getpid())) << "an administrator may raise it";
    ::setpriority(PRIO_PROCESS, family().back(), 7);
    for (const auto& [wanted, nices] : {std::pair{platform::HIGH_PRIORITY_CLASS, "-10 -10 7 "},
                                        {platform::NORMAL_PRIORITY_CLASS, "0 0 7 "},
                                        {platform::IDLE_PRIORITY_CLASS, "19 0 7 "}}) {
      platform::SetPriorityClass(platform::OpenProcess(0, false, static_cast<std::uint32_t>(launcher.Id())), wanted);
      std::string now;
      for (const auto id : family()) now += std::to_string(::getpriority(PRIO_PROCESS, id)) + ' ';
      EXPECT_EQ(now, nices) << "what it has started follows it to High and back, but for what has its own";
    }
    EXPECT_EQ(::setpriority(PRIO_PROCESS, static_cast<id_t>(raised.Id()), -10), 0);
    EXPECT_TRUE(BecomeNobody() && leaves(game.Id()) && !leaves(raised.Id()));
    EXPECT_FALSE(leaves(::getppid())) << "it belongs to another user";
    return HasFailure() ? 1 : 0;
  });
  if (outcome == untried) GTEST_SKIP() << "nothing can be mounted";
  EXPECT_EQ(outcome, 0);
}

TEST(LinuxActivation, AppsAreNamedByTheirEntries) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(onlinux::ActivatedApps({"/usr/bin/gtk-launch", "org.example.Game"}), Words{"org.example.Game"});
  EXPECT_EQ(onlinux::ActivatedApps({"gio", "launch", "/a/org.example.Game.desktop"}), Words{"org.example.Game"});
  EXPECT_EQ(onlinux::ActivatedApps({"emu", "org.example.Game", "game.desktop", "a b.c.desktop"}), Words{});
}

}  // namespace
