#include <QComboBox>
#include <QFileDialog>
#include <QRadioButton>

#include "Desktop.h"
#include "launcher/formLauncher.h"

TEST_F(LinuxDesktop, TheLauncherStartsWhatIsTypedAtItsPriority) {
  const auto program = folder.Sleeper("zz launched");
  main->move(0, 0);
  Then([&](QWidget& launcher) {
    QTest::keyClicks(launcher.focusWidget(), QString::fromStdString('"' + program + "\" 300"));
    Click<QRadioButton>(launcher, "Idle");
    Press(launcher, Qt::Key_Return);
  });
  Press(*main, Qt::Key_R, Qt::ControlModifier);
  platform::WriteSetting("Velmaro", "Settings", "LastRun2", "\xff");
  main->move(QPoint(790, 790) - main->rect().center());
  Then([&](QWidget& launcher) {
    EXPECT_EQ(QRect(launcher.pos(), launcher.size()).bottomRight(), QPoint(799, 799)) << "all of it is on the screen";
    EXPECT_TRUE(launcher.isModal() && launcher.windowHandle()->transientParent() == main->windowHandle());
    auto* box = launcher.findChild<QComboBox*>();
    EXPECT_TRUE(Find<QRadioButton>(launcher, "Idle").isChecked());
    QTest::keyClicks(launcher.focusWidget(), "\"");  // what is there is marked, and nothing is put behind what is typed
    EXPECT_EQ(box->currentText(), "\"");
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->currentText().toStdString(), '"' + program + "\" 300");
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(app.Default<formLauncher>().cmbRun.Text(), "\xff") << "it is meant as it was stored";
    Click(launcher, "Browse...");
    EXPECT_EQ(box->currentText().toStdString(), program);
    Press(launcher, Qt::Key_Escape);
  });
  Then([&](QWidget& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).nameFilters(), QStringList({"Applications (*)", "All files (*)"}));
    EXPECT_EQ(dialog.windowTitle() + dialog.parentWidget()->windowTitle(), "BrowseVelmaro Launcher");
    dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(program));
    Press(dialog, Qt::Key_Return);
  });
  Press(*main, Qt::Key_R, Qt::ControlModifier);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  EXPECT_EQ(fs::read_symlink(ProcOf(Running(program), "cwd")), folder.Path());
  EXPECT_EQ(::getsid(Running(program)), Running(program)) << "it outlives the terminal";
  Pick(RowOf(program));
  Answer("terminate", "Yes", "No* Yes", QMessageBox::Question);
  Press(*main, Qt::Key_Delete);
  EXPECT_NE(ReadBytes(folder / "velmaro/settings.conf").find("LastRun=\"" + program + "\" 300\n"), std::string::npos);
}
