#include "Fixture.h"
#include "process/ClassChange.h"
#include "process/KillLists.h"
#include "process/KnownEmulators.h"
#include "process/StartCommand.h"
#include "process/WalkProcesses.h"

namespace {

class Walk : public OnDesktop {
 protected:
  Walk() { NoKillListPath = NoKillList; }

  Texts Listed(std::int32_t filter) {
    EXPECT_FALSE(WalkProcesses("", filter, true, &list)) << "a list walk finds nobody";
    return Rows(list);
  }
  Form form{FormArgs{}};
  ListBox list{form, {}};
};

TEST_F(Walk, RowsBearTagAndWholeNameInSnapshotOrder) {
  Run({"4 Smss.EXE", "8 C:\\Emu\\ePSXe.exe", "9 \xC3\x89mu.exe", "11 a]b.exe", "13 b.exe", "24 b.exe", "10 c.exe",
       "0 d.exe", "-7 e.exe", "8 "});
  list.AddItem("old");
  EXPECT_EQ(Listed(0),
            (Texts{"[Idle]\tsmss.exe", "[Normal]\tc:\\emu\\epsxe.exe", "[Normal]\t\xC3\xA9mu.exe", "[Normal]\ta]b.exe",
                   "[HIGH]\tb.exe", "[REAL]\tb.exe", "[10]\tc.exe", "[0]\td.exe", "[-7]\te.exe", "[Normal]\t"}));
  const std::vector<int> data = {3, 0, 0, 0, 1, 2, 0, 0, 0, 0};
  for (int i = 0; i < list.ListCount(); ++i) EXPECT_EQ(list.ItemData(i), data[i]) << list.List(i);
}

TEST_F(Walk, EmulatorsAreKnownByAnyPartOfTheTable) {
  const Texts known = {"EPSXE.exe",  "C:\\Games\\Mame.exe",    "gs.exe",       "e.exe",         "tnkxfs.dat",
                       "no$gmb.exe", "psinex pc emulator.exe", "c:\\folder\\", "vivanonno.exe", "epsxe"};
  Texts rows;
  for (const auto& name : known) {
    desktop.AddProcess(name, 24);
    rows.push_back("[REAL]\t" + platform::LowerCase(name));
  }
  for (const auto* unknown : {"notepad.exe", "C:/games/mame.exe", "epsxe2.exe", "mame.exe "})
    desktop.AddProcess(unknown);
  EXPECT_EQ(Listed(5), rows);
  EXPECT_TRUE(IsKnownEmulator(
      "bleem.exe;bleem!.exe;vgs.exe;cvgs.exe;tnkxfs.dat;psemu.exe;psemupro.exe;epsxe.exe;zsnesw.exe;snes9xw.exe;"
      "mame32.exe;mame.exe;gens.exe;nemu.exe;ultrahle.exe;rew.exe;impactemu.exe;nesticle.exe;daedalus.exe;"
      "adripsx.exe;pec.exe;fpse.exe;blade.exe;project64.exe;nemu64.exe;no$gmb.exe;igba.exe;vgba.exe;"
      "visualboyadvance.exe;dboy.exe;boycottadvance.exe;bgb.exe;zinc.exe;adriile.exe;psinex pc emulator.exe;"
      "fanbuild.exe;visualboyadvance-sdl.exe;boyca.exe;neoragex.exe;winkawaks.exe;pcsx.exe;1964.exe;nebula.exe;"
      "epsxecutor.exe;pec.exe;vivanonno.exe"));
}

TEST_F(Walk, FirstNameWithThatEndIsFound) {
  const Texts running = {"mynotepad.exe", "notepad.exe",     "C:\\Emu\\Mame.exe", "mame.exe", "\xC3\x89psxe.exe",
                         "a*b.exe",       "quoted name.exe", " blank.exe ",       "c.exe?x"};
  const auto found = [&](const std::string& sought) {
    desktop.processes.clear();
    for (const auto& name : running) desktop.AddProcess(name);
    const bool any = WalkProcesses(sought, 3, true, nullptr);
    std::string set;
    for (const auto& process : desktop.processes)
      if (process.classSet == 64) set += process.name;
    EXPECT_EQ(any, !set.empty()) << sought;
    return set;
  };
  ExpectEach(found, {"notepad.exe => mynotepad.exe", "PAD.EXE => mynotepad.exe", "  notepad.exe   => mynotepad.exe",
                     R"(d:\other\mame.exe => C:\Emu\Mame.exe)", "mame.exe => C:\\Emu\\Mame.exe",
                     R"( "C:\x\mame.exe"   => C:\Emu\Mame.exe)", R"("C:\x\mame.exe => C:\Emu\Mame.exe)",
                     R"("mame.exe" => C:\Emu\Mame.exe)", R"(C:\x/mame.exe => C:\Emu\Mame.exe)",
                     R"(C:\x\mame.exe?y=1 => C:\Emu\Mame.exe)", "\xC3\xA9PSXE.exe => \xC3\x89psxe.exe",
                     "*b.exe => a*b.exe", "quoted name.exe => quoted name.exe", R"(" blank.exe " =>  blank.exe )"});
  ExpectEach(found,
             {"\" mame.exe\" => ", "C:/x/mame.exe => ", "mame.exe?y=1 => ", "*.exe => ", "?ame.exe => ",
              "verylongmynotepad.exe => ", "\tmame.exe => ", "C:\\Emu\\ => ", "\" => ", "\"\" => ", "    => ", " => "});
}

