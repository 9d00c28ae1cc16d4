#include "platform/linux/qt/Look.h"

#include <QApplication>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QScreen>
#include <algorithm>
#include <cmath>

#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

// The size of the text that forms are laid out for, and how wide the letters of both cases are in it, in twips.
constexpr float laidOutSize = 8.25F;
constexpr double laidOutWidth = 5000;
constexpr double smallestSize = 5.5;

QPalette::ColorRole RoleOf(velmaro::Color color) {
  switch (color) {
    case velmaro::SystemColor::Window:
      return QPalette::Base;
    case velmaro::SystemColor::WindowText:
      return QPalette::Text;
    case velmaro::SystemColor::Highlight:
      return QPalette::Highlight;
    case velmaro::SystemColor::HighlightText:
      return QPalette::HighlightedText;
    case velmaro::SystemColor::ButtonText:
      return QPalette::WindowText;
    default:
      return QPalette::Window;
  }
}

double Luminance(const QColor& color) {
  const auto part = [](double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * part(color.redF()) + 0.7152 * part(color.greenF()) + 0.0722 * part(color.blueF());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [low, high] = std::minmax({Luminance(a), Luminance(b)});
  return (high + 0.05) / (low + 0.05);
}

constexpr double readable = 4.5;

// A colour of the same hue, so much lighter or darker that it can be read on the ground.
QColor Readable(QColor text, const QColor& ground) {
  const float step = Luminance(ground) > 0.18 ? -0.01F : 0.01F;
  for (int i = 0; i < 100 && Contrast(text, ground) < readable; ++i)
    text.setHslF(text.hslHueF(), text.hslSaturationF(), std::clamp(text.lightnessF() + step, 0.0F, 1.0F));
  return text;
}

// The user's font at the size at which its letters are no wider than those that forms are laid out for.
double BaseSize(const QFont& font, double twipsPerPixel) {
  const auto width =
      QFontMetricsF(font).horizontalAdvance("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") * twipsPerPixel;
  const auto size = font.pointSizeF() > 0 ? font.pointSizeF() : laidOutSize;
  return width > laidOutWidth ? size * laidOutWidth / width : size;
}

}  // namespace

bool IsOnWayland() { return QApplication::platformName().startsWith("wayland"); }

Scale::Scale() : twipsPerPixel_(15) {
  const auto* screen = QApplication::primaryScreen();
  if (screen) twipsPerPixel_ = static_cast<velmaro::Twips>(1440.0 / screen->logicalDotsPerInchX());
}

int Scale::Pixels(velmaro::Twips length) const { return static_cast<int>(std::lround(length / twipsPerPixel_)); }

QRect Scale::Pixels(const velmaro::Bounds& bounds) const {
  return {Pixels(bounds.Left), Pixels(bounds.Top), Pixels(bounds.Width), Pixels(bounds.Height)};
}

double Scale::SizeOf(const QFont& font) const {
  if (measured_ != font) {
    measured_ = font;
    size_ = BaseSize(font, twipsPerPixel_);
  }
  return size_;
}

QFont Scale::FontFor(const velmaro::Font& font) const {
  auto made = QApplication::font();
  made.setPointSizeF(SizeOf(made) * static_cast<double>(font.Size / laidOutSize));
  const auto name = ToQt(font.Name);
  if (!name.isEmpty() && QFontDatabase::hasFamily(name)) made.setFamily(name);
  made.setBold(font.Bold);
  made.setUnderline(font.Underline);
  return made;
}

QFont Fitted(QFont font, const QString& text, QSize room, bool wrap) {
  const int flags = wrap ? static_cast<int>(Qt::TextWordWrap) : 0;
  const auto fits = [&] {
    const QRectF space(0, 0, wrap ? room.width() : 1e6, 1e6);
    const auto size = QFontMetricsF(font).boundingRect(space, flags, text).size();
    return size.width() <= room.width() && size.height() <= room.height();
  };
  while (font.pointSizeF() > smallestSize && !fits()) font.setPointSizeF(font.pointSizeF() - 0.25);
  return font;
}

QColor ColorOf(velmaro::Color color, const QPalette& palette) {
  if (velmaro::SystemColor::Is(color)) return palette.color(QPalette::Active, RoleOf(color));
  return {static_cast<int>(color & 0xFF), static_cast<int>(color >> 8 & 0xFF), static_cast<int>(color >> 16 & 0xFF)};
}

TextColors ColorsOf(velmaro::Color text, velmaro::Color ground, const QPalette& palette) {
  TextColors colors{ColorOf(text, palette), ColorOf(ground, palette)};
  if (Contrast(colors.text, colors.ground) >= readable) return colors;
  const auto link = palette.color(QPalette::Link);
  if (velmaro::SystemColor::Is(text))
    colors.text = QColor(Luminance(colors.ground) > 0.18 ? Qt::black : Qt::white);
  else if (velmaro::SystemColor::Is(ground) && colors.text.hslSaturation() > 0 &&
           Contrast(link, colors.ground) >= readable)
    colors.text = link;
  else
    colors.text = Readable(colors.text, colors.ground);
  return colors;
}

}  // namespace onlinux
