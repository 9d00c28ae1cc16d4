#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QScrollBar>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QWindow>
#include <deque>

#include "../Children.h"
#include "mainform/formVelmaro.h"
#include "memory/formFreeMem.h"
#include "platform/linux/qt/ControlPeer.h"
#include "platform/machine.h"
#include "runtime/Application.h"

namespace velmaro {

using Action = std::function<void(QWidget& window)>;

constexpr int dotsPerInch = 120;

inline void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
  QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, key, modifiers);
}

inline QWidget& ClientOf(const Form& form) { return static_cast<onlinux::FormWindow*>(form.Peer())->Client(); }
inline QWidget& WidgetOf(const Control& of) { return static_cast<onlinux::ControlPeer*>(of.Peer())->Widget(); }

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

// Looks at all that a form shows, as it is, with its controls hidden and disabled, and as it was before.
void ExpectShown(const Form& form);

// Rests the pointer on a control, whose balloon must then stand under it, or above it.
void ExpectBalloon(QWidget& control, bool isAbove, const QString& meant);

// The real program on a screen that nobody sees. What the user does in a box or dialog is queued beforehand.
class LinuxDesktop : public InFolder {
 protected:
  LinuxDesktop() {
    // The toolkit goes by the environment for the first of them alone.
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QString::fromStdString(folder.Path()));
    app.Default<formVelmaro>().Show();
    main = ClientOf(app.Default<formVelmaro>()).window();
    EXPECT_TRUE(QTest::qWaitForWindowActive(main));
    QObject::connect(&user, &QTimer::timeout, &user, [this] { ActNext(); });
    user.start(20);
  }
  ~LinuxDesktop() override {
    EXPECT_TRUE(actions.empty()) << "a box that was awaited did not come";
    fs::remove(killList);
  }

  void Then(Action action) { actions.push_back(std::move(action)); }
  // Answers the next box, which must hold a text, and have an icon and buttons with a mark at the default one.
  void Answer(const QString& text, const QString& answer, const QString& buttons = "OK*",
              QMessageBox::Icon icon = QMessageBox::Information) {
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
  void AnswerSave(const QString& answer) {
    Answer("save the changes", answer, "Cancel No Yes*", QMessageBox::Question);
  }
  void Choose(const QString& caption) {
    for (auto* action : main->findChildren<QAction*>())
      if (action->text().remove('&').section('\t', 0, 0) == caption) return action->trigger();
    throw std::runtime_error("there is no " + caption.toStdString());
  }
  QListView& List() { return *main->findChild<QListView*>(); }
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

  Application app;
  QWidget* main = nullptr;
  QTimer user;
  std::deque<Action> actions;
  QPointer<QWidget> asked;  // what is being answered
  const std::string killList = platform::AppFolder() + "/killlist.txt";

 private:
  // Does what is queued next in the popup, box or dialog in front, if there is one that nobody acts in yet.
  void ActNext() {
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
  }
};

}  // namespace velmaro
