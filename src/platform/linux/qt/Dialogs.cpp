#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>
#include <QWindow>
#include <algorithm>

#include "platform/linux/qt/FormWindow.h"
#include "platform/linux/qt/QtText.h"
#include "platform/linux/qt/QtToolkit.h"

namespace onlinux {
namespace {

using namespace platform;

constexpr std::uint32_t buttonBits = 15;
constexpr std::uint32_t iconBits = 240;

QMessageBox::Icon IconOf(std::uint32_t flags) {
  switch (flags & iconBits) {
    case MB_ICONQUESTION:
      return QMessageBox::Question;
    case MB_ICONWARNING:
      return QMessageBox::Warning;
    case MB_ICONINFORMATION:
      return QMessageBox::Information;
    default:
      return QMessageBox::NoIcon;
  }
}

QMessageBox::StandardButtons ButtonsOf(std::uint32_t flags) {
  switch (flags & buttonBits) {
    case MB_YESNO:
      return QMessageBox::Yes | QMessageBox::No;
    case MB_YESNOCANCEL:
      return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    default:
      return QMessageBox::Ok;
  }
}

QMessageBox::StandardButton DefaultOf(std::uint32_t flags) {
  if ((flags & buttonBits) == MB_OK) return QMessageBox::Ok;
  return flags & MB_DEFBUTTON2 ? QMessageBox::No : QMessageBox::Yes;
}

int AnswerOf(int button) {
  switch (button) {
    case QMessageBox::Yes:
      return IDYES;
    case QMessageBox::No:
      return IDNO;
    case QMessageBox::Cancel:
      return IDCANCEL;
    default:
      return IDOK;
  }
}

// A list such as "Programs\0*.exe\0All files\0*.*\0" as Qt takes it. Programs have no ending of their own here, and
// many files have none at all.
QString FilterOf(const std::string& list) {
  auto parts = ToQt(list).split(QChar('\0'), Qt::SkipEmptyParts);
  QStringList filters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    auto patterns = parts[i + 1];
    patterns.replace("*.exe", "*").replace("*.*", "*").replace(';', ' ');
    filters << parts[i].section('(', 0, 0).trimmed() + " (" + patterns + ')';
  }
  return filters.join(";;");
}

QWidget* WidgetOf(WindowHandle form) {
  auto* own = dynamic_cast<FormWindow*>(FindOwn(form));
  return own ? own->Client().window() : nullptr;
}

}  // namespace

int QtToolkit::MessageBoxA(const std::string& text, const std::string& title, std::uint32_t flags) {
  const QPointer<QWidget> under(QApplication::activeWindow());
  QMessageBox box(IconOf(flags), ToQtLine(title), ToQtLines(text), ButtonsOf(flags), under);
  box.setTextFormat(Qt::PlainText);
  box.setDefaultButton(DefaultOf(flags));
  const int button = box.exec();
  if (under) HandKeyboardTo(under->windowHandle());
  return AnswerOf(button);
}

bool QtToolkit::GetOpenFileNameA(platform::OPENFILENAME& dialog) {
  const QPointer<QWidget> under(WidgetOf(dialog.hwndOwner));
  const auto chosen = QFileDialog::getOpenFileName(under, ToQtLine(dialog.lpstrTitle), ToQt(dialog.lpstrInitialDir),
                                                   FilterOf(dialog.lpstrFilter));
  if (under) HandKeyboardTo(under->windowHandle());
  const auto path = QFile::encodeName(chosen).toStdString();
  if (path.empty() || path.size() >= dialog.nMaxFile) return false;
  dialog.lpstrFile.resize(std::max(dialog.lpstrFile.size(), path.size() + 1), ' ');
  std::ranges::copy(path, dialog.lpstrFile.begin());
  dialog.lpstrFile[path.size()] = '\0';
  return true;
}

platform::WindowHandle QtToolkit::GetActiveWindow() {
  auto* active = QApplication::activeWindow();
  if (!active) return 0;
  const auto* form = FormWindow::Of(active);
  return form ? form->Number() : static_cast<WindowHandle>(active->winId());
}

}  // namespace onlinux
