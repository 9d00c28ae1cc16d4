#include "platform/linux/qt/ShownText.h"

#include <algorithm>
#include <numeric>

#include "platform/linux/ground/Utf8.h"
#include "platform/linux/qt/QtText.h"

namespace onlinux {
namespace {

constexpr char16_t noText = 0xFFFD;
constexpr char16_t nulSign = 0x2400;

// New lines end as those do that are there; in an empty text they end as lists do on every system.
std::string LineEndOf(const std::string& bytes) {
  const auto end = bytes.find_first_of("\r\n");
  if (end == std::string::npos || bytes.compare(end, 2, "\r\n") == 0) return "\r\n";
  return std::string(1, bytes[end]);
}

// How many units both texts begin with, at most `limit`; a pair is not taken apart.
qsizetype CommonStart(const QString& a, const QString& b, qsizetype limit) {
  qsizetype at = 0;
  while (at < limit && a[at] == b[at]) ++at;
  return at > 0 && a[at - 1].isHighSurrogate() ? at - 1 : at;
}

qsizetype CommonEnd(const QString& a, const QString& b, qsizetype limit) {
  qsizetype at = 0;
  while (at < limit && a[a.size() - 1 - at] == b[b.size() - 1 - at]) ++at;
  return at > 0 && a[a.size() - at].isLowSurrogate() ? at - 1 : at;
}

}  // namespace

ShownText::ShownText(std::string bytes) : bytes_(std::move(bytes)), lineEnd_(LineEndOf(bytes_)) {
  std::string_view rest = bytes_;
  shown_.reserve(static_cast<qsizetype>(rest.size()));
  lengths_.reserve(rest.size());
  while (!rest.empty()) {
    auto character = FirstCharacter(rest);
    if (rest.starts_with("\r\n")) character.length = 2;
    const auto code = character.valid ? character.code : char32_t{noText};
    if (code == '\r' || code == '\n') {
      Append(u'\n', character.length);
    } else if (QChar::requiresSurrogates(code)) {
      Append(QChar::highSurrogate(code), character.length);
      Append(QChar::lowSurrogate(code), 0);
    } else {
      Append(code == 0 ? nulSign : static_cast<char16_t>(code), character.length);
    }
    rest.remove_prefix(character.length);
  }
}

void ShownText::Append(char16_t unit, std::size_t bytes) {
  shown_ += QChar(unit);
  lengths_.push_back(static_cast<std::uint8_t>(bytes));
}

std::size_t ShownText::ByteAt(qsizetype place) const {
  const auto end = lengths_.begin() + std::min(place, static_cast<qsizetype>(lengths_.size()));
  return std::accumulate(lengths_.begin(), end, std::size_t{0});
}

qsizetype ShownText::PlaceOf(std::size_t byte) const {
  std::size_t passed = 0;
  std::size_t place = 0;
  while (place < lengths_.size() && passed + lengths_[place] <= byte && passed < byte) passed += lengths_[place++];
  while (place < lengths_.size() && lengths_[place] == 0) ++place;
  return static_cast<qsizetype>(place);
}

std::string ShownText::Encoded(const QString& text, std::vector<std::uint8_t>& lengths) const {
  std::string bytes;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const bool pair = text[i].isHighSurrogate() && i + 1 < text.size();
    const auto added = text[i] == '\n' ? lineEnd_ : FromQt(text.mid(i, pair ? 2 : 1));
    bytes += added;
    lengths.push_back(static_cast<std::uint8_t>(added.size()));
    if (!pair) continue;
    lengths.push_back(0);
    ++i;
  }
  return bytes;
}

void ShownText::Edited(const QString& now, qsizetype near) {
  const auto shorter = std::min(now.size(), shown_.size());
  const auto start = CommonStart(now, shown_, std::min(shorter, near));
  const auto end = CommonEnd(now, shown_, shorter - start);
  std::vector<std::uint8_t> lengths;
  const auto added = Encoded(now.mid(start, now.size() - start - end), lengths);
  const auto from = ByteAt(start);
  bytes_.replace(from, ByteAt(shown_.size() - end) - from, added);
  const auto at = lengths_.erase(lengths_.begin() + start, lengths_.end() - end);
  lengths_.insert(at, lengths.begin(), lengths.end());
  shown_ = now;
}

}  // namespace onlinux
