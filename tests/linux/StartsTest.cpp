#include <fcntl.h>
#include <gtest/gtest.h>
#include <pty.h>
#include <sys/mount.h>

#include "Children.h"
#include "platform/linux/PriorityClass.h"
#include "platform/linux/Start.h"

namespace velmaro {
namespace {

// Starts the real program without a display, in a process of its own.
template <class Prepare>
pid_t StartProgram(std::vector<std::string> arguments, Prepare prepare, const std::string& program = VELMARO_PROGRAM) {
  arguments.insert(arguments.begin(), program);
  const auto child = ::fork();
  if (child != 0) return child;
  for (const auto* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) ::unsetenv(variable);
  prepare();
  Execute(arguments);
}

int ExitCodeOf(pid_t child) {
  int status = -1;
  ::waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// The same, to its end; gives its exit code.
int RunProgram(const std::vector<std::string>& arguments, const std::string& program = VELMARO_PROGRAM) {
  // A memory run is to be over soon, however much memory this machine has in use.
  const rlimit room{512U << 20, 512U << 20};
  return ExitCodeOf(StartProgram(
      arguments, [&] { ::setrlimit(RLIMIT_AS, &room); }, program));
}

int OwnBase() { return onlinux::BasePriority(SCHED_OTHER, ::getpriority(PRIO_PROCESS, 0)); }

int BasePriorityOf(const std::string& program) {
  const auto id = Running(program);
  const auto listed = id == 0 ? std::nullopt : Listed(id);
  return listed ? listed->pcPriClassBase : 0;
}

std::string ProcOf(pid_t id, const std::string& file) { return "/proc/" + std::to_string(id) + '/' + file; }

TEST(LinuxStarts, AQuietStartBecomesItsProgramAndHandsItsWordsOn) {
  const TestFolder folder;
  const std::vector<std::string> words = {"set \"a b\"; run", "/roms/12\" mix.iso", "", "/h", "a\\b\\\\", "x.EXE", " "};
  WriteBytes(folder / "my.exe.d", "#!/bin/sh\nprintf '%s\\n' $$ \"$PWD\" \"$@\" >out\nexit 7\n");
  fs::permissions(folder / "my.exe.d", fs::perms::owner_all);
  auto line = words;
  line.insert(line.begin(), {"/Q", "/i", "./my.exe.d"});
  const auto child = StartProgram(line, [&] { EXPECT_EQ(::chdir(folder.Path().c_str()), 0); });
  EXPECT_EQ(ExitCodeOf(child), 7);
  auto told = std::to_string(child) + '\n' + folder.Path() + '\n';
  for (const auto& word : words) told += word + '\n';
  EXPECT_EQ(ReadBytes(folder / "out"), told);
  const auto whole = "/q  /i '" + folder / "my.exe.d" + "' \"a  b\" c";
  EXPECT_EQ(ExitCodeOf(StartProgram({whole}, [&] { EXPECT_EQ(::chdir(folder.Path().c_str()), 0); })), 7);
  EXPECT_TRUE(ReadBytes(folder / "out").ends_with("\na  b\nc\n"));
  WriteBytes(folder / "plain.sh", "exit $1\n");
  fs::permissions(folder / "plain.sh", fs::perms::owner_all);
  const auto findThere = [&] { ::setenv("PATH", folder.Path().c_str(), 1); };
  EXPECT_EQ(ExitCodeOf(StartProgram({"/q", "/i", "plain.sh", "5"}, findThere)), 5);
  WriteBytes(folder / "broken", "#!/etc/passwd\n");
  fs::permissions(folder / "broken", fs::perms::owner_all);
  EXPECT_EQ(RunProgram({"/q", "no such program", "/h"}), 127);
  EXPECT_EQ(RunProgram({"no such program"}), 127);
  EXPECT_EQ(RunProgram({"/q", folder / "broken"}), 126);
}

TEST(LinuxStarts, TheClassIsThatOfAllThatTheProgramStartsAndOfNothingElse) {
  const TestFolder folder;
  const Child older(folder.Sleeper("zzolder/zzstart"));
  for (const auto* name : {"zzstart", "zzforked", "zzlater", "zzlast"}) folder.Sleeper(name);
  fs::create_symlink("script", folder / "link");
  WriteBytes(folder / "script",
             "#!/bin/sh\ncd \"${0%/*}\"\n./zzforked 300 &\n(sleep 0.3; exec ./zzlater 300) &\n./zzstart 1\nexec "
             "./zzlast 300\n");
  fs::permissions(folder / "script", fs::perms::owner_all);
  for (const bool quiet : {true, false}) {
    const auto child = StartProgram({quiet ? "/q" : "/max", "/i", folder / "link"}, [] {});
    for (const auto* name : {"zzstart", "zzforked", "zzlater", "zzlast"}) {
      EXPECT_TRUE(Eventually([&] { return BasePriorityOf(folder / name) == 4; })) << name;
      if (const auto id = Running(folder / name)) ::kill(id, SIGKILL);
    }
    EXPECT_EQ(ExitCodeOf(child), quiet ? -1 : 0) << "the program ended by a signal";
  }
  EXPECT_EQ(older.Nice(), ::getpriority(PRIO_PROCESS, 0));
}

TEST(LinuxStarts, AStartThatIsWatchedLeavesItsProgramAlone) {
  const TestFolder folder;
  const auto program = folder.Sleeper("home/max/kind/zzstart");
  const int leak = ::open("/etc/passwd", O_RDONLY);
  ::dup2(leak, STDIN_FILENO);
  EXPECT_EQ(RunProgram({"/h", program, "300"}), 0);
  const auto id = Running(program);
  ASSERT_NE(id, 0);
  EXPECT_EQ(Listed(id).value().pcPriClassBase, MayRaise() ? 13 : OwnBase());
  EXPECT_EQ(::getsid(id), id);
  const auto manager = "/user@" + std::to_string(::getuid()) + ".service/";
  EXPECT_TRUE(ReadBytes("/proc/self/cgroup").find(manager) == std::string::npos ||
              ReadBytes(ProcOf(id, "cgroup")).ends_with("/velmaro-" + std::to_string(id) + ".scope\n"));
  EXPECT_EQ(fs::read_symlink(ProcOf(id, "cwd")), fs::current_path());
  EXPECT_EQ(fs::read_symlink(ProcOf(id, "fd/0")), "/dev/null") << "what is typed is for others";
  EXPECT_NE(Listed(id).value().th32ParentProcessID, static_cast<std::uint32_t>(::getpid()));
  for (const auto& file : fs::directory_iterator(ProcOf(id, "fd"))) EXPECT_LE(std::stoi(file.path().filename()), 2);
  ::kill(id, SIGKILL);
  ::close(leak);
}

TEST(LinuxStarts, AQuietStartKeepsItsTerminalAndLendsItTheShareOfItsClass) {
  const TestFolder folder;
  const auto game = folder.Sleeper("zzgame");
  const auto after = folder.Sleeper("zzafter");
  int terminal = -1;
  const auto shell = ::forkpty(&terminal, nullptr, nullptr, nullptr);
  if (shell == 0)
    Execute({"/bin/sh", "-c", "trap : INT; '" VELMARO_PROGRAM "' /q /i '" + game + "' 300; '" + after + "' 300"});
  const auto group = [&](int nice) {
    return ReadBytes(ProcOf(shell, "autogroup")).ends_with(" nice " + std::to_string(nice) + '\n');
  };
  if (shell < 0) GTEST_SKIP() << "there are no terminals here";
  ASSERT_TRUE(Eventually([&] { return Running(game) != 0; }));
  EXPECT_EQ(::getsid(Running(game)), shell);
  const bool hasGroups = fs::exists("/proc/self/autogroup");
  EXPECT_TRUE(!hasGroups || Eventually([&] { return group(19); }));
  EXPECT_EQ(::write(terminal, "\x03", 1), 1);
  EXPECT_TRUE(Eventually([&] { return Running(after) != 0; })) << "the terminal's keys reach the program";
  EXPECT_TRUE(!hasGroups || Eventually([&] { return group(0); }));
  for (const auto& program : {game, after})
    if (const auto id = Running(program)) ::kill(id, SIGKILL);
  ::kill(shell, SIGKILL);
  ::waitpid(shell, nullptr, 0);
  ::close(terminal);
}

// Lets a program spin on one core against a rival of another session, and of another control group where two are told.
// True where the one that is to get more gets three times as much, a moment after the start.
bool CountsAgainstARival(const std::string& priority, const std::array<std::string, 2>& groups = {}) {
  const auto enter = [](const std::string& group) {
    if (!group.empty()) WriteBytes(group + "/cgroup.procs", "0");
  };
  const Child rival(Spin([&] { enter(groups[1]); }));
  const Child game(StartProgram({"/q", priority, "/bin/sh", "-c", "while :; do :; done"}, [&] {
    OntoFirstCore();
    enter(groups[0]);
  }));
  for (int i = 0; i < 12; ++i)
    if (const auto share = TimeBy(game.Id(), rival.Id()); priority == "/i" ? share < 1.0 / 3 : share > 3) return true;
  return false;
}

TEST(LinuxStarts, APriorityCountsAgainstOtherSessions) {
  if (!fs::exists("/proc/self/autogroup")) GTEST_SKIP() << "the kernel keeps no groups of sessions";
  EXPECT_TRUE(CountsAgainstARival("/i"));
  if (!MayRaise()) GTEST_SKIP() << "High is refused to this user";
  EXPECT_TRUE(CountsAgainstARival("/h"));
}

TEST(LinuxStarts, APriorityCountsAgainstOtherControlGroups) {
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

TEST(LinuxStarts, WhatIsRefusedIsToldAndTheProgramStartsAllTheSame) {
  const TestFolder folder;
  const auto program = folder.Sleeper("zzrefused");
  fs::permissions(folder.Path(), fs::perms::all);
  const auto errors = folder / "errors";
  const auto start = [&](const std::string& priority, auto prepare) {
    const auto child = StartProgram({"/q", priority, program, "300"}, [&] {
      const int file = ::open(errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
      ::dup2(file, STDERR_FILENO);
      if (!prepare()) ::_exit(1);
    });
    EXPECT_TRUE(Eventually([&] { return ReadBytes(ProcOf(child, "comm")) == "zzrefused\n"; }));
    const int base = Listed(child).value().pcPriClassBase;
    ::kill(child, SIGKILL);
    EXPECT_EQ(ExitCodeOf(child), -1);
    return base;
  };
  EXPECT_EQ(start("/i", BecomeNobody), 4);
  EXPECT_EQ(ReadBytes(errors), "");
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator can take rights away and change the kernel's settings";
  EXPECT_EQ(start("/h", BecomeNobody), OwnBase());
  EXPECT_TRUE(ReadBytes(errors).starts_with("velmaro: High is refused"));
  // The kernel's settings as a program of its own sees them: it keeps nothing for others.
  WriteBytes(folder / "most", "-1\n");
  const auto keepNothing = [&] {
    constexpr const char* setting = "/proc/sys/kernel/sched_rt_runtime_us";
    return ::unshare(CLONE_NEWNS) == 0 && ::mount("", "/proc", "", MS_PRIVATE | MS_REC, "") == 0 &&
           ::mount((folder / "most").c_str(), setting, "", MS_BIND, "") == 0;
  };
  EXPECT_EQ(start("/normal", keepNothing), 13);
  EXPECT_TRUE(ReadBytes(errors).starts_with("velmaro: Real Time would leave nothing"));
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
  EXPECT_NE(ReadBytes(folder / "usr/etc/security/limits.d/velmaro.conf").find("\n@velmaro - nice -10\n"),
            std::string::npos);
  for (const auto* file :
       {"applications/velmaro.desktop", "icons/hicolor/128x128/apps/velmaro.png", "man/man1/velmaro.1.gz"})
    EXPECT_TRUE(fs::exists(folder / "usr/share/" + file)) << file;
}

TEST(LinuxStarts, WithoutADisplayEveryRoadEndsWell) {
  EXPECT_EQ(RunProgram({"/q", "/k"}), 1);
  EXPECT_EQ(RunProgram({"/q", "/m", "/bin/true"}), 0);
}

TEST(LinuxStarts, AKillRunEndsWhatIsListedAndSparesWhatIsGuarded) {
  const TestFolder folder;
  const Child decoy(folder.Sleeper("tripzzwho"));
  const Child meant(folder.Sleeper("zzwho?/it's a\\game"));
  const Child guarded(folder.Sleeper("zzkill-two"));
  WriteBytes(folder / "list's.txt", "; both of these\n" + folder / "zzwho?/it's a\\game" + "\n zzkill-two \n\n");
  WriteBytes(folder / "spare.txt", "no such\nzz*-T?O\n");
  EXPECT_EQ(RunProgram({"/q", "/k", folder / "list's.txt", "/y", folder / "spare.txt", "/bin/true"}), 0);
  EXPECT_TRUE(Eventually([&] { return !meant.Runs(); }));
  EXPECT_TRUE(decoy.Runs() && guarded.Runs());
}

TEST(LinuxStarts, ACommandIsSplitAsAShellWould) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(onlinux::SplitWords("  a  'b c'\t\"d \\\" \\e\" f\\ g '' h'i'\"j\" \"k"),
            (Words{"a", "b c", "d \" \\e", "f g", "", "hij", "k"}));
  EXPECT_TRUE(onlinux::FindFile("sleep").ends_with("/sleep"));
  const TestFolder folder;
  const auto program = folder.Sleeper("star emu/run");
  for (const auto& command : {program, '"' + program + '"'}) EXPECT_EQ(onlinux::SplitCommand(command), Words{program});
  EXPECT_EQ(onlinux::SplitCommand('"' + program + "\" 300"), (Words{program, "300"}));
  EXPECT_NE(onlinux::StartApart({"/no/such/program", {"a"}}, "").error, 0);
  EXPECT_NE(onlinux::StartApart({"/etc/passwd", {"a"}}, "").error, 0);
  EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a start leaves no child behind";
}

}  // namespace
}  // namespace velmaro
