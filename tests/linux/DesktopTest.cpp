#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <deque>
#include <functional>

#include "Children.h"
#include "mainform/formVelmaro.h"
#include "memory/formFreeMem.h"
#include "platform/machine.h"
#include "process/StartCommand.h"
#include "runtime/Application.h"

namespace velmaro {
namespace {

using Action = std::function<void(QWidget& window)>;

void Key(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key, modifiers);
}

template <class Widget = QAbstractButton>
Widget& Find(QWidget& window, const QString& caption) {
  for (auto* widget : window.findChildren<Widget*>())
    if (widget->text().remove('&') == caption && widget->isVisible()) return *widget;
  throw std::runtime_error("there is no " + caption.toStdString());
}

template <class Widget = QAbstractButton>
void Click(QWidget& window, const QString& caption) {
  QTest::mouseClick(&Find<Widget>(window, caption), Qt::LeftButton);
}

// Counts how often a widget is painted.
struct Paints : QObject {
  int times = 0;
  bool eventFilter(QObject*, QEvent* event) override {
    times += event->type() == QEvent::Paint;
    return false;
  }
};

double Luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

void ExpectReadable(const QWidget& window) {
  for (const auto* widget : window.findChildren<QWidget*>()) {
    const auto* label = qobject_cast<const QLabel*>(widget);
    const auto* button = qobject_cast<const QAbstractButton*>(widget);
    const auto text = label ? label->text() : button ? button->text().remove('&') : QString();
    if (text.isEmpty()) continue;
    const auto& colors = widget->palette();
    const auto [low, high] = std::minmax(
        {Luminance(colors.color(widget->foregroundRole())), Luminance(colors.color(widget->backgroundRole()))});
    EXPECT_GE((high + 0.05) / (low + 0.05), 4.5) << text.toStdString();
    const int breaks = label ? Qt::TextWordWrap : Qt::TextSingleLine;
    const auto room = widget->fontMetrics().boundingRect({0, 0, widget->width(), 9999}, breaks, text);
    EXPECT_TRUE(room.width() <= widget->width() && room.height() <= widget->height()) << text.toStdString();
  }
}

bool Shows(const QLabel* tip) { return tip->isVisible() && tip->window()->windowType() == Qt::ToolTip; }

// The real program on a screen that nobody sees. What the user does in a box or dialog is queued beforehand.
class LinuxDesktop : public testing::Test {
 protected:
  LinuxDesktop() {
    ::setenv("XDG_CONFIG_HOME", folder.Path().c_str(), 1);
    app.Default<formVelmaro>().Show();
    for (auto* window : QApplication::topLevelWidgets())
      if (window->isVisible()) main = window;
    EXPECT_TRUE(QTest::qWaitForWindowActive(main));
    QObject::connect(&user, &QTimer::timeout, &user, [this] {
      auto* window = QApplication::activePopupWidget();
      if (!window) window = QApplication::activeModalWidget();
      if (!window || actions.empty() || !window->isVisible()) return;
      // A timer does not tick while it is answered, and an action may bring the next box.
      QTimer::singleShot(0, window, [action = std::exchange(actions.front(), {}), window] { action(*window); });
      actions.pop_front();
    });
    user.start(20);
  }
  ~LinuxDesktop() override {
    EXPECT_TRUE(actions.empty()) << "a box that was awaited did not come";
    for (const auto& file : {killList, spareList}) fs::remove(file);
  }
  void Then(Action action) { actions.push_back(std::move(action)); }
  // Answers the next box, which must hold a text.
  void Answer(const QString& text, const QString& button) {
    Then([=](QWidget& box) {
      EXPECT_TRUE(box.property("text").toString().contains(text)) << box.property("text").toString().toStdString();
      Click(box, button);
    });
  }
  QAction& Entry(const QString& caption) {
    for (auto* action : main->findChildren<QAction*>())
      if (action->text().remove('&').section('\t', 0, 0) == caption) return *action;
    throw std::runtime_error("there is no " + caption.toStdString());
  }
  void Choose(const QString& caption) { Entry(caption).trigger(); }
  // The entry that bears the check mark in the next popup, which is closed again.
  void LookAtPopup(const std::string& marked) {
    Then([=](QWidget& popup) {
      std::string marks;
      for (const auto* action : popup.actions())
        if (action->isChecked()) marks += action->text().section('\t', 0, 0).toStdString();
      EXPECT_EQ(marks, marked);
      const auto place = static_cast<QMenu&>(popup).actionGeometry(popup.actions().front()).center();
      const QSignalSpy chosen(&static_cast<QMenu&>(popup), &QMenu::triggered);
      QTest::mouseClick(&popup, Qt::RightButton, {}, place);
      EXPECT_EQ(chosen.count(), 0) << "the right button chooses nothing";
      popup.close();
    });
  }
  // The last row of a program, -1 for none, as the list shows it.
  int RowOf(const std::string& program) {
    const auto shown = '\t' + QString::fromStdString(platform::LowerCase(program));
    const auto* rows = List().model();
    int row = rows->rowCount() - 1;
    while (row >= 0 && !rows->index(row, 0).data().toString().endsWith(shown)) --row;
    return row;
  }
  std::string Row(int row) { return List().model()->index(row, 0).data().toString().section('\t', 0, 0).toStdString(); }
  QPoint PlaceOf(int row) {
    const auto index = List().model()->index(row, 0);
    List().scrollTo(index);
    return List().visualRect(index).center();
  }
  void Pick(int row) { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
  QListView& List() { return *main->findChild<QListView*>(); }

  TestFolder folder;
  Application app;
  QWidget* main = nullptr;
  QTimer user;
  std::deque<Action> actions;
  const std::string killList = platform::AppFolder() + "/killlist.txt";
  const std::string spareList = platform::AppFolder() + "/nokilllist.txt";
};

TEST_F(LinuxDesktop, AClassIsChangedFromTheMenuAndTheListShowsIt) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  Key(List(), Qt::Key_End);
  EXPECT_EQ(List().currentIndex().row(), List().model()->rowCount() - 1);
  EXPECT_EQ(Row(RowOf(program)) == "[Normal]", child.Nice() == 0);
  Pick(RowOf(program));
  Key(List(), Qt::Key_Space, Qt::ControlModifier);
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex())) << "a picked row stays in sight";
  Answer("set to IDLE", "OK");
  Choose("Idle");
  EXPECT_EQ(child.Nice(), 19);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  Key(*main, Qt::Key_E, Qt::AltModifier);  // a menu has the same letter
  EXPECT_EQ(RowOf(program), -1);
  Click(*main, "Idle");
  EXPECT_GE(RowOf(program), 0);
}

