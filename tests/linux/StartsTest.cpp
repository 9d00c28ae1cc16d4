#include <fcntl.h>
#include <gtest/gtest.h>

#include "Children.h"
#include "platform/linux/Start.h"
#include "process/ProcessName.h"

namespace velmaro {
namespace {

// Runs the real program without a display and gives its exit code.
int RunProgram(std::vector<std::string> arguments, const std::string& program = VELMARO_PROGRAM) {
  arguments.insert(arguments.begin(), program);
  return InChild([&]() -> int {
    for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
    // A memory run is to be over soon, however much memory this machine has in use.
    const rlimit room{512U << 20, 512U << 20};
    ::setrlimit(RLIMIT_AS, &room);
    Execute(arguments);
  });
}

// The number of the process that runs a program, 0 for none.
pid_t Running(const std::string& program) {
  for (const auto& entry : fs::directory_iterator("/proc")) {
    std::error_code error;
    if (fs::read_symlink(entry.path() / "exe", error) == program) return std::stoi(entry.path().filename());
  }
  return 0;
}

TEST(LinuxStarts, AnUnattendedRunStartsItsProgramAtItsPriority) {
  const TestFolder folder;
  // What looks like a switch inside of a path is a part of the path.
  const auto program = folder.Sleeper("home/max/kind/zzstart");
  const int leak = ::open("/dev/null", O_RDONLY);
  EXPECT_EQ(RunProgram({"/q", "/h", program, "300"}), 0);
  const auto id = Running(program);
  ASSERT_NE(id, 0);
  EXPECT_EQ(Listed(id).value().pcPriClassBase, ::geteuid() == 0 ? 13 : 8);
  const auto proc = "/proc/" + std::to_string(id);
  EXPECT_EQ(fs::read_symlink(proc + "/cwd"), "/");
  EXPECT_NE(Listed(id).value().th32ParentProcessID, static_cast<std::uint32_t>(::getpid()));
  for (const auto& file : fs::directory_iterator(proc + "/fd")) EXPECT_LE(std::stoi(file.path().filename()), 2);
  ::kill(id, SIGKILL);
  ::close(leak);
}

TEST(LinuxStarts, AKillRunEndsWhatIsListedAndSparesWhatIsGuarded) {
  const TestFolder folder;
  const Child listed(folder.Sleeper("zzkill one"));
  const Child guarded(folder.Sleeper("zzkill-two"));
  const Child other(folder.Sleeper("zzkill-three"));
  WriteBytes(folder / "list.txt", "; both of these\nzzkill one\n zzkill-two \n\n");
  WriteBytes(folder / "spare.txt", "no such\nzz*-T?O\n");
  EXPECT_EQ(RunProgram({"/q", "/k", folder / "list.txt", "/y", folder / "spare.txt", "/bin/true"}), 0);
  EXPECT_FALSE(listed.Runs());
  EXPECT_TRUE(guarded.Runs());
  EXPECT_TRUE(other.Runs());
}

TEST(LinuxStarts, AnInstalledProgramFindsItsToolkitAndKeepsItsListsWithItsUser) {
  const TestFolder folder;
  ASSERT_EQ(std::system(("cmake --install '" VELMARO_BUILD "' --prefix '" + folder / "usr" + "' >/dev/null").c_str()),
            0);
  const Child listed(folder.Sleeper("zzinstalled"));
  ::setenv("XDG_CONFIG_HOME", (folder / "home").c_str(), 1);
  EXPECT_EQ(RunProgram({"/q", "/k", "/bin/true"}, folder / "usr/bin/velmaro"), 0);
  WriteBytes(folder / "home/velmaro/killlist.txt", "zzinstalled\n");
  EXPECT_EQ(RunProgram({"/q", "/k", "/bin/true"}, folder / "usr/bin/velmaro"), 0);
  EXPECT_FALSE(listed.Runs());
  EXPECT_TRUE(fs::exists(folder / "usr/lib/velmaro/velmaro-toolkit.so"));
  for (const auto* file : {"applications/velmaro.desktop", "icons/hicolor/128x128/apps/velmaro.png"})
    EXPECT_TRUE(fs::exists(folder / "usr/share/" + file)) << file;
}

TEST(LinuxStarts, WithoutADisplayEveryRoadEndsWell) {
  EXPECT_EQ(RunProgram({}), 0);
  EXPECT_EQ(RunProgram({"/?"}), 0);
  EXPECT_EQ(RunProgram({"/q", "no such program"}), 0);
  EXPECT_EQ(RunProgram({"/q", "/k"}), 0);
  EXPECT_EQ(RunProgram({"/q", "/m", "/bin/true"}), 0);
}

TEST(LinuxStarts, ACommandOfOneProgramIsThatProgramBlanksAndAll) {
  const TestFolder folder;
  const auto program = folder.Sleeper("star emu/run");
  for (const auto& command : {program, '"' + program + '"', '"' + program + "\" 300"})
    EXPECT_EQ(ProcessOfCommand(command), program) << command;
  EXPECT_EQ(ProcessOfCommand("sleep 300"), "sleep");
}

TEST(LinuxStarts, AProcessOfAnOddNameIsTheOneThatIsMeant) {
  const TestFolder folder;
  const Child decoy(folder.Sleeper("tripzzwho"));
  const Child meant(folder.Sleeper("zzwho?/it's a\\game"));
  WriteBytes(folder / "list's.txt", folder / "zzwho?/it's a\\game");
  EXPECT_EQ(RunProgram({"/q", "/k", folder / "list's.txt", "/bin/true"}), 0);
  EXPECT_TRUE(decoy.Runs());
  EXPECT_FALSE(meant.Runs());
  EXPECT_EQ(RunProgram({"/q", "/i", folder / "zzwho?/it's a\\game", "300"}), 0);
  const auto id = Running(folder / "zzwho?/it's a\\game");
  ASSERT_NE(id, 0);
  EXPECT_EQ(Listed(id).value().pcPriClassBase, 4);
  ::kill(id, SIGKILL);
}

TEST(LinuxStarts, ACommandIsSplitAsAShellWould) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(onlinux::SplitWords("  a  'b c'\t\"d \\\" e\" f\\ g '' h'i'\"j\" \"k"),
            (Words{"a", "b c", "d \" e", "f g", "", "hij", "k"}));
  EXPECT_EQ(onlinux::SplitWords("   "), Words{});
  EXPECT_EQ(onlinux::FindFile("no such program"), "");
  EXPECT_TRUE(onlinux::FindFile("sleep").ends_with("/sleep"));
  EXPECT_NE(onlinux::StartApart({"/no/such/program"}, ""), 0);
  EXPECT_NE(onlinux::StartApart({"/etc/passwd"}, ""), 0);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a start leaves no child behind";
}

}  // namespace
}  // namespace velmaro
