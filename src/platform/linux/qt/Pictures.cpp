#include "platform/linux/qt/Pictures.h"

#include <QApplication>
#include <QIconEngine>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <memory>

#include "platform/linux/qt/PictureData.h"

namespace onlinux {
namespace {

// Draws a picture at the size that is asked for: to read image files would need Qt's plugins for them, and loading
// these takes a tenth of a start.
class PictureEngine : public QIconEngine {
 public:
  explicit PictureEngine(int picture) : picture_(picture) {}

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
    painter->drawPixmap(place, pixmap(place.size() * painter->device()->devicePixelRatioF(), mode, state));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    QPixmap drawn(size);
    drawn.fill(Qt::transparent);
    Draw(drawn);
    const QStyleOption option;
    return mode == QIcon::Normal ? drawn : QApplication::style()->generatedIconPixmap(mode, drawn, &option);
  }

  // What a window manager, a task bar and a switcher of windows ask for.
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    return {{16, 16}, {24, 24}, {32, 32}, {48, 48}, {64, 64}, {96, 96}, {128, 128}};
  }

  QIconEngine* clone() const override { return std::make_unique<PictureEngine>(*this).release(); }

 private:
  void Draw(QPixmap& pixmap) const {
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const auto& area : PictureAreas()) {
      if (area.picture != picture_) continue;
      QPolygonF outline;
      for (const auto& corner : area.outline) outline << QPointF(corner.x * pixmap.width(), corner.y * pixmap.height());
      painter.setBrush(QColor(area.rgb));
      painter.drawPolygon(outline);
    }
  }

  int picture_;
};

}  // namespace

QIcon IconOf(velmaro::Picture picture) {
  if (picture == velmaro::Picture::None) return {};
  return QIcon(std::make_unique<PictureEngine>(static_cast<int>(picture)).release());
}

}  // namespace onlinux
