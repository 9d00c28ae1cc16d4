#include "Desktop.h"

TEST_F(LinuxDesktop, AClassIsChangedFromTheMenuAndTheListShowsIt) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  Press(List(), Qt::Key_End);
  EXPECT_EQ(List().currentIndex().row(), List().model()->rowCount() - 1);
  EXPECT_EQ(Row(RowOf(program)) == "[Normal]", child.Nice() == 0);
  Pick(RowOf(program));
  Press(List(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex())) << "a picked row stays in sight";
  Then([&](QWidget& box) {
    EXPECT_EQ(box.parentWidget(), main);
    Click(box, "OK");
  });
  Choose("Idle");
  EXPECT_EQ(child.Nice(), 19);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  Press(*main, Qt::Key_E, Qt::AltModifier);  // a menu has the same letter
  EXPECT_EQ(RowOf(program), -1);
  Click(*main, "Idle");
  EXPECT_GE(RowOf(program), 0);
}

TEST_F(LinuxDesktop, ARefusedClassIsSetWithARightThatWasGiven) {
  if (!std::getenv("VELMARO_POLKIT")) GTEST_SKIP() << "polkit.sh runs this as a user who has the right by a rule";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  Click(*main, "Refresh");
  Pick(RowOf(program));
  Answer("set to HIGH", "OK");
  Choose("High");
  EXPECT_EQ(child.Nice(), -10);
  EXPECT_EQ(Row(RowOf(program)), "[HIGH]");
}
