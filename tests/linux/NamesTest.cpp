#include "Children.h"
#include "platform/identity.h"
#include "platform/linux/ground/Words.h"
#include "platform/linux/processes/PriorityClass.h"
#include "platform/linux/processes/ProcFolder.h"
#include "platform/linux/processes/Script.h"
#include "platform/linux/starts/Start.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "process/WalkProcesses.h"

namespace {

using LinuxNames = InFolder;

using namespace platform;

TEST_F(LinuxNames, NamesOfAnyBytesComeThrough) {
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

bool Finds(const std::string& line) { return WalkProcesses(line, 5, true, nullptr); }

TEST_F(LinuxNames, ANameStandsForWholePartsOfAPath) {
  const Child longer(folder.Sleeper("zzgames/aazzstar"));
  const auto path = folder.Sleeper("zzgames/zzstar");
  const Child star(path);
  fs::create_symlink(path, folder / "zzlinked");
  for (const auto& line :
       {std::string("zzSTAR"), std::string("zzgames/zzstar"), path, " \"" + path + "\" ", folder / "zzlinked"})
    EXPECT_TRUE(Finds(line)) << line;
  for (const auto& line : {"zstar", "games/zzstar", "/zzgames/zzstar", "zzgames/", "/", "zz*", "zzlinked", "kthreadd"})
    EXPECT_FALSE(Finds(line)) << line;
  WalkProcesses("zzstar", 3, true, nullptr);
  EXPECT_EQ(std::pair(star.Nice(), longer.Nice()), std::pair(19, ::getpriority(PRIO_PROCESS, 0)));
  for (const auto* emulator : {"/usr/games/stella", "mame.exe", "/opt/duckstation-qt", "86box", "zsnes"})
    EXPECT_TRUE(IsKnownEmulator(emulator)) << emulator;
  for (const auto* other : {"/usr/bin/e", "/stella/sh", "stella;tiemu", "mame.ex", "/"})
    EXPECT_FALSE(IsKnownEmulator(other)) << other;
}

TEST_F(LinuxNames, AListThatIsOnlyLookedAtKeepsUpWithWhatAProcessBecomes) {
  const auto after = folder.Sleeper("after/zzsame");
  const auto before = folder.Copy("/bin/sh", "before/zzsame");
  const Child child({before, "-c", "until [ -e \"$0\" ]; do :; done; exec " + after + " 300", folder / "go"});
  const auto isListedAs = [&](const std::string& path) {
    const auto entry = Listed(child.Id(), CreateListSnapshot());
    return (entry ? entry->szExeFile : "nothing") == path;
  };
  EXPECT_TRUE(Eventually([&] { return isListedAs(before); }));
  const sched_param none{};
  ::sched_setscheduler(child.Id(), SCHED_IDLE | SCHED_RESET_ON_FORK, &none);
  EXPECT_EQ(Listed(child.Id(), CreateListSnapshot()).value().pcPriClassBase, 4);
  WriteBytes(folder / "go", "");
  EXPECT_TRUE(Eventually([&] { return Finds(after); }) && isListedAs(after));
  fs::rename(after, folder / "zzmoved");
  EXPECT_TRUE(isListedAs(folder / "zzmoved"));
  EXPECT_TRUE(!Listed(2, CreateListSnapshot()) || ReadBytes("/proc/2/comm") != "kthreadd\n") << "a kernel's thread";
  EXPECT_TRUE(onlinux::EndProcess(child.Id()) && Eventually([&] { return isListedAs("nothing"); }));
}

TEST_F(LinuxNames, AScriptIsKnownByItsOwnNameAndByItsInterpreters) {
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

TEST_F(LinuxNames, NoNameThatAProcessGivesItselfSlipsTheNoKillList) {
  NoKillListPath = folder / "spared";
  const auto script = folder / "zz-spared.pl";
  WriteProgram(script, "#!" + folder.Copy("/usr/bin/perl", "wine-zz") +
                           "\n$0 = 'X:\\zz-other-than-all.exe'; open(F, '>/proc/self/comm');" +
                           " print F 'zz-other-than-a'; close F; sleep 300;\n");
  const Child tool({script, ""});
  const std::string name = "zz-other-than-all.exe";  // the kernel keeps less of it
  ASSERT_TRUE(Eventually([&] { return Finds(name); }));
  for (const auto& spared : {std::string("zz-spared.pl"), std::string("wine-zz"), name}) {
    WriteBytes(NoKillListPath, spared);
    WalkProcesses(name, 4, true, nullptr);
    EXPECT_TRUE(tool.Runs()) << spared;
  }
}

TEST_F(LinuxNames, AProtectedScriptRunsOnHoweverItsInterpreterWasTold) {
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
    EXPECT_TRUE(words != "sub/app.sh" || Listed(child.Id()).value().szExeFile == program + " app.sh") << "it left";
    for (const bool isSpared : {true, false}) {
      WriteBytes(NoKillListPath, isSpared ? spared : "pp.sh\npp.pl\npp.py\nlast\nsub");
      WalkProcesses(program, 4, true, nullptr);
      EXPECT_EQ(child.Runs(), isSpared) << words;
    }
  }
}

}  // namespace
