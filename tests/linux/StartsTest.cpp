#include <pty.h>
#include <sys/ioctl.h>

#include <set>

#include "Children.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/starts/Start.h"
#include "platform/rights.h"
#include "platform/start.h"
#include "platform/user32.h"

namespace {

using LinuxStarts = InFolder;

pid_t StartProgram(std::vector<std::string> words, const std::function<bool()>& prepare = nullptr) {
  words.insert(words.begin(), VELMARO_PROGRAM);
  return Start(words, {}, prepare);
}

int RunProgram(const std::vector<std::string>& words) {
  // A memory run is to be over soon, however much memory this machine has in use.
  return Ended(StartProgram(words, [] { return LimitRoom(RLIMIT_AS, 512U << 20); }));
}

int OwnBase() { return onlinux::BasePriority(SCHED_OTHER, ::getpriority(PRIO_PROCESS, 0)); }

TEST_F(LinuxStarts, AQuietStartBecomesItsProgramAndHandsItsWordsOn) {
  const std::vector<std::string> words = {"set \"a b\"; run", "/roms/12\" mix.iso", "", "/h", "a\\b\\\\", "x.EXE", " "};
  WriteProgram(folder / "my.exe.d", "#!/bin/sh\nprintf '%s\\n' $$ \"$PWD\" \"$@\" >out\nexit 7\n");
  auto line = words;
  line.insert(line.begin(), {"/Q", "/i", "./my.exe.d"});
  const auto child = StartProgram(line, [&] { return ::chdir(folder.Path().c_str()) == 0; });
  EXPECT_EQ(Ended(child), 7);
  auto told = std::to_string(child) + '\n' + folder.Path() + '\n';
  for (const auto& word : words) told += word + '\n';
  EXPECT_EQ(ReadBytes(folder / "out"), told);
  const auto whole = "/q  /i '" + folder / "my.exe.d" + "' \"a  b\" c";
  EXPECT_EQ(Ended(StartProgram({whole}, [&] { return ::chdir(folder.Path().c_str()) == 0; })), 7);
  EXPECT_TRUE(ReadBytes(folder / "out").ends_with("\na  b\nc\n"));
  WriteProgram(folder / "plain.sh", "exit $1\n");
  const auto findThere = [&] { return ::setenv("PATH", folder.Path().c_str(), 1) == 0; };
  EXPECT_EQ(Ended(StartProgram({"/q", "/i", "plain.sh", "5"}, findThere)), 5);
  EXPECT_EQ(RunProgram({"/i", folder / "plain.sh", "5"}), 0) << "it is not waited for";
  WriteProgram(folder / "broken one", "#!/etc/passwd\n");
  const auto errors = [&] { return TellErrorsTo(folder / "told"); };
  EXPECT_EQ(Ended(StartProgram({"/q", "no such program", "/h"}, errors)), 127);
  EXPECT_EQ(ReadBytes(folder / "told"), "velmaro: no such program: No such file or directory\n");
  EXPECT_EQ(RunProgram({"no such program"}), 127);
  for (const std::string quiet : {"/q", "/i"}) EXPECT_EQ(RunProgram({quiet, folder / "broken one"}), 126) << quiet;
  EXPECT_EQ(RunProgram({folder / "broken one"}), 126) << "one word is a line only where it is no file";
}

TEST_F(LinuxStarts, TheClassIsThatOfAllThatTheProgramStartsAndOfNothingElse) {
  const Child older(folder.Sleeper("zzolder/zzstart"));
  for (const auto* name : {"zzstart", "zzforked", "zzlater", "zzlast"}) folder.Sleeper(name);
  fs::create_symlink("script", folder / "link");
  WriteProgram(folder / "script",
               "#!/bin/sh\ncd \"${0%/*}\"\n./zzforked 300 &\n(sleep 0.3; exec ./zzlater 300) &\n./zzstart 1\nexec "
               "./zzlast 300\n");
  for (const bool quiet : {true, false}) {
    const auto child = StartProgram({quiet ? "/q" : "/max", "/i", folder / "link"});
    for (const auto* name : {"zzstart", "zzforked", "zzlater", "zzlast"}) {
      EXPECT_TRUE(Eventually([&] {
        const auto listed = Listed(Running(folder / name));
        return listed && listed->pcPriClassBase == 4;
      })) << name;
      EndRunning(folder / name);
    }
    EXPECT_EQ(Ended(child), quiet ? -1 : 0) << "the program ended by a signal";
  }
  EXPECT_EQ(older.Nice(), ::getpriority(PRIO_PROCESS, 0));
}

TEST_F(LinuxStarts, AStartThatIsWatchedLeavesItsProgramAlone) {
  const auto program = folder.Sleeper("home/max/kind/zzstart");
  const int leak = ::open("/etc/passwd", O_RDONLY);
  int master = -1, terminal = -1;
  if (::openpty(&master, &terminal, nullptr, nullptr, nullptr) != 0) GTEST_SKIP() << "there are no terminals here";
  const auto inTerminal = [&] {
    ::signal(SIGPIPE, SIG_IGN);
    return ::dup2(leak, 0) == 0 && ::setsid() > 0 && ::ioctl(terminal, TIOCSCTTY, 0) == 0;
  };
  EXPECT_EQ(Ended(StartProgram({"/h", program, "300"}, inTerminal)), 0);
  const auto id = Running(program);
  ASSERT_NE(id, 0);
  EXPECT_EQ(Listed(id).value().pcPriClassBase, MayRaise() ? 13 : OwnBase());
  EXPECT_EQ(::getsid(id), id);
  const auto user = std::to_string(::getuid());
  EXPECT_TRUE(ReadBytes("/proc/self/cgroup").find("/user@" + user + ".service/") == std::string::npos ||
              !fs::exists("/run/user/" + user + "/bus") ||
              ReadBytes(ProcOf(id, "cgroup")).ends_with("/velmaro-" + std::to_string(id) + ".scope\n"));
  EXPECT_EQ(fs::read_symlink(ProcOf(id, "cwd")), fs::current_path());
  EXPECT_EQ(fs::read_symlink(ProcOf(id, "fd/0")), "/dev/null") << "what is typed is for others";
  const auto status = ReadBytes(ProcOf(id, "status"));
  EXPECT_EQ(std::stoul(status.substr(status.find("SigIgn:") + 7), nullptr, 16) & 1U << (SIGPIPE - 1), 0U);
  EXPECT_NE(Listed(id).value().th32ParentProcessID, static_cast<std::uint32_t>(::getpid()));
  for (const auto& file : fs::directory_iterator(ProcOf(id, "fd"))) EXPECT_LE(std::stoi(file.path().filename()), 2);
  onlinux::EndProcess(id);
  for (const int open : {leak, master, terminal}) ::close(open);
}

TEST_F(LinuxStarts, AQuietStartKeepsItsTerminalAndLendsItTheShareOfItsClass) {
  const auto game = folder.Sleeper("zzgame");
  const auto after = folder.Sleeper("zzafter");
  const auto velmaro = folder.Copy(VELMARO_PROGRAM, "velmaro");
  const auto lent = "'" + velmaro + "' /q /i '" + game + "' 300";
  int terminal = -1;
  const Child child(::forkpty(&terminal, nullptr, nullptr, nullptr));
  const auto shell = child.Id();
  if (shell < 0) GTEST_SKIP() << "there are no terminals here";
  if (shell == 0)
    Execute(
        {"/bin/sh", "-c",
         "trap : INT; echo 5 >/proc/self/autogroup; sleep 300 | " + lent + "; set -m; '" + after + "' 300 & " + lent});
  const auto group = [&](int nice) {
    return ReadBytes(ProcOf(shell, "autogroup")).ends_with(" nice " + std::to_string(nice) + '\n');
  };
  ASSERT_TRUE(Eventually([&] { return Running(game) != 0; }));
  EXPECT_EQ(::getsid(Running(game)), shell);
  const bool hasGroups = fs::exists("/proc/self/autogroup");
  EXPECT_TRUE(!hasGroups || Eventually([&] { return group(19); }));
  const auto lender = Running(velmaro);
  std::multiset<std::string> held = {std::to_string(::getpriority(PRIO_PROCESS, lender))};
  for (const auto& file : fs::directory_iterator(ProcOf(lender, "fd"))) held.insert(fs::read_symlink(file));
  const std::multiset<std::string> all = {
      MayRaise() ? "0" : "19", "/dev/null", "/dev/null", "/dev/null", "anon_inode:[pidfd]", ProcOf(shell, "autogroup")};
  EXPECT_TRUE(!hasGroups || (held == all && fs::read_symlink(ProcOf(lender, "cwd")) == "/"));
  WriteBytes(folder / "all.txt", "velmaro\nvelmaro-aside\nvelmaro");
  Ended(Start({velmaro, "/q", "/k", folder / "all.txt", "/bin/true"}));
  EXPECT_EQ(Running(velmaro), lender) << "nothing in the lists ends what gives the share back";
  EXPECT_EQ(::write(terminal, "\x03", 1), 1);
  EXPECT_TRUE(Eventually([&] { return Running(after) != 0; })) << "the terminal's keys reach the program";
  EXPECT_TRUE(!hasGroups || Eventually([&] { return group(5); }));
  EXPECT_TRUE(Eventually([&] { return Running(game) != 0 && Running(velmaro) == 0; }));
  EXPECT_TRUE(!hasGroups || group(5)) << "now another program shares it";
  for (const auto& program : {game, after}) EndRunning(program);
  ::close(terminal);
}

TEST_F(LinuxStarts, WhatIsRefusedIsToldAndTheProgramStartsAllTheSame) {
  const auto program = folder.Sleeper("zzrefused");
  fs::permissions(folder.Path(), fs::perms::all);
  const auto errors = folder / "errors";
  const auto start = [&](const std::string& priority, auto prepare, int base, const std::string& told) {
    const auto toFile = [&] { return TellErrorsTo(errors) && prepare(); };
    const auto child = StartProgram({"/q", priority, program, "300"}, toFile);
    EXPECT_TRUE(Eventually([&] { return ReadBytes(ProcOf(child, "comm")) == "zzrefused\n"; }));
    EXPECT_EQ(Listed(child).value().pcPriClassBase, base);
    EXPECT_TRUE(onlinux::EndProcess(child) && Ended(child) == -1);
    EXPECT_EQ(ReadBytes(errors), told);
  };
  start("/i", BecomeNobody, 4, "");
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator can take rights away and change the kernel's settings";
  start("/h", BecomeNobody, OwnBase(),
        "velmaro: High is refused to this user: " + program + " keeps the priority that it is started with\n");
  const auto launch = [&](std::uint32_t wanted, auto prepare, std::uint32_t got, const std::string& why) {
    Alone([&] {
      ASSERT_TRUE(prepare());
      const auto started = platform::StartAtClass({.command = program + " 300", .priorityClass = wanted});
      EndRunning(program);
      EXPECT_EQ(started.value().priorityClass, got);
      EXPECT_TRUE(started->shortfall.starts_with(why)) << started->shortfall;
    });
  };
  Alone([&] {
    ::setenv("HOME", "/", 1);
    fs::current_path(folder.Path());
    EXPECT_EQ(platform::StartAtClass({.command = "./zzrefused 300", .atHome = true}).value().exitCode, 0);
    EXPECT_EQ(fs::read_symlink(ProcOf(Running(program), "cwd")), "/");
    EXPECT_TRUE(Eventually([&] { return ReadBytes(ProcOf(Running(program), "cmdline")).starts_with('/'); }))
        << "a script finds what lies beside it";
    EXPECT_TRUE(EndRunning(program));
  });
  launch(platform::HIGH_PRIORITY_CLASS, BecomeNobody, onlinux::ClassOfBasePriority(OwnBase()), "members of the group ");
  // The kernel's settings as a program of its own sees them: it keeps nothing for others.
  const auto keepNothing = [&] { return PutOver(folder / "most", "/proc/sys/kernel/sched_rt_runtime_us"); };
  WriteBytes(folder / "most", "-1\n");
  if (InChild([&] { return keepNothing() ? 0 : 1; }) != 0) GTEST_SKIP() << "the kernel's settings can't be hidden here";
  for (const auto& most : {std::string("-1\n"), ReadBytes("/proc/sys/kernel/sched_rt_period_us")}) {
    WriteBytes(folder / "most", most);
    start("/normal", keepNothing, 13,
          "velmaro: Real Time would leave nothing of a core to other programs: " + program + " gets High\n");
  }
  Alone([&] {
    ASSERT_TRUE(keepNothing());
    const platform::OwnedHandle own(platform::OpenProcess(0, false, static_cast<std::uint32_t>(::getpid())));
    EXPECT_TRUE(platform::SetPriorityClass(own.get(), platform::REALTIME_PRIORITY_CLASS));
    EXPECT_EQ(platform::GetPriorityClass(own.get()), platform::HIGH_PRIORITY_CLASS) << "nor from the window";
    EXPECT_TRUE(platform::WhySpared(platform::REALTIME_PRIORITY_CLASS).starts_with("it would leave nothing of "));
  });
  launch(platform::REALTIME_PRIORITY_CLASS, keepNothing, platform::HIGH_PRIORITY_CLASS, "it would leave nothing of ");
}

TEST_F(LinuxStarts, WithoutADisplayEveryRoadEndsWell) {
  EXPECT_EQ(RunProgram({"/q", "/m", "/bin/true"}), 0);
  EXPECT_EQ(Ended(Start({folder.Copy(VELMARO_PROGRAM, "velmaro"), "/q", "/k"})), 1) << "it has no list beside it";
  const auto answers = [&]() -> bool {
    using namespace platform;
    TellErrorsTo(folder / "errors");
    const int box = MessageBoxA("a\r\nb", "", MB_OK | MB_ICONQUESTION);
    ::_exit(box * 100 + MessageBoxA("?", "", MB_YESNO | MB_DEFBUTTON2) * 10 + MessageBoxA("?", "", MB_YESNOCANCEL));
  };
  EXPECT_EQ(Ended(Start({}, {}, answers)), 172);
  EXPECT_EQ(ReadBytes(folder / "errors"),
            "velmaro: no window can be shown: no display answers (neither DISPLAY nor WAYLAND_DISPLAY leads to one)\n"
            "velmaro: a\nb\nvelmaro: ?\nvelmaro: ?\n");
}

TEST_F(LinuxStarts, AKillRunEndsWhatIsListedAndSparesWhatIsGuarded) {
  const Child decoy(folder.Sleeper("tripzzwho"));
  const Child meant(folder.Sleeper("zzwho?/it's a\\game"));
  const Child guarded(folder.Sleeper("zzkill-two"));
  const Child linked(folder.Sleeper("zzlinked"));
  fs::create_symlink("zzlinked", folder / "link");
  WriteBytes(folder / "list's.txt", "; these\n" + folder / "zzwho?/it's a\\game" + "\n zzkill-two \n\nzzlinked");
  WriteBytes(folder / "spare.txt", "no such\nzz*-T?O\n" + folder / "link");
  EXPECT_EQ(RunProgram({"/q", "/k", folder / "list's.txt", "/y", folder / "spare.txt", "/bin/true"}), 0);
  EXPECT_TRUE(Eventually([&] { return !meant.Runs(); }) && decoy.Runs() && guarded.Runs() && linked.Runs());
}

TEST_F(LinuxStarts, WhatIsNoProgramIsLeftToTheDesktop) {
  const auto tool = folder.Sleeper("bin/tool");
  const auto opener = folder / "bin/xdg-open";
  WriteBytes(folder / "a.txt", "");
  WriteProgram(folder / "b.txt", "no program\n");
  const auto expect = [](const std::string& line, const std::string& wanted) {
    onlinux::Refusal refusal;
    const auto command = onlinux::Resolve(onlinux::SplitWords(line), refusal);
    const auto* first = command && command->path == "/usr/bin/env" ? &command->words[2]
                        : command                                  ? &command->path
                                                                   : nullptr;
    EXPECT_EQ(command ? *first + ' ' + command->words.back() : std::to_string(refusal.error), wanted) << line;
  };
  Alone([&] {
    ::setenv("PATH", ("bin:" + (folder / "none:") + (folder / "bin")).c_str(), 1);
    ::setenv("HOME", folder.Path().c_str(), 1);
    fs::current_path(folder.Path());
    for (const auto* line : {"a.txt", "http://x/y"}) expect(line, "13");
    WriteProgram(opener, "#!/bin/sh\necho \"$1\" >opened\n");
    expect("a.txt b", opener + ' ' + folder / "./a.txt");
    expect("http://x/y z", opener + " http://x/y");
    expect("tool a", tool + " a");
    expect("~/bin/tool", tool + " ~/bin/tool");
    for (const auto* line : {"", "c://x", "a/b://x", "~/no"}) expect(line, "2");
    EXPECT_EQ(onlinux::StartApart({"b.txt", {"b.txt"}}, "").error, 0);
    EXPECT_TRUE(Eventually([&] { return ReadBytes("opened") == (folder / "b.txt") + '\n'; }));
    EXPECT_EQ(platform::WinExec("bin/tool 300", 1), 33U);
    EXPECT_TRUE(EndRunning(tool)) << "it was found here, and runs at the root";
  });
}

TEST_F(LinuxStarts, ACommandIsSplitAsAShellWould) {
  using Words = std::vector<std::string>;
  EXPECT_EQ(onlinux::SplitWords("  a  'b\\c'\t\"d \\\" \\e C:\\\\x\" f\\ g '' h'i'\"j\" \"k"),
            (Words{"a", "b\\c", "d \" \\e C:\\x", "f g", "", "hij", "k"}));
  const auto program = folder.Sleeper("star emu/run");
  for (const auto& command : {program, '"' + program + '"'}) EXPECT_EQ(onlinux::SplitCommand(command), Words{program});
  EXPECT_EQ(onlinux::SplitCommand('"' + program + "\" 300"), (Words{program, "300"}));
  Alone([] {
    for (const auto* none : {"/etc/passwd", "/no/such/program"})
      EXPECT_NE(onlinux::StartApart({none, {"a"}}, "").error, 0);
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "a start leaves no child behind";
  });
}

}  // namespace
