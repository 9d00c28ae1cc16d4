#include "platform/linux/qt/PanelPeers.h"

#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QPainter>
#include <QStyleOption>
#include <QStylePainter>
#include <algorithm>

#include "platform/linux/qt/Pictures.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

Qt::Alignment AlignmentOf(velmaro::Alignment alignment) {
  if (alignment == velmaro::Alignment::Right) return Qt::AlignRight | Qt::AlignTop;
  return (alignment == velmaro::Alignment::Center ? Qt::AlignHCenter : Qt::AlignLeft) | Qt::AlignTop;
}

Heard<QLabel>* NewLabel(const velmaro::Label& label) {
  auto* widget = MakeWidget<Heard<QLabel>>(label);
  widget->setTextFormat(Qt::PlainText);
  widget->setAlignment(AlignmentOf(label.Alignment()));
  widget->setWordWrap(true);
  widget->setAutoFillBackground(!label.Transparent());
  if (label.Pointer() == velmaro::Pointer::Hand) widget->setCursor(Qt::PointingHandCursor);
  return widget;
}

Heard<QFrame>* NewPanel(const velmaro::PictureBox& box) {
  auto* widget = MakeWidget<Heard<QFrame>>(box);
  widget->setAutoFillBackground(true);
  if (box.Border()) widget->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  return widget;
}

// The widths of lines are told in pixels of a screen with 96 dots an inch.
constexpr velmaro::Twips twipsPerLinePixel = 15;

// All that the program draws lies flat: the line fills its widget.
class LineWidget : public QWidget {
 public:
  using QWidget::QWidget;

 protected:
  void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), palette().windowText()); }
};

// Where a style puts the caption low in the frame, it would stand on what does: there it is drawn at the top.
class FrameWidget : public QGroupBox {
 public:
  using QGroupBox::QGroupBox;

 protected:
  void paintEvent(QPaintEvent* event) override {
    QStyleOptionGroupBox look;
    initStyleOption(&look);
    auto place = style()->subControlRect(QStyle::CC_GroupBox, &look, QStyle::SC_GroupBoxLabel, this);
    if (place.top() < fontMetrics().height() / 3) return QGroupBox::paintEvent(event);
    place.moveTop(0);
    // Some styles leave the frame out around a caption, others begin it below.
    look.text.clear();
    look.subControls = QStyle::SC_GroupBoxFrame;
    QStylePainter painter(this);
    painter.drawComplexControl(QStyle::CC_GroupBox, look);
    painter.drawItemText(place, Qt::AlignTop | Qt::AlignHCenter | Qt::TextShowMnemonic, palette(), isEnabled(), title(),
                         foregroundRole());
  }
};

}  // namespace

LabelPeer::LabelPeer(velmaro::Label& label) : ControlPeer(label, NewLabel(label), true), label_(label) {
  static_cast<Heard<QLabel>&>(Widget()).listener = this;
}

void LabelPeer::ShowText() {
  auto& widget = static_cast<QLabel&>(Widget());
  const auto text = ToQtLines(label_.Caption());
  widget.setFont(Fitted(Measures().FontFor(label_.Font()), text, widget.size(), true));
  widget.setText(text);
}

velmaro::Color LabelPeer::Ground() const {
  if (!label_.Transparent()) return ControlPeer::Ground();
  return label_.Parent() ? label_.Parent()->BackColor() : label_.Owner().Args().BackColor;
}

void LabelPeer::ShowColors() { ShowColorsAs(QPalette::WindowText, QPalette::Window); }

PictureBoxPeer::PictureBoxPeer(velmaro::PictureBox& box) : ControlPeer(box, NewPanel(box), true) {
  static_cast<Heard<QFrame>&>(Widget()).listener = this;
}

void PictureBoxPeer::ShowColors() {
  auto palette = Widget().palette();
  palette.setColor(QPalette::Window, Colors().ground);
  Widget().setPalette(palette);
}

FramePeer::FramePeer(velmaro::Frame& frame)
    : ControlPeer(frame, MakeWidget<FrameWidget>(frame, ToQtLine(frame.Caption()))), frame_(frame) {}

void FramePeer::ShowText() {
  ControlPeer::ShowText();
  static_cast<QGroupBox&>(Widget()).setTitle(ToQtLine(frame_.Caption()));
}

ImagePeer::ImagePeer(velmaro::Image& image)
    : ControlPeer(image, MakeWidget<Heard<QLabel>>(image), true), image_(image) {
  static_cast<Heard<QLabel>&>(Widget()).listener = this;
}

void ImagePeer::ShowText() {
  auto& widget = static_cast<QLabel&>(Widget());
  widget.setPixmap(IconOf(image_.Picture()).pixmap(widget.size(), widget.devicePixelRatioF()));
}

LinePeer::LinePeer(velmaro::Line& line) : ControlPeer(line, MakeWidget<LineWidget>(line)), line_(line) {}

void LinePeer::ShowText() {
  const auto place = Measures().Pixels(line_.At());
  const int thickness = Measures().Pixels(static_cast<velmaro::Twips>(line_.BorderWidth()) * twipsPerLinePixel);
  Widget().setGeometry(place.left(), place.top(), place.width(), std::max({place.height(), thickness, 1}));
}

void LinePeer::ShowColors() {
  auto palette = Widget().palette();
  palette.setColor(QPalette::WindowText, ColorOf(line_.ForeColor(), palette));
  Widget().setPalette(palette);
}

}  // namespace onlinux
