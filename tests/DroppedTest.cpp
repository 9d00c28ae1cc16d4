#include "Fixture.h"
#include "launcher/Settings.h"
#include "launcher/formLauncher.h"
#include "platform/kernel32.h"

namespace {

class Desk : public OnDesktop {};

TEST_F(Desk, ADroppedFileIsTheCommandOfTheRunDialog) {
  auto& form = Start();
  SaveSetting("LastRun", "old");
  desktop.Then([&] {
    auto& launcher = dynamic_cast<formLauncher&>(FrontForm());
    EXPECT_EQ(launcher.cmbRun.Text(), "C:\\My games\\a.exe");
    EXPECT_THROW(Drop(form, {"b"}), std::logic_error) << "it is blocked";
    Press(launcher.btnCancel);
  });
  Drop(form, {"C:\\My games\\a.exe", "b.exe"});
}

TEST_F(Desk, TheRunDialogTellsOfAGameThatWasNotRaisedAtAll) {
  auto& form = Start();
  const auto launch = [&](std::uint32_t got) {
    desktop.startsAtClass = {.program = "game", .priorityClass = got, .shortfall = "ask for it"};
    desktop.Then([&] {
      auto& launcher = dynamic_cast<formLauncher&>(FrontForm());
      TypeText(launcher.cmbRun, "game");
      Press(launcher.btnOK);
    });
    Press(form.btnLaunch);
  };
  launch(platform::HIGH_PRIORITY_CLASS);
  EXPECT_TRUE(desktop.boxes.empty()) << "Real Time is nothing to miss then";
  launch(platform::NORMAL_PRIORITY_CLASS);
  ExpectLastBox("game process was refused REAL TIME and stays at NORMAL: ask for it.", Tells);
}

}  // namespace