TEST_F(LinuxDesktop, AButtonIsPressedWhereTheMouseWentDownAndUp) {
  if (::getpriority(PRIO_PROCESS, 0) >= 15) GTEST_SKIP() << "whatever this user starts here is idle already";
  const auto program = folder.Sleeper("zzdesktop");
  const Child child(program);
  auto& button = Find(*main, "Velmaro!");
  Choose("Idle");
  Pick(RowOf(program));
  QTest::mousePress(&button, Qt::LeftButton);
  QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-9, -9));
  QTest::mouseRelease(&button, Qt::LeftButton);
  LookAtPopup("Idle");
  QTest::mouseClick(&button, Qt::RightButton);
  EXPECT_EQ(child.Nice(), ::getpriority(PRIO_PROCESS, 0));
  Answer("set to IDLE", "OK");
  QTest::mouseClick(&button, Qt::LeftButton);
  EXPECT_EQ(child.Nice(), 19);
  for (const auto key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
    const Child another(program);
    Click(*main, "Refresh");
    Pick(RowOf(program));
    Answer("set to IDLE", "OK");
    Key(key == Qt::Key_Space ? static_cast<QWidget&>(button) : List(), key);
    EXPECT_EQ(another.Nice(), 19) << "the button hears keys too";
  }
  QTest::keyPress(main->focusWidget(), Qt::Key_F5);
  const Child late(folder.Sleeper("zzlate"));
  QKeyEvent held(QEvent::KeyRelease, Qt::Key_F5, {}, {}, true);
  QApplication::sendEvent(main->focusWidget(), &held);
  EXPECT_EQ(RowOf(folder / "zzlate"), -1) << "a key that is held down does not come up";
  QTest::keyRelease(main->focusWidget(), Qt::Key_F5);
  EXPECT_GE(RowOf(folder / "zzlate"), 0) << "the list is read anew when the key comes up";
  Pick(RowOf(folder / "zzlate"));
  LookAtPopup("Normal");
  QTest::mouseClick(List().viewport(), Qt::RightButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(List().currentIndex().row(), RowOf(folder / "zzlate")) << "the other buttons pick no row";
  Then([&](QWidget& popup) {
    EXPECT_TRUE(QRect(List().mapToGlobal(QPoint()), List().size()).contains(popup.pos()));
    EXPECT_LT(std::abs(popup.y() - List().viewport()->mapToGlobal(PlaceOf(RowOf(folder / "zzlate"))).y()), 20);
    popup.close();
  });
  List().scrollToTop();
  Key(List(), Qt::Key_F10, Qt::ShiftModifier);
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator may give a program Real Time";
  Answer("set to REAL TIME", "OK");
  QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(RowOf(program)));
  EXPECT_EQ(Row(RowOf(program)), "[REAL]");
}

