#pragma once

#include <QString>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace onlinux {

// A text of any bytes, and what of it shows on the screen. Line ends of every kind show as one, and a byte that is no
// text as a mark; where the user changes nothing, the bytes stay what they were.
class ShownText {
 public:
  ShownText() = default;
  explicit ShownText(std::string bytes);

  const std::string& Bytes() const { return bytes_; }
  // The text as the screen has it, with LF at the line ends.
  const QString& Shown() const { return shown_; }
  // The byte that a shown place stands for, and the place where a byte shows.
  std::size_t ByteAt(qsizetype place) const;
  qsizetype PlaceOf(std::size_t byte) const;
  // Takes on what the user made of the shown text. `near` is where the change began: alike characters don't tell.
  void Edited(const QString& now, qsizetype near);

 private:
  void Append(char16_t unit, std::size_t bytes);
  std::string Encoded(const QString& text, std::vector<std::uint8_t>& lengths) const;

  std::string bytes_;
  QString shown_;
  std::vector<std::uint8_t> lengths_;  // the bytes of each UTF-16 unit; of a pair, the first one has them all
  std::string lineEnd_ = "\r\n";
};

}  // namespace onlinux