TEST_F(Walk, ModesSetTheClassAndReportItUnlessQuiet) {
  auto& process = desktop.ProcessById(desktop.AddProcess("Mame.EXE", 10));
  desktop.AddProcess("mame.exe");
  const std::vector<std::tuple<int, int, std::string>> classes = {
      {0, 32, "NORMAL"}, {1, 128, "HIGH"}, {2, 256, "REAL TIME"}, {3, 64, "IDLE"}};
  for (const auto& [mode, priorityClass, word] : classes) {
    for (const int alias : {mode, priorityClass}) {
      process.classSet = 0;
      EXPECT_TRUE(WalkProcesses("MAME.exe", alias, false, nullptr)) << alias;
      EXPECT_EQ(process.classSet, static_cast<std::uint32_t>(priorityClass));
      ExpectLastBox("mame.exe process has been set to " + word + ".", Tells);
      EXPECT_TRUE(WalkProcesses("mame.exe", alias, true, nullptr));
    }
  }
  process.denied = true;
  EXPECT_TRUE(WalkProcesses("mame.exe", 1, false, nullptr));
  ExpectLastBox("mame.exe process has been set to HIGH.", Tells);
  process.denied = false;
  process.classSet = 0;
  for (const int mode : {5, 6, -1, 33}) EXPECT_TRUE(WalkProcesses("mame.exe", mode, false, nullptr)) << mode;
  EXPECT_EQ(desktop.boxes.size(), 9U);
  EXPECT_TRUE(WalkProcesses("mame.exe", 4, true, nullptr));
  EXPECT_EQ(Ended(), Texts{"Mame.EXE"}) << "only the first of two is acted on";
  EXPECT_EQ(process.classSet + desktop.processes[1].classSet, 0U);
}

TEST_F(Walk, WhereTheClassIsReadBackTheReportTellsTheTruth) {
  desktop.classIsReadBack = true;
  auto& process = desktop.ProcessById(desktop.AddProcess("game", 4));
  // What the last box tells of the process, once a class has been asked for.
  const auto told = [&](int mode) {
    WalkProcesses("game", mode, false, nullptr);
    const auto& box = desktop.boxes.back();
    EXPECT_EQ(box.flags, box.text.ends_with('?') ? Asks : Tells);
    return box.text.substr(std::string("game process ").size());
  };
  const std::string refused = "was refused IDLE and is at HIGH: ";
  desktop.whatHighIsWorth = "It is less.";
  EXPECT_EQ(told(0) + told(1), "has been set to NORMAL.has been set to HIGH. It is less.");
  desktop.realTimeAllowed = false;
  EXPECT_EQ(told(2), "stays at HIGH, which it has chosen for itself. It is less.");
  desktop.whatHighIsWorth.clear();
  desktop.whyNoRealTime = "nobody gets it";
  desktop.roadToRight = platform::RoadToRight::Password;
  EXPECT_EQ(told(2), "was refused REAL TIME and is at HIGH: nobody gets it.") << "and no password would help";
  desktop.roadToRight = platform::RoadToRight::None;
  process.stubborn = true;
  EXPECT_EQ(told(3), refused + "ask the owner.");
  desktop.startsAtClass = {.program = "game", .priorityClass = platform::HIGH_PRIORITY_CLASS, .shortfall = "no right"};
  StartAtMode({}, 3, true);
  StartAtMode({}, 3, false);
  EXPECT_EQ(desktop.boxes.back().text, "game process " + refused + "no right.");
  desktop.roadToRight = platform::RoadToRight::Password;
  EXPECT_EQ(told(1), "has been set to HIGH.") << "nobody is asked for what is so already";
  desktop.Answer(7);
  EXPECT_EQ(told(3), refused + "do you want to enter an administrator's password for it?");
  desktop.Answer(6);
  EXPECT_EQ(told(3), refused + "ask the owner.");
  desktop.rightGiven = true;
  desktop.Answer(6);
  EXPECT_EQ(told(3), "has been set to IDLE.");
  process.stubborn = true;
  desktop.roadToRight = platform::RoadToRight::Open;
  EXPECT_EQ(told(1), "has been set to HIGH.") << "nobody is asked for what was given a moment ago";
  desktop.roadToRight = platform::RoadToRight::Password;
  process.stubborn = true;
  desktop.Answer(6, [&] { process.alive = false; });
  EXPECT_EQ(told(0), "has ended before it could be set to NORMAL.");
  process.alive = process.denied = true;
  EXPECT_EQ(told(1), "has ended before it could be set to HIGH.");
  EXPECT_EQ(desktop.boxes.size(), 16U);
  EXPECT_EQ(ClassSentence("a", 128, {.made = true, .now = 32768}, ""),
            "a process stays at ABOVE NORMAL, which it has chosen for itself.");
  EXPECT_EQ(ClassSentence("a", 64, {.made = false, .now = 16384}, "b"),
            "a process was refused IDLE and is at BELOW NORMAL: b");
}

