#include <QComboBox>
#include <QDropEvent>
#include <QMimeData>

#include "Desktop.h"

TEST_F(LinuxDesktop, AnImposedSizeIsKeptAndTakesPopupsAndFiles) {
  const int least = main->minimumWidth();
  main->windowHandle()->resize(320, 240);
  ASSERT_TRUE(QTest::qWaitFor([&] { return main->width() == least; })) << "the first time it springs back";
  main->windowHandle()->resize(320, 240);
  QCoreApplication::processEvents();
  ASSERT_EQ(main->size(), QSize(320, 240));
  const auto& client = ClientOf(app.Default<formVelmaro>());
  for (const auto* button : client.findChildren<QAbstractButton*>())
    EXPECT_TRUE(client.rect().contains(button->geometry())) << button->text().toStdString();
  Then([&](QWidget& popup) {
    EXPECT_EQ(popup.windowHandle()->transientParent(), main->windowHandle());
    popup.close();
  });
  QTest::mouseClick(&Find(*main, "Velmaro!"), Qt::RightButton);
  QMimeData data;
  data.setUrls({QUrl("http://x/y"), QUrl::fromLocalFile("/opt/My games/run")});
  QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(main, &enter);
  QDropEvent drop({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(main, &drop);
  Then([&](QWidget& launcher) {
    EXPECT_EQ(launcher.findChild<QComboBox*>()->currentText(), "/opt/My games/run");
    Press(launcher, Qt::Key_Escape);
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return actions.empty() && !asked; }));
}
