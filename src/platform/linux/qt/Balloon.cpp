#include "platform/linux/qt/Balloon.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScreen>
#include <QStyle>
#include <QToolTip>
#include <algorithm>

#include "platform/linux/qt/Look.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

constexpr int stem = 12;    // the height of what points at the control, in pixels
constexpr int radius = 7;   // of a balloon's corners
constexpr int padding = 9;  // around the text

QPixmap PictureOf(std::uint32_t icon, const QWidget& widget) {
  const auto kind = icon == 3   ? QStyle::SP_MessageBoxCritical
                    : icon == 2 ? QStyle::SP_MessageBoxWarning
                                : QStyle::SP_MessageBoxInformation;
  return widget.style()->standardIcon(kind).pixmap(widget.style()->pixelMetric(QStyle::PM_SmallIconSize));
}

QLabel* NewLine(const std::string& text, bool bold, QWidget* parent) {
  auto* label = new QLabel(ToQtLines(text), parent);
  label->setTextFormat(Qt::PlainText);
  auto font = QToolTip::font();
  font.setBold(bold);
  label->setFont(font);
  return label;
}

// The window of a tip. It lets the mouse through, so that it never takes the pointer off its control.
class TipWidget : public QWidget {
 public:
  TipWidget(const TipLook& look, QWidget* over)
      : QWidget(over->window(), Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput),
        balloon_(look.balloon) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    setAttribute(Qt::WA_TranslucentBackground, balloon_ && IsOnWayland());
    auto colors = QToolTip::palette();
    if (look.textColor) colors.setColor(QPalette::ToolTipText, *look.textColor);
    if (look.groundColor) colors.setColor(QPalette::ToolTipBase, *look.groundColor);
    colors.setColor(QPalette::WindowText, colors.color(QPalette::ToolTipText));
    setPalette(colors);
    Fill(look);
    adjustSize();
    Place(look.centered, over);
    // Not every desktop blends windows into what lies under them, so what is no balloon is cut away.
    if (balloon_) setMask(QRegion(Outline().translated(0.5, 0.5).toFillPolygon().toPolygon()));
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing, balloon_);
    painter.setPen(palette().color(QPalette::ToolTipText));
    painter.setBrush(palette().color(QPalette::ToolTipBase));
    painter.drawPath(Outline());
  }

 private:
  void Fill(const TipLook& look) {
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(padding, padding + (balloon_ ? stem : 0), padding, padding);
    if (!look.title.empty()) grid->addWidget(NewLine(look.title, true, this), 0, 1);
    if (look.icon != 0 && !look.title.empty()) {
      auto* picture = new QLabel(this);
      picture->setPixmap(PictureOf(look.icon, *this));
      grid->addWidget(picture, 0, 0);
    }
    grid->addWidget(NewLine(look.text, false, this), 1, 0, 1, 2);
    grid->setColumnStretch(1, 1);
  }

  QPainterPath Outline() const {
    const auto box = QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5);
    QPainterPath path;
    if (!balloon_) {
      path.addRect(box);
      return path;
    }
    path.addRoundedRect(above_ ? box.adjusted(0, 0, 0, -stem) : box.adjusted(0, stem, 0, 0), radius, radius);
    const auto root = above_ ? box.bottom() - stem : box.top() + stem;
    QPainterPath pointer(QPointF(tip_, above_ ? box.bottom() : box.top()));
    pointer.lineTo(tip_ + stem, root);
    pointer.lineTo(tip_, root);
    pointer.closeSubpath();
    return path.united(pointer);
  }

  // Under the control, or above it where the screen ends. What stays inside of the window is surely on the screen.
  void Place(bool centered, const QWidget* over) {
    const auto* around = over->window();
    const auto screen =
        IsOnWayland() ? QRect(around->mapToGlobal(QPoint(0, 0)), around->size()) : over->screen()->availableGeometry();
    const QRect control(over->mapToGlobal(QPoint(0, 0)), over->size());
    const int middle = control.center().x();
    int left = centered || !balloon_ ? middle - width() / 2 : middle - 2 * radius;
    left = std::max(screen.left(), std::min(left, screen.right() - width()));
    above_ = control.bottom() + height() > screen.bottom();
    if (above_ && balloon_) layout()->setContentsMargins(padding, padding, padding, padding + stem);
    tip_ = std::clamp(middle - left, radius + 1, std::max(radius + 1, width() - radius - stem - 1));
    move(left, above_ ? control.top() - height() : control.bottom() + 1);
  }

  bool balloon_;
  bool above_ = false;
  int tip_ = 0;
};

}  // namespace

void Balloon::Watch(QWidget* control) {
  if (control_) control_->removeEventFilter(this);
  control_ = control;
  if (control_) control_->installEventFilter(this);
}

void Balloon::Changed() {
  if (shown_.get()) Show();
}

void Balloon::Show() {
  if (!control_ || look_.text.empty()) return;
  shown_.Reset(new TipWidget(look_, control_.data()));
  shown_.get()->show();
}

bool Balloon::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip:
      if (!shown_.get()) Show();
      return true;
    case QEvent::Leave:
    case QEvent::Hide:
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::WindowDeactivate:
      shown_.Reset();
      return false;
    default:
      return false;
  }
}

}  // namespace onlinux
