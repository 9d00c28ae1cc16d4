#include <QApplication>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <utility>

#include "platform/linux/qt/FormWidget.h"
#include "platform/linux/qt/FormWindow.h"

namespace onlinux {
namespace {

// What forms count as their frame, menu bar included. The real frame is the window manager's and is not known before
// the window shows, and forms lay out what they hold by the difference of outer and inner size.
constexpr velmaro::Twips frameWidth = 120;
constexpr velmaro::Twips frameHeight = 405;
constexpr velmaro::Twips menuHeight = 285;

// So soon after a window was pushed to a size, the same push again means that the desktop does not give it that size.
constexpr int settlingTime = 500;

// The size down to which what a form holds follows a desktop that does not heed its least one.
constexpr QSize leastTile(300, 160);

velmaro::WindowState StateOf(const QWidget& window) {
  if (window.isMinimized()) return velmaro::WindowState::Minimized;
  return window.isMaximized() || window.isFullScreen() ? velmaro::WindowState::Maximized : velmaro::WindowState::Normal;
}

velmaro::Twips FrameHeight(const velmaro::Form& form) {
  return frameHeight + (form.MenuBar().empty() ? 0 : menuHeight);
}

}  // namespace

// In pixels, the menu bar included; an empty one where the form sets no limit.
QSize FormWindow::LeastSize() const {
  const auto& args = form_.Args();
  if (args.MinWidth <= 0) return {};
  const auto pixels = [this](velmaro::Twips length) { return scale_.Pixels(form_.UpToWholePixel(length)); };
  return {pixels(args.MinWidth - frameWidth), pixels(args.MinHeight - FrameHeight(form_)) + BarHeight()};
}

// The same, where the desktop does not heed it.
QSize FormWindow::LeastTile() const { return LeastSize().boundedTo(leastTile); }

void FormWindow::SizeTo(velmaro::Twips width, velmaro::Twips height) {
  const QSize wanted(scale_.Pixels(width - frameWidth), scale_.Pixels(height - FrameHeight(form_)) + BarHeight());
  const auto now = widget_->size();
  if (wanted == now) return;
  const bool again = pushedFrom_ == now && sincePush_.isValid() && sincePush_.elapsed() < settlingTime;
  // Wayland's compositor never takes back what it gave.
  if (reporting_ && (again || IsOnWayland())) {
    inVain_ = true;
    return Resized();
  }
  pushedFrom_ = now;
  sincePush_.start();
  widget_->resize(wanted);
}

// Under Wayland Qt takes no tile below the least size, and does not tell of it: the window would stick out. So it is
// told of that size only where the desktop has let the window have its own.
void FormWindow::Arranged() {
  const auto least = LeastSize();
  if (IsOnWayland() && least.isValid() && widget_->size() == asked_) widget_->setMinimumSize(least);
}

// Qt takes a size that it asked for as given, and tells nobody where the window manager answers with the old one.
void FormWindow::Configured() {
  const auto* window = widget_->windowHandle();
  if (!window || !sincePush_.isValid() || window->size() == widget_->size()) return;
  inVain_ = true;
  widget_->setMinimumSize(LeastTile().boundedTo(window->size()));
  widget_->resize(window->size());
}

void FormWindow::Resized() {
  PlaceParts();
  if (!shownBefore_) return;
  const bool outer = std::exchange(reporting_, true);
  if (widget_->size().expandedTo(LeastSize()) == widget_->size()) inVain_ = false;
  const auto width = scale_.Twips(client_->width());
  const auto height = scale_.Twips(client_->height());
  form_.ResizedTo(width + frameWidth, height + FrameHeight(form_), width, height, StateOf(*widget_), inVain_);
  reporting_ = outer;
}

void FormWindow::PlaceFirst(const velmaro::Form* owner) {
  if (form_.Args().StartUpPosition == velmaro::StartUpPosition::Manual) return;
  const auto* above = owner ? static_cast<const FormWindow*>(owner->Peer()) : nullptr;
  const bool overOwner = above && form_.Args().StartUpPosition == velmaro::StartUpPosition::CenterOwner;
  const auto screen = widget_->screen()->availableGeometry();
  auto place = widget_->rect();
  place.moveCenter(overOwner ? above->widget_->frameGeometry().center() : screen.center());
  place.moveRight(std::min(place.right(), screen.right()));
  place.moveBottom(std::min(place.bottom(), screen.bottom()));
  widget_->move(std::max(place.left(), screen.left()), std::max(place.top(), screen.top()));
}

}  // namespace onlinux