TEST_F(Walk, BeforeHighLeavesTheSessionTheRightIsAskedFor) {
  desktop.classIsReadBack = desktop.highLeavesSession = true;
  desktop.whatHighIsWorth = "It is less.";
  auto& process = desktop.ProcessById(desktop.AddProcess("game"));
  const auto high = [&](platform::RoadToRight road, int answer, bool given) {
    desktop.roadToRight = road;
    process.stubborn = desktop.rightGiven = given;
    if (road == platform::RoadToRight::Password) desktop.Answer(answer);
    const auto before = desktop.boxes.size();
    WalkProcesses("game", 1, false, nullptr);
    ExpectLastBox("game process has been set to HIGH. It is less.", Tells);
    return desktop.boxes.size() - before;
  };
  EXPECT_EQ(high(platform::RoadToRight::None, 0, false), 1U) << "nobody would be asked";
  EXPECT_EQ(high(platform::RoadToRight::Password, 7, false), 2U);
  EXPECT_EQ(high(platform::RoadToRight::Password, 6, false), 2U) << "a wrong password takes nothing away";
  EXPECT_EQ(high(platform::RoadToRight::Password, 6, true), 2U) << "what only the right can give";
  EXPECT_EQ(high(platform::RoadToRight::Open, 0, true), 1U);
  desktop.roadToRight = platform::RoadToRight::Password;
  desktop.rightGiven = false;
  const auto before = desktop.boxes.size();
  WalkProcesses("game", 3, false, nullptr);
  WalkProcesses("game", 1, true, nullptr);
  EXPECT_EQ(desktop.boxes.size(), before + 1) << "no question for less, and none in a quiet run";
  process.basePriority = 8;
  process.stubborn = true;
  desktop.Answer(7);
  WalkProcesses("game", 1, false, nullptr);
  ExpectLastBox("game process was refused HIGH and is at NORMAL: ask the owner.", Tells);
  EXPECT_EQ(desktop.boxes.size(), before + 3) << "nobody is asked twice";
}

TEST_F(Walk, WhatIsSparedByTheTimeOfTheAnswerOrByItsWholeNameLives) {
  auto& game = desktop.ProcessById(desktop.AddProcess("game.exe"));
  auto& list = desktop.files[NoKillList].bytes = "saved.exe";
  desktop.AddProcess("saved.exe");
  for (const bool quiet : {false, true}) EXPECT_TRUE(WalkProcesses("saved.exe", 4, quiet, nullptr));
  EXPECT_TRUE(desktop.boxes.empty());
  desktop.Answer(6, [&] { game.name = "Saved.exe"; });
  EXPECT_TRUE(WalkProcesses("game.exe", 4, false, nullptr));
  game.name = "game.exe";
  desktop.Answer(6, [&] { list += "\r\ngame.exe"; });
  EXPECT_TRUE(WalkProcesses("game.exe", 4, false, nullptr));
  // A record has room for 259 bytes, the last ones of a name.
  std::string name = "C:\\Keep\\";
  for (int i = 0; i < 90; ++i) name += "\xE3\x81\x82";
  desktop.AddProcess(name + "x.exe");
  EXPECT_EQ(Listed(0).back(), "[Normal]\t" + name.substr(name.size() - 252) + "x.exe");
  for (const auto* pattern : {"*x.exe", "C:\\Keep\\*"}) {
    list = pattern;
    EXPECT_TRUE(WalkProcesses("x.exe", 4, true, nullptr)) << pattern;
  }
  EXPECT_EQ(Ended(), Texts{});
}

TEST_F(Walk, WithoutASnapshotOrRoomNothingIsListedOrFound) {
  desktop.AddProcess("game.exe");
  list.AddItem("old");
  desktop.snapshotFails = true;
  EXPECT_FALSE(WalkProcesses("game.exe", 4, false, nullptr) || WalkProcesses("", 0, true, nullptr));
  EXPECT_EQ(Rows(list), Texts{"old"}) << "only a list walk clears";
  EXPECT_TRUE(Listed(0).empty() && desktop.boxes.empty());
  desktop.snapshotFails = false;
  list.AddItem("old");
  EXPECT_FALSE(WalkProcesses("\"", 0, true, &list)) << "a name that nothing is left of lists, but clears nothing";
  EXPECT_EQ(Rows(list), (Texts{"old", "[Normal]\tgame.exe"}));
  for (int i = 0; i < 32770; ++i) desktop.processes.push_back({.name = "p", .id = 1});
  EXPECT_EQ(Listed(0).size(), 32767U) << "a list that is full stops the walk";
}

}  // namespace
