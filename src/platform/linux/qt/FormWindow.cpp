#include "platform/linux/qt/FormWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QScreen>
#include <QSessionManager>
#include <QWindow>
#include <algorithm>

#include "platform/linux/qt/ControlPeer.h"
#include "platform/linux/qt/FormWidget.h"
#include "platform/linux/qt/Keys.h"
#include "platform/linux/qt/Pictures.h"
#include "platform/linux/qt/QtText.h"
#include "platform/linux/x11/XServer.h"
#include "runtime/Application.h"
#include "runtime/Buttons.h"
#include "runtime/Menu.h"
#include "runtime/Pictures.h"
#include "runtime/TextBox.h"

namespace onlinux {
namespace {

bool IsOnX() { return QApplication::platformName() == "xcb"; }

Qt::WindowFlags FlagsOf(const velmaro::FormArgs& args) {
  if (args.BorderStyle == velmaro::BorderStyle::None) return Qt::Dialog | Qt::FramelessWindowHint;
  auto flags = (args.ShowInTaskbar ? Qt::Window : Qt::Dialog) | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
               Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint;
  if (args.MinButton) flags |= Qt::WindowMinimizeButtonHint;
  if (args.MaxButton) flags |= Qt::WindowMaximizeButtonHint;
  return flags;
}

int& LiveForms() {
  static int count = 0;
  return count;
}

}  // namespace

bool IsUnderModal(const QWidget* widget) {
  const auto* modal = QApplication::activeModalWidget();
  while (widget && widget != modal) widget = widget->parentWidget();
  return modal && !widget;
}

void HandKeyboardTo(QWindow* window) {
  auto* server = IsOnX() ? TheXServer() : nullptr;
  if (window && server && !server->HasManager()) window->requestActivate();
}

// The user's session ends or is saved. Where he may be asked, a form that refuses calls the end off.
void FormWindow::EndSession(QSessionManager& session) {
  if (!form_.QueryEndSession || !session.allowsInteraction()) return;
  if (!form_.MayEndSession()) session.cancel();
  session.release();
}

FormWindow::FormWindow(velmaro::Form& form)
    : form_(form),
      widget_(std::make_unique<FormWidget>(*this, FlagsOf(form.Args()))),
      client_(new QWidget(widget_.get())),
      menus_(form.MenuBar(), *widget_) {
  ++LiveForms();
  const auto& args = form.Args();
  widget_->setWindowTitle(ToQtLine(args.Caption));
  widget_->setAcceptDrops(form.DropFiles != nullptr);
  widget_->setWindowIcon(IconOf(args.Icon));
  QObject::connect(qGuiApp, &QGuiApplication::commitDataRequest, widget_.get(),
                   [this](QSessionManager& session) { EndSession(session); });
  if (args.BackColor != velmaro::SystemColor::ButtonFace) {
    auto palette = widget_->palette();
    palette.setColor(QPalette::Window, ColorOf(args.BackColor, palette));
    widget_->setPalette(palette);
  }
  const auto size = ClientSize() + QSize(0, BarHeight());
  if (args.BorderStyle == velmaro::BorderStyle::Sizable)
    widget_->resize(size);
  else
    widget_->setFixedSize(size);
  PlaceParts();
  number_ = IsOnX() ? static_cast<platform::WindowHandle>(widget_->winId()) : NewNumber();
}

FormWindow::~FormWindow() { --LiveForms(); }

FormWindow* FormWindow::Of(const QWidget* widget) {
  const auto* window = dynamic_cast<const FormWidget*>(widget->window());
  return window ? &window->Owner() : nullptr;
}

int FormWindow::Count() { return LiveForms(); }

QSize FormWindow::ClientSize() const {
  return {scale_.Pixels(form_.Args().ClientWidth), scale_.Pixels(form_.Args().ClientHeight)};
}

int FormWindow::BarHeight() const { return menus_.Bar() ? menus_.Bar()->sizeHint().height() : 0; }

void FormWindow::PlaceParts() {
  const int bar = BarHeight();
  if (menus_.Bar()) menus_.Bar()->setGeometry(0, 0, widget_->width(), bar);
  client_->setGeometry(0, bar, widget_->width(), widget_->height() - bar);
}

void FormWindow::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Caption) widget_->setWindowTitle(ToQtLine(form_.Caption()));
  if (what == velmaro::Change::Bounds) SizeTo(form_.Width(), form_.Height());
}

