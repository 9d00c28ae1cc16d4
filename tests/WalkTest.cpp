#include "Fixture.h"
#include "process/KillLists.h"
#include "process/WalkProcesses.h"

namespace velmaro {
namespace {

class Walk : public OnDesktop {
 protected:
  Walk() { NoKillListPath = NoKillList; }

  Texts Listed(std::int32_t filter) {
    EXPECT_FALSE(WalkProcesses("", filter, true, &list)) << "a list walk finds nobody";
    return Rows(list);
  }
  // The names that a filter keeps, without their tags.
  Texts Kept(std::int32_t filter) {
    auto rows = Listed(filter);
    for (auto& row : rows) row.erase(0, row.find('\t') + 1);
    return rows;
  }

  Form form{FormArgs{}};
  ListBox list{form, {}};
};

TEST_F(Walk, RowsBearTagAndWholeNameInSnapshotOrder) {
  const std::vector<std::tuple<std::string, int, std::string, int>> cases = {
      {"Smss.EXE", 4, "[Idle]\tsmss.exe", 3},
      {"C:\\Emu\\ePSXe.exe", 8, "[Normal]\tc:\\emu\\epsxe.exe", 0},
      {"\xC3\x89mu.exe", 9, "[Normal]\t\xC3\xA9mu.exe", 0},
      {"a]b.exe", 11, "[Normal]\ta]b.exe", 0},
      {"b.exe", 13, "[HIGH]\tb.exe", 1},
      {"b.exe", 24, "[REAL]\tb.exe", 2},
      {"c.exe", 10, "[10]\tc.exe", 0},
      {"d.exe", 0, "[0]\td.exe", 0},
      {"e.exe", -7, "[-7]\te.exe", 0},
      {"", 8, "[Normal]\t", 0},
  };
  for (const auto& [name, base, row, data] : cases) desktop.AddProcess(name, base);
  list.AddItem("old");
  ASSERT_EQ(Listed(0).size(), cases.size());
  for (int i = 0; i < list.ListCount(); ++i) {
    EXPECT_EQ(list.List(i), std::get<2>(cases[i]));
    EXPECT_EQ(list.ItemData(i), std::get<3>(cases[i])) << list.List(i);
  }
}

TEST_F(Walk, FiltersTakeTheExactBasePriority) {
  for (const int base : {4, 7, 8, 9, 10, 11, 13, 24}) desktop.AddProcess("p" + std::to_string(base), base);
  const Texts all = Kept(0);
  EXPECT_EQ(all.size(), 8U);
  const std::vector<std::pair<int, Texts>> cases = {
      {1, {"p8"}}, {2, {"p13"}}, {3, {"p24"}}, {4, {"p4"}},   {6, {}},       {-1, {}},
      {33, {}},    {255, {}},    {32, all},    {64, {"p24"}}, {128, {"p8"}}, {256, {"p13"}},
  };
  for (const auto& [filter, names] : cases) EXPECT_EQ(Kept(filter), names) << filter;
}

TEST_F(Walk, EmulatorsAreKnownByAnyPartOfTheTable) {
  const Texts known = {"EPSXE.exe",  "C:\\Games\\Mame.exe",    "gs.exe",       "e.exe",        "tnkxfs.dat",
                       "no$gmb.exe", "psinex pc emulator.exe", "c:\\folder\\", "vivanonno.exe"};
  Texts lower;
  for (const auto& name : known) {
    desktop.AddProcess(name, 24);
    desktop.AddProcess("notepad.exe");
    desktop.AddProcess("C:/games/mame.exe");
    desktop.AddProcess("epsxe");
    desktop.AddProcess("epsxe2.exe");
    lower.push_back(platform::LowerCase(name));
  }
  lower.insert(lower.end(), known.size(), "epsxe");
  auto kept = Kept(5);
  EXPECT_TRUE(std::ranges::is_permutation(kept, lower)) << testing::PrintToString(kept);
}

TEST_F(Walk, FirstNameWithThatEndIsFound) {
  const Texts running = {"mynotepad.exe", "notepad.exe",     "C:\\Emu\\Mame.exe", "mame.exe", "\xC3\x89psxe.exe",
                         "a*b.exe",       "quoted name.exe", " blank.exe ",       "c.exe?x"};
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"notepad.exe", "mynotepad.exe"},
      {"PAD.EXE", "mynotepad.exe"},
      {"  notepad.exe  ", "mynotepad.exe"},
      {"d:\\other\\mame.exe", "C:\\Emu\\Mame.exe"},
      {"C:\\Emu\\Mame.exe", "C:\\Emu\\Mame.exe"},
      {"mame.exe", "C:\\Emu\\Mame.exe"},
      {" \"C:\\x\\mame.exe\"  ", "C:\\Emu\\Mame.exe"},
      {"\"C:\\x\\mame.exe", "C:\\Emu\\Mame.exe"},
      {"\"mame.exe\"", "C:\\Emu\\Mame.exe"},
      {"C:\\x/mame.exe", "C:\\Emu\\Mame.exe"},
      {"C:\\x\\mame.exe?y=1", "C:\\Emu\\Mame.exe"},
      {"\xC3\xA9PSXE.exe", "\xC3\x89psxe.exe"},
      {"*b.exe", "a*b.exe"},
      {"quoted name.exe", "quoted name.exe"},
      {"\" blank.exe \"", " blank.exe "},
      {"\" mame.exe\"", ""},
      {"C:/x/mame.exe", ""},
      {"mame.exe?y=1", ""},
      {"*.exe", ""},
      {"?ame.exe", ""},
      {"verylongmynotepad.exe", ""},
      {"\tmame.exe", ""},
      {"C:\\Emu\\", ""},
      {"\"", ""},
      {"\"\"", ""},
      {"   ", ""},
      {"", ""},
  };
  for (const auto& [sought, found] : cases) {
    desktop.processes.clear();
    for (const auto& name : running) desktop.AddProcess(name);
    EXPECT_EQ(WalkProcesses(sought, 3, true, nullptr), !found.empty()) << sought;
    for (const auto& process : desktop.processes)
      EXPECT_EQ(process.classSet, process.name == found ? 64U : 0U) << sought << " and " << process.name;
  }
}

