#include "platform/linux/qt/Pictures.h"

#include <QPixmap>

#include "platform/linux/qt/PictureData.h"

namespace onlinux {

QIcon IconOf(velmaro::Picture picture) {
  QIcon icon;
  for (const auto& drawing : DrawnPictures()) {
    if (drawing.picture != static_cast<int>(picture)) continue;
    QPixmap pixmap;
    if (pixmap.loadFromData(drawing.png.data(), static_cast<uint>(drawing.png.size()), "PNG")) icon.addPixmap(pixmap);
  }
  return icon;
}

}  // namespace onlinux
