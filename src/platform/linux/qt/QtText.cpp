#include "platform/linux/qt/QtText.h"

namespace onlinux {

QString ToQt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString ToQtLines(std::string_view text) {
  auto lines = ToQt(text);
  return lines.replace("\r\n", "\n").replace('\r', '\n');
}

QString ToQtLine(std::string_view text) {
  constexpr char16_t signs = 0x2400;  // the pictures of the control characters stand here, in their order
  auto line = ToQt(text);
  for (auto& c : line)
    if (c.unicode() < 0x20 && c != '\t') c = QChar(static_cast<char16_t>(signs + c.unicode()));
  return line.replace(QChar(QChar::LineSeparator), QChar(0x2424))
      .replace(QChar(QChar::ParagraphSeparator), QChar(0x2424));
}

std::string FromQt(const QString& text) { return text.toStdString(); }

}  // namespace onlinux
