
#include "Desktop.h"

TEST_F(LinuxDesktop, AButtonIsPressedWhereTheMouseWentDownAndUp) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  auto& button = Find(*main, "Velmaro!");
  Choose("Idle");
  Press(List(), Qt::Key_End);
  EXPECT_EQ(List().currentIndex().row(), List().model()->rowCount() - 1);
  Pick(RowOf(program));
  Press(List(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex())) << "a picked row stays in sight";
  QTest::mousePress(&button, Qt::LeftButton);
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-9, -9));
  QTest::mouseRelease(&button, Qt::LeftButton);
  const auto lookAtPopup = [this](const std::string& marked) {
    Then([=](QWidget& popup) {
      std::string marks;
      for (const auto* action : popup.actions())
        if (action->isChecked()) marks += action->text().section('\t', 0, 0).toStdString();
      EXPECT_EQ(marks, marked);
      const auto place = static_cast<QMenu&>(popup).actionGeometry(popup.actions().front()).center();
      QTest::mouseClick(&popup, Qt::RightButton, {}, place);
      EXPECT_TRUE(popup.isVisible()) << "the right button chooses nothing";
      popup.close();
    });
  };
  lookAtPopup("Idle");
  QTest::mouseClick(&button, Qt::RightButton);
  EXPECT_EQ(child.Nice(), ::getpriority(PRIO_PROCESS, 0));
  Answer("set to IDLE", "OK");
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(child.Nice(), 19);
  Press(*main, Qt::Key_E, Qt::AltModifier);  // a menu has the same letter
  EXPECT_EQ(RowOf(program), -1);
  Click(*main, "Idle");
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  Click(*main, "All");
  QTest::keyPress(main->focusWidget(), Qt::Key_F5);
  const Child late(folder.Sleeper("zzlate"));
  QKeyEvent held(QEvent::KeyRelease, Qt::Key_F5, {}, {}, true);
  QApplication::sendEvent(main->focusWidget(), &held);
  EXPECT_EQ(RowOf(folder / "zzlate"), -1) << "a key that is held down does not come up";
  QTest::keyRelease(main->focusWidget(), Qt::Key_F5);
  EXPECT_GE(RowOf(folder / "zzlate"), 0) << "the list is read anew when the key comes up";
  Pick(RowOf(folder / "zzlate"));
  lookAtPopup("Normal");
  QTest::mouseClick(List().viewport(), Qt::RightButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(List().currentIndex().row(), RowOf(folder / "zzlate")) << "the other buttons pick no row";
  Then([&](QWidget& popup) {
    EXPECT_TRUE(QRect(List().mapToGlobal(QPoint()), List().size()).contains(popup.pos()));
    EXPECT_LT(std::abs(popup.y() - 10 - List().viewport()->mapToGlobal(PlaceOf(RowOf(folder / "zzlate"))).y()), 10);
    popup.close();
  });
  List().scrollToTop();
  Press(List(), Qt::Key_F10, Qt::ShiftModifier);
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may give a program Real Time";
  Answer("set to REAL TIME", "OK");
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(Row(RowOf(program)), "[REAL]");
}

TEST_F(LinuxDesktop, EachKeyAndEachButtonOfTheMouseIsToldAsWhatItIs) {
  auto& form = app.Default<formVelmaro>();
  std::ostringstream told;
  form.KeyDown = [&](int key, int shift) { told << key << '+' << shift << ' '; };
  form.KeyUp = [&](int key, int shift) { told << key << '-' << shift << ' '; };
  form.lblCredits.MouseUp = [&](auto... figures) { ((told << figures << ','), ...), told << ' '; };
  for (auto* control : form.Controls()) control->Click = [&, control] { told << control->Caption() << ' '; };
  form.btnRefresh.SetVisible(false);
  const auto press = [&](QKeyCombination keys) {
    Press(*main, keys.key(), keys.keyboardModifiers());
    return std::exchange(told, std::ostringstream()).str();
  };
  EXPECT_EQ(press(Qt::Key_Enter) + press(Qt::Key_Semicolon), "13+0 Velmaro! 13-0 ");
  EXPECT_EQ(press(Qt::SHIFT | Qt::Key_Return), "16+1 13+1 13-1 16-0 ");
  EXPECT_EQ(press(Qt::CTRL | Qt::Key_Return), "17+2 13+2 13-2 17-0 ");
  EXPECT_EQ(press(Qt::ALT | Qt::Key_R) + press(Qt::ALT | Qt::Key_L), "18+4 82+4 82-4 18-0 18+4 76+4 &Launch... ");
  EXPECT_EQ(press(Qt::Key_Return) + press(Qt::Key_Space), "13+0 &Launch... 13-0 32+0 32-0 &Launch... ");
  Then([&](QWidget& popup) {
    EXPECT_EQ(popup.pos(), ClientOf(form).mapToGlobal(QPoint(50, 25)));
    EXPECT_EQ(static_cast<QMenu&>(popup).defaultAction(), popup.actions().back());
    EXPECT_EQ(press(Qt::Key_F2), "") << "the popup has the keyboard";
    popup.close();
  });
  form.PopupMenu(form.mnuOptionsMain, Bounds{600, 300}, &form.mnuOptions[4]);
  auto& label = WidgetOf(form.lblCredits);
  QTest::mouseClick(&label, Qt::LeftButton, Qt::ShiftModifier, {10, 5});
  QTest::mouseClick(&label, Qt::RightButton, Qt::ControlModifier, {20, 5});
  QTest::mouseClick(&label, Qt::MiddleButton, Qt::AltModifier, {10, 8});
  EXPECT_EQ(told.str(), form.lblCredits.Caption() + " 1,1,120,60, 2,2,240,60, 4,4,120,96, ");
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
