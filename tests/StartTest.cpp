#include <map>

#include "Fixture.h"
#include "desktop/modRegistry.h"
#include "process/KillLists.h"

namespace {

Texts Started(const Desktop& desktop) {
  Texts texts;
  for (const auto& start : desktop.starts)
    texts.push_back(start.call + ':' + start.file + ':' + std::to_string(start.show));
  return texts;
}

class Starting : public OnDesktop {};

TEST_F(Starting, AnEmptyLineBringsUpTheWindow) {
  desktop.AddProcess("a.exe");
  desktop.appFolder = "C:\\";
  auto& form = Start("   ");
  EXPECT_TRUE(Shows(form) && form.Option1[0].Value() && form.mnuFileAutoRefresh.Checked());
  EXPECT_EQ(State(form) + form.List1.List(0), "Real Time 2, row -1 of 1[Normal]\ta.exe");
  EXPECT_EQ(form.KillListPath + NoKillListPath, "C:\\killlist.txtC:\\nokilllist.txt");
  EXPECT_EQ(desktop.snapshotsTaken, 1);
  desktop.Then([&] { EXPECT_TRUE(Shows(form)); });
  desktop.Then([&] { Choose(form.mnuFileExit); });
  application.Run();
  EXPECT_EQ(desktop.livePeers + application.ExitCode(), 0);
}

TEST_F(Starting, AQuietLineDoesItsWorkInOrderWithoutAnyWindow) {
  Run({"8 chat.exe", "8 saved.exe"});
  const auto longer = desktop.AddWindow("Game Console 2");
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
  EXPECT_TRUE(application.Ended() && !form.Unloaded()) << "nobody is asked at this end";
  EXPECT_TRUE(desktop.peersMade == 0 && desktop.boxes.empty());
  EXPECT_EQ(Started(desktop), (Texts{"ShellExecuteA:game.exe -full:3", "WinExec:game.exe -full:3"}));
  EXPECT_EQ(desktop.starts[0].verb + desktop.starts[0].parameters + desktop.starts[0].folder, "C:\\");
  EXPECT_EQ(desktop.ProcessNamed("GAME.exe").classSet, 128U);
  EXPECT_EQ(desktop.snapshotsTaken, 3) << "nobody sees the list, so it is never filled";
  EXPECT_EQ(desktop.sleeps, std::vector<std::uint32_t>{750});
  EXPECT_TRUE(desktop.WindowOf(longer).visible && !desktop.WindowOf(window).visible);
}

TEST_F(Starting, SwitchesWithoutATargetActAndLeaveTheWindow) {
  desktop.AddProcess("chat.exe");
  desktop.files["C:\\Velmaro\\a.txt"].bytes = "chat.exe";
  desktop.memory.available = desktop.memory.total - (4U << 20);
  desktop.Answer(6, [&] { EXPECT_EQ(desktop.peersMade, 0); });
  desktop.Then([&] { EXPECT_TRUE(application.Default<formVelmaro>().mnuOptions[2].Checked()) << "/h comes later"; });
  auto& form = Start("/h /m /x Game /max /k a.txt");
  EXPECT_EQ(Ended(), Texts{"chat.exe"});
  EXPECT_EQ(desktop.memory.peakBlocks, 3U);
  EXPECT_TRUE(Shows(form) && application.Forms().size() == 1 && !form.QuietMode);
  EXPECT_EQ(State(form), "Real Time 2, row -1 of 0");
  EXPECT_TRUE(desktop.starts.empty() && desktop.sleeps.empty());
}

TEST_F(Starting, TheHelpTellsEverySwitchAndNothingElseIsDone) {
  desktop.AddProcess("chat.exe");
  desktop.files[KillList].bytes = "chat.exe";
  Start("/q /? /k /m game.exe");
  application.Run();
  const auto text = desktop.boxes.at(0).text;
  std::string switches;
  for (std::size_t at = 0; (at = text.find("\r\n/", at)) != text.npos;) switches += text.substr(at += 2, 2);
  EXPECT_EQ(switches, "/?/q/m/m/h/n/m/k/y/i/h/x");
  ExpectLastBox(text, Tells);
  EXPECT_TRUE(application.Ended() && desktop.starts.empty() && Ended().empty() && desktop.peersMade == 0);
  EXPECT_EQ(application.ExitCode() + static_cast<int>(desktop.memory.claims), 0);
}

TEST_F(Starting, AFormThatCantBeShownHoldsNoOtherUp) {
  auto& form = Start();
  desktop.windowsFail = true;
  for (auto* entry : {&form.mnuHelpAbout, &form.mnuFind, &form.mnuFileRun, &form.mnuEditKillListHere}) {
    Choose(*entry);
    EXPECT_EQ(desktop.ActiveForm(), &form) << entry->Caption();
  }
  EXPECT_EQ(application.Forms().size(), 1U);
}

TEST(StartingLines, WithoutAnythingToShowWindowsOnTheWorkIsDoneAndTheProgramEnds) {
  for (const std::string target : {"game.exe", ""}) {
    Program program;
    program.desktop.windowsFail = true;
    program.desktop.memory.available = program.desktop.memory.total - (4U << 20);
    program.Start("/q /m " + target);
    program.application.Run();
    EXPECT_TRUE(program.application.Ended() || program.application.Forms().empty());
    EXPECT_EQ(program.desktop.memory.peakBlocks, 3U);
    EXPECT_EQ(Started(program.desktop), target.empty() ? Texts{} : Texts{"ShellExecuteA:game.exe:1"});
  }
}

TEST(StartingLines, TheTargetIsStartedAndItsProcessFoundByAPartOfIt) {
  const Texts running = {"C:\\Emu\\epsxe.exe", "psx.exe",        "mame.exe", "tnkxfs.dat", "Program.exe", "old.exe",
                         "a.txt.exe",          "readme.dat.exe", "x.data"};
  // The process whose class was set, that class, and how the target was to show.
  const auto started = [&](const std::string& line) {
    Program program;
    for (const auto& process : running) program.desktop.AddProcess(process);
    program.desktop.files[KillList].bytes = "; nothing";
    program.Start("/q " + line);
    std::string text;
    for (const auto& process : program.desktop.processes)
      if (process.classSet != 0) text += process.name + ' ' + std::to_string(process.classSet) + ' ';
    return text + std::to_string(program.desktop.starts.at(0).show);
  };
  ExpectEach(
      started,
      {R"(C:\Emu\epsxe.exe -nogui => C:\Emu\epsxe.exe 256 1)", R"("C:\Emu\ePSXe.EXE" -nogui => C:\Emu\epsxe.exe 256 1)",
       R"("C:\Emu\psx" -nogui => psx.exe 256 1)", "MAME => mame.exe 256 1", "mame a.dat => mame.exe 256 1",
       "TNKXFS.DAT => tnkxfs.dat 256 1", R"(C:\Program Files\app => Program.exe 256 1)",
       R"("C:\Program Files\app" => Program.exe 256 1)", R"(C:\old.exe.d\mame.exe => old.exe 256 1)",
       "a.txt => a.txt.exe 256 1", "readme.dat => 1", "x.data => 1", "/h mame => mame.exe 128 1",
       "/i /h mame => mame.exe 64 1", "/h /k mame => mame.exe 128 1", "/k mame => mame.exe 256 1",
       "/min mame => mame.exe 256 2", "/hide /max mame => mame.exe 256 0", "/max /i mame => mame.exe 64 3"});
}

TEST(StartingLines, WithoutQuietModeNoEndsNothingAndTheClassIsReportedOnEitherRoad) {
  for (const auto& [target, process] :
       std::map<std::string, std::string>{{"game.exe", "game.exe"}, {"vgs.exe", "tnkxfs.dat"}}) {
    Program program;
    program.desktop.AddProcess(process);
    program.desktop.files[KillList].bytes = process;
    program.Start("/h /k " + target);
    EXPECT_TRUE(program.desktop.terminated.empty() && program.application.Ended());
    ASSERT_EQ(program.desktop.boxes.size(), 2U) << target;
    EXPECT_EQ(program.desktop.boxes[1].text, process + " process has been set to HIGH.");
  }
}

TEST_F(Starting, AValueOfTheRegistryIsReadWholeOrNotAtAll) {
  auto& bytes = desktop.registry[1]["Key"]["Value"].bytes;
  for (const std::size_t length : {0, 1, 254, 255, 256}) {
    const std::string text(length, 'x');
    bytes = text + '\0';
    EXPECT_EQ(RegGetString(1, "Key", "Value"), length < 255 ? text : "");
  }
  EXPECT_EQ(RegGetString(1, "None", "Value") + RegGetString(1, "Key", "None"), "");
  EXPECT_TRUE(desktop.boxes.empty());
  bytes = "x\0"s;
  desktop.closeKeyResult = 5;
  EXPECT_EQ(RegGetString(1, "Key", "Value"), "x");
  ExpectLastBox("RegCloseKey Failed: Key", 48);
}

TEST(StartingLines, ATargetThatNeedsAnAdministratorIsStartedByTheShellWhileTheMeterShows) {
  const auto asked = [](const std::string& line) {
    Program program;
    auto& desktop = program.desktop;
    for (const auto* file : {"C:\\My Games\\game.exe", "C:\\Emu\\vgs.exe"}) desktop.files[file].bytes = "x";
    desktop.onStart = [&](const auto& start) { return !desktop.ActiveForm() ? 42 : start.call[5] == 'E' ? 2 : 740; };
    desktop.memory.available = desktop.memory.total;
    program.Start("/q /m " + line);
    EXPECT_FALSE(desktop.ActiveForm());
    const auto& start = desktop.starts.back();
    return start.call + '|' + start.file + '|' + start.parameters + '|' + start.folder;
  };
  ExpectEach(asked, {R"(C:\My Games\game.exe -a "b c" => ShellExecuteA|C:\My Games\game.exe|-a "b c"|C:\)",
                     R"("C:\My Games\game" -full => ShellExecuteA|C:\My Games\game.exe|-full|C:\)",
                     R"(game a b => ShellExecuteA|game|a b|C:\)", R"("game => ShellExecuteA|game||C:\)",
                     R"("C:\Emu\vgs.exe" => ShellExecuteA|C:\Emu\vgs.exe||)"});
}