TEST_F(LinuxDesktop, MenusAndSizesFollowWhatTheProgramDoes) {
  const auto options = [&] {
    std::string first;
    for (const auto* menu : main->findChild<QMenuBar*>()->actions())
      if (menu->isVisible() && menu->text() == "&Options")
        first += menu->menu()->actions().front()->text().toStdString();
    return first;
  };
  EXPECT_EQ(options(), "Normal\tCtrl+N");
  Choose("High");
  EXPECT_TRUE(Entry("High").isChecked());
  EXPECT_FALSE(Entry("Real Time").isChecked());
  Click(*main, "Hidden");
  EXPECT_EQ(options(), "&Top Most\tF6");
  EXPECT_TRUE(Find(*main, "Hidden").isChecked());
  EXPECT_FALSE(Find(*main, "All").isChecked());
  List().setFocus();
  Key(*main, Qt::Key_Tab);
  EXPECT_EQ(main->focusWidget(), &Find(*main, "Velmaro!"));
  const auto list = List().size();
  main->resize(700, 600);
  EXPECT_EQ(List().width() - list.width(), 700 - 478);
  main->resize(100, 100);
  EXPECT_TRUE(QTest::qWaitFor([&] { return main->width() >= 425 && main->height() >= 172; }));
  EXPECT_TRUE(main->minimumWidth() >= 425 && main->minimumHeight() >= 172);
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

TEST_F(LinuxDesktop, AProcessIsEndedOnlyWhenTheUserSaysYes) {
  const auto program = folder.Sleeper("zzdesktop");
  const Child older(program);
  const Child child(program);
  const auto end = [&] {
    Key(*main, Qt::Key_F5);
    Pick(RowOf(program));
    Key(*main, Qt::Key_Delete);
  };
  Then([](QWidget& box) {
    EXPECT_EQ(static_cast<QMessageBox&>(box).icon(), QMessageBox::Question);
    Key(box, Qt::Key_Return);
  });
  end();
  EXPECT_TRUE(child.Runs());
  WriteBytes(spareList, "zzDESKTOP\r\n");
  end();
  EXPECT_TRUE(child.Runs()) << "a spared process is not even asked about";
  fs::remove(spareList);
  Answer("zzdesktop'?", "Yes");
  end();
  EXPECT_TRUE(older.Runs() && !child.Runs()) << "the row that was picked, not the first of that name";
  Answer("zzdesktop'?", "Yes");
  end();
  EXPECT_EQ(RowOf(program), -1);
}

TEST_F(LinuxDesktop, ARefreshInTheBackgroundKeepsTheRowAndThePlaceOfTheList) {
  std::deque<Child> children;
  for (int i = 0; i < 30; ++i) children.emplace_back(folder.Sleeper("zz" + std::to_string(i)));
  const auto picked = folder / "zz29";
  Click(*main, "Refresh");
  auto& bar = *List().verticalScrollBar();
  Pick(RowOf(picked));
  bar.setValue(RowOf(folder / "zz5"));
  ASSERT_EQ(bar.value(), RowOf(folder / "zz5"));
  const auto row = RowOf(picked);
  children.pop_front();
  QWidget other;
  other.show();
  other.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&other));
  app.Default<formVelmaro>().Timer1_Timer();
  EXPECT_LT(RowOf(picked), row);
  EXPECT_EQ(List().currentIndex().row(), RowOf(picked));
  EXPECT_TRUE(List().selectionModel()->isSelected(List().currentIndex()));
  EXPECT_EQ(bar.value(), RowOf(folder / "zz5"));
  Paints paints;
  List().viewport()->installEventFilter(&paints);
  const auto refresh = [&] {
    paints.times = 0;
    app.Default<formVelmaro>().Timer1_Timer();
    QTest::qWait(50);
    return paints.times;
  };
  EXPECT_TRUE(Eventually([&] { return refresh() == 0; })) << "a list that has not changed is not painted anew";
  children.pop_back();
  EXPECT_GT(refresh(), 0);
  EXPECT_FALSE(List().currentIndex().isValid()) << "no other row takes the place of one that is gone";
  EXPECT_EQ(bar.value(), RowOf(folder / "zz5"));
}

