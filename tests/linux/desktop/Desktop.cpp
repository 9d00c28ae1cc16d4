#include "Desktop.h"

#include <QSettings>

namespace velmaro {

void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers) {
  QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key, modifiers);
}

QWidget& ClientOf(const Form& form) { return static_cast<onlinux::FormWindow*>(form.Peer())->Client(); }
QWidget& WidgetOf(const Control& of) { return static_cast<onlinux::ControlPeer*>(of.Peer())->Widget(); }

LinuxDesktop::LinuxDesktop() {
  // The toolkit goes by the environment for the first of them alone.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.Path()));
  app.Default<formVelmaro>().Show();
  main = ClientOf(app.Default<formVelmaro>()).window();
  EXPECT_TRUE(QTest::qWaitForWindowActive(main));
  QObject::connect(&user, &QTimer::timeout, &user, [this] {
    auto* window = QApplication::activePopupWidget();
    if (!window) window = QApplication::activeModalWidget();
    if (!window || window == asked || !window->isVisible()) return;
    const auto action = actions.empty() ? Action() : actions.front();
    if (!actions.empty()) actions.pop_front();
    // A timer does not tick while it is answered, and an action may bring the next box.
    QTimer::singleShot(0, window, [=, this, before = std::exchange(asked, window), it = QPointer(window)] {
      try {
        const auto text = it->windowTitle() + ' ' + it->property("text").toString();
        if (!action) throw std::runtime_error("nobody awaits this: " + text.toStdString());
        action(*it);
      } catch (const std::exception& error) {
        ADD_FAILURE() << error.what();
        // It would keep the test from its end.
        if (it && !QMetaObject::invokeMethod(it, "reject")) it->close();
      }
      asked = before;
    });
  });
  user.start(20);
}

LinuxDesktop::~LinuxDesktop() {
  EXPECT_TRUE(actions.empty()) << "a box that was awaited did not come";
  for (const auto& file : {killList, spareList}) fs::remove(file);
}

void LinuxDesktop::Answer(const QString& text, const QString& answer, const QString& buttons, QMessageBox::Icon icon) {
  Then([=](QWidget& window) {
    const auto& box = dynamic_cast<QMessageBox&>(window);
    EXPECT_TRUE(box.text().contains(text) && box.textFormat() == Qt::PlainText) << box.text().toStdString();
    QStringList names;
    for (auto* button : box.buttons())
      names << button->text().remove('&') + (button->property("default").toBool() ? "*" : "");
    names.sort();
    EXPECT_TRUE(names.join(' ') == buttons && box.icon() == icon) << names.join(' ').toStdString();
    Click(window, answer);
  });
}

void LinuxDesktop::Choose(const QString& caption) {
  for (auto* action : main->findChildren<QAction*>())
    if (action->text().remove('&').section('\t', 0, 0) == caption) return action->trigger();
  throw std::runtime_error("there is no " + caption.toStdString());
}

void LinuxDesktop::LookAtPopup(const std::string& marked) {
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
}

int LinuxDesktop::RowOf(const std::string& program) {
  const auto shown = '\t' + QString::fromStdString(platform::LowerCase(program));
  const auto* rows = List().model();
  int row = rows->rowCount() - 1;
  while (row >= 0 && !rows->index(row, 0).data().toString().endsWith(shown)) --row;
  return row;
}

QPoint LinuxDesktop::PlaceOf(int row) {
  const auto index = List().model()->index(row, 0);
  List().scrollTo(index);
  return List().visualRect(index).center();
}

}  // namespace velmaro