const std::string Station = "Connectix Virtual Game Station";

TEST_F(Starting, ARunningStationGetsEnterInPlaceOfAStart) {
  desktop.AddProcess("tnkxfs.dat");
  desktop.AddWindow("Other");
  const auto window = desktop.AddWindow(Station);
  desktop.files["C:\\vgs.exe"].bytes = "x";
  Start("/q /h /max /x \"" + Station + "\" \"C:\\VGS.exe\"");
  ASSERT_EQ(desktop.sentKeys.size(), 1U);
  EXPECT_EQ(desktop.sentKeys[0].keys + desktop.sentKeys[0].window, "~" + Station);
  EXPECT_EQ(Started(desktop), Texts{});
  EXPECT_EQ(desktop.activations, (Texts{Station, Station}));
  EXPECT_EQ(desktop.ProcessNamed("tnkxfs.dat").classSet, 128U);
  EXPECT_TRUE(desktop.WindowOf(window).visible && desktop.sleeps.empty()) << "the hide plays no part";
}

TEST(StartingLines, StationIsLookedForInThreePlaces) {
  // A target, which of the three are there, and what is started.
  const std::vector<std::tuple<std::string, std::string, Texts>> cases = {
      {"\"C:\\Emu\\VGS.exe\"", "file local installed", {"Shell:C:\\Emu\\VGS.exe:1"}},
      {"C:\\Emu\\vgs.exe", "local installed", {"Shell:MyVGS.exe:1"}},
      {"C:\\Emu\\vgs.exe -x", "file local installed", {"Shell:MyVGS.exe:1"}},
      {"game.exe -vgs.exe", "file installed", {"Shell:D:\\run it.exe -a:1"}},
      {"vgs.exe", "", {}}};
  for (const auto& [target, there, started] : cases) {
    Program program;
    auto& desktop = program.desktop;
    if (there.starts_with("file")) desktop.files["C:\\Emu\\vgs.exe"].bytes = "x";
    if (there.find("local") != std::string::npos) desktop.files["C:\\Velmaro\\MyVGS.exe"].bytes = "x";
    auto& key = desktop.registry[0x80000002]["SOFTWARE\\Connectix\\" + Station + "\\General"];
    if (there.ends_with("installed")) key["Location"].bytes = std::string("D:\\run it.exe -a") + '\0';
    desktop.onStart = [&](const auto&) { return desktop.AddProcess("tnkxfs.dat"), 42; };
    program.Start("/q /min " + target);
    EXPECT_EQ(Started(desktop), started) << target;
    for (const auto& process : desktop.processes) EXPECT_EQ(process.classSet, 256U);
    EXPECT_TRUE(desktop.sentKeys.empty() && desktop.boxes.empty() && desktop.peersMade == 0);
  }
}

}  // namespace