TEST_F(LinuxDesktop, TheEditorKeepsEveryByteThatTheUserDoesNotTouch) {
  using namespace std::string_literals;
  const auto bytes = "one\r\ntwo\nthree\rnb\xc2\xa0sp \xff\xfe 日本 😀\0 end\r\n\r\n"s;
  WriteBytes(killList, bytes);
  Then([](QWidget& editor) {
    auto* page = editor.findChild<QPlainTextEdit*>();
    Key(editor, Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(page->textCursor().selectedText(), "two");
    QTest::keyClick(page, Qt::Key_End, Qt::ControlModifier);
    QTest::keyClicks(page, "x");
    page->moveCursor(QTextCursor::Start);
    QTest::keyClick(page, Qt::Key_End);
    QTest::keyClick(page, Qt::Key_Return);
    page->insertPlainText("é");
    Click(editor, "OK");
  });
  Then([](QWidget& find) {
    QTest::keyClicks(find.focusWidget(), "two");
    Key(find, Qt::Key_Return);
  });
  Choose("Edit Kill List Here...");
  EXPECT_EQ(ReadBytes(killList), "one\r\né" + bytes.substr(3) + "x");
  Then([](QWidget& editor) {
    QTest::keyClicks(editor.findChild<QPlainTextEdit*>(), "y");
    Key(editor, Qt::Key_Escape);
  });
  Answer("save the changes", "Cancel");
  Then([](QWidget& editor) {
    auto& button = Find(editor, "?");
    QHelpEvent rest(QEvent::ToolTip, {5, 5}, button.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&button, &rest);
    const auto labels = editor.findChildren<QLabel*>();
    EXPECT_TRUE(std::ranges::any_of(labels, [](const auto* label) {
      const bool isBalloon = !label->window()->mask().isEmpty();
      return Shows(label) && label->text().startsWith("Enter a list") && isBalloon;
    }));
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&button, &leave);
    EXPECT_TRUE(std::ranges::none_of(editor.findChildren<QLabel*>(), Shows));
    editor.close();
  });
  Answer("save the changes", "No");
  Choose("Edit Kill List Here...");
  EXPECT_EQ(ReadBytes(killList), "one\r\né" + bytes.substr(3) + "x");
}

TEST_F(LinuxDesktop, AListIsOpenedByTheDesktopWhereThatHasAProgramForIt) {
  const std::string path = std::getenv("PATH");
  const auto script = [&](const std::string& name, const std::string& line) {
    WriteBytes(folder / name, "#!/bin/sh\n" + line + '\n');
    fs::permissions(folder / name, fs::perms::owner_all);
  };
  WriteBytes(killList, "zzone\n");
  script("xdg-open", "echo \"$1\" >'" + (folder / "opened") + '\'');
  script("xdg-mime", "");
  ::setenv("PATH", (folder.Path() + ':' + path).c_str(), 1);
  Then([](QWidget& editor) {
    EXPECT_EQ(editor.findChild<QPlainTextEdit*>()->toPlainText(), "zzone\n");
    Key(editor, Qt::Key_Escape);
  });
  Choose("Edit Kill List...");
  EXPECT_FALSE(fs::exists(folder / "opened"));
  script("xdg-mime", "[ \"$*\" = 'query default text/plain' ] && echo editor.desktop");
  Choose("Edit Kill List...");
  EXPECT_TRUE(QTest::qWaitFor([&] { return ReadBytes(folder / "opened") == killList + '\n'; }));
  ::setenv("PATH", path.c_str(), 1);
}

TEST_F(LinuxDesktop, TheLauncherStartsWhatIsTypedAtItsPriority) {
  const auto program = folder.Sleeper("zz launched");
  ::setenv("HOME", folder.Path().c_str(), 1);
  main->move(0, 0);
  Then([&](QWidget& launcher) {
    EXPECT_LT((launcher.geometry().center() - main->geometry().center()).manhattanLength(), 20);
    QTest::keyClicks(launcher.focusWidget(), QString::fromStdString('"' + program + "\" 300"));
    Click<QRadioButton>(launcher, "Idle");
    Key(launcher, Qt::Key_Return);
  });
  Key(*main, Qt::Key_R, Qt::ControlModifier);
  Then([&](QWidget& launcher) {
    auto* box = launcher.findChild<QComboBox*>();
    EXPECT_TRUE(Find<QRadioButton>(launcher, "Idle").isChecked());
    QTest::keyClicks(launcher.focusWidget(), "\"");  // what is there is marked, and nothing is put behind what is typed
    EXPECT_EQ(box->currentText(), "\"");
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->currentText().toStdString(), '"' + program + "\" 300");
    Click(launcher, "Browse...");
    EXPECT_EQ(box->currentText().toStdString(), program);
    Key(launcher, Qt::Key_Escape);
  });
  Then([&](QWidget& dialog) {
    EXPECT_EQ(static_cast<QFileDialog&>(dialog).nameFilters(), QStringList({"Applications (*)", "All files (*)"}));
    dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(program));
    Key(dialog, Qt::Key_Return);
  });
  Key(*main, Qt::Key_R, Qt::ControlModifier);
  Click(*main, "Refresh");
  ASSERT_GE(RowOf(program), 0);
  EXPECT_EQ(Row(RowOf(program)), "[Idle]");
  EXPECT_EQ(fs::read_symlink("/proc/" + std::to_string(Running(program)) + "/cwd"), folder.Path());
  EXPECT_EQ(::getsid(Running(program)), Running(program)) << "it outlives the terminal";
  Pick(RowOf(program));
  Answer("terminate", "Yes");
  Key(*main, Qt::Key_Delete);
  Answer("launched process has been set to IDLE.", "OK");
  StartAtMode({.command = '"' + program + "\" 300"}, 3, false);
  ::kill(Running(program), SIGKILL);
  EXPECT_NE(ReadBytes(folder / "velmaro/settings.conf").find("LastRun=\"" + program + "\" 300\n"), std::string::npos);
}

