#include "platform/linux/qt/ButtonPeers.h"

#include <QPushButton>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

#include "platform/linux/qt/Pictures.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

// What a button's frame takes of its room on each side.
constexpr int edge = 4;
constexpr velmaro::Twips pictureSize = 480;

// A push button with a picture above its caption. Qt's own has them side by side.
class PictureButton : public Heard<QPushButton> {
 public:
  using Heard<QPushButton>::Heard;

  // The room that the picture leaves for the caption.
  QRect CaptionPlace() const {
    const int picture = icon().isNull() ? 0 : iconSize().height();
    const auto inside = rect().adjusted(edge, edge / 2, -edge, -edge / 2);
    return inside.adjusted(0, picture, 0, 0);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    option.icon = QIcon();
    painter.drawControl(QStyle::CE_PushButton, option);
    if (isDown() || isChecked())
      painter.translate(style()->pixelMetric(QStyle::PM_ButtonShiftHorizontal, &option, this),
                        style()->pixelMetric(QStyle::PM_ButtonShiftVertical, &option, this));
    const auto caption = CaptionPlace();
    const QRect picture(QPoint((width() - iconSize().width()) / 2, caption.top() - iconSize().height()), iconSize());
    if (!icon().isNull())
      icon().paint(&painter, picture, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    painter.drawItemText(caption, Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, option.palette,
                         isEnabled(), text(), QPalette::ButtonText);
  }
};

// An option button that is pressed wherever in its place the mouse is, not on its text alone.
class WideRadioButton : public Heard<QRadioButton> {
 public:
  using Heard<QRadioButton>::Heard;

 protected:
  bool hitButton(const QPoint& at) const override { return rect().contains(at); }
};

PictureButton* NewGraphical(const velmaro::Control& control, velmaro::Twips twipsPerPixel) {
  auto* widget = MakeWidget<PictureButton>(control);
  const int side = static_cast<int>(pictureSize / twipsPerPixel + 0.5F);
  widget->setIconSize({side, side});
  widget->setIcon(IconOf(control.Picture()));
  return widget;
}

// The caption without what marks its access key.
QString PlainCaption(const velmaro::Control& control) {
  auto text = control.Caption();
  std::erase(text, '&');
  return ToQtLine(text);
}

template <class Wanted>
void Listen(ControlPeer& peer) {
  static_cast<Wanted&>(peer.Widget()).listener = &peer;
}

void ShowPictureButtonText(QWidget& widget, const velmaro::Control& control, const QFont& font) {
  auto& button = static_cast<PictureButton&>(widget);
  button.setFont(Fitted(font, PlainCaption(control), button.CaptionPlace().size(), true));
  button.setText(ToQtLine(control.Caption()));
}

QWidget* NewCommandButton(const velmaro::CommandButton& button) {
  if (button.Graphical()) return NewGraphical(button, button.Owner().Peer()->TwipsPerPixel());
  return MakeWidget<Heard<QPushButton>>(button);
}

QWidget* NewOptionButton(const velmaro::OptionButton& button) {
  if (button.Graphical()) {
    auto* widget = NewGraphical(button, button.Owner().Peer()->TwipsPerPixel());
    widget->setCheckable(true);
    return widget;
  }
  return MakeWidget<WideRadioButton>(button);
}

}  // namespace

CommandButtonPeer::CommandButtonPeer(velmaro::CommandButton& button)
    : ControlPeer(button, NewCommandButton(button)), button_(button) {
  Listen<Heard<QPushButton>>(*this);
  auto& widget = static_cast<QPushButton&>(Widget());
  widget.setDefault(button.Default());
  QObject::connect(&widget, &QAbstractButton::clicked, &widget, [this] { Clicked(); });
}

// The release of the mouse follows by itself.
void CommandButtonPeer::Clicked() {
  if (IsUnderModal(&Widget())) return;
  if (IsHeld())
    button_.RaiseClick();
  else
    button_.RaisePress();
}

void CommandButtonPeer::ShowText() {
  const auto font = Measures().FontFor(button_.Font());
  if (button_.Graphical()) return ShowPictureButtonText(Widget(), button_, font);
  auto& widget = static_cast<QPushButton&>(Widget());
  widget.setFont(Fitted(font, PlainCaption(button_), widget.size() - QSize(2 * edge, 2 * edge), false));
  widget.setText(ToQtLine(button_.Caption()));
}

// A button that the program gives no colour of its own looks as the theme has it.
void CommandButtonPeer::ShowColors() {
  if (velmaro::SystemColor::Is(button_.BackColor()) && velmaro::SystemColor::Is(button_.ForeColor())) return;
  ControlPeer::ShowColors();
}

OptionButtonPeer::OptionButtonPeer(velmaro::OptionButton& button)
    : ControlPeer(button, NewOptionButton(button)), button_(button) {
  if (button.Graphical())
    Listen<Heard<QPushButton>>(*this);
  else
    Listen<Heard<QRadioButton>>(*this);
  auto& widget = static_cast<QAbstractButton&>(Widget());
  widget.setAutoExclusive(true);
  QObject::connect(&widget, &QAbstractButton::toggled, &widget, [this](bool on) {
    if (!on || IsApplying()) return;
    if (IsUnderModal(&Widget()))
      ShowValue();
    else
      button_.SetValue(true);
  });
}

void OptionButtonPeer::Begin() {
  ControlPeer::Begin();
  ShowValue();
}

void OptionButtonPeer::Apply(velmaro::Change what) {
  if (what == velmaro::Change::Value) return ShowValue();
  ControlPeer::Apply(what);
}

// The model says which button of the group is the selected one; Qt would not let go of the last.
void OptionButtonPeer::ShowValue() {
  auto& widget = static_cast<QAbstractButton&>(Widget());
  Quietly([&] {
    widget.setAutoExclusive(false);
    widget.setChecked(button_.Value());
    widget.setAutoExclusive(true);
  });
}

void OptionButtonPeer::ShowText() {
  const auto font = Measures().FontFor(button_.Font());
  if (button_.Graphical()) return ShowPictureButtonText(Widget(), button_, font);
  auto& widget = static_cast<QRadioButton&>(Widget());
  const int mark = widget.style()->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth, nullptr, &widget) + 2 * edge;
  widget.setFont(Fitted(font, PlainCaption(button_), widget.size() - QSize(mark, 0), false));
  widget.setText(ToQtLine(button_.Caption()));
}

}  // namespace onlinux
