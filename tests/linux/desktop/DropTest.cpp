#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>

#include "Desktop.h"

TEST_F(LinuxDesktop, AFileIsDroppedOnTheWindow) {
  QMimeData data;
  data.setUrls({QUrl("http://x/y"), QUrl::fromLocalFile("/opt/My games/run")});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(main, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(main, &drop);
  Then([&](QWidget& launcher) {
    EXPECT_EQ(launcher.findChild<QComboBox*>()->currentText(), "/opt/My games/run");
    Press(launcher, Qt::Key_Escape);
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return actions.empty() && !QApplication::activeModalWidget(); }));
}