// A figure of this process, such as "VmRSS:", in kB.
int OwnMemory(const std::string& name) {
  const auto status = ReadBytes("/proc/self/status");
  return std::stoi(status.substr(status.find(name) + name.size()));
}

TEST_F(LinuxDesktop, AMemoryRunHoldsItsTargetAndGivesAllOfItBack) {
  constexpr int steps = 24;
  Click(*main, "Free Mem");
  const auto windows = QApplication::topLevelWidgets();
  auto* meter =
      *std::ranges::find_if(windows, [](const auto* window) { return window->windowTitle().contains("Free Memory"); });
  meter->findChild<QScrollBar*>()->setValue(steps);
  WriteBytes("/proc/self/clear_refs", "5");  // the peak counts from here
  const int before = OwnMemory("VmRSS:");
  Click(*meter, "Free 24 MB");
  EXPECT_GE(OwnMemory("VmHWM:"), before + steps * 2048);
  EXPECT_LE(OwnMemory("VmRSS:"), before + 4096);
  EXPECT_TRUE(meter->windowTitle().endsWith("KB Free Memory"));
}

TEST_F(LinuxDesktop, EveryCaptionCanBeReadInALightAndInADarkThemeAndWithLargeFonts) {
  for (const auto& window : {QColor(239, 239, 239), QColor(49, 54, 59), QColor(Qt::black)}) {
    QApplication::setPalette(QPalette(window));
    auto font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * 2);
    QApplication::setFont(font);
    ExpectReadable(*main);
    const auto look = [](QWidget& box) {
      ExpectReadable(box);
      Key(box, Qt::Key_Escape);
    };
    Then(look);
    Key(*main, Qt::Key_F1);
    Then(look);
    Key(*main, Qt::Key_R, Qt::ControlModifier);
    Click(*main, "Free Mem");
    for (const auto* form : QApplication::topLevelWidgets())
      if (form->windowTitle().contains("Free Memory")) ExpectReadable(*form);
    UnloadForm(app.Default<formFreeMem>());
  }
  QApplication::setPalette({});
  QApplication::setFont({});
}

TEST_F(LinuxDesktop, ModalWindowsComeAndGoAndTheCloseBoxEndsTheProgram) {
  Then([&](QWidget& about) {
    EXPECT_EQ(about.width(), 432);
    Key(*main, Qt::Key_F1);  // a window that stands under a modal one hears nothing
    Key(about, Qt::Key_Escape);
  });
  auto& credits = Find<QLabel>(*main, "The Velmaro team");
  QTest::mouseClick(&credits, Qt::RightButton);
  EXPECT_EQ(actions.size(), 1U) << "the other buttons open nothing";
  QTest::mouseClick(&credits, Qt::LeftButton);
  Then([](QWidget& find) {
    QTest::keyClicks(find.focusWidget(), "no such row");
    Key(find, Qt::Key_Return);
  });
  Answer("was not found", "OK");
  Key(*main, Qt::Key_F, Qt::ControlModifier);
  Then([](QWidget& find) {
    EXPECT_EQ(find.findChild<QLineEdit*>()->selectedText(), "no such row");
    Key(find, Qt::Key_Escape);
  });
  Key(*main, Qt::Key_F, Qt::ControlModifier);
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

}  // namespace
}  // namespace velmaro

int main(int count, char** arguments) {
  ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ::setpriority(PRIO_PROCESS, 0, 0);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