TEST_F(Walk, OnlyTheFirstOfManyIsActedOn) {
  for (int i = 0; i < 3; ++i) desktop.AddProcess("mame.exe");
  EXPECT_TRUE(WalkProcesses("mame.exe", 4, true, nullptr));
  EXPECT_EQ(desktop.terminated, std::vector{desktop.processes[0].id});
}

TEST_F(Walk, ModesSetTheClassAndReportIt) {
  const std::vector<std::tuple<int, std::uint32_t, std::string>> cases = {
      {0, 32, "NORMAL"},
      {1, 128, "HIGH"},
      {2, 256, "REAL TIME"},
      {3, 64, "IDLE"},
      {32, 32, "NORMAL"},
      {128, 128, "HIGH"},
      {256, 256, "REAL TIME"},
      {64, 64, "IDLE"},
      {5, 0, ""},
      {6, 0, ""},
      {-1, 0, ""},
      {33, 0, ""},
  };
  auto& process = desktop.ProcessById(desktop.AddProcess("Mame.EXE", 10));
  for (const auto& [mode, priorityClass, word] : cases) {
    process.classSet = 0;
    desktop.boxes.clear();
    EXPECT_TRUE(WalkProcesses("MAME.exe", mode, false, nullptr)) << mode;
    EXPECT_EQ(process.classSet, priorityClass) << mode;
    ASSERT_EQ(desktop.boxes.size(), word.empty() ? 0U : 1U) << mode;
    if (!word.empty()) ExpectLastBox("mame.exe process has been set to " + word + ".", Tells);
    EXPECT_TRUE(WalkProcesses("mame.exe", mode, true, nullptr));
  }
  EXPECT_TRUE(process.alive);
  EXPECT_LE(desktop.boxes.size(), 1U) << "a quiet walk shows no box";
}

TEST_F(Walk, WhatCantBeSetIsReportedAsIfItHadBeen) {
  auto& denied = desktop.ProcessById(desktop.AddProcess("denied.exe"));
  denied.denied = true;
  auto& gone = desktop.ProcessById(desktop.AddProcess("stubborn.exe"));
  gone.stubborn = true;
  for (const std::string name : {"denied.exe", "stubborn.exe"}) {
    EXPECT_TRUE(WalkProcesses(name, 1, false, nullptr));
    ExpectLastBox(name + " process has been set to HIGH.", Tells);
    EXPECT_TRUE(WalkProcesses(name, 4, true, nullptr));
  }
  EXPECT_EQ(Ended(), Texts{});
  // A process can be gone by the time the user has answered.
  auto& late = desktop.ProcessById(desktop.AddProcess("late.exe"));
  desktop.Answer(6, [&] { late.alive = false; });
  EXPECT_TRUE(WalkProcesses("late.exe", 4, false, nullptr));
  EXPECT_EQ(Ended(), Texts{});
}

TEST_F(Walk, TerminationAsksUnlessQuietAndSparesTheNoKillList) {
  desktop.AddProcess("Game.exe");
  desktop.AddProcess("saved.exe");
  desktop.files[NoKillList].bytes = "saved.exe";
  for (const int answer : {7, 6}) {
    EXPECT_EQ(Ended(), Texts{});
    desktop.Answer(answer);
    EXPECT_TRUE(WalkProcesses("game.exe", 4, false, nullptr));
    ExpectLastBox("Do you want to terminate the process 'game.exe'?", AsksWithNo);
  }
  EXPECT_EQ(Ended(), Texts{"Game.exe"});
  EXPECT_TRUE(WalkProcesses("saved.exe", 4, false, nullptr));
  EXPECT_TRUE(WalkProcesses("saved.exe", 4, true, nullptr));
  EXPECT_FALSE(WalkProcesses("game.exe", 4, false, nullptr)) << "it has ended";
  EXPECT_EQ(desktop.boxes.size(), 2U);
  EXPECT_EQ(Ended(), Texts{"Game.exe"});
}

TEST_F(Walk, WithoutASnapshotNothingIsListedOrFound) {
  desktop.AddProcess("game.exe");
  list.AddItem("old");
  desktop.snapshotFails = true;
  EXPECT_FALSE(WalkProcesses("game.exe", 4, false, nullptr));
  EXPECT_FALSE(WalkProcesses("", 0, true, nullptr));
  EXPECT_EQ(Rows(list), Texts{"old"}) << "only a list walk clears";
  EXPECT_EQ(Listed(0), Texts{});
  EXPECT_TRUE(desktop.boxes.empty());
  desktop.snapshotFails = false;
  list.AddItem("old");
  EXPECT_FALSE(WalkProcesses("\"", 0, true, &list)) << "a name that nothing is left of lists, but clears nothing";
  EXPECT_EQ(Rows(list), (Texts{"old", "[Normal]\tgame.exe"}));
}

TEST_F(Walk, AListThatIsFullStopsTheWalk) {
  for (int i = 0; i < 32770; ++i) desktop.processes.push_back({.name = "p", .id = 1});
  EXPECT_EQ(Listed(0).size(), 32767U);
}

}  // namespace
}  // namespace velmaro
