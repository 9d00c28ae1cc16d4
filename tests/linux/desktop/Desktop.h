#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QListView>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QScrollBar>
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

void Press(QWidget& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
QWidget& ClientOf(const Form& form);
QWidget& WidgetOf(const Control& of);

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
  LinuxDesktop();
  ~LinuxDesktop() override;
  void Then(Action action) { actions.push_back(std::move(action)); }
  // Answers the next box, which must hold a text, and have an icon and buttons with a mark at the default one.
  void Answer(const QString& text, const QString& answer, const QString& buttons = "OK*",
              QMessageBox::Icon icon = QMessageBox::Information);
  void Choose(const QString& caption);
  void LookAtPopup(const std::string& marked);
  // The last row of a program, -1 for none, as the list shows it.
  int RowOf(const std::string& program);
  std::string Row(int row) { return List().model()->index(row, 0).data().toString().section('\t', 0, 0).toStdString(); }
  QPoint PlaceOf(int row);
  void Pick(int row) { QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, PlaceOf(row)); }
  QListView& List() { return *main->findChild<QListView*>(); }

  Application app;
  QWidget* main = nullptr;
  QTimer user;
  std::deque<Action> actions;
  QPointer<QWidget> asked;  // what is being answered
  const std::string killList = platform::AppFolder() + "/killlist.txt";
  const std::string spareList = platform::AppFolder() + "/nokilllist.txt";
};

}  // namespace velmaro
