#pragma once

#include <QColor>
#include <QFont>
#include <QPalette>
#include <QRect>
#include <QString>
#include <optional>

#include "platform/types.h"
#include "runtime/Types.h"

namespace velmaro {
class Control;
}

namespace onlinux {

// True where windows are Wayland's. There they are all blended and none is cut out, and nobody is told where on the
// screen they are.
bool IsOnWayland();

// What lengths on a form come to on the screen. Qt's pixels, which it scales itself where the screen is set so.
class Scale {
 public:
  // The scale of the user's screen as it is now.
  Scale();
  velmaro::Twips TwipsPerPixel() const { return twipsPerPixel_; }
  // To the nearest pixel.
  int Pixels(velmaro::Twips length) const;
  QRect Pixels(const velmaro::Bounds& bounds) const;
  velmaro::Twips Twips(double pixels) const { return static_cast<velmaro::Twips>(pixels) * twipsPerPixel_; }
  // The user's dialog font, or the named one where there is such, at the size that text is laid out for.
  QFont FontFor(const velmaro::Font& font) const;

 private:
  // In points. To measure a font takes long: one measure serves all controls of a form.
  double SizeOf(const QFont& font) const;

  velmaro::Twips twipsPerPixel_;
  mutable std::optional<QFont> measured_;
  mutable double size_ = 0;
};

// A font made smaller until the text fits the room, broken into lines where `wrap` says so. Below a size that can be
// read it is not made smaller.
QFont Fitted(QFont font, const QString& text, QSize room, bool wrap);

// A colour of the program as the user's theme has it.
QColor ColorOf(velmaro::Color color, const QPalette& palette);
// The colours of a control's text and ground, the text always readable, with a contrast of 4.5 to 1 and more: where the
// theme sets one of them and the program the other, they may not go together.
struct TextColors {
  QColor text;
  QColor ground;
};
TextColors ColorsOf(velmaro::Color text, velmaro::Color ground, const QPalette& palette);

}  // namespace onlinux
