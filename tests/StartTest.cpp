#include "Fixture.h"
#include "desktop/modRegistry.h"
#include "process/KillLists.h"

namespace velmaro {
namespace {

using namespace simulated;

class Starting : public OnDesktop {
 protected:
  // What was started, as "call:command line:show".
  Texts Started() const {
    Texts texts;
    for (const auto& start : desktop.starts)
      texts.push_back(start.call + ':' + start.file + ':' + std::to_string(start.show));
    return texts;
  }
  void ExpectUnattended(const formVelmaro& form) const {
    EXPECT_TRUE(application.Ended());
    EXPECT_FALSE(Shows(form));
    EXPECT_EQ(form.hWnd(), 0U);
    EXPECT_FALSE(form.Unloaded()) << "nobody is asked at this end";
  }
};

TEST_F(Starting, AnEmptyLineBringsUpTheWindow) {
  desktop.AddProcess("a.exe");
  auto& form = Start("   ");
  EXPECT_TRUE(Shows(form));
  EXPECT_EQ(Rows(form.List1), Texts{"[Normal]\ta.exe"});
  EXPECT_EQ(Checked(form), Texts{"Real Time"});
  EXPECT_EQ(form.PriorityChoice, 2);
  EXPECT_TRUE(form.Option1[0].Value());
  EXPECT_TRUE(form.mnuFileAutoRefresh.Checked());
  EXPECT_EQ(form.KillListPath, KillList);
  EXPECT_EQ(NoKillListPath, NoKillList);
  EXPECT_EQ(desktop.snapshotsTaken, 1);
  desktop.Then([&] { CloseBox(form); });
  application.Run();
  EXPECT_EQ(desktop.livePeers, 0);
  EXPECT_FALSE(application.Ended());
}

TEST_F(Starting, HelpIsShownAndNothingElse) {
  desktop.AddProcess("a.exe");
  desktop.files[KillList].bytes = "a.exe";
  const auto& form = Start("/q /k /m /h game.exe /?");
  ExpectLastBox(
      "Command line switches:\r\n/? = This window.\r\n/q = Quiet - Do not confirm or show new status pop up.\r\n"
      "/max = Execute programs maximized.\r\n/min = Execute programs minimized.\r\n/hide = Execute programs hidden.\r\n"
      "/normal = Execute programs in normal window (default).\r\n/m = Free memory before execute.\r\n"
      "/k [file.txt] = Kill a list of windows before execute programs.\r\n"
      "/y [file.txt] = List of windows that should not be killed.\r\n/i = Set program process idle.\r\n"
      "/h = Set program process high priority.\r\n/x [window title] = Hide window by title",
      Tells);
  EXPECT_EQ(desktop.boxes.size(), 1U);
  ExpectUnattended(form);
  EXPECT_EQ(desktop.peersMade, 0);
  EXPECT_EQ(Ended(), Texts{});
  EXPECT_EQ(Started(), Texts{});
}

TEST_F(Starting, AQuietLineDoesItsWorkInOrderWithoutAnyWindow) {
  desktop.AddProcess("chat.exe");
  desktop.AddProcess("saved.exe");
  const auto window = desktop.AddWindow("Game Console");
  desktop.files["C:\\Velmaro\\my list.txt"].bytes = "chat.exe\r\nsaved.exe";
  desktop.files["D:\\keep.txt"].bytes = "saved*";
  desktop.onStart = [&](const auto& start) {
    EXPECT_EQ(Ended(), Texts{"chat.exe"});
    EXPECT_TRUE(desktop.sleeps.empty());
    if (start.call == "ShellExecuteA") return 2;
    desktop.AddProcess("GAME.exe");
    return 42;
  };
  const auto& form = Start("/q /max /h /x \"Game Console\" /y D:\\keep.txt /k \"my list.txt\" game.exe -full");
  ExpectUnattended(form);
  EXPECT_EQ(desktop.peersMade, 0);
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_EQ(Started(), (Texts{"ShellExecuteA:game.exe -full:3", "WinExec:game.exe -full:3"}));
  EXPECT_EQ(desktop.starts[0].folder, "C:\\");
  EXPECT_EQ(desktop.starts[0].verb + desktop.starts[0].parameters, "");
  EXPECT_EQ(desktop.ProcessNamed("GAME.exe").classSet, 128U);
  EXPECT_EQ(desktop.snapshotsTaken, 3) << "nobody sees the list, so it is never filled";
  EXPECT_EQ(desktop.sleeps, std::vector<std::uint32_t>{750});
  EXPECT_FALSE(desktop.WindowOf(window).visible);
}

TEST(StartingLines, PriorityAndWindowStyleReachTheTarget) {
  const std::vector<std::tuple<std::string, std::uint32_t, int>> cases = {
      {"", 256, 1},   {"/h", 128, 1},   {"/i", 64, 1},          {"/i /h", 64, 1},    {"/h /k", 128, 1},
      {"/k", 256, 1}, {"/min", 256, 2}, {"/hide /max", 256, 0}, {"/normal", 256, 1}, {"/max /i", 64, 3},
  };
  for (const auto& [switches, priorityClass, show] : cases) {
    Program program;
    auto& desktop = program.desktop;
    desktop.AddProcess("game.exe");
    desktop.files[KillList].bytes = "; nothing";
    program.Start("/q " + switches + " game");
    EXPECT_EQ(desktop.ProcessNamed("game.exe").classSet, priorityClass) << switches;
    ASSERT_EQ(desktop.starts.size(), 1U);
    EXPECT_EQ(desktop.starts[0].show, show) << switches;
    EXPECT_EQ(desktop.peersMade, 0);
  }
}

TEST(StartingLines, ProcessNameIsCutFromTheTarget) {
  const Texts running = {"C:\\Emu\\epsxe.exe", "psx.exe", "mame.exe",  "tnkxfs.dat",
                         "Program.exe",        "old.exe", "a.txt.exe", "readme.dat.exe"};
  const Texts cases = {R"(C:\Emu\epsxe.exe -nogui => C:\Emu\epsxe.exe)",
                       R"("C:\Emu\ePSXe.EXE" -nogui => C:\Emu\epsxe.exe)",
                       R"("C:\Emu\psx" -nogui => psx.exe)",
                       "mame readme => mame.exe",
                       "MAME => mame.exe",
                       "mame a.dat => mame.exe",
                       "TNKXFS.dat => tnkxfs.dat",
                       "readme.dat => ",
                       R"(C:\Program Files\app => Program.exe)",
                       R"("C:\Program Files\app" => Program.exe)",
                       R"(C:\old.exe.d\mame.exe => old.exe)",
                       "a.txt => a.txt.exe",
                       R"("" mame => C:\Emu\epsxe.exe)"};
  for (const auto& text : cases) {
    const auto [target, name] = Sides(text);
    Program program;
    auto& desktop = program.desktop;
    for (const auto& process : running) desktop.AddProcess(process);
    program.Start("/q " + target);
    for (const auto& process : desktop.processes)
      EXPECT_EQ(process.classSet != 0, process.name == name) << target << " and " << process.name;
  }
}

TEST_F(Starting, OnlyNotFoundIsTriedASecondTimeAndTheWholeTitleIsHidden) {
  const auto longer = desktop.AddWindow("ePSXe 2");
  const auto window = desktop.AddWindow("ePSXe");
  desktop.onStart = [](const auto&) { return 5; };
  Start("/q /x game");
  EXPECT_EQ(Started(), Texts{"ShellExecuteA:game:1"});
  EXPECT_EQ(desktop.sleeps.size(), 1U) << "a target that failed changes nothing else";
  EXPECT_TRUE(desktop.boxes.empty());
  EXPECT_TRUE(desktop.WindowOf(longer).visible);
  EXPECT_FALSE(desktop.WindowOf(window).visible);
}

const std::string Station = "Connectix Virtual Game Station";
const std::string StationKey = "SOFTWARE\\Connectix\\Connectix Virtual Game Station\\General";

TEST_F(Starting, ARunningStationGetsEnterInPlaceOfAStart) {
  desktop.AddProcess("tnkxfs.dat");
  desktop.AddWindow("Other");
  const auto window = desktop.AddWindow(Station);
  desktop.files["C:\\vgs.exe"].bytes = "x";
  Start("/q /h /max /x \"" + Station + "\" \"C:\\VGS.exe\"");
  ASSERT_EQ(desktop.sentKeys.size(), 1U);
  EXPECT_EQ(desktop.sentKeys[0].keys + desktop.sentKeys[0].window, "~" + Station);
  EXPECT_EQ(Started(), Texts{});
  EXPECT_EQ(desktop.activations, (Texts{Station, Station}));
  EXPECT_EQ(desktop.ProcessNamed("tnkxfs.dat").classSet, 128U);
  EXPECT_TRUE(desktop.WindowOf(window).visible) << "the hide plays no part";
  EXPECT_TRUE(desktop.sleeps.empty());
}

TEST(StartingLines, StationIsLookedForInThreePlaces) {
  struct Case {
    std::string target;
    bool file, local, installed;
    std::string command;
  };
  const std::vector<Case> cases = {
      {"C:\\Emu\\vgs.exe", true, true, true, "C:\\Emu\\vgs.exe"},
      {"C:\\Emu\\vgs.exe", false, true, true, "MyVGS.exe"},
      {"C:\\Emu\\vgs.exe -x", true, true, true, "MyVGS.exe"},
      {"game.exe -vgs.exe", true, false, true, "C:\\Station\\run it.exe -a"},
      {"vgs.exe", false, false, false, ""},
  };
  for (const auto& [target, file, local, installed, command] : cases) {
    Program program;
    auto& desktop = program.desktop;
    if (file) desktop.files["C:\\Emu\\vgs.exe"].bytes = "x";
    if (local) desktop.files["C:\\Velmaro\\MyVGS.exe"].bytes = "x";
    if (installed)
      desktop.registry[0x80000002][StationKey]["Location"].bytes = std::string("C:\\Station\\run it.exe -a") + '\0';
    desktop.onStart = [&](const auto&) { return desktop.AddProcess("tnkxfs.dat"), 42; };
    program.Start("/q /min " + target);
    ASSERT_EQ(desktop.starts.size(), command.empty() ? 0U : 1U) << target;
    EXPECT_EQ(desktop.activations.size(), 2U);
    EXPECT_TRUE(desktop.sentKeys.empty());
    EXPECT_TRUE(program.application.Ended() && desktop.boxes.empty());
    if (command.empty()) continue;
    EXPECT_EQ(desktop.starts[0].call + ':' + desktop.starts[0].file, "Shell:" + command);
    EXPECT_EQ(desktop.starts[0].show, 1);
    EXPECT_EQ(desktop.ProcessNamed("tnkxfs.dat").classSet, 256U);
  }
}

TEST_F(Starting, RegistryValuesAreReadAsTextWhateverTheyAre) {
  constexpr std::uint32_t root = 0x80000002;
  const auto ended = [](std::string text) { return text + '\0'; };
  const std::vector<std::pair<RegistryValue, std::string>> cases = {
      {{.bytes = ended("C:\\vgs.exe")}, "C:\\vgs.exe"},
      {{.type = 2, .bytes = ended("%x%\\a")}, "%x%\\a"},
      {{.bytes = ended("")}, ""},
      {{.bytes = ""}, ""},
      {{.bytes = "a"}, ""},
      {{.bytes = ended(std::string(254, 'a'))}, std::string(254, 'a')},
      {{.bytes = ended(std::string(255, 'a'))}, ""},
      {{.type = 4, .bytes = "\x01\x02\x03\x04"}, "\x01\x02\x03"},
  };
  for (const auto& [value, text] : cases) {
    desktop.registry[root]["Key"]["Name"] = value;
    EXPECT_EQ(RegGetString(root, "Key", "Name"), text);
    EXPECT_TRUE(desktop.openKeys.empty());
  }
  EXPECT_EQ(RegGetString(root, "Key", "Other"), "");
  desktop.closeKeyResult = 6;
  EXPECT_EQ(RegGetString(root, "Other", "Name"), "");
  EXPECT_TRUE(desktop.boxes.empty()) << "a key that was not opened is not closed";
  desktop.registry[root]["Key"]["Name"].bytes = ended("kept");
  EXPECT_EQ(RegGetString(root, "Key", "Name"), "kept");
  ExpectLastBox("RegCloseKey Failed: Key", 48);
}

}  // namespace
}  // namespace velmaro