// The widgets that take the keyboard, in the order that the form's tab indexes give. Where they overlap with texts and
// pictures they lie above them, and pictures above texts.
void FormWindow::OrderTabs() {
  auto controls = form_.Controls();
  std::ranges::stable_sort(controls, {}, [](const auto* control) { return control->TabIndex(); });
  QWidget* before = nullptr;
  QWidget* first = nullptr;
  for (const auto* control : controls) {
    const auto* peer = static_cast<const ControlPeer*>(control->Peer());
    if (!peer) continue;
    if (dynamic_cast<const velmaro::Image*>(control)) peer->Widget().raise();  // a text that reaches there would cut it
    if (peer->Widget().focusPolicy() == Qt::NoFocus) continue;
    if (before) QWidget::setTabOrder(before, &peer->Widget());
    before = &peer->Widget();
    before->raise();
    if (!first && control->Visible() && control->Enabled()) first = before;
  }
  if (first) first->setFocus();
}

void FormWindow::Show(velmaro::Form* owner) {
  if (!shownBefore_) {
    if (const auto least = IsOnWayland() ? LeastTile() : LeastSize(); least.isValid()) widget_->setMinimumSize(least);
    PlaceFirst(owner);
    OrderTabs();
    asked_ = widget_->size();
  }
  widget_->setWindowModality(owner ? Qt::ApplicationModal : Qt::NonModal);
  if (owner && owner->Peer()) {
    widget_->winId();
    widget_->windowHandle()->setTransientParent(static_cast<FormWindow*>(owner->Peer())->widget_->windowHandle());
  }
  const bool first = !std::exchange(shownBefore_, true);
  widget_->show();
  if (first) Resized();
  widget_->raise();
  widget_->activateWindow();
}

void FormWindow::Hide(velmaro::Form*) {
  auto* handle = widget_->windowHandle();
  auto* under = handle ? handle->transientParent() : nullptr;
  widget_->hide();
  HandKeyboardTo(under);
}

void FormWindow::CloseAsked() {
  if (!blocked_) form_.CloseByUser();
}

void FormWindow::Dropped(const std::vector<std::string>& files) {
  if (!blocked_) form_.RaiseDropFiles(files);
}

// Nobody can see the form any more, whatever it has to say to that.
void FormWindow::Destroyed() {
  if (blocked_) velmaro::App().End();
  form_.CloseByUser();
  form_.Hide();
}

void FormWindow::ApplyMenu(velmaro::Menu& menu) { menus_.Update(menu); }

void FormWindow::PopupMenu(velmaro::Menu& menu, std::optional<velmaro::Bounds> place, velmaro::Menu* defaultEntry) {
  ChoiceMenu popup;
  std::map<const velmaro::Menu*, QAction*> actions;
  FillMenu(popup, menu, actions);
  if (const auto at = actions.find(defaultEntry); at != actions.end()) popup.setDefaultAction(at->second);
  // Wayland takes a menu that belongs to no window for one of its own.
  popup.winId();
  popup.windowHandle()->setTransientParent(widget_->windowHandle());
  popup.exec(place ? client_->mapToGlobal(scale_.Pixels(*place).topLeft()) : menuPlace_.value_or(QCursor::pos()));
}

platform::PixelRect FormWindow::Inside() const { return {0, 0, client_->width(), client_->height()}; }

std::string FormWindow::Title() const { return form_.Caption(); }

bool FormWindow::Shows() const { return widget_->isVisible(); }

void FormWindow::ShowOrHide(bool show) { widget_->setVisible(show); }

void FormWindow::KeepAbove(bool above) {
  widget_->winId();
  widget_->windowHandle()->setFlag(Qt::WindowStaysOnTopHint, above);
}

void FormWindow::BringToFront() {
  widget_->raise();
  widget_->activateWindow();
}

}  // namespace onlinux
