#include <QLabel>

#include "Desktop.h"
#include "runtime/Boxes.h"

TEST_F(LinuxDesktop, AModalWindowHasTheKeyboardAloneAndTheLastOneToCloseEndsTheProgram) {
  Answer("<b>\nb", "OK", "OK*", QMessageBox::Warning);
  EXPECT_EQ(MsgBox("<b>\r\nb", platform::MB_ICONWARNING), platform::IDOK);
  Then([&](QWidget& about) {
    Press(*main, Qt::Key_F1);  // a window that stands under a modal one hears nothing
    Choose("Exit");
    main->close();
    Press(about, Qt::Key_Escape);
  });
  main->move(-main->rect().center());
  Click<QLabel>(*main, "The Velmaro team");
  EXPECT_TRUE(app.Default<formVelmaro>().Loaded());
  Then([](QWidget& find) {
    EXPECT_EQ(find.pos(), QPoint()) << "all of it is on the screen";
    QTest::keyClicks(find.focusWidget(), "no such row");
    Press(find, Qt::Key_Return);
  });
  Answer("was not found", "OK");
  Press(*main, Qt::Key_F, Qt::ControlModifier);
  Then([](QWidget& find) {
    EXPECT_EQ(find.findChild<QLineEdit*>()->selectedText(), "no such row");
    Press(find, Qt::Key_Escape);
  });
  Press(*main, Qt::Key_F, Qt::ControlModifier);
  Click(*main, "Free Mem");
  EXPECT_EQ(app.Forms().size(), 2U);
  bool passed = false;
  QTimer::singleShot(200, [&] { passed = true; });
  int events = 0;
  for (; !passed; ++events) ProcessNextEvent();
  EXPECT_LT(events, 100) << "the program sleeps until something happens";
  QTimer::singleShot(0, [&] {
    for (auto* window : QApplication::topLevelWidgets()) window->close();
  });
  app.Run();
  EXPECT_TRUE(app.Forms().empty());
}
