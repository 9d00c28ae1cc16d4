#include "Fixture.h"
#include "launcher/formLauncher.h"
#include "platform/kernel32.h"

namespace {

using Desk = OnDesktop;

TEST_F(Desk, AFileIsTheCommandOfTheRunDialogWhichTellsOfAGameThatIsNotRaised) {
  auto& form = Start();
  desktop.startsAtClass = {.program = "game", .shortfall = "ask for it"};
  for (const auto got : {platform::HIGH_PRIORITY_CLASS, platform::NORMAL_PRIORITY_CLASS}) {
    EXPECT_TRUE(desktop.boxes.empty()) << "at High, Real Time is nothing to miss";
    desktop.startsAtClass->priorityClass = got;
    desktop.Then([&] {
      EXPECT_THROW(Drop(form, {"c"}), std::logic_error) << "it is blocked";
      auto& launcher = dynamic_cast<formLauncher&>(FrontForm());
      EXPECT_EQ(launcher.cmbRun.Text(), "C:\\My games\\a.exe");
      Press(launcher.btnOK);
    });
    Drop(form, {"C:\\My games\\a.exe", "b.exe"});
  }
  ExpectLastBox("game process was refused REAL TIME and is at NORMAL: ask for it.", Tells);
}

TEST_F(Desk, WhatItKeepsToItselfIsTold) {
  desktop.whyWindowsAreMissing = "Some are missing.";
  auto& game = desktop.WindowOf(desktop.AddWindow("Game"));
  game.remark = " (minimized)";
  auto& form = Start();
  for (const int view : {6, 0, 6}) Press(form.Option1[static_cast<std::size_t>(view)]);
  Select(form.List1, RowWith(form.List1, "Game (minimized)"));
  Choose(form.mnuWOption[4]);
  EXPECT_TRUE(!game.visible && desktop.boxes.size() == 1 && desktop.boxes[0].text == "Some are missing.");
  game.outOfReach = true;
  for (const std::size_t command : {0, 3}) Choose(form.mnuWOption[command]);
  ASSERT_EQ(desktop.boxes.size(), 3U) << "each time";
  EXPECT_EQ(desktop.boxes[2].text, "This desktop keeps its windows to itself.");
}

TEST_F(Desk, WhatTheWindowHoldsFollowsAnImposedSize) {
  auto& form = Start();
  // Too narrow for either row of buttons, too low, and as designed.
  for (const auto& [width, height] : {std::pair{4500.F, 4005.F}, {9600.F, 1995.F}, {12000.F, 9000.F}}) {
    ImposeSize(form, width, height);
    ASSERT_EQ((std::pair{form.Width(), form.Height()}), (std::pair{width, height})) << "it is not pushed back";
    EXPECT_TRUE(form.btnVelmaro.Left() >= 0 && form.btnFree.Left() + form.btnFree.Width() <= form.ScaleWidth());
    EXPECT_LE(form.Option1[6].Left() + form.Option1[6].Width(), form.btnRefresh.Left());
    EXPECT_EQ(form.lblCredits.Visible(), width > 5000) << "it gives way to the buttons";
  }
  EXPECT_EQ(form.Option1[6].At(), (Bounds{4485, 30, 795, 360}));
}

}  // namespace
